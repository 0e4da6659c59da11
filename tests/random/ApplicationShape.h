#pragma once

#include <functional>
#include <utility>

#include <pelta/Pelta.h>

namespace pelta::random {

/// What an application's own shapes do when the map asks them for something.
struct ShapeHooks {
    std::function<void()> onFeature;
    std::function<void()> onShapeImage;

    static void run(const std::function<void()>& hook) {
        // A hook may put another in its place.
        const auto held = hook;
        if (held) {
            held();
        }
    }
};

/// An application's subclass of a shape, which runs its hooks from within the map's work.
template <class Shape>
class ApplicationShape final : public Shape, public ShapeHooks {
 public:
    using Shape::Shape;

    [[nodiscard]] std::shared_ptr<MLNShape> feature() const override {
        run(onFeature);
        return Shape::feature();
    }
    [[nodiscard]] std::shared_ptr<PgmImage> shapeImage() const override {
        run(onShapeImage);
        return Shape::shapeImage();
    }
};

}  // namespace pelta::random
