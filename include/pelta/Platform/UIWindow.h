#pragma once

#include <map>

#include <pelta/Platform/UIView.h>

namespace pelta {

/// The root of a view tree: the area that a port gives to an application. Made by the port.
class UIWindow : public UIView {
 public:
    using UIView::UIView;

    /// For ports: hands a touch to the view under its beginning, that view's recognisers and those of its
    /// superviews. Touches that began nowhere are ignored.
    ///
    /// @return true when a view other than a map surface's own took it, so that the engine should not.
    bool deliverTouch(const UITouch& touch);

 private:
    std::map<int, std::weak_ptr<UIView>> touchedViews_;
};

/// Facts about the screen.
class UIScreen {
 public:
    /// Pixels a point of the main screen, above 0.
    [[nodiscard]] static double scale();
};

}  // namespace pelta
