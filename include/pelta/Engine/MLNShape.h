#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include <pelta/Platform/CoreLocation.h>

/// @file
/// Geometry with attributes, as sources hold it and feature queries return it.

namespace pelta {

/// Value of a feature attribute.
using MLNAttributeValue =
    std::variant<bool, std::int64_t, std::uint64_t, double, std::string, std::vector<double>>;

/// Attributes of a feature. Few, so a flat list: look-up is linear.
class MLNAttributes {
 public:
    /// Sets a value, replacing one of the same name.
    void set(std::string_view name, MLNAttributeValue value);
    /// The value, or null when there is none. Valid until the next `set`.
    [[nodiscard]] const MLNAttributeValue* find(std::string_view name) const noexcept;
    /// Names and values, in the order of their first setting.
    [[nodiscard]] const std::vector<std::pair<std::string, MLNAttributeValue>>& entries() const noexcept {
        return entries_;
    }

 private:
    std::vector<std::pair<std::string, MLNAttributeValue>> entries_;
};

/// Kind of a shape, for a switch without casts.
enum class MLNShapeKind : unsigned { point, polyline, polygon, collection };

/// Geometry that a source can hold. Every shape is also a feature: it carries attributes.
class MLNShape {
 public:
    virtual ~MLNShape() = default;
    /// What the shape is; fixed for its class.
    [[nodiscard]] virtual MLNShapeKind kind() const noexcept = 0;

    /// What expressions and predicates of layers read.
    [[nodiscard]] const MLNAttributes& attributes() const noexcept { return attributes_; }
    /// The same, to be changed.
    [[nodiscard]] MLNAttributes& attributes() noexcept {
        noteChange();
        return attributes_;
    }
    /// The attribute's value, or null.
    [[nodiscard]] const MLNAttributeValue* attribute(std::string_view name) const noexcept {
        return attributes_.find(name);
    }

    /// For ports: what of the shape there is to draw and to find.
    ///
    /// A point is a point. A line needs two different places on the map, an area three that are not on one
    /// line and a ring that is more than a way there and back; an area without an inside is drawn as what is
    /// left of it, the line of its closed ring. Nothing where a coordinate is not finite, one of a hole
    /// included, where all are one place, and for collections, whose members are drawn.
    [[nodiscard]] virtual std::optional<MLNShapeKind> drawnKind() const noexcept = 0;

    /// For ports: a number that no other shape and no other state of this shape has had.
    [[nodiscard]] std::uint64_t revision() const noexcept { return revision_; }

 protected:
    /// Gives the shape a new revision.
    void noteChange() noexcept { revision_ = nextRevision(); }

 private:
    [[nodiscard]] static std::uint64_t nextRevision() noexcept;

    MLNAttributes attributes_;
    std::uint64_t revision_ = nextRevision();
};

/// A shape in its role as a feature.
using MLNFeature = MLNShape;

/// A point.
class MLNPointFeature final : public MLNShape {
 public:
    /// A point at (0, 0).
    [[nodiscard]] static std::shared_ptr<MLNPointFeature> create() {
        return std::make_shared<MLNPointFeature>();
    }
    [[nodiscard]] MLNShapeKind kind() const noexcept override { return MLNShapeKind::point; }
    [[nodiscard]] std::optional<MLNShapeKind> drawnKind() const noexcept override;

    /// Where it is, degrees.
    [[nodiscard]] CLLocationCoordinate2D coordinate() const noexcept { return coordinate_; }
    void setCoordinate(CLLocationCoordinate2D coordinate) noexcept {
        coordinate_ = coordinate;
        noteChange();
    }

 private:
    CLLocationCoordinate2D coordinate_;
};

/// A line through coordinates, which stay as they are.
class MLNPolylineFeature final : public MLNShape {
 public:
    /// A line through coordinates, degrees.
    [[nodiscard]] static std::shared_ptr<MLNPolylineFeature> polylineWithCoordinates(
        std::vector<CLLocationCoordinate2D> coordinates);
    [[nodiscard]] MLNShapeKind kind() const noexcept override { return MLNShapeKind::polyline; }
    [[nodiscard]] std::optional<MLNShapeKind> drawnKind() const noexcept override { return drawnKind_; }
    /// The line's coordinates, degrees.
    [[nodiscard]] const std::vector<CLLocationCoordinate2D>& coordinates() const noexcept {
        return coordinates_;
    }

 private:
    std::vector<CLLocationCoordinate2D> coordinates_;
    std::optional<MLNShapeKind> drawnKind_;
};

/// An area within one ring but for its holes. Rings stay as they are, and close themselves when their ends
/// differ. Where rings overlap, what lies within an odd number of them is inside.
class MLNPolygonFeature final : public MLNShape {
 public:
    /// Coordinates in degrees.
    using Ring = std::vector<CLLocationCoordinate2D>;

    /// @param coordinates  the outer ring.
    /// @param holes        rings of what is left out; those without three different places are dropped.
    [[nodiscard]] static std::shared_ptr<MLNPolygonFeature> polygonWithCoordinates(
        Ring coordinates, std::vector<Ring> holes = {});
    [[nodiscard]] MLNShapeKind kind() const noexcept override { return MLNShapeKind::polygon; }
    [[nodiscard]] std::optional<MLNShapeKind> drawnKind() const noexcept override { return drawnKind_; }
    /// The outer ring.
    [[nodiscard]] const Ring& coordinates() const noexcept { return coordinates_; }
    /// The rings of the holes, each with three different places.
    [[nodiscard]] const std::vector<Ring>& holes() const noexcept { return holes_; }

 private:
    Ring coordinates_;
    std::vector<Ring> holes_;
    std::optional<MLNShapeKind> drawnKind_;
};

/// Several shapes. Collections within collections are drawn one level deep only.
class MLNShapeCollectionFeature final : public MLNShape {
 public:
    /// Several shapes as one.
    [[nodiscard]] static std::shared_ptr<MLNShapeCollectionFeature> shapeCollectionWithShapes(
        std::vector<std::shared_ptr<MLNShape>> shapes) {
        auto shape = std::make_shared<MLNShapeCollectionFeature>();
        shape->shapes_ = std::move(shapes);
        return shape;
    }
    [[nodiscard]] MLNShapeKind kind() const noexcept override { return MLNShapeKind::collection; }
    [[nodiscard]] std::optional<MLNShapeKind> drawnKind() const noexcept override { return std::nullopt; }
    /// What it holds, in drawing order.
    [[nodiscard]] const std::vector<std::shared_ptr<MLNShape>>& shapes() const noexcept { return shapes_; }

 private:
    std::vector<std::shared_ptr<MLNShape>> shapes_;
};

}  // namespace pelta
