#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "data/MapData.h"

namespace pelta::viewer {

/// How many shapes of each kind are drawn.
struct ShapeCounts {
    std::size_t markers = 0;
    std::size_t lines = 0;
    std::size_t areas = 0;
    std::size_t circles = 0;
    std::size_t nowhere = 0;  ///< Features without a geometry.
};

[[nodiscard]] ShapeCounts countsOf(const MapData& data);

/// The counts in words, such as "2 markers, 1 line, 1 feature without geometry"; what there is none of is not
/// named.
[[nodiscard]] std::string inWords(const ShapeCounts& counts);

/// Messages with the number of those that are not listed, if any, as a last entry.
[[nodiscard]] std::vector<std::string> completed(std::vector<std::string> messages, std::size_t count);

}  // namespace pelta::viewer
