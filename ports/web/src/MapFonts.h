#pragma once

#include <string>
#include <vector>

namespace pelta {

/// The families that draw a layer's text from the fonts of the device, best first, for its font names.
///
/// A name such as "NotoSansRegular" is taken apart into family and weight. The first entry carries the
/// weight's name, which is where the browser's engine looks for it; it need not be a family that exists.
[[nodiscard]] std::vector<std::string> localFontStack(const std::vector<std::string>& fontNames);

}  // namespace pelta
