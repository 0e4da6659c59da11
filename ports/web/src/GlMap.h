#pragma once

#include <cstdint>
#include <emscripten/val.h>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <pelta/Engine/MLNTypes.h>
#include <pelta/Platform/UIGraphics.h>

#include "EngineHit.h"

namespace pelta {

/// The browser's map engine, MapLibre GL JS, as the renderer uses it: one of its maps.
class GlMap {
 public:
    /// A map in an element of the page, over (0, 0), with an empty style.
    ///
    /// @param constrain  GL JS's `transformConstrain`: answers the nearest centre and zoom that are allowed.
    GlMap(const emscripten::val& element, double screenScale, const emscripten::val& constrain);

    [[nodiscard]] const emscripten::val& value() const noexcept { return map_; }
    void on(const char* event, const emscripten::val& listener) const;
    [[nodiscard]] bool isMoving() const;

    void jumpTo(const CameraState& camera, UIEdgeInsets inset) const;
    /// The camera as it is drawn, longitude and bearing in their ranges.
    [[nodiscard]] CameraState camera() const;
    [[nodiscard]] CGPoint project(CLLocationCoordinate2D coordinate) const;
    [[nodiscard]] CLLocationCoordinate2D unproject(CGPoint point) const;

    /// Shows a document that has no fault, at the engine's next frame.
    void setStyle(const emscripten::val& document) const;
    /// Runs calls that a `StyleCompiler` has put together.
    void run(const std::string& calls) const;

    /// Everything drawn in a rectangle, of layers that the map has, topmost layer first.
    [[nodiscard]] std::vector<EngineHit> query(CGRect rect, const std::vector<std::string>& layers) const;

    /// Why the engine cannot draw a style document; nothing when it can.
    [[nodiscard]] static std::optional<std::string> faultOf(const emscripten::val& document);

 private:
    emscripten::val map_;
};

}  // namespace pelta
