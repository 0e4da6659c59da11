#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include <pelta/Engine/MLNSymbolStyleLayer.h>

#include "MapProperty.h"

namespace pelta {

/// What decides where a symbol layer draws, as it was at the last commit.
struct MapSymbolProperties {
    MapProperty<std::string> text;
    MapProperty<double> textSize;
    MapProperty<double> maximumTextWidth;
    MapProperty<std::string> textAnchor;
    MapProperty<CGVector> textOffset;
    MapProperty<std::string> textPitchAlignment;
    MapProperty<std::string> iconImageName;
    MapProperty<double> iconScale;
    MapProperty<double> iconRotation;
    MapProperty<std::string> iconAnchor;
    MapProperty<CGVector> iconOffset;
    MapProperty<std::string> iconPitchAlignment;
    MapProperty<std::string> iconRotationAlignment;
};

struct MapLineProperties {
    MapProperty<double> width;
};

struct MapFillProperties {};

/// One drawn layer, as it was at the last commit.
struct MapSceneLayer {
    using Properties = std::variant<MapFillProperties, MapLineProperties, MapSymbolProperties>;

    std::shared_ptr<const MLNVectorStyleLayer> model;  ///< For its identity and what never changes.
    MLNPredicate predicate;
    Properties properties;
};

/// What decides where a layer draws; nothing for layers that have no features to draw here.
[[nodiscard]] std::optional<MapSceneLayer::Properties> drawnProperties(const MLNStyleLayer& layer);

/// How far from its features, untilted, a layer may draw.
struct MapReach {
    double points = 0;  ///< Apart from pictures.
    double images = 0;  ///< In sums of the sides of the largest picture.
};

/// An upper bound for the reach of a layer. What features decide counts as without limit.
[[nodiscard]] MapReach reachOf(const MapSceneLayer::Properties& properties);

/// What passes over most layers in a query, kept side by side in memory.
struct MapLayerKey {
    std::size_t valueHash = 0;    ///< Of what the predicate compares with; see `hashOfValue`.
    std::uint32_t selection = 0;  ///< Where `MapScene::selections` has what the predicate chooses from.
    float minimumZoomLevel = 0;
    float maximumZoomLevel = 24;
    bool isVisible = true;
    MapReach reach;

    [[nodiscard]] bool isDrawnAt(double zoom) const noexcept {
        return isVisible && minimumZoomLevel <= zoom && zoom < maximumZoomLevel;
    }
};

/// The hash of an attribute's text. Of all features, for a predicate without an attribute, it is 0.
[[nodiscard]] std::size_t hashOfValue(const std::string& text) noexcept;

}  // namespace pelta
