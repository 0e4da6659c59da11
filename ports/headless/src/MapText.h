#pragma once

#include <string>
#include <unordered_map>

#include <pelta/Platform/CoreGraphics.h>

namespace pelta {

/// Measures texts as symbols draw them, and remembers the answers.
class MapText {
 public:
    /// Points an em where a layer does not say.
    static constexpr double defaultSize = 16;

    /// Extent of a text in points. Lines stand 1.2 ems apart and break at line feeds; a paragraph that is
    /// wider than `maximumWidth` ems (0: without limit) breaks at spaces and between ideographs into lines of
    /// about equal width.
    [[nodiscard]] CGSize size(const std::string& text, double fontSize, double maximumWidth);
    /// A length in points that neither side of the text's extent exceeds, found without measuring.
    [[nodiscard]] static double upperBound(const std::string& text, double fontSize) noexcept;

 private:
    std::unordered_map<std::string, CGSize> sizes_;
};

}  // namespace pelta
