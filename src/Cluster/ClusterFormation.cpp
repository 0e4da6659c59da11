#include "Cluster/ClusterFormation.h"

#include <algorithm>

#include "Cluster/ClusterProjection.h"

namespace pelta::detail {

namespace {

// Seeds of entries that no single seed stands for.
constexpr std::uint32_t someStray = none - 1;  // the nearest is found at the end
constexpr std::uint32_t setApart = none - 2;   // echoes, entries of shared keys, and items that are nowhere
constexpr std::uint32_t firstSpecial = setApart;

/// Tells NaN from NaN no more than needed: a position that is read back is the same.
bool isSame(CLLocationCoordinate2D a, CLLocationCoordinate2D b) noexcept {
    const auto bits = [](double value) { return __builtin_bit_cast(std::uint64_t, value); };
    return bits(a.latitude) == bits(b.latitude) && bits(a.longitude) == bits(b.longitude);
}

}  // namespace

ClusterFormation::ClusterFormation(const ItemStore& items, double halfWidth)
    : items_(items),
      halfWidth_(halfWidth),
      stored_(items.tree().points()),
      current_(stored_),
      claims_(stored_.size()),
      strays_(halfWidth) {
    items.tree().forEachLeaf([this](std::uint32_t leaf, std::uint32_t first, std::uint32_t last) {
        for (std::uint32_t entry = first; entry < last; ++entry) {
            claims_[entry].leaf = leaf;
        }
    });
}

FormedClusters ClusterFormation::form() {
    readPositions();
    if (!items_.areItemsDistinct()) {
        setKeysApart();
    }
    const auto records = items_.records();
    ahead_.emplace(items_, claims_, halfWidth_);
    for (std::uint32_t record = 0; record < records.size(); ++record) {
        ahead_->moveTo(record);
        if (records[record].isListed && !isClaimed(record)) {
            plant(record);
        }
    }
    if (!strays_.isEmpty()) {
        handOutToStrays();
    }
    return collect();
}

void ClusterFormation::readPositions() {
    for (const ItemRecord& record : items_.records()) {
        if (record.entry == none) {
            continue;
        }
        const CLLocationCoordinate2D position = record.item->position();
        if (!isSame(position, record.position)) {
            if (moved_.empty()) {
                moved_.assign(stored_.begin(), stored_.end());
                current_ = moved_;
            }
            moved_[record.entry] = clusterPoint(position);
            if (!isSomewhere(moved_[record.entry])) {
                claims_[record.entry].seed = setApart;
            }
        }
    }
}

void ClusterFormation::setKeysApart() {
    keys_.emplace(items_, current_);
    ledger_.emplace(*keys_);
    for (const std::uint32_t entry : keys_->echoes()) {
        claims_[entry].seed = setApart;
    }
    for (const ItemKeys::SharedEntry& shared : keys_->sharedEntries()) {
        claims_[shared.entry].seed = setApart;
    }
}

bool ClusterFormation::isClaimed(std::uint32_t record) const {
    std::uint32_t entry = items_.records()[record].entry;
    if (keys_) {
        const std::uint32_t key = keys_->sharedKey(record);
        if (key != none) {
            return ledger_->isClaimed(key);
        }
        entry = keys_->decidingEntry(record);
    }
    return entry != none && claims_[entry].seed != none;
}

void ClusterFormation::plant(std::uint32_t record) {
    const ItemRecord& planted = items_.records()[record];
    const PQTPoint position =
        planted.entry != none ? current_[planted.entry] : clusterPoint(planted.item->position());
    if (!isSomewhere(position)) {
        return;
    }
    const auto seed = static_cast<std::uint32_t>(seeds_.size());
    seeds_.push_back(record);
    if (planted.entry != none && stored_[planted.entry] == position) {
        claimAround(claims_[planted.entry].leaf, position, seed);
    } else {
        claimAsStray(position, seed);
    }
}

void ClusterFormation::claimAround(std::uint32_t leaf, PQTPoint position, std::uint32_t seed) {
    const PQTBounds area = searchSquare(position, halfWidth_);
    ahead_->forEachRange(leaf, area, [&](std::uint32_t first, std::uint32_t last, bool isInside) {
        for (std::uint32_t entry = first; entry < last; ++entry) {
            if (isInside || contains(area, stored_[entry])) {
                claimOrPass(entry, position, seed);
            }
        }
    });
    std::sort(foundShared_.begin(), foundShared_.end());
    for (const std::uint32_t index : foundShared_) {
        findShared(index, position, seed);
    }
    foundShared_.clear();
}

inline void ClusterFormation::claimOrPass(std::uint32_t entry, PQTPoint position, std::uint32_t seed) {
    Claim& claim = claims_[entry];
    const double distance = squaredDistance(position, current_[entry]);
    if (claim.distance < distance) {
        return;
    }
    if (claim.seed == setApart) {
        if (const std::uint32_t index = keys_ ? keys_->sharedIndex(entry) : none; index != none) {
            foundShared_.push_back(index);
        }
        return;
    }
    claim.distance = distance;
    claim.seed = seed;
}

void ClusterFormation::findShared(std::uint32_t index, PQTPoint position, std::uint32_t seed) {
    const std::uint32_t entry = keys_->sharedEntries()[index].entry;
    ledger_->find(index, seed, squaredDistance(position, current_[entry]));
}

void ClusterFormation::claimAsStray(PQTPoint position, std::uint32_t seed) {
    const PQTBounds area = searchSquare(position, halfWidth_);
    if (!unclaimed_) {
        unclaimed_.emplace(stored_);
    }
    unclaimed_->take(
        area, [&](std::size_t entry) { return claims_[entry].seed != none; },
        [&](std::size_t entry) { claims_[entry].seed = someStray; });
    strays_.add(position, seed);
    if (keys_) {
        const auto shared = keys_->sharedEntries();
        for (std::uint32_t index = 0; index < shared.size(); ++index) {
            if (contains(area, stored_[shared[index].entry])) {
                findShared(index, position, seed);
            }
        }
    }
}

void ClusterFormation::handOutToStrays() {
    strays_.arrange();
    for (std::size_t entry = 0; entry < claims_.size(); ++entry) {
        Claim& claim = claims_[entry];
        if (claim.seed == setApart) {
            continue;
        }
        const StraySeeds::Nearest nearest = strays_.nearest(stored_[entry], current_[entry]);
        if (nearest.seed == none) {
            continue;
        }
        const bool isFree = claim.seed >= firstSpecial;
        if (isFree || nearest.distance < claim.distance ||
            (!(nearest.distance > claim.distance) && nearest.seed > claim.seed)) {
            claim.distance = nearest.distance;
            claim.seed = nearest.seed;
        }
    }
}

FormedClusters ClusterFormation::collect() {
    const auto stays = ledger_ ? ledger_->stays() : std::vector<SharedKeyLedger::Stay>{};
    FormedClusters formed{std::move(seeds_), {}, {}};
    formed.starts.assign(formed.seeds.size() + 2, 0);
    // Counts stand two places ahead, so that after summing up each start can be advanced into the next one's
    // place.
    for (const Claim& claim : claims_) {
        if (claim.seed < firstSpecial) {
            ++formed.starts[claim.seed + 2];
        }
    }
    for (const auto& stay : stays) {
        ++formed.starts[stay.seed + 2];
    }
    for (std::size_t i = 2; i < formed.starts.size(); ++i) {
        formed.starts[i] += formed.starts[i - 1];
    }
    formed.members.resize(formed.starts.back());
    const auto recordOf = items_.tree().items();
    const auto put = [&](std::uint32_t seed, std::uint32_t entry) {
        formed.members[formed.starts[seed + 1]++] = recordOf[entry];
    };
    auto stay = stays.begin();
    items_.tree().forEachEntry([&](std::uint32_t entry) {
        if (claims_[entry].seed < firstSpecial) {
            put(claims_[entry].seed, entry);
        }
        for (; stay != stays.end() && keys_->sharedEntries()[stay->index].entry == entry; ++stay) {
            put(stay->seed, entry);
        }
    });
    formed.starts.pop_back();
    return formed;
}

}  // namespace pelta::detail
