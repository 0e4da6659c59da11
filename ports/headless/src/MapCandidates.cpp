#include "MapCandidates.h"

#include <algorithm>
#include <cmath>

namespace pelta {

const std::string* textAttribute(const MLNShape& feature, std::string_view name) {
    const MLNAttributeValue* value = feature.attribute(name);
    return value != nullptr ? std::get_if<std::string>(value) : nullptr;
}

bool isNearInSomeCopy(const MapBox& box, const MapBox& area) noexcept {
    return box.minY <= area.maxY && area.minY <= box.maxY &&
           std::ceil(area.minX - box.maxX) <= std::floor(area.maxX - box.minX);
}

MapCandidates::MapCandidates(const MapSceneSource& source, std::string_view attribute, const MapBox& area) {
    const auto& boxes = source.boxes();
    for (std::uint32_t feature = 0; feature < source.size(); ++feature) {
        if (!isNearInSomeCopy(boxes[feature], area)) {
            continue;
        }
        if (attribute.empty()) {
            entries_.push_back({0, feature});
        } else if (const std::string* text = textAttribute(source.feature(feature), attribute)) {
            entries_.push_back({hashOfValue(*text), feature});
        }
    }
    std::stable_sort(entries_.begin(), entries_.end(),
                     [](const Entry& a, const Entry& b) { return a.valueHash < b.valueHash; });
}

std::span<const MapCandidates::Entry> MapCandidates::withHash(std::size_t valueHash) const {
    const auto first =
        std::lower_bound(entries_.begin(), entries_.end(), valueHash,
                         [](const Entry& entry, std::size_t wanted) { return entry.valueHash < wanted; });
    auto last = first;
    while (last != entries_.end() && last->valueHash == valueHash) {
        ++last;
    }
    return {first, last};
}

}  // namespace pelta
