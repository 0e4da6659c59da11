#include "MapSymbolBox.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

namespace pelta {

namespace {

constexpr double defaultTextWidth = 10;

/// The rectangle of an extent whose anchored part lies at `offset`.
CGRect anchoredRect(CGSize size, std::string_view anchor, CGVector offset) {
    const auto has = [anchor](std::string_view side) { return anchor.find(side) != std::string_view::npos; };
    const double x = has("left") ? 0 : has("right") ? 1 : 0.5;
    const double y = has("top") ? 0 : has("bottom") ? 1 : 0.5;
    return {{offset.dx - x * size.width, offset.dy - y * size.height}, size};
}

std::array<CGVector, 4> turnedCorners(const CGRect& rect, double degrees) {
    const double radians = degrees * std::numbers::pi / 180;
    const double cosine = std::cos(radians);
    const double sine = std::sin(radians);
    std::array<CGVector, 4> corners{{{rect.minX(), rect.minY()},
                                     {rect.maxX(), rect.minY()},
                                     {rect.maxX(), rect.maxY()},
                                     {rect.minX(), rect.maxY()}}};
    for (CGVector& corner : corners) {
        corner = {corner.dx * cosine - corner.dy * sine, corner.dx * sine + corner.dy * cosine};
    }
    return corners;
}

}  // namespace

std::optional<MapSymbolBox> iconBox(const MapSymbolProperties& layer, const MLNShape& feature,
                                    const MapScene& scene) {
    const auto image = scene.imageSize(resolve(layer.iconImageName, feature, std::string()));
    const double scale = resolve(layer.iconScale, feature, 1.0);
    if (!image || !(scale > 0)) {
        return std::nullopt;
    }
    const CGVector offset = resolve(layer.iconOffset, feature, CGVector{});
    const auto rotationAlignment = resolve(layer.iconRotationAlignment, feature, std::string("auto"));
    const auto pitchAlignment = resolve(layer.iconPitchAlignment, feature, std::string("auto"));
    MapSymbolBox box;
    box.rect = anchoredRect({image->width * scale, image->height * scale},
                            resolve(layer.iconAnchor, feature, std::string("center")),
                            {offset.dx * scale, offset.dy * scale});
    box.rotation = resolve(layer.iconRotation, feature, 0.0);
    box.isTurnedWithMap = rotationAlignment == "map";
    box.isOnGround = (pitchAlignment == "auto" ? rotationAlignment : pitchAlignment) == "map";
    return box;
}

std::optional<MapSymbolText> symbolText(const MapSymbolProperties& layer, const MLNShape& feature) {
    MapSymbolText text;
    text.text = resolve(layer.text, feature, std::string());
    text.size = resolve(layer.textSize, feature, MapText::defaultSize);
    if (text.text.empty() || !(text.size > 0)) {
        return std::nullopt;
    }
    text.maximumWidth = resolve(layer.maximumTextWidth, feature, defaultTextWidth);
    text.anchor = resolve(layer.textAnchor, feature, std::string("center"));
    text.offset = resolve(layer.textOffset, feature, CGVector{});
    text.isOnGround = resolve(layer.textPitchAlignment, feature, std::string("auto")) == "map";
    return text;
}

double MapSymbolText::reach() const noexcept {
    return MapText::upperBound(text, size) + (std::abs(offset.dx) + std::abs(offset.dy)) * size;
}

std::optional<MapSymbolBox> MapSymbolText::box(MapText& measure) const {
    const CGSize extent = measure.size(text, size, maximumWidth);
    if (!(extent.width > 0)) {
        return std::nullopt;
    }
    MapSymbolBox box;
    box.rect = anchoredRect(extent, anchor, {offset.dx * size, offset.dy * size});
    box.isOnGround = isOnGround;
    return box;
}

double symbolMagnification(double relativeDistance, bool isOnGround) noexcept {
    return std::min(0.5 + 0.5 * (isOnGround ? relativeDistance : 1 / relativeDistance),
                    largestSymbolMagnification);
}

bool doesSymbolTouch(const MapSymbolBox& box, CGPoint ground, const MapQueryArea& area,
                     const MapTransform& transform) {
    const double magnification = symbolMagnification(transform.relativeDistance(ground), box.isOnGround);
    const auto corners =
        turnedCorners(box.rect, box.rotation - (box.isTurnedWithMap ? transform.bearing() : 0));
    const CGPoint point = transform.pointForGround(ground);
    MapQuad covered;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const CGVector corner{corners[i].dx * magnification, corners[i].dy * magnification};
        covered[i] = box.isOnGround ? transform.groundShifted(ground, corner)
                                    : CGPoint{point.x + corner.dx, point.y + corner.dy};
    }
    const MapLine ring = covered;
    return doesAreaTouchQuad({&ring, 1}, box.isOnGround ? area.ground : area.screen);
}

}  // namespace pelta
