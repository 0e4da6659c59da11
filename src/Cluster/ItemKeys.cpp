#include "Cluster/ItemKeys.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

#include <pelta/Cluster/PgmHashable.h>

#include "Cluster/ClusterProjection.h"

namespace pelta::detail {

ItemKeys::ItemKeys(const ItemStore& items, std::span<const PQTPoint> current) {
    findObjects(items);
    findKeys(items);
    sortEntries(items, current);
}

void ItemKeys::findObjects(const ItemStore& items) {
    const auto records = items.records();
    object_.assign(records.size(), none);
    for (auto newest = static_cast<std::uint32_t>(records.size()); newest-- > 0;) {
        if (!records[newest].isAlive() || object_[newest] != none) {
            continue;
        }
        std::uint32_t first = newest;
        for (std::uint32_t record = newest; record != none; record = items.olderOfSame(record)) {
            first = records[record].isAlive() ? record : first;
        }
        for (std::uint32_t record = newest; record != none; record = items.olderOfSame(record)) {
            object_[record] = records[record].isAlive() ? first : none;
        }
    }
}

void ItemKeys::findKeys(const ItemStore& items) {
    const auto records = items.records();
    key_.assign(records.size(), none);
    std::unordered_map<WrappingDictionaryKey, std::uint32_t> hashables;
    for (std::uint32_t record = 0; record < records.size(); ++record) {
        const std::uint32_t first = object_[record];
        if (first != record) {
            key_[record] = first == none ? none : key_[first];
            continue;
        }
        key_[record] =
            records[record].isHashable
                ? hashables.try_emplace(WrappingDictionaryKey(records[record].item), record).first->second
                : record;
    }
}

void ItemKeys::sortEntries(const ItemStore& items, std::span<const PQTPoint> current) {
    const auto points = items.tree().points();
    const auto recordOf = items.tree().items();
    std::vector<std::uint32_t> last(key_.size(), none);  // by key
    deciding_.assign(key_.size(), none);
    shared_.assign(key_.size(), none);
    const auto forEachEntry = [&](auto&& visit) {
        items.tree().forEachEntry([&](std::uint32_t entry) {
            if (isSomewhere(current[entry])) {
                visit(entry);
            }
        });
    };
    forEachEntry([&](std::uint32_t entry) {
        const std::uint32_t key = key_[recordOf[entry]];
        const std::uint32_t previous = last[key];
        last[key] = entry;
        const bool isAlike = previous == none || (points[previous] == points[entry] &&
                                                  object_[recordOf[previous]] == object_[recordOf[entry]]);
        if (!isAlike && shared_[key] == none) {
            shared_[key] = sharedKeyCount_++;
        }
    });
    forEachEntry([&](std::uint32_t entry) {
        const std::uint32_t record = recordOf[entry];
        const std::uint32_t key = key_[record];
        if (shared_[key] != none) {
            sharedEntries_.push_back({entry, shared_[key], object_[record]});
        } else if (entry != last[key]) {
            echoes_.push_back(entry);
        }
    });
    byEntry_.resize(sharedEntries_.size());
    std::iota(byEntry_.begin(), byEntry_.end(), 0U);
    std::sort(byEntry_.begin(), byEntry_.end(), [this](std::uint32_t a, std::uint32_t b) {
        return sharedEntries_[a].entry < sharedEntries_[b].entry;
    });
    // A key is the number of its first record, so going down overwrites no key that is still needed.
    for (auto record = static_cast<std::uint32_t>(key_.size()); record-- > 0;) {
        const std::uint32_t key = key_[record];
        if (key != none) {
            shared_[record] = shared_[key];
            deciding_[record] = shared_[key] == none ? last[key] : none;
        }
    }
}

std::uint32_t ItemKeys::sharedIndex(std::uint32_t entry) const {
    const auto found = std::lower_bound(
        byEntry_.begin(), byEntry_.end(), entry,
        [this](std::uint32_t index, std::uint32_t sought) { return sharedEntries_[index].entry < sought; });
    return found != byEntry_.end() && sharedEntries_[*found].entry == entry ? *found : none;
}

}  // namespace pelta::detail
