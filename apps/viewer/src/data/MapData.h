#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <pelta/Platform/CoreLocation.h>
#include <pelta/Platform/UIColor.h>

namespace pelta::viewer {

/// How the shapes of one feature look. Colours, widths and opacities start as simplestyle has them.
struct ShapeStyle {
    std::string title;
    std::optional<UIColor> markerColor;  ///< None: the library's own marker.
    std::optional<double> radius;        ///< Metres; given, points become circles.
    UIColor stroke{0x55 / 255.0, 0x55 / 255.0, 0x55 / 255.0, 1};
    double strokeWidth = 2;    ///< Points.
    double strokeOpacity = 1;  ///< 0 to 1.
    UIColor fill{0x55 / 255.0, 0x55 / 255.0, 0x55 / 255.0, 1};
    double fillOpacity = 0.6;  ///< 0 to 1.
    std::int64_t zIndex = 0;
    std::optional<double> visibleMinZoom;  ///< None: the library's default.
    std::optional<double> visibleMaxZoom;
};

enum class ShapeKind : std::uint8_t { marker, circle, line, area };

/// One shape to draw. Its coordinates and style lie in the arrays of `MapData`.
struct DataShape {
    ShapeKind kind = ShapeKind::marker;
    std::size_t style = 0;
    std::size_t firstCoordinate = 0;
    std::size_t coordinateCount = 0;  ///< 1 for markers and circles, at least 2 for lines, 3 for areas.
};

/// What a document holds that can be drawn, and what was wrong with the rest.
struct MapData {
    /// Messages of one kind beyond this many are only counted.
    static constexpr std::size_t listedMessages = 100;

    std::string name;  ///< Of the document, as messages give it.
    std::vector<CLLocationCoordinate2D> coordinates;
    std::vector<ShapeStyle> styles;
    std::vector<DataShape> shapes;
    std::size_t featureCount = 0;       ///< Features that are drawn.
    std::size_t nowhereCount = 0;       ///< Features whose geometry is null: valid, with nothing to draw.
    std::vector<std::string> problems;  ///< What is wrong in the document: name, feature, reason.
    std::size_t problemCount = 0;       ///< Listed or not.
    std::vector<std::string> leftOuts;  ///< What is right but cannot be drawn, in the same form.
    std::size_t leftOutCount = 0;

    [[nodiscard]] std::span<const CLLocationCoordinate2D> coordinatesOf(const DataShape& shape) const {
        return std::span(coordinates).subspan(shape.firstCoordinate, shape.coordinateCount);
    }

    /// Notes a problem, of the feature with an index (from 0) or of the whole document.
    void addProblem(std::optional<std::size_t> feature, const std::string& reason);
    void addLeftOut(std::size_t feature, const std::string& reason);

 private:
    [[nodiscard]] std::string message(std::optional<std::size_t> feature, const std::string& reason) const;
};

}  // namespace pelta::viewer
