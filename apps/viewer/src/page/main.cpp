#include <emscripten/bind.h>
#include <emscripten/val.h>
#include <memory>
#include <string>

#include <pelta/Platform/Application.h>

#include "page/ViewerPage.h"

using emscripten::val;

namespace {

std::shared_ptr<pelta::viewer::ViewerPage> page;

void openDocument(const std::string& name, const std::string& bytes, bool isReplacing) {
    page->openDocument(name, bytes, isReplacing);
}

void showAll() {
    page->showAll();
}

void setSwitch(const std::string& name, double value) {
    page->setSwitch(name, value);
}

void hideBanner() {
    page->hideBanner();
}

}  // namespace

EMSCRIPTEN_BINDINGS(viewer) {
    emscripten::function("openDocument", &openDocument);
    emscripten::function("showAll", &showAll);
    emscripten::function("setSwitch", &setSwitch);
    emscripten::function("hideBanner", &hideBanner);
}

int main() {
    return pelta::runApplication([](pelta::UIWindow& window) {
        const auto query = val::global("location")["search"].as<std::string>();
        page = std::make_shared<pelta::viewer::ViewerPage>(query);
        page->open(window);
    });
}
