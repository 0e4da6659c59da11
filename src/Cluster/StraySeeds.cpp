#include "Cluster/StraySeeds.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Cluster/SearchSquare.h"

namespace pelta::detail {

namespace {

PQTBounds boundsOf(const auto& seeds) noexcept {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    PQTBounds bounds{infinity, infinity, -infinity, -infinity};
    for (const auto& seed : seeds) {
        bounds = {std::min(bounds.minX, seed.position.x), std::min(bounds.minY, seed.position.y),
                  std::max(bounds.maxX, seed.position.x), std::max(bounds.maxY, seed.position.y)};
    }
    return bounds;
}

}  // namespace

void StraySeeds::add(PQTPoint position, std::uint32_t seed) {
    seeds_.push_back({position, seed, false});
}

void StraySeeds::arrange() {
    // At one point the latest always wins.
    std::sort(seeds_.begin(), seeds_.end(), [](const Seed& a, const Seed& b) {
        if (a.position.x != b.position.x) {
            return a.position.x < b.position.x;
        }
        return a.position.y != b.position.y ? a.position.y < b.position.y : a.number > b.number;
    });
    const auto isSamePoint = [](const Seed& a, const Seed& b) { return a.position == b.position; };
    seeds_.erase(std::unique(seeds_.begin(), seeds_.end(), isSamePoint), seeds_.end());
    const PQTBounds bounds = boundsOf(seeds_);
    reach_ = {bounds.minX - halfWidth_, bounds.minY - halfWidth_, bounds.maxX + halfWidth_,
              bounds.maxY + halfWidth_};
    part(seeds_);
}

void StraySeeds::part(std::span<Seed> seeds) {
    if (seeds.size() < 2) {
        return;
    }
    const PQTBounds bounds = boundsOf(seeds);
    const bool byX = bounds.maxX - bounds.minX > bounds.maxY - bounds.minY;
    const auto middle = seeds.begin() + static_cast<std::ptrdiff_t>(seeds.size() / 2);
    std::nth_element(seeds.begin(), middle, seeds.end(), [byX](const Seed& a, const Seed& b) {
        return byX ? a.position.x < b.position.x : a.position.y < b.position.y;
    });
    middle->isSplitByX = byX;
    part(seeds.first(seeds.size() / 2));
    part(seeds.subspan(seeds.size() / 2 + 1));
}

StraySeeds::Nearest StraySeeds::nearest(PQTPoint stored, PQTPoint current) const {
    Query query{stored, current, {std::numeric_limits<double>::infinity(), none}};
    if (contains(reach_, stored)) {
        visit(seeds_, query);
    }
    return query.best;
}

void StraySeeds::visit(std::span<const Seed> seeds, Query& query) const {
    if (seeds.empty()) {
        return;
    }
    const Seed& middle = seeds[seeds.size() / 2];
    consider(middle, query);
    const auto lower = seeds.first(seeds.size() / 2);
    const auto upper = seeds.subspan(seeds.size() / 2 + 1);
    const auto along = [&](PQTPoint point) { return middle.isSplitByX ? point.x : point.y; };
    const double split = along(middle.position);
    const double away = along(query.current) - split;
    // The comparisons are those of the exact rules applied to the split; rounding keeps their order.
    const bool lowerReaches = !(split + halfWidth_ < along(query.stored));
    const bool upperReaches = !(split - halfWidth_ > along(query.stored));
    const auto isNearEnough = [&] { return !(away * away > query.best.distance); };
    if (away > 0) {
        if (upperReaches) {
            visit(upper, query);
        }
        if (lowerReaches && isNearEnough()) {
            visit(lower, query);
        }
    } else {
        if (lowerReaches) {
            visit(lower, query);
        }
        if (upperReaches && isNearEnough()) {
            visit(upper, query);
        }
    }
}

void StraySeeds::consider(const Seed& seed, Query& query) const {
    if (!contains(searchSquare(seed.position, halfWidth_), query.stored)) {
        return;
    }
    const double distance = squaredDistance(seed.position, query.current);
    const bool isFirst = query.best.seed == none;
    if (isFirst || distance < query.best.distance ||
        (!(distance > query.best.distance) && seed.number > query.best.seed)) {
        query.best = {distance, seed.number};
    }
}

}  // namespace pelta::detail
