#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

#include <pelta/Platform/UIView.h>

namespace pelta {

/// The root of a view tree: the area that a port gives to an application. Made by the port.
class UIWindow : public UIView {
 public:
    using UIView::UIView;

    /// For ports: hands a touch to the view under its beginning, that view's recognisers and those of its
    /// superviews. Once a recogniser has reported a gesture, those of views further out get the touch
    /// cancelled. Touches that began nowhere are ignored.
    ///
    /// @return true when a view other than a map surface's own took it, so that the engine should not.
    bool deliverTouch(const UITouch& touch);

    /// For ports: what a mouse's pointer looks like at a point of the window, by the frontmost view there and
    /// then those that hold it.
    [[nodiscard]] UIPointerStyle pointerStyleAt(CGPoint location);

 private:
    struct Listener {
        std::weak_ptr<UIGestureRecognizer> recognizer;
        std::size_t level;  ///< 0 for the touched view, 1 for its superview, and so on.
    };
    struct TouchInProgress {
        std::weak_ptr<UIView> view;
        std::vector<Listener> listeners;  ///< Innermost first.
        bool isTaken = false;             ///< By a view that is not a map surface.
    };
    [[nodiscard]] static TouchInProgress beginTouch(const std::shared_ptr<UIView>& view);
    void cancelTouch(UITouch touch);
    void deliver(const UITouch& touch, const TouchInProgress& progress);
    void silenceBeyond(std::size_t level, const UITouch& touch, const std::vector<Listener>& listeners);

    std::map<int, TouchInProgress> touches_;
};

/// Facts about the screen.
class UIScreen {
 public:
    /// Pixels a point of the main screen, above 0.
    [[nodiscard]] static double scale();
};

}  // namespace pelta
