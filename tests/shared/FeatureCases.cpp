#include <cmath>
#include <cstdint>
#include <initializer_list>

#include "SharedCases.h"

namespace pelta::shared {

namespace {

/// Longitude degrees a point at zoom 10; near the equator latitude degrees too, within what is checked.
constexpr double step = 360.0 / (512 * 1024);

/// The coordinate a number of points east and north of the scene's middle.
CLLocationCoordinate2D beside(double east, double north) {
    return {north * step, east * step};
}

/// An opaque picture of a size in points.
std::shared_ptr<PgmImage> picture(int width, int height) {
    const auto bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 16;
    return PgmImage::imageWith(
        *UIImage::fromPixels(width * 2, height * 2, 2, std::vector<std::uint8_t>(bytes, 255)));
}

std::shared_ptr<PgmMarker> marker(CLLocationCoordinate2D position = {}, int width = 20, int height = 60) {
    return PgmMarker::markerWithPositionIconImage(position, picture(width, height));
}

std::vector<CLLocationCoordinate2D> square(double halfSide) {
    return {beside(-halfSide, -halfSide), beside(halfSide, -halfSide), beside(halfSide, halfSide),
            beside(-halfSide, halfSide)};
}

/// A place and the shapes that are found there, topmost first.
struct Probe {
    double x;
    double y;
    std::string_view found;
};

void expectHits(SharedScene& scene, const std::vector<Probe>& probes, std::string_view when) {
    for (const Probe& probe : probes) {
        const std::string place = std::to_string(probe.x) + ", " + std::to_string(probe.y);
        scene.expectEqual(scene.hits(probe.x, probe.y), probe.found, std::string(when) + " at " + place);
    }
}

/// What is done to the scene, and what is found once it is drawn.
struct Stage {
    std::string_view what;
    std::function<void(SharedScene&)> act;
    std::vector<Probe> probes;
};

SharedCase stagesCase(std::string_view name, const std::vector<Stage>& stages) {
    SharedCase result{name, {}};
    for (std::size_t i = 0; i <= stages.size(); ++i) {
        result.steps.emplace_back([stages, i](SharedScene& scene) {
            if (i > 0) {
                expectHits(scene, stages[i - 1].probes, stages[i - 1].what);
            }
            if (i < stages.size()) {
                stages[i].act(scene);
            }
        });
    }
    return result;
}

/// A case that adds one shape, made anew for each run, and then probes.
SharedCase shapeCase(std::string_view name, const std::function<std::shared_ptr<PgmShape>()>& makeShape,
                     const std::vector<Probe>& probes) {
    return stagesCase(name,
                      {{"drawn", [makeShape](SharedScene& scene) { scene.add(makeShape(), "a"); }, probes}});
}

/// What a marker case changes of the marker of 20 × 60 points.
struct Look {
    CGPoint anchor{0.5, 1};
    double angle = 0, scale = 1;
    const char* title = "";
    double margin = 0;
};

SharedCase markerCase(std::string_view name, const Look& look, const std::vector<Probe>& probes) {
    const auto makeShape = [look]() -> std::shared_ptr<PgmShape> {
        auto made = marker();
        made->setAnchor(look.anchor);
        made->setAngle(look.angle);
        made->setIconScale(look.scale);
        made->setTitle(look.title);
        made->setTitleMargin(look.margin);
        return made;
    };
    return shapeCase(name, makeShape, probes);
}

std::vector<SharedCase> markerCases() {
    return {
        markerCase("features_marker_stands_on_its_position", {},
                   {{200, 145, "a"},
                    {200, 95, "a"},
                    {194, 120, "a"},
                    {200, 156, ""},
                    {184, 120, ""},
                    {200, 84, ""}}),
        markerCase("features_marker_anchor", {{0, 0.5}},
                   {{204, 150, "a"}, {216, 126, "a"}, {216, 174, "a"}, {194, 150, ""}, {226, 150, ""}}),
        markerCase("features_marker_angle", {{0.5, 1}, 90},
                   {{206, 150, "a"}, {254, 150, "a"}, {230, 144, "a"}, {200, 120, ""}, {266, 150, ""}}),
        markerCase("features_marker_angle_scale_anchor", {{0.5, 0}, -90, 1.5},
                   {{206, 150, "a"}, {284, 150, "a"}, {194, 150, ""}, {296, 150, ""}, {240, 172, ""}}),
        markerCase("features_marker_title", {{0.5, 1}, 0, 1, "서울"},
                   {{200, 160, "a"}, {240, 160, ""}, {200, 180, ""}}),
        markerCase("features_marker_margin", {{0.5, 1}, 0, 1, "서울", 40}, {{200, 160, ""}, {200, 200, "a"}}),
    };
}

SharedCase turnedMapCase() {
    const auto turn = [](SharedScene& scene) {
        scene.look({0, 0}, 10, 0, 90);
        scene.add(marker(beside(0, 80)), "upright");
        const auto flat = marker();
        flat->setIsIconFlat(true);
        scene.add(flat, "flat");
    };
    return stagesCase("features_marker_upright_or_flat_on_a_turned_map",
                      {{"turned",
                        turn,
                        {{150, 150, "flat"}, {200, 120, ""}, {120, 120, "upright"}, {120, 95, "upright"}}}});
}

SharedCase tiltedMapCase() {
    return {"features_symbols_shrink_with_half_the_perspective",
            {[](SharedScene& scene) {
                 scene.look({0, 0}, 10, 60);
                 scene.add(marker(beside(0, 300), 100, 40), "far");
                 scene.add(PgmPolyline::create({beside(-300, 100), beside(300, 100)}), "line");
             },
             [](SharedScene& scene) {
                 const double distance = 1 + 300 * std::sqrt(0.75) / 450;
                 const double halfWidth = 50 * (0.5 + 0.5 / distance);
                 const auto far = scene.map()->projection()->point(beside(0, 300));
                 expectHits(scene,
                            {{200 + halfWidth - 5, far.y - 8, "far"}, {200 + halfWidth + 6, far.y - 8, ""}},
                            "300 points away");
                 const auto line = scene.map()->projection()->point(beside(50, 100));
                 expectHits(scene, {{line.x, line.y, "line"}, {line.x, line.y + 6, ""}}, "100 points away");
             }}};
}

std::vector<SharedCase> lineAndAreaCases() {
    const auto line = []() -> std::shared_ptr<PgmShape> {
        auto made = PgmPolyline::create({beside(-150, 0), beside(50, 0), beside(50, 100)});
        made->setWidth(20);
        return made;
    };
    const auto area = [](double strokeWidth, const std::vector<CLLocationCoordinate2D>& ring) {
        return [strokeWidth, ring]() -> std::shared_ptr<PgmShape> {
            auto made = PgmPolygon::create(ring);
            made->setStrokeWidth(strokeWidth);
            return made;
        };
    };
    const auto holed = [](double strokeWidth, const std::vector<PgmPolygon::Ring>& holes) {
        return [strokeWidth, holes]() -> std::shared_ptr<PgmShape> {
            auto made = PgmPolygon::create(square(80));
            made->setStrokeWidth(strokeWidth);
            made->setHoles(holes);
            return made;
        };
    };
    const PgmPolygon::Ring crossing{beside(60, -20), beside(120, -20), beside(120, 20), beside(60, 20)};
    const std::vector<CLLocationCoordinate2D> notched{beside(-80, -60), beside(80, -60), beside(80, 60),
                                                      beside(0, -20), beside(-80, 60)};
    return {
        shapeCase(
            "features_line_width", line,
            {{100, 143, "a"}, {100, 157, "a"}, {243, 80, "a"}, {100, 136, ""}, {150, 60, ""}, {270, 60, ""}}),
        shapeCase("features_area_inside", area(0, notched),
                  {{200, 200, "a"}, {130, 120, "a"}, {270, 120, "a"}, {200, 120, ""}, {110, 150, ""}}),
        shapeCase("features_area_outline", area(20, square(60)),
                  {{133, 150, "a"}, {200, 217, "a"}, {124, 150, ""}, {200, 226, ""}}),
        shapeCase("features_holes_and_their_outlines", holed(10, {square(60), square(30)}),
                  {{200, 150, "a"},
                   {233, 150, "a"},
                   {245, 150, ""},
                   {256, 150, "a"},
                   {270, 150, "a"},
                   {283, 150, "a"},
                   {290, 150, ""}}),
        shapeCase("features_hole_across_the_ring", holed(0, {crossing}),
                  {{200, 150, "a"}, {270, 150, ""}, {300, 150, "a"}, {300, 180, ""}, {270, 180, "a"}}),
        shapeCase("features_circle",
                  []() -> std::shared_ptr<PgmShape> {
                      return PgmCircle::create({0, 0}, 80 * step * 6378137 * 3.14159265358979323846 / 180);
                  },
                  {{200, 150, "a"}, {274, 150, "a"}, {148, 202, "a"}, {286, 150, ""}, {262, 212, ""}}),
    };
}

/// A line, an area or a circle that has no extent in some direction, stroked 20 points wide.
SharedCase flatShapesCase() {
    struct Shapes {
        std::shared_ptr<PgmPolyline> line;
        std::shared_ptr<PgmPolygon> area;
        std::shared_ptr<PgmCircle> circle;
    };
    const auto shapes = std::make_shared<Shapes>();
    const auto add = [shapes](SharedScene& scene) {
        *shapes = {PgmPolyline::create({beside(-100, 0), beside(-100, 0), beside(-100, 0)}),
                   PgmPolygon::create({beside(0, 0), beside(0, 0)}), PgmCircle::create(beside(100, 0), 0)};
        shapes->line->setWidth(20);
        shapes->line->setCapType(PgmLineCap::round);
        shapes->area->setStrokeWidth(20);
        shapes->circle->setStrokeWidth(20);
        scene.add(shapes->line, "line");
        scene.add(shapes->area, "area");
        scene.add(shapes->circle, "circle");
    };
    const auto grow = [shapes](SharedScene&) {
        shapes->line->setCoords({beside(-100, 0), beside(-100, 0), beside(-100, 40)});
        shapes->area->setCoords({beside(-40, 0), beside(40, 0), beside(0, 0)});
        shapes->circle->setRadius(1000);
    };
    const auto shrink = [shapes](SharedScene&) {
        shapes->area->setStrokeWidth(0);
        shapes->line->setCoords({beside(-100, 0)});
        shapes->circle->setRadius(0);
    };
    const std::vector<Probe> nothing{{100, 150, ""}, {200, 150, ""}, {300, 150, ""}};
    return stagesCase(
        "features_without_extent",
        {{"single places", add, nothing},
         {"grown",
          grow,
          {{100, 120, "line"}, {165, 150, "area"}, {200, 157, "area"}, {200, 164, ""}, {300, 150, "circle"}}},
         {"no outline, no line, no radius", shrink, nothing},
         {"an area again",
          [shapes](SharedScene&) { shapes->area->setCoords(square(40)); },
          {{200, 150, "area"}, {230, 180, "area"}}}});
}

SharedCase ownSourceCase() {
    const auto add = [](SharedScene& scene) {
        scene.add(marker(), "marker");
        scene.add(PgmPolygon::create(square(40)), "area");
        scene.engine().setStyleJSON(R"({"version":8,"sources":{
            "pel-shapes":{"type":"geojson","data":{"type":"Point","coordinates":[0,0]}},
            "pelta:pel-shapes#points":{"type":"geojson","data":{"type":"Point","coordinates":[0,0]}}},
            "layers":[{"id":"dots","type":"circle","source":"pel-shapes"}]})");
    };
    return stagesCase("features_beside_a_source_of_their_name_in_the_style",
                      {{"drawn", add, {{200, 120, "marker area"}, {230, 150, "area"}, {250, 150, ""}}}});
}

