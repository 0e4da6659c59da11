#pragma once

#include <optional>
#include <string>

#include <pelta/Engine/MapRenderer.h>

namespace pelta {

/// A style document that has been read, or why it cannot be used.
struct StyleDocumentResult {
    std::optional<StyleDocument> document;
    std::string message;  ///< Names the address, the place, the reason and the fix; empty with a document.
};

/// Reads and checks a style document: JSON nested at most 128 deep, version 8, an object of sources, and a
/// list of layers with unique identifiers, known types, sources that exist and zooms from 0 to 24. A document
/// with one broken layer is refused as a whole. Never throws, whatever the text.
///
/// @param text     UTF-8, with or without a byte order mark.
/// @param address  for messages and for the document; empty for a text without one.
[[nodiscard]] StyleDocumentResult readStyleDocument(std::string text, std::string address);

}  // namespace pelta
