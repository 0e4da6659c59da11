#pragma once

#include <memory>
#include <string>
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

    /// Whether a style is a document, and not the address of one.
    [[nodiscard]] static bool isDocument(const std::string& style);
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

}  // namespace pelta::browser
