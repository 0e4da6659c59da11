#pragma once

#include <array>

#include <pelta/Platform/UIView.h>

#include "map/PlaceTexts.h"

namespace pelta::viewer {

/// A card with a place's coordinates, a row for each system, and a tip at the middle of its lower edge. At
/// the end of each row is room for a button.
class PlaceBubble final : public UIView {
 public:
    /// For `make`; as large as the texts need.
    explicit PlaceBubble(std::array<PlaceText, 5> texts);

    /// Where the button of a row goes, in the view's coordinates.
    [[nodiscard]] CGRect buttonRect(std::size_t row) const noexcept;

    [[nodiscard]] ViewContent content() const override { return DrawnContent{}; }
    void draw(GraphicsContext& context, CGRect rect) override;

 private:
    std::array<PlaceText, 5> texts_;
    CGFloat numbersLeft_;
};

}  // namespace pelta::viewer
