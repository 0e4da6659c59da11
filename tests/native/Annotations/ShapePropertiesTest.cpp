#include <functional>
#include <iomanip>
#include <map>
#include <sstream>

#include "View/MapFixture.h"

namespace pelta {
namespace {

/// What a shape's layers and feature say, by the names that style documents use. Layers after the first
/// append their number to the names that all layers have.
using Drawn = std::map<std::string, std::string>;

std::string textOf(bool value) {
    return value ? "true" : "false";
}
std::string textOf(const std::string& value) {
    return value;
}
std::string textOf(double value) {
    std::ostringstream text;
    text << std::setprecision(9) << value;
    return text.str();
}
std::string textOf(CGVector value) {
    return textOf(value.dx) + " " + textOf(value.dy);
}
std::string textOf(CLLocationCoordinate2D value) {
    return textOf(value.latitude) + " " + textOf(value.longitude);
}
std::string textOf(const UIColor& color) {
    return textOf(color.red) + " " + textOf(color.green) + " " + textOf(color.blue) + " " +
           textOf(color.alpha);
}
template <class T>
std::string textOf(const std::vector<T>& values) {
    std::string text;
    for (const auto& value : values) {
        text += (text.empty() ? "" : ", ") + textOf(value);
    }
    return text;
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

template <class Shape>
Case row(const char* name, void (*set)(Shape&), Drawn changes) {
    return {name, [set](PgmShape& shape) { set(dynamic_cast<Shape&>(shape)); }, std::move(changes)};
}

/// What every shape has in common; `layers` is how many layers draw it.
std::vector<Case> commonCases(std::size_t layers) {
    const auto inEachLayer = [layers](const std::string& name, const std::string& value) {
        return layers > 1 ? Drawn{{name, value}, {name + "+", value}} : Drawn{{name, value}};
    };
    // Inclusive for the shape, exclusive for its layers.
    const std::string pastNine = textOf(static_cast<double>(9.001F));
    using S = PgmShape;
    return {
        row<S>(
            "lowest zoom", [](S& s) { s.setVisibleMinZoom(5.5); }, inEachLayer("minzoom", "5.5")),
        row<S>(
            "highest zoom", [](S& s) { s.setVisibleMaxZoom(9); }, inEachLayer("maxzoom", pastNine)),
        row<S>(
            "hidden", [](S& s) { s.setIsVisible(false); }, inEachLayer("visible", "false")),
        row<S>(
            "identifier", [](S& s) { s.setIdentifier("own"); }, inEachLayer("filter", "identifier = own")),
    };
}

class ShapePropertiesTest : public MapFixture {
 protected:
    /// @param make    a shape that is on no map yet.
    /// @param unset   what the shape draws at first, at least.
    void check(const std::function<std::shared_ptr<PgmShape>()>& make, const Drawn& unset,
               std::vector<Case> cases) {
        const auto map = makeLoadedMap();
        const auto plain = make();
        plain->setMapView(map);
        for (auto& common : commonCases(plain->styleLayers().size())) {
            cases.push_back(std::move(common));
        }
        const auto defaults = drawnOf(*plain);
        for (const auto& [name, value] : unset) {
            EXPECT_EQ(valueIn(defaults, name), value) << name;
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

constexpr UIColor teal{0, 0.5, 0.5, 0.25};
const char* const tealText = "0 0.5 0.5 0.25";

TEST_F(ShapePropertiesTest, Marker) {
    using M = PgmMarker;
    const Drawn unset{{"text-field", ""},
                      {"text-font", "NotoSansRegular"},
                      {"text-size", "12"},
                      {"text-max-width", "0"},
                      {"text-anchor", "top"},
                      {"text-optional", "true"},
                      {"text-allow-overlap", "true"},
                      {"text-pitch-alignment", "viewport"},
                      {"text-color", textOf(UIColor::black())},
                      {"text-halo-color", textOf(UIColor::white())},
                      {"text-halo-width", "2"},
                      {"text-opacity", "1"},
                      {"icon-image", PgmImage::markerImageRed()->reuseIdentifier()},
                      {"icon-size", "1"},
                      {"icon-rotate", "0"},
                      {"icon-anchor", "center"},
                      {"icon-allow-overlap", "true"},
                      {"icon-ignore-placement", "unset"},
                      {"icon-pitch-alignment", "viewport"},
                      {"icon-rotation-alignment", "viewport"},
                      {"icon-opacity", "1"},
                      {"icon-halo-color", "1 1 1 0.5"},
                      {"icon-halo-width", "1"},
                      {"geometry", "0 0"}};
    check(
        PgmMarker::create, unset,
        {row<M>("icon", [](M& m) { m.setIconImage(PgmImage::markerImageGray()); },
                {{"icon-image", PgmImage::markerImageGray()->reuseIdentifier()}}),
         row<M>("icon scale", [](M& m) { m.setIconScale(2); }, {{"icon-size", "2"}}),
         row<M>("title", [](M& m) { m.setTitle("Seoul"); }, {{"text-field", "Seoul"}}),
         row<M>("title color", [](M& m) { m.setTitleColor(teal); }, {{"text-color", tealText}}),
         row<M>("halo color", [](M& m) { m.setTitleHaloColor(teal); }, {{"text-halo-color", tealText}}),
         row<M>("title size", [](M& m) { m.setTitleSize(24); }, {{"text-size", "24"}, {"text-offset", "*"}}),
         row<M>("title width", [](M& m) { m.setTitleMaxWidth(60); }, {{"text-max-width", "5"}}),
         row<M>("title margin", [](M& m) { m.setTitleMargin(12); }, {{"text-offset", "*"}}),
         row<M>("icons give way", [](M& m) { m.setIsAllowOverlapMarkers(false); },
                {{"icon-allow-overlap", "false"}}),
         row<M>("titles give way", [](M& m) { m.setIsAllowOverlapTitle(false); },
                {{"text-allow-overlap", "false"}}),
         row<M>("overlap of symbols loses",
                [](M& m) {
                    m.setIsAllowOverlapMarkers(false);
                    m.setIsAllowOverlapSymbols(true);
                },
                {{"icon-allow-overlap", "false"}}),
         row<M>("flat icon", [](M& m) { m.setIsIconFlat(true); },
                {{"icon-pitch-alignment", "map"}, {"icon-rotation-alignment", "map"}}),
         row<M>("flat title", [](M& m) { m.setIsTitleFlat(true); }, {{"text-pitch-alignment", "map"}}),
         row<M>("waiting properties, taken along",
                [](M& m) {
                    m.setAlpha(0.25);
                    m.setAngle(90);
                    m.setAnchor({0, 0});
                    m.setTitle("redrawn");
                },
                {{"icon-opacity", "0.25"},
                 {"text-opacity", "0.25"},
                 {"icon-rotate", "90"},
                 {"icon-offset", "*"},
                 {"text-offset", "*"},
                 {"text-field", "redrawn"}}),
         row<M>("position",
                [](M& m) {
                    m.setPosition({1, 2});
                },
                {{"geometry", "1 2"}})});
}

TEST_F(ShapePropertiesTest, Polyline) {
    using L = PgmPolyline;
    const Drawn unset{{"line-width", "2.5"},  {"line-color", textOf(UIColor::black())},
                      {"line-cap", "butt"},   {"line-join", "miter"},
                      {"line-dasharray", ""}, {"geometry", "1 2, 3 4"}};
    check(
        [] {
            return PgmPolyline::create({{1, 2}, {3, 4}});
        },
        unset,
        {row<L>("width", [](L& l) { l.setWidth(7); }, {{"line-width", "7"}}),
         row<L>("color", [](L& l) { l.setColor(teal); }, {{"line-color", tealText}}),
         row<L>("round cap", [](L& l) { l.setCapType(PgmLineCap::round); }, {{"line-cap", "round"}}),
         row<L>("square cap", [](L& l) { l.setCapType(PgmLineCap::square); }, {{"line-cap", "square"}}),
         row<L>("round join", [](L& l) { l.setJoinType(PgmLineJoin::round); }, {{"line-join", "round"}}),
         row<L>("bevel join", [](L& l) { l.setJoinType(PgmLineJoin::bevel); }, {{"line-join", "bevel"}}),
         row<L>("pattern",
                [](L& l) {
                    l.setPattern({4, 2});
                },
                {{"line-dasharray", "4, 2"}}),
         row<L>("coordinates",
                [](L& l) {
                    l.setCoords({{5, 6}, {7, 8}});
                },
                {{"geometry", "5 6, 7 8"}})});
}

/// What areas of both kinds have in common.
std::vector<Case> areaCases() {
    using A = PgmAreaShape;
    return {row<A>("fill", [](A& a) { a.setFillColor(teal); }, {{"fill-color", tealText}}),
            row<A>("stroke width", [](A& a) { a.setStrokeWidth(3); }, {{"line-width", "3"}}),
            row<A>("stroke color", [](A& a) { a.setStrokeColor(teal); }, {{"line-color", tealText}})};
}

TEST_F(ShapePropertiesTest, Polygon) {
    auto cases = areaCases();
    cases.push_back(row<PgmPolygon>("coordinates",
                                    [](PgmPolygon& p) {
                                        p.setCoords({{5, 6}, {7, 8}, {9, 1}});
                                    },
                                    {{"geometry", "5 6, 7 8, 9 1"}}));
    check(
        [] {
            return PgmPolygon::create({{1, 2}, {3, 4}, {5, 6}});
        },
        {{"fill-color", textOf(UIColor::white())},
         {"line-width", "0"},
         {"line-color", textOf(UIColor::black())},
         {"line-join", "round"},
         {"geometry", "1 2, 3 4, 5 6"}},
        std::move(cases));
}

TEST_F(ShapePropertiesTest, Circle) {
    auto cases = areaCases();
    cases.push_back(row<PgmCircle>("center",
                                   [](PgmCircle& c) {
                                       c.setCenter(CLLocationCoordinate2D{3, 4});
                                   },
                                   {{"geometry", "*"}}));
    cases.push_back(row<PgmCircle>("radius", [](PgmCircle& c) { c.setRadius(5000); }, {{"geometry", "*"}}));
    check(
        [] {
            return PgmCircle::create({1, 2}, 50, teal);
        },
        {{"fill-color", tealText}, {"line-width", "0"}, {"line-join", "round"}}, std::move(cases));
}

TEST_F(ShapePropertiesTest, InfoWindow) {
    using W = PgmInfoWindow;
    check(
        [] {
            auto window = PgmInfoWindow::create();
            window->setPosition(CLLocationCoordinate2D{1, 2});
            return window;
        },
        {{"icon-image", "each its iconImageName"},
         {"icon-offset", "each its iconOffset"},
         {"icon-size", "1"},
         {"icon-opacity", "1"},
         {"icon-anchor", "bottom"},
         {"icon-allow-overlap", "true"},
         {"icon-ignore-placement", "true"},
         {"icon-halo-color", "1 1 1 0.5"},
         {"icon-halo-width", "1"},
         {"geometry", "1 2"}},
        {row<W>("alpha", [](W& w) { w.setAlpha(0.5); }, {{"icon-opacity", "0.5"}}),
         row<W>("position",
                [](W& w) {
                    w.setPosition(CLLocationCoordinate2D{3, 4});
                },
                {{"geometry", "3 4"}})});
}

}  // namespace
}  // namespace pelta