SharedCase rectangleCase() {
    return {"features_rectangle_meets_area_and_line",
            {[](SharedScene& scene) {
                 scene.add(PgmPolygon::create(square(40)), "area");
                 scene.add(PgmPolyline::create({beside(-190, 100), beside(190, 100)}), "line");
             },
             [](SharedScene& scene) {
                 scene.expectEqual(scene.hitsIn({{100, 60}, {200, 200}}), "area", "around the area");
                 scene.expectEqual(scene.hitsIn({{180, 140}, {20, 20}}), "area", "inside the area");
                 scene.expectEqual(scene.hitsIn({{150, 145}, {100, 4}}), "area", "across the area");
                 scene.expectEqual(scene.hitsIn({{100, 40}, {200, 20}}), "line", "across the line");
                 scene.expectEqual(scene.hitsIn({{0, 0}, {400, 300}}), "line area", "everything");
             }}};
}

SharedCase zoomRangeCase() {
    const auto add = [](SharedScene& scene) {
        const auto made = marker();
        made->setVisibleMinZoom(5);
        made->setVisibleMaxZoom(10);
        scene.add(made, "a");
    };
    std::vector<Stage> stages{{"added", add, {{200, 120, "a"}}}};
    for (const auto& [zoom, found] : {std::pair{10.01, ""}, {4.99, ""}, {5.0, "a"}, {7.5, "a"}}) {
        stages.push_back({"another zoom",
                          [zoom = zoom](SharedScene& scene) {
                              scene.look({0, 0}, zoom);
                          },
                          {{200, 120, found}}});
    }
    return stagesCase("features_zoom_range", stages);
}

