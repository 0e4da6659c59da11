#include "Cluster/SharedKeyLedger.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace pelta::detail {

SharedKeyLedger::SharedKeyLedger(const ItemKeys& keys) : items_(keys), keys_(keys.sharedKeyCount()) {
    std::vector<std::uint32_t> distinct;
    for (const ItemKeys::SharedEntry& shared : keys.sharedEntries()) {
        distinct.push_back(shared.object);
    }
    objects_ = distinct;
    std::sort(distinct.begin(), distinct.end());
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    for (std::uint32_t& object : objects_) {
        const auto place = std::lower_bound(distinct.begin(), distinct.end(), object);
        object = static_cast<std::uint32_t>(place - distinct.begin());
    }
    latestStays_.assign(distinct.size(), none);
}

void SharedKeyLedger::find(std::uint32_t index, std::uint32_t seed, double distance) {
    const ItemKeys::SharedEntry& shared = items_.sharedEntries()[index];
    Key& key = keys_[shared.key];
    const bool isClaimed = key.seed != none;
    if (isClaimed && key.distance < distance) {
        return;
    }
    // Of an object's stays only the latest can be in the key's last cluster: that never goes back to an
    // earlier one.
    std::uint32_t& latest = latestStays_[objects_[index]];
    if (isClaimed && latest != none && stays_[latest].seed == key.seed) {
        stays_[latest].hasEnded = true;
    }
    key = {distance, seed};
    latest = static_cast<std::uint32_t>(stays_.size());
    stays_.push_back({index, seed, false});
}

std::vector<SharedKeyLedger::Stay> SharedKeyLedger::stays() const {
    std::vector<Stay> result;
    std::copy_if(stays_.begin(), stays_.end(), std::back_inserter(result),
                 [](const Stay& stay) { return !stay.hasEnded; });
    std::sort(result.begin(), result.end(), [](const Stay& a, const Stay& b) {
        return std::tie(a.index, a.seed) < std::tie(b.index, b.seed);
    });
    return result;
}

}  // namespace pelta::detail
