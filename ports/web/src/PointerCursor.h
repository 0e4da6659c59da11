#pragma once

#include <pelta/Platform/UIWindow.h>

#include "JsFunction.h"

namespace pelta {

/// Shows what the views want a mouse's pointer to look like while no button is pressed. A finger has none.
class PointerCursor {
 public:
    /// Both outlive this object.
    PointerCursor(const emscripten::val& root, UIWindow& window);

 private:
    void pointerDidMove(const emscripten::val& event);
    /// Gives an element, or none, the hand, and takes it from the one that had it.
    void showHand(const emscripten::val& element);

    emscripten::val root_;
    UIWindow& window_;
    emscripten::val handElement_ = emscripten::val::null();
    EventListener moveListener_;
};

}  // namespace pelta
