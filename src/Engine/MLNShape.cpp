#include <algorithm>
#include <atomic>
#include <cmath>

#include <pelta/Engine/MLNShape.h>

#include "Engine/DrawnKind.h"

namespace pelta {

void MLNAttributes::set(std::string_view name, MLNAttributeValue value) {
    const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                    [name](const auto& each) { return each.first == name; });
    if (entry == entries_.end()) {
        entries_.emplace_back(name, std::move(value));
    } else {
        entry->second = std::move(value);
    }
}

const MLNAttributeValue* MLNAttributes::find(std::string_view name) const noexcept {
    for (const auto& [key, value] : entries_) {
        if (key == name) {
            return &value;
        }
    }
    return nullptr;
}

std::uint64_t MLNShape::nextRevision() noexcept {
    static std::atomic<std::uint64_t> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

std::optional<MLNShapeKind> MLNPointFeature::drawnKind() const noexcept {
    const bool isFinite = std::isfinite(coordinate_.latitude) && std::isfinite(coordinate_.longitude);
    return isFinite ? std::optional(MLNShapeKind::point) : std::nullopt;
}

std::shared_ptr<MLNPolylineFeature> MLNPolylineFeature::polylineWithCoordinates(
    std::vector<CLLocationCoordinate2D> coordinates) {
    auto shape = std::make_shared<MLNPolylineFeature>();
    shape->drawnKind_ = drawnKindOfLine(coordinates);
    shape->coordinates_ = std::move(coordinates);
    return shape;
}

std::shared_ptr<MLNPolygonFeature> MLNPolygonFeature::polygonWithCoordinates(Ring coordinates,
                                                                             std::vector<Ring> holes) {
    auto shape = std::make_shared<MLNPolygonFeature>();
    shape->drawnKind_ = drawnKindOfArea(coordinates, holes);
    shape->coordinates_ = std::move(coordinates);
    std::erase_if(holes, [](const Ring& hole) { return !hasThreePlaces(hole); });
    shape->holes_ = std::move(holes);
    return shape;
}

}  // namespace pelta
