#include "map/PlaceBubble.h"

#include <algorithm>
#include <numbers>
#include <utility>

namespace pelta::viewer {

namespace {

constexpr int shadow = 4;  ///< Points around the card.
constexpr CGFloat margin = 12;
constexpr CGFloat gap = 10;
constexpr CGFloat rowHeight = 26;
constexpr CGFloat buttonSide = 24;
constexpr CGFloat tipHeight = 9;
constexpr CGFloat radius = 12;
constexpr UIColor rimColor{20 / 255.0, 40 / 255.0, 70 / 255.0, 0.22};
constexpr UIColor shadowColor{20 / 255.0, 40 / 255.0, 70 / 255.0, 0.07};
constexpr UIColor labelColor{0x5B / 255.0, 0x66 / 255.0, 0x75 / 255.0, 1};
constexpr UIColor inkColor{0x1C / 255.0, 0x24 / 255.0, 0x33 / 255.0, 1};
constexpr UIFont labelFont = UIFont::systemFont(11);
constexpr UIFont numberFont = UIFont::boldSystemFont(12);

CGFloat widest(const std::array<PlaceText, 5>& texts, bool ofSystems) {
    CGFloat width = 0;
    for (const PlaceText& text : texts) {
        width = std::max(width, ofSystems ? sizeOfText(text.system, labelFont).width
                                          : sizeOfText(text.numbers, numberFont).width);
    }
    return width;
}

CGRect frameFor(const std::array<PlaceText, 5>& texts) {
    const CGFloat width =
        2 * (shadow + margin) + widest(texts, true) + gap + widest(texts, false) + gap + buttonSide;
    return {{},
            {width, 2 * (shadow + margin - 4) + rowHeight * static_cast<CGFloat>(texts.size()) + tipHeight}};
}

/// A square on its corner, the lower half of which is the tip.
void drawTip(GraphicsContext& context, CGPoint tip, CGFloat height, UIColor color) {
    const CGFloat side = height * std::numbers::sqrt2;
    context.saveState();
    context.concatenate({1, 0, 0, 1, tip.x, tip.y - height});
    context.concatenate(CGAffineTransform::rotation(std::numbers::pi / 4));
    context.fillRoundedRect({{-side / 2, -side / 2}, {side, side}}, 1.5, color);
    context.restoreState();
}

CGRect grown(CGRect rect, CGFloat by) {
    return {{rect.origin.x - by, rect.origin.y - by}, {rect.size.width + 2 * by, rect.size.height + 2 * by}};
}

}  // namespace

PlaceBubble::PlaceBubble(std::array<PlaceText, 5> texts)
    : UIView(frameFor(texts)),
      texts_(std::move(texts)),
      numbersLeft_(shadow + margin + widest(texts_, true) + gap) {}

CGRect PlaceBubble::buttonRect(std::size_t row) const noexcept {
    return {{bounds().size.width - shadow - margin - buttonSide + 4,
             shadow + margin - 4 + rowHeight * static_cast<CGFloat>(row) + (rowHeight - buttonSide) / 2},
            {buttonSide, buttonSide}};
}

void PlaceBubble::draw(GraphicsContext& context, CGRect rect) {
    const CGRect card{{shadow, shadow},
                      {rect.size.width - 2 * shadow, rect.size.height - 2 * shadow - tipHeight}};
    const CGPoint tip{rect.size.width / 2, rect.size.height};
    for (int spread = shadow; spread > 0; --spread) {
        context.fillRoundedRect(grown(card, spread), radius + spread, shadowColor);
    }
    drawTip(context, tip, tipHeight + shadow, rimColor);
    context.fillRoundedRect(grown(card, 1), radius + 1, rimColor);
    drawTip(context, {tip.x, tip.y - 1.5}, tipHeight + shadow, UIColor::white());
    context.fillRoundedRect(card, radius, UIColor::white());
    for (std::size_t row = 0; row < texts_.size(); ++row) {
        const CGFloat top = shadow + margin - 4 + rowHeight * static_cast<CGFloat>(row);
        const auto drawCentred = [&](std::string_view text, CGFloat left, const UIFont& font, UIColor color) {
            const CGSize size = sizeOfText(text, font);
            context.drawText(text, {{left, top + (rowHeight - size.height) / 2}, size},
                             {font, color, NSTextAlignment::left});
        };
        drawCentred(texts_[row].system, shadow + margin, labelFont, labelColor);
        drawCentred(texts_[row].numbers, numbersLeft_, numberFont, inkColor);
    }
}

}  // namespace pelta::viewer
