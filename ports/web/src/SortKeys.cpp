#include "SortKeys.h"

#include <cmath>
#include <unordered_map>
#include <utility>

#include "AscendingRun.h"

namespace pelta {

namespace {

/// Symbols of one run with sort keys of their own; from there on they are drawn together.
constexpr std::size_t symbolKeyLimit = 16;
/// Least distance of two keys, which cross as decimal numbers.
constexpr double leastStep = 1e-4;

bool sharesKeys(const Run& run) {
    return run.members.front()->layer->kind() == MLNStyleLayerKind::symbol &&
           run.members.size() > symbolKeyLimit;
}

bool isInPlace(const Run& run, const ModelLayer& member) {
    return member.sent.id != 0 && member.sent.run == run.number;
}

/// Members that keep their key, and those between which new keys are needed.
class KeyAssignment {
 public:
    KeyAssignment(Run& run, bool mayShare)
        : members_(run.members), stays_(members_.size()), mayShare_(mayShare) {
        std::unordered_map<double, std::size_t> users;
        for (const ModelLayer* member : members_) {
            users[member->sent.sortKey] += isInPlace(run, *member) ? 1 : 0;
        }
        std::vector<std::pair<double, std::uint32_t>> ranks;
        std::vector<std::size_t> indices;
        for (std::size_t i = 0; i < members_.size(); ++i) {
            ModelLayer& member = *members_[i];
            member.isAnew = !isInPlace(run, member) && (mayShare_ || member.sent.id == 0);
            if (isInPlace(run, member) && !(member.isTouched && users[member.sent.sortKey] > 1)) {
                ranks.emplace_back(member.sent.sortKey, mayShare_ ? member.sent.id : 0);
                indices.push_back(i);
            }
        }
        const std::vector<bool> ascends = longestAscendingRun(ranks);
        for (std::size_t i = 0; i < indices.size(); ++i) {
            stays_[indices[i]] = ascends[i];
        }
    }

    /// @return false when there is no room left between two keys.
    bool assign() {
        for (std::size_t i = 0; i < members_.size();) {
            if (stays_[i]) {
                members_[i]->sortKey = members_[i]->sent.sortKey;
                ++i;
            } else if (!assignFrom(i)) {
                return false;
            }
        }
        return true;
    }

 private:
    /// Gives keys to the members from `i` up to the next that stays, and moves `i` there.
    bool assignFrom(std::size_t& i) {
        const std::size_t first = i;
        while (i < members_.size() && !stays_[i]) {
            ++i;
        }
        // What stays above with the key of what stays below has to come after the new ones.
        while (first > 0 && i < members_.size() && stays_[i] &&
               members_[i]->sent.sortKey == members_[first - 1]->sortKey) {
            members_[i]->isAnew = true;
            stays_[i] = false;
            ++i;
            while (i < members_.size() && !stays_[i]) {
                ++i;
            }
        }
        return spread(first, i);
    }

    /// Members at `i` and before it arrive one after the other.
    [[nodiscard]] bool followsOn(std::size_t i) const {
        return mayShare_ && i > 0 && members_[i]->isAnew &&
               (members_[i - 1]->isAnew || (stays_[i - 1] && !members_[i - 1]->isTouched));
    }

    bool spread(std::size_t first, std::size_t end) {
        double count = 0;
        for (std::size_t i = first; i < end; ++i) {
            count += followsOn(i) ? 0 : 1;
        }
        const bool hasLower = first > 0;
        const bool hasUpper = end < members_.size();
        const double upper = hasUpper ? members_[end]->sent.sortKey : 0;
        double key = hasLower ? members_[first - 1]->sortKey : (hasUpper ? upper - count - 1 : 0);
        const double step = hasLower && hasUpper ? (upper - key) / (count + 1) : 1;
        for (std::size_t i = first; i < end; ++i) {
            key += followsOn(i) ? 0 : step;
            members_[i]->sortKey = key;
        }
        return step >= leastStep && std::abs(key) < 1 / leastStep;
    }

    std::vector<ModelLayer*>& members_;
    std::vector<bool> stays_;
    bool mayShare_;
};

std::size_t countKeys(const Run& run) {
    std::size_t count = 1;
    for (std::size_t i = 1; i < run.members.size(); ++i) {
        count += run.members[i]->sortKey != run.members[i - 1]->sortKey ? 1 : 0;
    }
    return count;
}

void numberAnew(Run& run, bool mayShare) {
    double key = 0;
    for (ModelLayer* member : run.members) {
        member->isAnew = mayShare || member->sent.id == 0;
        member->sortKey = mayShare ? 0 : ++key;
    }
}

}  // namespace

bool sharesSortKey(const ModelLayer& layer) {
    const auto& members = layer.run->members;
    const auto isEqual = [&](std::size_t position) {
        const ModelLayer& other = *members[position];
        return other.sent.id != 0 && other.sent.run == layer.sent.run &&
               other.sent.sortKey == layer.sent.sortKey;
    };
    return (layer.position > 0 && isEqual(layer.position - 1)) ||
           (layer.position + 1 < members.size() && isEqual(layer.position + 1));
}

void assignSortKeys(Run& run) {
    const bool mayShare = sharesKeys(run);
    const bool hasRoom = KeyAssignment(run, mayShare).assign();
    if (!hasRoom || (mayShare && countKeys(run) > symbolKeyLimit)) {
        numberAnew(run, mayShare);
    }
    run.needsSortKeys = false;
}

}  // namespace pelta
