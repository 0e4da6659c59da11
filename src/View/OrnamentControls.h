#pragma once

#include <functional>
#include <memory>
#include <optional>

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

/// The button that leads to the user's location, without an action.
[[nodiscard]] std::shared_ptr<UIButton> makeLocationButton();

/// Shows pictures on the location button; without an image, the built-in ones.
void showLocationPictures(UIButton& button, std::optional<UIImage> image, std::optional<UIImage> pressed);

/// The controls of one map view.
struct OrnamentControls {
    OrnamentControl zoom{nullptr, {}, PgmPosition::centerRight, {8, 0}};
    OrnamentControl location;
    std::shared_ptr<UIButton> locationButton = makeLocationButton();
    UIEdgeInsets inset;  ///< That had effect when they were placed.
};

/// The control with a button to zoom in, a divider and a button to zoom out. The actions must not own it.
[[nodiscard]] std::shared_ptr<UIView> makeZoomControl(std::function<void()> plus,
                                                      std::function<void()> minus);

/// The location button in a container of its size.
[[nodiscard]] std::shared_ptr<UIView> makeLocationControl(const std::shared_ptr<UIButton>& button);

}  // namespace pelta
