#include "FlatScene.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <tuple>
#include <utility>

namespace bench {

void FlatScene::add(Marker marker) {
    order_.push_back(markers_.size());
    markers_.push_back(std::move(marker));
}

void FlatScene::reorder() {
    std::sort(order_.begin(), order_.end(), [this](std::size_t left, std::size_t right) {
        const Marker& a = markers_[left];
        const Marker& b = markers_[right];
        return std::tie(a.globalZIndex, a.zIndex, a.index) < std::tie(b.globalZIndex, b.zIndex, b.index);
    });
}

FlatScene::Drawn FlatScene::draw(const Marker& marker) {
    constexpr double world = 512.0 * 1024.0;
    const double latitude = marker.latitude * std::numbers::pi / 180;
    return {(marker.longitude + 180) / 360 * world,
            (1 - std::log(std::tan(latitude / 2 + std::numbers::pi / 4)) / std::numbers::pi) / 2 * world,
            marker.iconScale,
            marker.alpha,
            marker.title,
            marker.icon};
}

void FlatScene::rebuildFrame() {
    drawn_.clear();
    drawn_.reserve(order_.size());
    for (const std::size_t index : order_) {
        drawn_.push_back(draw(markers_[index]));
    }
}

std::size_t FlatScene::topmostAt(double x, double y) const {
    constexpr double halfSquare = 22;
    constexpr double halfIconWidth = 13;
    constexpr double iconHeight = 36;
    for (std::size_t i = drawn_.size(); i-- > 0;) {
        const Drawn& marker = drawn_[i];
        const bool isInReach = std::abs(marker.x - x) <= halfSquare + halfIconWidth * marker.iconScale &&
                               marker.y >= y - halfSquare &&
                               marker.y - iconHeight * marker.iconScale <= y + halfSquare;
        if (isInReach) {
            return i;
        }
    }
    return drawn_.size();
}

void FlatScene::updateFrame(std::size_t marker) {
    drawn_[marker] = draw(markers_[marker]);
}

}  // namespace bench
