#include "PointerInput.h"

#include <algorithm>
#include <string>
#include <utility>

using emscripten::val;

namespace pelta {

PointerInput::PointerInput(val root, UIWindow& window) : root_(std::move(root)), window_(window) {
    val capture = val::object();
    capture.set("capture", true);
    const auto listen = [&](const val& target, const char* type, UITouchPhase phase) {
        listeners_.emplace_back(
            target, type, [this, phase](const val& event) { deliver(event, phase); }, capture);
    };
    // A press counts inside the window; where it goes from there, and ends, may be anywhere on the page.
    const val page = val::global("window");
    listen(root_, "pointerdown", UITouchPhase::began);
    listen(page, "pointermove", UITouchPhase::moved);
    listen(page, "pointerup", UITouchPhase::ended);
    listen(page, "pointercancel", UITouchPhase::cancelled);
}

void PointerInput::deliver(const val& event, UITouchPhase phase) {
    const int pointer = event["pointerId"].as<int>();
    const auto pressed = std::find(pressed_.begin(), pressed_.end(), pointer);
    if (phase == UITouchPhase::began) {
        const bool isMainButton = event["button"].as<int>() == 0;
        if (!isMainButton || pressed != pressed_.end()) {
            return;
        }
        pressed_.push_back(pointer);
    } else if (pressed == pressed_.end()) {
        return;
    } else if (phase != UITouchPhase::moved) {
        pressed_.erase(pressed);
    }
    const val place = root_.call<val>("getBoundingClientRect");
    window_.deliverTouch({pointer,
                          phase,
                          {event["clientX"].as<double>() - place["left"].as<double>(),
                           event["clientY"].as<double>() - place["top"].as<double>()},
                          event["timeStamp"].as<double>() / 1000});
}

}  // namespace pelta
