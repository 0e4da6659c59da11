#pragma once

#include <memory>
#include <vector>

#include <pelta/Platform/UIWindow.h>

#include "JsFunction.h"
#include "PointerCursor.h"
#include "PointerInput.h"
#include "ViewPresenter.h"

namespace pelta {

/// One window of the application: a `UIWindow` and the part of the page that shows it.
class WebWindow {
 public:
    /// A window that fills an element of the page, whatever size that takes.
    explicit WebWindow(const emscripten::val& host);
    ~WebWindow();
    WebWindow(const WebWindow&) = delete;
    WebWindow& operator=(const WebWindow&) = delete;

    [[nodiscard]] UIWindow& window() noexcept { return *window_; }
    /// Shows the view tree as it stands.
    void present();
    /// The screen has another number of pixels a point.
    void screenScaleDidChange();

 private:
    void updateGeometry();

    emscripten::val root_;
    std::shared_ptr<UIWindow> window_;
    ViewPresenter presenter_;
    PointerInput pointerInput_;
    PointerCursor pointerCursor_;
    JsFunction didResize_;
    emscripten::val resizeObserver_;
};

}  // namespace pelta
