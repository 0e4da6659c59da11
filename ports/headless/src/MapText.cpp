#include "MapText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <vector>

#include <pelta/Platform/UIGraphics.h>

namespace pelta {

namespace {

constexpr double lineHeight = 1.2;
/// Ems that one byte of text takes at most; some ligatures of three bytes are wider than ten letters.
constexpr double widestLatinByte = 1.5;
constexpr double widestOtherByte = 4;
constexpr std::size_t rememberedTexts = 65536;

std::size_t characterLength(unsigned char first) {
    return first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

/// True for the three-byte characters of Chinese and Japanese, which may stand at any line's end. Hangul
/// keeps its words together.
bool isIdeograph(std::string_view character) {
    if (character.size() != 3) {
        return false;
    }
    const auto first = static_cast<unsigned char>(character[0]);
    const auto second = static_cast<unsigned char>(character[1]);
    const bool isHangul = first == 0xEA ? second >= 0xB0 : first == 0xEB || first == 0xEC;
    return !isHangul && (first > 0xE2 && first <= 0xE9);
}

/// A paragraph in the pieces between which it may break; spaces stay with the piece before them.
std::vector<std::string_view> breakablePieces(std::string_view paragraph) {
    std::vector<std::string_view> pieces;
    std::size_t start = 0;
    for (std::size_t at = 0; at < paragraph.size();) {
        const auto character =
            paragraph.substr(at, characterLength(static_cast<unsigned char>(paragraph[at])));
        at += character.size();
        if (character == " " || isIdeograph(character)) {
            pieces.push_back(paragraph.substr(start, at - start));
            start = at;
        }
    }
    if (start < paragraph.size()) {
        pieces.push_back(paragraph.substr(start));
    }
    return pieces;
}

struct Lines {
    double width = 0;
    int count = 0;

    void add(double lineWidth) {
        width = std::max(width, lineWidth);
        ++count;
    }
};

void addParagraph(Lines& lines, std::string_view paragraph, const UIFont& font, double maximumWidth) {
    const double total = paragraph.empty() ? 0 : sizeOfText(paragraph, font).width;
    if (maximumWidth <= 0 || total <= maximumWidth) {
        lines.add(total);
        return;
    }
    const double target = total / std::ceil(total / maximumWidth);
    double width = 0;
    for (const std::string_view piece : breakablePieces(paragraph)) {
        const double pieceWidth = sizeOfText(piece, font).width;
        if (width > 0 && width + pieceWidth / 2 > target) {
            lines.add(width);
            width = 0;
        }
        width += pieceWidth;
    }
    lines.add(width);
}

CGSize measure(std::string_view text, double fontSize, double maximumWidth) {
    const UIFont font = UIFont::systemFont(fontSize);
    Lines lines;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        addParagraph(lines, text.substr(start, end - start), font, maximumWidth * fontSize);
        start = end + 1;
    }
    return {lines.width, lines.count * lineHeight * fontSize};
}

}  // namespace

CGSize MapText::size(const std::string& text, double fontSize, double maximumWidth) {
    std::string key = text;
    for (const double number : {fontSize, maximumWidth}) {
        const auto bytes = std::bit_cast<std::array<char, sizeof(double)>>(number);
        key.append(bytes.data(), bytes.size());
    }
    if (const auto known = sizes_.find(key); known != sizes_.end()) {
        return known->second;
    }
    if (sizes_.size() >= rememberedTexts) {
        sizes_.clear();
    }
    return sizes_[key] = measure(text, fontSize, maximumWidth);
}

double MapText::upperBound(const std::string& text, double fontSize) noexcept {
    double ems = lineHeight;
    for (const char byte : text) {
        const bool isLatin = byte != '\n' && static_cast<unsigned char>(byte) < 0x80;
        ems += isLatin ? widestLatinByte : widestOtherByte;
    }
    return ems * fontSize;
}

}  // namespace pelta
