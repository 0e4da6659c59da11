#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <pelta/Platform/CALayer.h>

#include "Element.h"

namespace pelta {

/// The browser's query for whether the person has asked for as little motion as possible.
[[nodiscard]] emscripten::val reducedMotionQuery();
[[nodiscard]] bool prefersReducedMotion();

/// Shows one `CALayer` with its sublayers and animations as elements of the page.
class LayerNode {
 public:
    explicit LayerNode(std::shared_ptr<CALayer> layer) : layer_(std::move(layer)) {}

    /// Shows the layer by its own place and look.
    void show();
    /// Shows a view's own layer: sublayers and animations in the rectangle of the view.
    void showInView();

    [[nodiscard]] const CALayer& layer() const noexcept { return *layer_; }
    [[nodiscard]] const emscripten::val& element() const noexcept { return box_.value(); }

 private:
    struct ShownAnimation {
        CAAnimationGroup group;
        std::vector<emscripten::val> players;
        bool isMotionReduced;  ///< What the person preferred when it was started.
    };

    static void holdStill(ShownAnimation& shown);
    void showSublayers();
    void showAnimations();
    [[nodiscard]] std::vector<emscripten::val> play(const CAAnimationGroup& group) const;

    std::shared_ptr<CALayer> layer_;
    Element box_;
    /// Holds the sublayers, so that the transform of all of them is one.
    Element inside_;
    std::vector<std::unique_ptr<LayerNode>> sublayers_;
    std::vector<emscripten::val> shownOrder_;
    std::map<std::string, ShownAnimation> animations_;
};

}  // namespace pelta
