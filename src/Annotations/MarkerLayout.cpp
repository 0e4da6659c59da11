#include "Annotations/MarkerLayout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace pelta {

namespace {

/// Pixels between icon and title beyond the margin, room for the title's halo.
constexpr double titleGap = 4.0;

double finiteOr(double value, double otherwise) {
    return std::isfinite(value) ? value : otherwise;
}

double finite(double value) {
    return finiteOr(value, 0);
}

/// The rotated icon's bounding box, relative to the position.
struct IconBox {
    double middle;
    double top;
    double bottom;
};

/// @param anchor  relative to the icon's middle, fractions of its size.
IconBox iconBox(CGSize size, CGPoint anchor, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    const double sine = std::sin(angle);
    const double cosine = std::cos(angle);
    // The anchor stays on the position, so the icon's middle lies where the rotation carries the way from
    // the anchor to it.
    const CGPoint toMiddle{-anchor.x * size.width, -anchor.y * size.height};
    const double middleX = toMiddle.x * cosine - toMiddle.y * sine;
    const double middleY = toMiddle.x * sine + toMiddle.y * cosine;
    const double halfHeight = (std::abs(sine) * size.width + std::abs(cosine) * size.height) / 2;
    return {middleX, middleY - halfHeight, middleY + halfHeight};
}

}  // namespace

double ems(double points, double titleSize) {
    return titleSize > 0 ? finite(points / titleSize) : 0;
}

MarkerLayout layoutMarker(const MarkerLayoutInput& input) {
    const CGPoint anchor{finiteOr(input.anchor.x, 0.5) - 0.5, finiteOr(input.anchor.y, 0.5) - 0.5};
    const double iconScale = std::max(input.iconScale, 0.0);
    const double pixels = input.screenScale;
    const CGSize drawn{input.pictureSize.width * iconScale * pixels,
                       input.pictureSize.height * iconScale * pixels};
    const IconBox box = iconBox(drawn, anchor, input.angle);

    // Title and info window stand on whole pixels, so that letters and edges are sharp beside an icon of odd
    // size. The icon itself is not rounded: that would carry its tip off the position, and by more at larger
    // scales, because the engine scales and turns its offset with it.
    const double middle = std::round(box.middle) / pixels;
    const double titleTop = std::round(box.bottom + input.titleMargin * pixels + titleGap) / pixels;
    const double iconTop = std::round(box.top) / pixels;
    return {{finite(-anchor.x * input.pictureSize.width), finite(-anchor.y * input.pictureSize.height)},
            {ems(middle, input.titleSize), ems(titleTop, input.titleSize)},
            {finite(middle), finite(iconTop)}};
}

}  // namespace pelta
