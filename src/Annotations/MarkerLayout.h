#pragma once

#include <pelta/Platform/CoreGraphics.h>

namespace pelta {

/// What decides where the parts of a marker are drawn. All numbers are finite but for the anchor, whose
/// components then count as the picture's middle; a negative icon scale counts as 0.
struct MarkerLayoutInput {
    CGSize pictureSize;      ///< Points, before the icon scale.
    double iconScale = 1;    ///< Factor to the picture's size.
    double angle = 0;        ///< Rotation of the icon, degrees clockwise.
    CGPoint anchor;          ///< Point of the picture on the position, fractions from its top left.
    double titleSize = 0;    ///< Points an em.
    double titleMargin = 0;  ///< Points.
    double screenScale = 1;  ///< Pixels a point.
};

/// Where the parts of a marker are drawn, in the units of the engine's symbol layer. All values are finite.
struct MarkerLayout {
    CGVector iconOffset;        ///< Of the icon's middle; points before icon scale and rotation.
    CGVector textOffset;        ///< Of the middle of the title's upper edge; ems.
    CGVector infoWindowOffset;  ///< Of the middle of the drawn icon's upper edge; points.
};

/// Places the icon's anchor on the position at every angle, the title centred below the rotated icon, and an
/// info window centred above it.
[[nodiscard]] MarkerLayout layoutMarker(const MarkerLayoutInput& input);

/// A length in ems of a text size; 0 for sizes that are not above 0.
[[nodiscard]] double ems(double points, double titleSize);

}  // namespace pelta
