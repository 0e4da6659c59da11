#pragma once

#include <vector>

#include <pelta/Platform/UIWindow.h>

#include "JsFunction.h"

namespace pelta {

/// Hands the pointer events over a window's element to the window as touches.
///
/// The map's own gestures come from the same events: the browser hands them to the frontmost element, and as
/// the elements lie as the views do, a view over the map keeps them from it.
class PointerInput {
 public:
    /// Both outlive this object.
    PointerInput(emscripten::val root, UIWindow& window);

 private:
    void deliver(const emscripten::val& event, UITouchPhase phase);

    emscripten::val root_;
    UIWindow& window_;
    std::vector<int> pressed_;  ///< Pointers that are down.
    std::vector<EventListener> listeners_;
};

}  // namespace pelta
