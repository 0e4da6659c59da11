#pragma once

#include <functional>
#include <memory>

#include <pelta/Platform/UIControls.h>

#include "View/OrnamentPlacement.h"

namespace pelta {

/// One of the library's own controls over a map, and where it stands.
struct OrnamentControl {
    std::shared_ptr<UIView> view;  ///< Null until the map view has built it.
    OrnamentConstraints constraints;
    PgmPosition position = PgmPosition::bottomRight;
    CGPoint margins;  ///< Points.
};

/// The controls of one map view.
struct OrnamentControls {
    OrnamentControl zoom{nullptr, {}, PgmPosition::centerRight, {8, 0}};
    OrnamentControl location;
    UIEdgeInsets inset;  ///< That had effect when they were placed.
};

/// The control with a button to zoom in, a divider and a button to zoom out. The actions must not own it.
[[nodiscard]] std::shared_ptr<UIView> makeZoomControl(std::function<void()> plus,
                                                      std::function<void()> minus);

/// The button that leads to the user's location. The action must not own it.
[[nodiscard]] std::shared_ptr<UIView> makeLocationControl(std::function<void()> action);

}  // namespace pelta
