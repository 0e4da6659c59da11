#include <emscripten/val.h>
#include <string>

#include <pelta/Platform/Application.h>

#include "WebPort.h"

using emscripten::val;

namespace pelta {

int runApplication(const std::function<void(UIWindow&)>& launch) {
    const val document = val::global("document");
    const val element = document.call<val>("getElementById", std::string("pelta"));
    launch(WebPort::shared().openWindow(element.isNull() ? document["body"] : element));
    return 0;
}

}  // namespace pelta
