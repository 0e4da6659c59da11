#include "PointerCursor.h"

#include <string>

using emscripten::val;

namespace pelta {

PointerCursor::PointerCursor(const val& root, UIWindow& window)
    : root_(root),
      window_(window),
      moveListener_(root, "pointermove", [this](const val& event) { pointerDidMove(event); }) {}

void PointerCursor::pointerDidMove(const val& event) {
    if (event["pointerType"].as<std::string>() == "touch" || event["buttons"].as<int>() != 0) {
        showHand(val::null());
        return;
    }
    const val place = root_.call<val>("getBoundingClientRect");
    const CGPoint location{event["clientX"].as<double>() - place["left"].as<double>(),
                           event["clientY"].as<double>() - place["top"].as<double>()};
    const bool isHand = window_.pointerStyleAt(location) == UIPointerStyle::hand;
    showHand(isHand ? event["target"] : val::null());
}

void PointerCursor::showHand(const val& element) {
    // The element under the pointer itself: the engine gives those of its map a cursor of their own.
    if (!handElement_.isNull() && !handElement_.strictlyEquals(element)) {
        handElement_["style"].set("cursor", std::string());
    }
    if (!element.isNull()) {
        element["style"].set("cursor", std::string("pointer"));
    }
    handElement_ = element;
}

}  // namespace pelta
