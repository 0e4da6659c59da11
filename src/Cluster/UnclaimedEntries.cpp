#include "Cluster/UnclaimedEntries.h"

#include <limits>

namespace pelta::detail {

UnclaimedEntries::UnclaimedEntries(std::span<const PQTPoint> points) : points_(points) {
    std::vector<PQTBounds> boxes((points.size() + blockSize - 1) / blockSize, nothing());
    for (std::size_t entry = 0; entry < points.size(); ++entry) {
        const PQTPoint point = points[entry];
        extend(boxes[entry / blockSize], {point.x, point.y, point.x, point.y});
    }
    levels_.push_back(std::move(boxes));
    while (levels_.back().size() > fanOut) {
        const std::vector<PQTBounds>& lower = levels_.back();
        std::vector<PQTBounds> upper((lower.size() + fanOut - 1) / fanOut, nothing());
        for (std::size_t i = 0; i < lower.size(); ++i) {
            extend(upper[i / fanOut], lower[i]);
        }
        levels_.push_back(std::move(upper));
    }
}

PQTBounds UnclaimedEntries::nothing() noexcept {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return {infinity, infinity, -infinity, -infinity};
}

void UnclaimedEntries::extend(PQTBounds& box, const PQTBounds& by) noexcept {
    box = {std::min(box.minX, by.minX), std::min(box.minY, by.minY), std::max(box.maxX, by.maxX),
           std::max(box.maxY, by.maxY)};
}

bool UnclaimedEntries::meet(const PQTBounds& a, const PQTBounds& b) noexcept {
    return a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
}

}  // namespace pelta::detail