SharedCase stackingCase() {
    const auto shapes = std::make_shared<std::vector<std::shared_ptr<PgmShape>>>();
    const auto add = [shapes](SharedScene& scene) {
        *shapes = {marker(), marker(), PgmPolygon::create(square(50)),
                   PgmPolyline::create({beside(-90, 10), beside(90, 10)})};
        scene.add((*shapes)[3], "line");
        scene.add((*shapes)[0], "first");
        scene.add((*shapes)[2], "area");
        scene.add((*shapes)[1], "second");
    };
    const auto raise = [shapes](SharedScene&) { (*shapes)[0]->setZIndex(1), (*shapes)[2]->setZIndex(7); };
    const auto turnOver = [shapes](SharedScene&) {
        (*shapes)[1]->setGlobalZIndex(-2000), (*shapes)[3]->setGlobalZIndex(5000);
    };
    return stagesCase("features_topmost_first",
                      {{"by kind and age", add, {{200, 140, "second first line area"}}},
                       {"by zIndex", raise, {{200, 140, "first second area line"}}},
                       {"by globalZIndex", turnOver, {{200, 140, "line first area second"}}}});
}

SharedCase changeCase() {
    const auto shape = std::make_shared<std::shared_ptr<PgmMarker>>();
    using S = SharedScene&;
    const auto hide = [=](S scene) {
        (*shape)->setIsVisible(false);
        expectHits(scene, {{334, 140, "a"}}, "hidden, before the next frame");
    };
    return stagesCase("features_moved_changed_hidden_and_removed",
                      {{"added", [=](S scene) { scene.add(*shape = marker(), "a"); }, {{200, 120, "a"}}},
                       {"moved",
                        [=](S) { (*shape)->setPosition(beside(100, 0)); },
                        {{200, 120, ""}, {300, 120, "a"}, {330, 120, ""}}},
                       {"another picture",
                        [=](S) { (*shape)->setIconImage(picture(80, 20)); },
                        {{334, 140, "a"}, {300, 120, ""}}},
                       {"hidden", hide, {{334, 140, ""}}},
                       {"shown again", [=](S) { (*shape)->setIsVisible(true); }, {{334, 140, "a"}}},
                       {"removed", [=](S) { (*shape)->setMapView(nullptr); }, {{300, 140, ""}}},
                       {"put back", [=](S scene) { (*shape)->setMapView(scene.map()); }, {{300, 140, "a"}}}});
}

