#include "RunStack.h"

#include <algorithm>

namespace pelta {

namespace {

/// Engine layers from which on areas that overlap share some: with more the engine comes to a standstill.
constexpr std::size_t crowdLimit = 256;

}  // namespace

void RunStack::put(ModelLayer& layer) {
    if (layer.isLiteral) {
        putLiteral(layer);
        return;
    }
    if (layer.values.sight == LayerSight::nothing) {
        return;
    }
    const std::optional<Extent> extent = drawnExtent(layer);
    const std::size_t run = runFor(layer, floorOf(layer, extent));
    drafts_[run].members.push_back(&layer);
    if (layer.values.sight == LayerSight::visible) {
        seenLimit_ = std::max(seenLimit_, run + 1);
        if (extent) {
            extents_.insert(*extent, run);
        } else {
            barrier_ = std::max(barrier_, run + 1);
        }
    }
}

void RunStack::putLiteral(ModelLayer& layer) {
    drafts_.push_back({nullptr, {}, &layer, nullptr});
    if (layer.values.sight != LayerSight::nothing) {
        barrier_ = seenLimit_ = drafts_.size();
    }
}

std::optional<Extent> RunStack::drawnExtent(const ModelLayer& layer) const {
    if (layer.layer->kind() == MLNStyleLayerKind::symbol) {
        return std::nullopt;
    }
    return layer.extent.grownBy(layer.values.reach / worldSize_);
}

std::size_t RunStack::floorOf(const ModelLayer& layer, const std::optional<Extent>& extent) const {
    std::size_t limit = seenLimit_;
    if (extent) {
        const std::optional<std::size_t> met = extents_.highestFloor(*extent);
        limit = std::max(barrier_, met ? *met + 1 : 0);
    }
    const bool isOverOwnKind = layer.layer->kind() != MLNStyleLayerKind::fill;
    const bool joinsTop = limit > 0 && isOverOwnKind && drafts_[limit - 1].key == layer.values.key;
    return joinsTop ? limit - 1 : limit;
}

std::size_t RunStack::runFor(const ModelLayer& layer, std::size_t floor) {
    std::vector<std::size_t>& runs = byKey_[layer.values.key.get()];
    const auto found = std::lower_bound(runs.begin(), runs.end(), floor);
    if (found != runs.end()) {
        return *found;
    }
    const bool isKeptApart = !runs.empty() && runs.back() >= barrier_;
    isCrowded_ = isCrowded_ || isKeptApart;
    const bool isTransparent = layer.values.sight == LayerSight::transparent;
    if ((isTransparent && !runs.empty()) || (isKeptApart && drafts_.size() >= crowdLimit)) {
        return runs.back();
    }
    drafts_.push_back({layer.values.key, {}, nullptr, nullptr});
    runs.push_back(drafts_.size() - 1);
    return runs.back();
}

}  // namespace pelta
