#include "View/OrnamentPlacement.h"

#include <pelta/Platform/Log.h>

namespace pelta {

namespace {

using Constraint = std::shared_ptr<NSLayoutConstraint>;

/// The ornament's edge lies further into the safe area than the same edge of that, by a distance.
Constraint atEdge(const UIView& mapView, const UIView& ornament, NSLayoutAttribute edge, CGFloat distance) {
    const auto own = ornament.anchor(edge);
    const auto safe = mapView.safeAreaLayoutGuide().anchor(edge);
    const bool isNearEdge = edge == NSLayoutAttribute::left || edge == NSLayoutAttribute::top;
    return isNearEdge ? NSLayoutConstraint::equal(own, safe, distance)
                      : NSLayoutConstraint::equal(safe, own, distance);
}

Constraint extent(const UIView& ornament, NSLayoutAttribute side, const char* identifier, CGFloat length) {
    auto constraint = NSLayoutConstraint::equalToConstant(ornament.anchor(side), length);
    constraint->setIdentifier(identifier);
    return constraint;
}

Constraint vertical(const UIView& mapView, const UIView& ornament, const OrnamentPlace& place,
                    UIEdgeInsets inset) {
    switch (place.position) {
        case PgmPosition::topLeft:
        case PgmPosition::topRight:
            return atEdge(mapView, ornament, NSLayoutAttribute::top, inset.top + place.margin.y);
        case PgmPosition::bottomLeft:
        case PgmPosition::bottomRight:
            return atEdge(mapView, ornament, NSLayoutAttribute::bottom, inset.bottom + place.margin.y);
        case PgmPosition::centerRight:
            return NSLayoutConstraint::equal(mapView.safeAreaLayoutGuide().anchor(NSLayoutAttribute::centerY),
                                             ornament.anchor(NSLayoutAttribute::centerY),
                                             inset.bottom + place.margin.y);
    }
    fatalError("unexpected ornament position " + std::to_string(static_cast<unsigned>(place.position)));
}

Constraint horizontal(const UIView& mapView, const UIView& ornament, const OrnamentPlace& place,
                      UIEdgeInsets inset) {
    const bool isLeft = place.position == PgmPosition::topLeft || place.position == PgmPosition::bottomLeft;
    return isLeft ? atEdge(mapView, ornament, NSLayoutAttribute::left, inset.left + place.margin.x)
                  : atEdge(mapView, ornament, NSLayoutAttribute::right, inset.right + place.margin.x);
}

}  // namespace

void placeOrnament(const UIView& mapView, const UIView& ornament, OrnamentConstraints& constraints,
                   const OrnamentPlace& place, UIEdgeInsets inset) {
    OrnamentConstraints wanted{vertical(mapView, ornament, place, inset),
                               horizontal(mapView, ornament, place, inset)};
    if (place.size.width != 0 || place.size.height != 0) {
        wanted.push_back(extent(ornament, NSLayoutAttribute::width, "width", place.size.width));
        wanted.push_back(extent(ornament, NSLayoutAttribute::height, "height", place.size.height));
    }
    NSLayoutConstraint::deactivate(constraints);
    NSLayoutConstraint::activate(wanted);
    constraints = std::move(wanted);
}

}  // namespace pelta
