#pragma once

#include <emscripten/bind.h>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <pelta/Pelta.h>

#include "EngineRecorder.h"

namespace pelta::browser {

/// The maps of the page with what they show, by number in the order of their making.
class Stage {
 public:
    struct Map {
        std::shared_ptr<PgmMapView> view;
        std::shared_ptr<EngineRecorder> recorder;
    };

    [[nodiscard]] static Stage& shared();

    void setWindow(UIWindow& window) { window_ = &window; }
    [[nodiscard]] UIWindow& window() { return *window_; }

    /// Opens a map over a part of the window. `style` is a document, or the address of one.
    int openMap(CGRect frame, const std::string& style);
    void closeMap(int index);
    [[nodiscard]] Map& map(int index) { return maps_.at(static_cast<std::size_t>(index)); }

    int addShape(std::shared_ptr<PgmShape> shape);
    /// The number of the shape with a shape index of the library's; -1 for none.
    [[nodiscard]] int numberOfShape(std::uint64_t shapeIndex) const;
    [[nodiscard]] PgmShape& shape(int index) { return *shapes_.at(static_cast<std::size_t>(index)); }

 private:
    UIWindow* window_ = nullptr;
    std::vector<Map> maps_;
    std::vector<std::shared_ptr<PgmShape>> shapes_;
};

/// Has a map, or a map's options, load a style: a document, or the address of one.
template <class Target>
void setStyle(Target& target, const std::string& style) {
    if (style.rfind('{', 0) == 0) {
        target.setStyleJSON(style);
    } else {
        target.setStyleURL(style);
    }
}

/// Offers a function to the page.
template <class Function>
void command(const char* name, Function function) {
    if constexpr (std::is_pointer_v<Function>) {
        emscripten::function(name, function);
    } else {
        emscripten::function(name, emscripten::optional_override(function));
    }
}

}  // namespace pelta::browser
