#include "MapSceneLayer.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include <pelta/Engine/MLNFillStyleLayer.h>
#include <pelta/Engine/MLNLineStyleLayer.h>

#include "MapText.h"

namespace pelta {

namespace {

constexpr double withoutLimit = 1e9;  // Points, or times.

MapSymbolProperties symbolProperties(const MLNSymbolStyleLayer& layer) {
    return {layer.text(),
            layer.textFontSize(),
            layer.maximumTextWidth(),
            layer.textAnchor(),
            layer.textOffset(),
            layer.textPitchAlignment(),
            layer.iconImageName(),
            layer.iconScale(),
            layer.iconRotation(),
            layer.iconAnchor(),
            layer.iconOffset(),
            layer.iconPitchAlignment(),
            layer.iconRotationAlignment()};
}

template <class T>
T constantOr(const MapProperty<T>& property, T absent, T decidedByFeatures) {
    if (!property) {
        return absent;
    }
    return property->isConstant() ? property->constant() : decidedByFeatures;
}

double lengthOf(const MapProperty<CGVector>& offset) {
    const CGVector vector = constantOr(offset, {}, {withoutLimit, 0});
    return std::abs(vector.dx) + std::abs(vector.dy);
}

double textReach(const MapSymbolProperties& layer) {
    if (!layer.text) {
        return 0;
    }
    if (!layer.text->isConstant()) {
        return withoutLimit;
    }
    const double size = constantOr(layer.textSize, MapText::defaultSize, withoutLimit);
    return MapText::upperBound(layer.text->constant(), size) + lengthOf(layer.textOffset) * size;
}

MapReach reachOf(const MapFillProperties& /*layer*/) {
    return {};
}

MapReach reachOf(const MapLineProperties& layer) {
    return {constantOr(layer.width, 1.0, withoutLimit) / 2, 0};
}

MapReach reachOf(const MapSymbolProperties& layer) {
    const double scale = layer.iconImageName ? constantOr(layer.iconScale, 1.0, withoutLimit) : 0;
    return {std::max(textReach(layer), lengthOf(layer.iconOffset) * scale), scale};
}

}  // namespace

std::optional<MapSceneLayer::Properties> drawnProperties(const MLNStyleLayer& layer) {
    if (layer.isFromDocument()) {
        return std::nullopt;
    }
    if (const auto* symbol = dynamic_cast<const MLNSymbolStyleLayer*>(&layer)) {
        return symbolProperties(*symbol);
    }
    if (const auto* line = dynamic_cast<const MLNLineStyleLayer*>(&layer)) {
        return MapLineProperties{line->lineWidth()};
    }
    if (dynamic_cast<const MLNFillStyleLayer*>(&layer) != nullptr) {
        return MapFillProperties{};
    }
    return std::nullopt;
}

MapReach reachOf(const MapSceneLayer::Properties& properties) {
    return std::visit([](const auto& layer) { return reachOf(layer); }, properties);
}

std::size_t hashOfValue(const std::string& text) noexcept {
    return std::hash<std::string>{}(text);
}

}  // namespace pelta