SharedCase layersCase() {
    const auto shapes = std::make_shared<std::vector<std::shared_ptr<PgmShape>>>();
    return {"features_of_named_layers_with_geometry_and_attributes",
            {[=](SharedScene& scene) {
                 *shapes = {marker(), marker()};
                 scene.add((*shapes)[0], "a");
                 scene.add((*shapes)[1], "b");
             },
             [=](SharedScene& scene) {
                 const std::vector<std::string> layers{"no such layer", (*shapes)[0]->identifier()};
                 const auto found = scene.engine().visibleFeaturesInRect({{195, 115}, {10, 10}}, layers);
                 scene.expect(found.size() == 1, "the one layer that is there");
                 for (const auto& feature : found) {
                     const auto* name = feature->attribute("identifier");
                     scene.expect(name != nullptr && *name == MLNAttributeValue((*shapes)[0]->identifier()),
                                  "its attribute");
                     scene.expect(feature->kind() == MLNShapeKind::point, "its geometry");
                 }
             }}};
}

SharedCase antimeridianCase() {
    const auto add = [](SharedScene& scene) {
        scene.look({0, -180 + 20 * step}, 10);
        scene.add(marker({0, 180 - 40 * step}), "marker");
        scene.add(PgmPolyline::create({{-50 * step, 180 - 150 * step}, {-50 * step, 180 - 10 * step}}),
                  "line");
    };
    return stagesCase("features_across_the_antimeridian",
                      {{"in the west", add, {{140, 120, "marker"}, {100, 200, "line"}, {190, 200, ""}}}});
}

}  // namespace

std::vector<SharedCase> featureCases() {
    std::vector<SharedCase> cases{turnedMapCase(),  tiltedMapCase(), rectangleCase(), zoomRangeCase(),
                                  stackingCase(),   changeCase(),    layersCase(),    antimeridianCase(),
                                  flatShapesCase(), ownSourceCase()};
    for (auto more : {markerCases(), lineAndAreaCases()}) {
        cases.insert(cases.end(), more.begin(), more.end());
    }
    return cases;
}

}  // namespace pelta::shared
