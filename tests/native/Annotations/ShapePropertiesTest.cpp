#include <functional>
#include <iomanip>
#include <map>
#include <sstream>
#include <type_traits>

#include "CaseFile.h"
#include "View/MapFixture.h"

namespace pelta {
namespace {

/// What a shape's layers and feature say, by the names that style documents use. Layers after the first
/// append their number to the names that all layers have.
using Drawn = std::map<std::string, std::string>;

template <class T>
std::string textOf(const T& value) {
    std::ostringstream text;
    text << std::setprecision(9) << std::boolalpha;
    if constexpr (std::is_same_v<T, CGVector>) {
        text << value.dx << ' ' << value.dy;
    } else if constexpr (std::is_same_v<T, CLLocationCoordinate2D>) {
        text << value.latitude << ' ' << value.longitude;
    } else if constexpr (std::is_same_v<T, UIColor>) {
        text << value.red << ' ' << value.green << ' ' << value.blue << ' ' << value.alpha;
    } else if constexpr (requires { text << value; }) {
        text << value;
    } else {
        for (const auto& each : value) {
            text << (&each == &value.front() ? "" : ", ") << textOf(each);
        }
    }
    return text.str();
}

void addFeature(Drawn& drawn, const MLNShape* feature) {
    if (const auto* point = dynamic_cast<const MLNPointFeature*>(feature)) {
        drawn["geometry"] = textOf(point->coordinate());
    } else if (const auto* line = dynamic_cast<const MLNPolylineFeature*>(feature)) {
        drawn["geometry"] = textOf(line->coordinates());
    } else if (const auto* all = dynamic_cast<const MLNShapeCollectionFeature*>(feature)) {
        addFeature(drawn, all->shapes().back().get());
    }
}

template <class Layer>
void addProperties(Drawn& drawn, const MLNStyleLayer& layer) {
    if (const auto* kind = dynamic_cast<const Layer*>(&layer)) {
        kind->visitProperties([&](unsigned, MLNPropertyGroup, std::string_view name, const auto& value) {
            if (value) {
                drawn[std::string(name)] = value->isConstant()
                                               ? textOf(value->constant())
                                               : "each its " + std::string(value->attribute());
            }
        });
    }
}

Drawn drawnOf(const PgmShape& shape) {
    Drawn drawn;
    std::string suffix;
    for (const auto& layer : shape.styleLayers()) {
        addProperties<MLNSymbolStyleLayer>(drawn, *layer);
        addProperties<MLNLineStyleLayer>(drawn, *layer);
        addProperties<MLNFillStyleLayer>(drawn, *layer);
        drawn["minzoom" + suffix] = textOf(static_cast<double>(layer->minimumZoomLevel()));
        drawn["maxzoom" + suffix] = textOf(static_cast<double>(layer->maximumZoomLevel()));
        drawn["visible" + suffix] = textOf(layer->isVisible());
        drawn["filter" + suffix] = layer->predicate().attribute + " = " + layer->predicate().value;
        suffix = "+";
    }
    addFeature(drawn, shape.feature().get());
    return drawn;
}

/// Setting a property, and all that it changes of what is drawn. "*" stands for any other value than before.
struct Case {
    const char* name;
    std::function<void(PgmShape&)> set;
    Drawn changes;
};

template <class Shape, class Value>
Case row(const char* name, void (Shape::*set)(Value), const std::type_identity_t<std::decay_t<Value>>& value,
         Drawn changes) {
    return {name, [=](PgmShape& shape) { (dynamic_cast<Shape&>(shape).*set)(value); }, std::move(changes)};
}

/// What every shape has in common; `layers` is how many layers draw it.
std::vector<Case> commonCases(std::size_t layers) {
    const auto inEachLayer = [layers](const std::string& name, const std::string& value) {
        return layers > 1 ? Drawn{{name, value}, {name + "+", value}} : Drawn{{name, value}};
    };
    // Inclusive for the shape, exclusive for its layers.
    const std::string pastNine = textOf(static_cast<double>(9.001F));
    using S = PgmShape;
    return {row("lowest zoom", &S::setVisibleMinZoom, 5.5, inEachLayer("minzoom", "5.5")),
            row("highest zoom", &S::setVisibleMaxZoom, 9, inEachLayer("maxzoom", pastNine)),
            row("hidden", &S::setIsVisible, false, inEachLayer("visible", "false")),
            row("identifier", &S::setIdentifier, "own", inEachLayer("filter", "identifier = own"))};
}

class ShapePropertiesTest : public MapFixture {
 protected:
    /// @param make    a shape that is on no map yet.
    /// @param kind    what new-shapes.txt calls its kind.
    void check(const std::string& kind, const std::function<std::shared_ptr<PgmShape>()>& make,
               std::vector<Case> cases) {
        const auto map = makeLoadedMap();
        const auto plain = make();
        plain->setMapView(map);
        for (auto& common : commonCases(plain->styleLayers().size())) {
            cases.push_back(std::move(common));
        }
        const auto defaults = drawnOf(*plain);
        for (const auto& [name, properties] : casesOf("Annotations/new-shapes.txt")) {
            for (const auto& property : name == kind ? properties : std::vector<std::string>()) {
                const auto middle = property.find(" = ");
                EXPECT_EQ(valueIn(defaults, property.substr(0, middle)), property.substr(middle + 3))
                    << property;
            }
        }
        for (const auto& testCase : cases) {
            SCOPED_TRACE(testCase.name);
            const auto earlier = make();
            testCase.set(*earlier);
            earlier->setMapView(map);
            expectChanges(drawnOf(*earlier), defaults, *earlier, testCase.changes);
            const auto later = make();
            later->setMapView(map);
            port.runFrame();
            testCase.set(*later);
            expectChanges(drawnOf(*later), defaults, *later, testCase.changes);
        }
    }

