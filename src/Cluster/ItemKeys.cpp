#include "Cluster/ItemKeys.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

#include <pelta/Cluster/PgmHashable.h>

namespace pelta::detail {

ItemKeys::ItemKeys(const ItemStore& items) {
    findKeys(items);
    sortEntries(items);
}

void ItemKeys::findKeys(const ItemStore& items) {
    const auto records = items.records();
    object_.assign(records.size(), none);
    key_.assign(records.size(), none);
    std::unordered_map<WrappingDictionaryKey, std::uint32_t> hashables;
    for (std::uint32_t first = 0; first < records.size(); ++first) {
        if (!records[first].isAlive() || object_[first] != none) {
            continue;
        }
        const std::uint32_t key =
            records[first].isHashable
                ? hashables.try_emplace(WrappingDictionaryKey(records[first].item), first).first->second
                : first;
        std::uint32_t record = first;
        do {
            object_[record] = first;
            key_[record] = key;
            record = records[record].nextOfSame;
        } while (record != first);
    }
}

void ItemKeys::sortEntries(const ItemStore& items) {
    const auto points = items.tree().points();
    const auto recordOf = items.tree().items();
    std::vector<std::uint32_t> last(key_.size(), none);  // by key
    deciding_.assign(key_.size(), none);
    shared_.assign(key_.size(), none);
    items.tree().forEachEntry([&](std::uint32_t entry) {
        const std::uint32_t key = key_[recordOf[entry]];
        const std::uint32_t previous = last[key];
        last[key] = entry;
        const bool isAlike = previous == none || (points[previous] == points[entry] &&
                                                  object_[recordOf[previous]] == object_[recordOf[entry]]);
        if (!isAlike && shared_[key] == none) {
            shared_[key] = sharedKeyCount_++;
        }
    });
    items.tree().forEachEntry([&](std::uint32_t entry) {
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
