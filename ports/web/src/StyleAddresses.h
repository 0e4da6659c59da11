#pragma once

#include <emscripten/val.h>
#include <string>

namespace pelta {

/// Makes the relative addresses in a parsed style document absolute, in place: of data, tiles, sprites,
/// glyphs and fonts. They start at the document's own address, which itself may be relative to the page.
void resolveAddresses(emscripten::val& document, const std::string& documentAddress);

}  // namespace pelta