 private:
    static std::string valueIn(const Drawn& drawn, const std::string& name) {
        const auto found = drawn.find(name);
        return found == drawn.end() ? "unset" : found->second;
    }

    static void expectChanges(const Drawn& drawn, const Drawn& defaults, const PgmShape& shape,
                              const Drawn& changes) {
        for (const auto& [name, value] : drawn) {
            const auto change = changes.find(name);
            if (change == changes.end()) {
                const bool isFilter = name.starts_with("filter");
                EXPECT_EQ(value, isFilter ? "identifier = " + shape.identifier() : valueIn(defaults, name))
                    << name;
            } else if (change->second == "*") {
                EXPECT_NE(value, valueIn(defaults, name)) << name;
            } else {
                EXPECT_EQ(value, change->second) << name;
            }
        }
        for (const auto& change : changes) {
            EXPECT_TRUE(drawn.contains(change.first)) << change.first;
        }
    }
};

using Coordinates = std::vector<CLLocationCoordinate2D>;

constexpr UIColor teal{0, 0.5, 0.5, 0.25};
const char* const tealText = "0 0.5 0.5 0.25";

TEST_F(ShapePropertiesTest, Marker) {
    using M = PgmMarker;
    const auto blue = PgmImage::markerImageBlue();
    EXPECT_EQ(PgmMarker::create()->iconImage(), PgmImage::markerImageRed());
    check("marker", PgmMarker::create,
          {row("icon", &M::setIconImage, blue, {{"icon-image", blue->reuseIdentifier()}}),
           row("icon scale", &M::setIconScale, 2, {{"icon-size", "2"}}),
           row("title", &M::setTitle, "Seoul", {{"text-field", "Seoul"}}),
           row("title color", &M::setTitleColor, teal, {{"text-color", tealText}}),
           row("halo color", &M::setTitleHaloColor, teal, {{"text-halo-color", tealText}}),
           row("title size", &M::setTitleSize, 24, {{"text-size", "24"}, {"text-offset", "*"}}),
           row("title width", &M::setTitleMaxWidth, 60, {{"text-max-width", "5"}}),
           row("title margin", &M::setTitleMargin, 12, {{"text-offset", "*"}}),
           row("icons give way", &M::setIsAllowOverlapMarkers, false, {{"icon-allow-overlap", "false"}}),
           row("titles give way", &M::setIsAllowOverlapTitle, false, {{"text-allow-overlap", "false"}}),
           {"overlap of symbols loses",
            [](PgmShape& shape) {
                dynamic_cast<M&>(shape).setIsAllowOverlapMarkers(false);
                dynamic_cast<M&>(shape).setIsAllowOverlapSymbols(true);
            },
            {{"icon-allow-overlap", "false"}}},
           row("flat icon", &M::setIsIconFlat, true,
               {{"icon-pitch-alignment", "map"}, {"icon-rotation-alignment", "map"}}),
           row("flat title", &M::setIsTitleFlat, true, {{"text-pitch-alignment", "map"}}),
           {"waiting properties, taken along",
            [](PgmShape& shape) {
                auto& marker = dynamic_cast<M&>(shape);
                const Drawn before = drawnOf(marker);
                marker.setAlpha(0.25);
                marker.setAngle(90);
                marker.setAnchor({0, 0});
                EXPECT_EQ(drawnOf(marker), before);
                marker.setTitle("redrawn");
            },
            {{"icon-opacity", "0.25"},
             {"text-opacity", "0.25"},
             {"icon-rotate", "90"},
             {"icon-offset", "*"},
             {"text-offset", "*"},
             {"text-field", "redrawn"}}},
           row("position", &M::setPosition, {1, 2}, {{"geometry", "1 2"}})});
}

TEST_F(ShapePropertiesTest, Polyline) {
    using L = PgmPolyline;
    const Coordinates two{{1, 2}, {3, 4}};
    check("polyline", [&] { return PgmPolyline::create(two); },
          {row("width", &L::setWidth, 7, {{"line-width", "7"}}),
           row("color", &L::setColor, teal, {{"line-color", tealText}}),
           row("round cap", &L::setCapType, PgmLineCap::round, {{"line-cap", "round"}}),
           row("square cap", &L::setCapType, PgmLineCap::square, {{"line-cap", "square"}}),
           row("round join", &L::setJoinType, PgmLineJoin::round, {{"line-join", "round"}}),
           row("bevel join", &L::setJoinType, PgmLineJoin::bevel, {{"line-join", "bevel"}}),
           row("pattern", &L::setPattern, {4, 2}, {{"line-dasharray", "4, 2"}}),
           row("coordinates", &L::setCoords, {{5, 6}, {7, 8}}, {{"geometry", "5 6, 7 8"}})});
}

/// What areas of both kinds have in common, and one case more.
std::vector<Case> areaCases(Case more) {
    using A = PgmAreaShape;
    return {row("fill", &A::setFillColor, teal, {{"fill-color", tealText}}),
            row("stroke width", &A::setStrokeWidth, 3, {{"line-width", "3"}}),
            row("stroke color", &A::setStrokeColor, teal, {{"line-color", tealText}}), std::move(more)};
}

TEST_F(ShapePropertiesTest, Areas) {
    const Coordinates three{{1, 2}, {3, 4}, {5, 6}};
    check(
        "polygon", [&] { return PgmPolygon::create(three); },
        areaCases(row("coordinates", &PgmPolygon::setCoords, {{5, 6}, {7, 8}, {9, 1}},
                      {{"geometry", "5 6, 7 8, 9 1"}})));
    const auto makeCircle = [] { return PgmCircle::create(CLLocationCoordinate2D{1, 2}, 50, teal); };
    check("circle", makeCircle, areaCases(row("radius", &PgmCircle::setRadius, 5000, {{"geometry", "*"}})));
    void (PgmCircle::*setCenter)(CLLocationCoordinate2D) = &PgmCircle::setCenter;
    check("circle", makeCircle, {row("center", setCenter, {3, 4}, {{"geometry", "*"}})});
}

TEST_F(ShapePropertiesTest, InfoWindow) {
    void (PgmInfoWindow::*setPosition)(CLLocationCoordinate2D) = &PgmInfoWindow::setPosition;
    const auto makeWindow = [&] {
        auto window = PgmInfoWindow::create();
        ((*window).*setPosition)({1, 2});
        return window;
    };
    check("info window", makeWindow,
          {row("alpha", &PgmInfoWindow::setAlpha, 0.5, {{"icon-opacity", "0.5"}}),
           row("position", setPosition, {3, 4}, {{"geometry", "3 4"}})});
}

}  // namespace
}  // namespace pelta
