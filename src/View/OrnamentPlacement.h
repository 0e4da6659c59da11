#pragma once

#include <memory>
#include <vector>

#include <pelta/Platform/UIView.h>
#include <pelta/View/PgmMapTypes.h>

namespace pelta {

/// Constraints that place one ornament.
using OrnamentConstraints = std::vector<std::shared_ptr<NSLayoutConstraint>>;

/// Where an ornament goes within a map view's safe area.
struct OrnamentPlace {
    PgmPosition position = PgmPosition::topLeft;
    CGSize size;     ///< Points; zero both ways leaves the ornament's extent alone.
    CGPoint margin;  ///< Points from the edges of what the inset leaves.
};

/// Places an ornament, a subview of the map view, anew.
///
/// @param constraints  those that have placed it so far; they are let go and replaced by the new ones.
/// @param inset        further distances from the edges, points.
void placeOrnament(const UIView& mapView, const UIView& ornament, OrnamentConstraints& constraints,
                   const OrnamentPlace& place, UIEdgeInsets inset);

}  // namespace pelta
