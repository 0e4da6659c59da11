#include "Checks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <sstream>
#include <tuple>
#include <type_traits>
#include <typeinfo>
#include <unistd.h>

#include "World.h"

namespace pelta::random {

void check(bool holds, std::string_view rule, const std::string& found) {
    if (holds) {
        return;
    }
    std::fflush(stdout);
    std::fprintf(stderr, "Broken rule: %.*s\n%s\n", static_cast<int>(rule.size()), rule.data(),
                 found.c_str());
    std::fflush(stderr);
    _exit(brokenRule);
}

namespace {

using Shapes = std::vector<std::shared_ptr<PgmShape>>;

bool isOn(const PgmShape& shape, const PgmMapView& map) {
    return shape.mapView().get() == &map;
}

/// The shapes that say they are on the map, lowest first: the application's, and what cluster managers show.
Shapes shapesOn(const World& world, const PgmMapView& map, const std::string& name) {
    Shapes shapes;
    for (const auto& [index, shape] : map.shapesMap()) {
        check(isOn(*shape, map), "registry",
              shape->identifier() + " is kept by " + name + " but says otherwise");
        shapes.push_back(shape);
    }
    for (const auto& shape : world.livingShapes()) {
        check(!isOn(*shape, map) || map.shapesMap().count(shape->shapeIndex()) == 1, "registry",
              shape->identifier() + " says it is on " + name + ", which does not keep it");
    }
    std::sort(shapes.begin(), shapes.end(), [](const auto& one, const auto& other) {
        return std::tuple(one->globalZIndex(), one->zIndex(), one->shapeIndex()) <
               std::tuple(other->globalZIndex(), other->zIndex(), other->shapeIndex());
    });
    return shapes;
}

using LayerNames = std::vector<std::string>;

std::string inWords(const LayerNames& names) {
    std::string words;
    for (const auto& name : names) {
        words += words.empty() ? name : ", " + name;
    }
    return words.empty() ? "nothing" : words;
}

void append(LayerNames& names, const PgmShape& shape) {
    for (const auto& layer : shape.styleLayers()) {
        names.push_back(layer->identifier());
    }
}

/// The document's layers, below its lowest label shapes of a negative `globalZIndex`, and above all the
/// others.
LayerNames expectedLayers(const MLNStyle& style, const Shapes& shapes) {
    LayerNames belowLabels;
    LayerNames above;
    for (const auto& layer : style.layers()) {
        if (layer->isFromDocument()) {
            const bool isLabel = layer->kind() == MLNStyleLayerKind::symbol;
            (isLabel || !above.empty() ? above : belowLabels).push_back(layer->identifier());
        }
    }
    for (const auto& shape : shapes) {
        append(shape->globalZIndex() < 0 ? belowLabels : above, *shape);
    }
    belowLabels.insert(belowLabels.end(), above.begin(), above.end());
    return belowLabels;
}

void checkLayers(const MLNStyle& style, const Shapes& shapes, const std::string& name) {
    LayerNames found;
    for (const auto& layer : style.layers()) {
        found.push_back(layer->identifier());
    }
    const LayerNames expected = expectedLayers(style, shapes);
    check(found == expected, "layers",
          name + " has the layers " + inWords(found) + "\nits shapes say " + inWords(expected));
    for (const auto& shape : shapes) {
        const PgmShape& drawn = *shape;
        const auto& type = typeid(drawn);
        const bool isBare = type == typeid(PgmShape) || type == typeid(ApplicationShape<PgmShape>);
        check(isBare != !shape->styleLayers().empty(), "layers of a shape",
              shape->identifier() + " has no layers of its own");
        for (const auto& layer : shape->styleLayers()) {
            check(layer->style() == &style, "layers",
                  layer->identifier() + " is in another style than " + name);
            check(layer->isVisible() == shape->isVisible(), "visibility", layer->identifier());
        }
    }
}

template <class T>
bool isFinite(const MLNExpression<T>& expression) {
    if constexpr (std::is_same_v<T, double>) {
        return std::isfinite(expression.constant());
    } else if constexpr (std::is_same_v<T, CGVector>) {
        return std::isfinite(expression.constant().dx) && std::isfinite(expression.constant().dy);
    } else if constexpr (std::is_same_v<T, std::vector<double>>) {
        const auto& list = expression.constant();
        return std::all_of(list.begin(), list.end(), [](double number) { return std::isfinite(number); });
    }
    return true;
}

template <class Layer>
void checkNumbers(const MLNStyleLayer& layer) {
    if (const auto* drawn = dynamic_cast<const Layer*>(&layer)) {
        drawn->visitProperties([&](unsigned, MLNPropertyGroup, std::string_view property, const auto& value) {
            check(!value || isFinite(*value), "numbers",
                  std::string(property) + " of " + layer.identifier() + " is not finite");
        });
    }
}

void checkNumbers(const MLNStyle& style) {
    for (const auto& layer : style.layers()) {
        checkNumbers<MLNSymbolStyleLayer>(*layer);
        checkNumbers<MLNLineStyleLayer>(*layer);
        checkNumbers<MLNFillStyleLayer>(*layer);
    }
}

using Features = std::vector<const MLNShape*>;

void append(Features& features, const MLNShape* shape) {
    if (const auto* collection = dynamic_cast<const MLNShapeCollectionFeature*>(shape)) {
        for (const auto& member : collection->shapes()) {
            features.push_back(member.get());
        }
    } else if (shape != nullptr) {
        features.push_back(shape);
    }
}

Features featuresOf(const std::vector<std::shared_ptr<const MLNShape>>& all) {
    Features features;
    for (const auto& shape : all) {
        append(features, shape.get());
    }
    std::sort(features.begin(), features.end());
    return features;
}

/// The source has every feature of the shapes; what was removed may stay until it is next built, and then
/// goes.
void checkSource(World& world, PgmMapView& map, const Shapes& shapes, const std::string& name) {
    const auto source = map.mapView()->style()->sourceWithIdentifier("pel-shapes");
    check(source != nullptr, "shared source", name + " has no source for its shapes");
    std::vector<std::shared_ptr<const MLNShape>> ofShapes;
    for (const auto& shape : shapes) {
        ofShapes.push_back(shape->feature());
    }
    const Features expected = featuresOf(ofShapes);
    const Features found = featuresOf({source->shape()});
    check(std::includes(found.begin(), found.end(), expected.begin(), expected.end()), "missing features",
          name + " lacks features of its shapes");
    map.setNeedUpdateShapes(true);
    map.triggerRepaint();
    check(world.port.runUntilIdle(), "rest", name + " does not come to rest after its source was built");
    check(featuresOf({source->shape()}) == expected, "left features",
          name + " has features of shapes that are not on it");
}

void checkPictures(const World& world, const MLNStyle& style, const Shapes& shapes, const std::string& name) {
    std::set<std::string> shown;
    for (const auto& shape : shapes) {
        if (const auto image = shape->shapeImage()) {
            shown.insert(image->reuseIdentifier());
            check(style.imageForName(image->reuseIdentifier()) != nullptr, "missing pictures",
                  name + " lacks the picture of " + shape->identifier());
        }
    }
    for (const auto& picture : world.windowPictures()) {
        check(shown.count(picture) == 1 || style.imageForName(picture) == nullptr, "left pictures",
              name + " keeps the picture " + picture + ", which no info window shows any more");
    }
}

bool isWithin(double value, double lowest, double highest) {
    // Where the limits cross, the highest wins.
    return value >= std::min(lowest, highest) && value <= highest;
}

void checkCamera(const PgmMapView& map, const std::string& name) {
    const auto camera = map.cameraPosition();
    const auto& engine = *map.mapView();
    std::ostringstream words;
    words << name << " looks at " << camera->target().latitude << ", " << camera->target().longitude
          << ", zoom " << camera->zoom() << ", tilt " << camera->tilt() << ", bearing " << camera->bearing();
    const std::string found = words.str();
    check(std::abs(camera->target().latitude) <= 90 && std::abs(camera->target().longitude) <= 180,
          "camera's target", found);
    check(isWithin(camera->zoom(), engine.minimumZoomLevel(), engine.maximumZoomLevel()), "camera's zoom",
          found);
    check(isWithin(camera->tilt(), engine.minimumPitch(), engine.maximumPitch()), "camera's tilt", found);
    check(camera->bearing() >= 0 && camera->bearing() < 360, "camera's bearing", found);
    for (const CLLocationCoordinate2D place : {camera->target(), {0, 0}, {80, 170}}) {
        const CGPoint point = map.projection()->point(place);
        check(std::isfinite(point.x) && std::isfinite(point.y), "projection", found);
    }
}

/// What must be so on a map at rest: its style, source and pictures are what the shapes on it ask for, and
/// its camera is within the limits.
void checkMap(World& world, PgmMapView& map, const std::string& name) {
    checkCamera(map, name);
    const Shapes shapes = shapesOn(world, map, name);
    const auto* style = map.mapView()->style();
    if (style == nullptr) {
        return;
    }
    check(map.willBeRemovedShapesMap().empty(), "registry", name + " has not taken out what was removed");
    checkLayers(*style, shapes, name);
    checkNumbers(*style);
    checkPictures(world, *style, shapes, name);
    checkSource(world, map, shapes, name);
}

/// A shape's layers are in the style of its map and nowhere else.
void checkLayersOf(const PgmShape& shape) {
    const auto map = shape.mapView();
    const auto* style = map ? map->mapView()->style() : nullptr;
    for (const auto& layer : shape.styleLayers()) {
        check(layer->style() == nullptr || layer->style() == style, "strays",
              layer->identifier() + " is drawn on a map that its shape is not on");
    }
}

void checkManager(const World::ManagerSlot& slot) {
    if (!slot.manager) {
        return;
    }
    std::set<const PgmClusterItem*> seen;
    for (const auto& cluster : slot.manager->clusters()) {
        const auto position = cluster->position();
        check(std::isfinite(position.latitude) && std::isfinite(position.longitude), "clusters",
              "a cluster lies at no finite position");
        check(cluster->count() == cluster->items().size() && cluster->count() > 0, "clusters",
              "a cluster does not count its items");
        for (const auto& item : cluster->items()) {
            check(seen.insert(item.get()).second, "clusters", "an item is in two clusters");
        }
    }
}

}  // namespace

void checkWorld(World& world) {
    for (const auto& shape : world.livingShapes()) {
        checkLayersOf(*shape);
    }
    for (std::uint32_t i = 0; i < mapCount; ++i) {
        if (world.maps[i].view) {
            checkMap(world, *world.maps[i].view, "map " + std::to_string(i));
        }
    }
    for (const auto& slot : world.managers) {
        checkManager(slot);
    }
}

}  // namespace pelta::random
