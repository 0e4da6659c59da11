#pragma once

#include <vector>

#include <pelta/Platform/UIImage.h>

/// @file
/// For ports: how a stretchable picture is laid over a rectangle.

namespace pelta {

/// A piece of a picture and where it goes.
struct ImagePart {
    CGRect source;       ///< Whole pixels of the picture, not empty.
    CGRect destination;  ///< Points, not empty.
    /// On: the piece keeps its size across the directions in which it fills more than itself, repeated from
    /// the destination's top left corner. Off: it is stretched to the destination.
    bool isTiled = false;
};

/// The pieces that cover a rectangle with a picture: one for an ordinary picture, up to nine for a
/// stretchable one. Where the rectangle is too small for two opposite caps, both shrink in proportion.
///
/// @return nothing when the rectangle has no area or is not finite.
[[nodiscard]] std::vector<ImagePart> partsOfImage(const UIImage& image, CGRect rect);

}  // namespace pelta
