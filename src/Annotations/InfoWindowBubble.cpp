#include "Annotations/InfoWindowBubble.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <pelta/Platform/Make.h>
#include <pelta/Platform/UIControls.h>
#include <pelta/Platform/UIWindow.h>

#include "Annotations/ResourceImage.h"

namespace pelta {

namespace {

constexpr CGFloat textMargin = 30;      // points of width beyond the text
constexpr CGFloat heightMargin = 10;    // points of height beyond the pictures
constexpr CGFloat textTop = 3;          // points
constexpr CGFloat textHeightLoss = 11;  // points of the bubble's height, for the tip
constexpr CGFloat seam = 1;             // points by which the pieces overlap
/// Points. Map engines place the corners of an icon within 1023 points of its middle.
constexpr CGFloat widestBubble = 2000;

constexpr NSTextAttributes textAttributes{UIFont::systemFont(15), UIColor::black(), NSTextAlignment::center};

/// Where the characters of a UTF-8 text begin.
std::vector<std::size_t> characterStarts(std::string_view text) {
    std::vector<std::size_t> starts;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U) {
            starts.push_back(i);
        }
    }
    return starts;
}

/// The text, or as much of its beginning as fits a width, with an ellipsis.
std::string fitted(const std::string& text, CGFloat width) {
    const auto fits = [width](const std::string& candidate) {
        return sizeOfText(candidate, textAttributes.font).width <= width;
    };
    if (fits(text)) {
        return text;
    }
    const auto starts = characterStarts(text);
    const auto shortened = [&](std::size_t start) { return text.substr(0, start) + "…"; };
    const auto tooLong = std::partition_point(starts.begin(), starts.end(),
                                              [&](std::size_t start) { return fits(shortened(start)); });
    return tooLong == starts.begin() ? "…" : shortened(*(tooLong - 1));
}

std::shared_ptr<UILabel> makeLabel(const std::string& text) {
    auto label = make<UILabel>(CGRect{});
    label->setText(fitted(text, widestBubble - textMargin));
    label->setAttributes(textAttributes);
    label->sizeToFit();
    return label;
}

void addPiece(UIView& bubble, const UIImage& picture, CGRect frame) {
    const auto piece = make<UIImageView>(frame);
    piece->setImage(picture);
    bubble.addSubview(piece);
}

}  // namespace

std::shared_ptr<UIView> makeInfoWindowView(const std::string& text) {
    const auto label = makeLabel(text);
    const UIImage center = requiredResourceImage("peltamap_default_info_window_background_center");
    const UIImage left = requiredResourceImage("peltamap_default_info_window_background_left");
    const UIImage right = requiredResourceImage("peltamap_default_info_window_background_right");
    const CGSize middle = center.size();
    const CGSize side = left.size();

    const CGFloat height = middle.height + heightMargin;
    const CGFloat width = std::max(label->frame().size.width + textMargin,
                                   middle.width + side.width + right.size().width + textMargin);
    const CGFloat sideWidth = (width - middle.width) * 0.5;

    auto bubble = make<UIView>(CGRect{{}, {width, height}});
    addPiece(*bubble,
             left.resizableImage({side.height / 2 - 1, side.width - 1, side.height / 2 + 1, 0},
                                 UIImageResizingMode::tile),
             {{0, 0}, {sideWidth + seam, height}});
    addPiece(*bubble,
             center.resizableImage(
                 {middle.height / 2 - 1, middle.width / 2 - 1, middle.height / 2 + 1, middle.width / 2 + 1},
                 UIImageResizingMode::stretch),
             {{sideWidth, 0}, {middle.width, height}});
    addPiece(*bubble,
             right.resizableImage(
                 {right.size().height / 2 - 1, side.width / 2 - 1, side.height / 2 + 1, side.width / 2 + 1},
                 UIImageResizingMode::stretch),
             {{sideWidth + middle.width - seam, 0}, {sideWidth + seam, height}});
    label->setFrame({{0, textTop}, {width, height - textHeightLoss}});
    bubble->addSubview(label);
    return bubble;
}

}  // namespace pelta
