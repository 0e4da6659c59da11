#include "Cluster/LiteralClustering.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <unordered_map>
#include <unordered_set>

#include <pelta/Cluster/PgmHashable.h>

namespace pelta::literal {

PQTPoint project(CLLocationCoordinate2D coordinate) {
    constexpr double limit = 85.05112878;
    const double south = std::max(coordinate.latitude, -limit);
    double a = 1.5276092782718023;
    if (coordinate.latitude < limit) {
        a = south * std::numbers::pi / 360 + 0.7853981633974483;
    }
    return {(coordinate.longitude + 180) * 0.002777777777777778,
            (std::log(std::tan(a)) * -57.29577951308232 + 180) * 0.002777777777777778};
}

namespace {

bool isSomewhere(const std::shared_ptr<PgmClusterItem>& item) {
    const auto at = item->position();
    return std::isfinite(at.latitude) && std::isfinite(at.longitude);
}

}  // namespace

void Algorithm::add(const std::shared_ptr<PgmClusterItem>& item) {
    if (isSomewhere(item)) {
        tree_.add(project(item->position()), item);
    }
    items_.push_back(item);
}

void Algorithm::remove(const std::shared_ptr<PgmClusterItem>& item) {
    if (isSomewhere(item)) {
        tree_.remove(project(item->position()));
    }
    std::erase(items_, item);
}

void Algorithm::clear() {
    tree_.clear();
    items_.clear();
}

std::vector<Cluster> Algorithm::clustersAtZoom(float zoom) const {
    const double r = static_cast<double>(2 * maxDistanceBetweenItems) / std::pow(2.0, zoom + 11.0F);
    std::vector<Cluster> formed;
    std::unordered_set<WrappingDictionaryKey> visited;
    std::unordered_map<WrappingDictionaryKey, double> distances;
    std::unordered_map<WrappingDictionaryKey, std::size_t> itemToCluster;
    for (const auto& seed : items_) {
        if (!isSomewhere(seed) || visited.contains(WrappingDictionaryKey(seed))) {
            continue;
        }
        const std::size_t cluster = formed.size();
        formed.push_back({seed->position(), {}});
        const auto [x, y] = project(seed->position());
        auto found = tree_.search({x - r, y - r, x + r, y + r});
        std::erase_if(found, [](const auto& item) { return !isSomewhere(item); });
        for (const auto& item : found) {
            visited.insert(WrappingDictionaryKey(item));
        }
        for (const auto& item : found) {
            const WrappingDictionaryKey key(item);
            const auto [px, py] = project(item->position());
            const double d = (x - px) * (x - px) + (y - py) * (y - py);
            if (const auto known = distances.find(key); known != distances.end() && known->second < d) {
                continue;
            }
            if (const auto owner = itemToCluster.find(key); owner != itemToCluster.end()) {
                std::erase(formed[owner->second].items, item);
            }
            distances.insert_or_assign(key, d);
            formed[cluster].items.push_back(item);
            itemToCluster.insert_or_assign(key, cluster);
        }
    }

    const auto isLarge = [this](const Cluster& c) { return c.items.size() >= minClusteringCount; };
    std::vector<Cluster> result;
    std::copy_if(formed.begin(), formed.end(), std::back_inserter(result), isLarge);
    for (const Cluster& small : formed) {
        if (!isLarge(small)) {
            for (const auto& item : small.items) {
                result.push_back({item->position(), {item}});
            }
        }
    }
    return result;
}

}  // namespace pelta::literal
