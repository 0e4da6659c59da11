#pragma once

#include <string>
#include <string_view>

#include "data/MapData.h"

namespace pelta::viewer {

/// Reads a GeoJSON document: a feature collection, a feature or a bare geometry, with simplestyle properties
/// and `radius` (metres), `zIndex`, `visibleMinZoom` and `visibleMaxZoom`.
///
/// Never fails as a whole: every good feature is kept, also those before the place where a broken document
/// stops being readable, and each fault becomes one message with the document's name, the feature's index
/// (from 0) and the reason. A feature with a faulty geometry is left out; one with a faulty property is kept
/// with that property's default. A feature with a text that is not UTF-8 is left out; one whose geometry is
/// null is right, and only counted. Values are read as they come, at most 128 levels deep, without a tree of
/// the document in memory.
///
/// @param text  the document, UTF-8.
/// @param name  what messages call it.
[[nodiscard]] MapData readGeoJson(std::string_view text, std::string name);

}  // namespace pelta::viewer
