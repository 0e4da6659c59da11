#include "WebWindow.h"

#include <cstdlib>
#include <string>

#include <pelta/Platform/Frames.h>
#include <pelta/Platform/Make.h>

using emscripten::val;

namespace pelta {

namespace {

/// The element that holds the views. Its padding mirrors the safe area of the device, for reading back.
val makeRoot(const val& host) {
    const val document = val::global("document");
    val root = document.call<val>("createElement", std::string("div"));
    const bool isWholePage = host.strictlyEquals(document["body"]);
    const std::string place = isWholePage ? "fixed" : "absolute";
    if (!isWholePage && val::global("getComputedStyle")(host)["position"].as<std::string>() == "static") {
        host["style"].set("position", std::string("relative"));
    }
    root["style"].set("cssText", "position:" + place +
                                     ";inset:0;overflow:hidden;touch-action:none;box-sizing:border-box;"
                                     "user-select:none;-webkit-user-select:none;"
                                     "-webkit-touch-callout:none;-webkit-tap-highlight-color:transparent;"
                                     "padding:env(safe-area-inset-top) env(safe-area-inset-right) "
                                     "env(safe-area-inset-bottom) env(safe-area-inset-left)");
    host.call<void>("appendChild", root);
    return root;
}

double padding(const val& style, const char* edge) {
    return std::strtod(style[edge].as<std::string>().c_str(), nullptr);
}

}  // namespace

WebWindow::WebWindow(const val& host)
    : root_(makeRoot(host)),
      window_(make<UIWindow>(CGRect{})),
      presenter_(root_, *window_),
      pointerInput_(root_, *window_),
      pointerCursor_(root_, *window_),
      didResize_(JsFunction::listener([this](const val&) { updateGeometry(); })),
      resizeObserver_(val::global("ResizeObserver").new_(didResize_.value())) {
    updateGeometry();
    resizeObserver_.call<void>("observe", root_);
}

WebWindow::~WebWindow() {
    resizeObserver_.call<void>("disconnect");
    root_.call<void>("remove");
}

void WebWindow::updateGeometry() {
    window_->setFrame({{}, {root_["clientWidth"].as<double>(), root_["clientHeight"].as<double>()}});
    const val style = val::global("getComputedStyle")(root_);
    window_->setSafeAreaInsets({padding(style, "paddingTop"), padding(style, "paddingLeft"),
                                padding(style, "paddingBottom"), padding(style, "paddingRight")});
}

void WebWindow::present() {
    window_->layoutIfNeeded();
    presenter_.present();
}

void WebWindow::screenScaleDidChange() {
    presenter_.redrawContent();
    FrameLoop::request();
}

}  // namespace pelta
