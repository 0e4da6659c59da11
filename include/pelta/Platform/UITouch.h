#pragma once

#include <pelta/Platform/CoreGraphics.h>

namespace pelta {

/// Stage of one finger or pointer button on the screen.
enum class UITouchPhase : unsigned { began = 0, moved = 1, ended = 2, cancelled = 3 };

/// One pointer event as a port delivers it to `UIWindow::deliverTouch`.
struct UITouch {
    int identifier = 0;                        ///< Tells fingers apart between `began` and `ended`.
    UITouchPhase phase = UITouchPhase::began;  ///< What the finger did.
    CGPoint location;                          ///< Points in the window.
    double timestamp = 0;                      ///< When it was made, seconds on the port's clock.
};

}  // namespace pelta
