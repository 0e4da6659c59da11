#pragma once

#include <memory>
#include <string>

#include <pelta/Engine/MLNShape.h>

namespace pelta {

class MLNStyle;

/// A named set of features that layers draw. A model: replacing its shape marks it and asks for a frame. Main
/// thread only.
class MLNShapeSource {
 public:
    /// @param identifier  unique within a style.
    /// @param shape       a feature, a collection of features, or null for nothing.
    explicit MLNShapeSource(std::string identifier, std::shared_ptr<const MLNShape> shape = nullptr)
        : identifier_(std::move(identifier)), shape_(std::move(shape)) {}
    MLNShapeSource(const MLNShapeSource&) = delete;
    MLNShapeSource& operator=(const MLNShapeSource&) = delete;

    /// Unique within a style.
    [[nodiscard]] const std::string& identifier() const noexcept { return identifier_; }
    /// What the source holds; null when it is empty.
    [[nodiscard]] const std::shared_ptr<const MLNShape>& shape() const noexcept { return shape_; }
    /// Replaces the contents. What the shape refers to must not be changed afterwards without another call.
    void setShape(std::shared_ptr<const MLNShape> shape);

 private:
    friend class MLNStyle;

    std::string identifier_;
    std::shared_ptr<const MLNShape> shape_;
    MLNStyle* style_ = nullptr;
};

}  // namespace pelta
