#include "Cluster/QuadTreeIndex.h"

#include <numeric>

namespace pelta::detail {

namespace {

constexpr std::uint32_t leafCapacity = 64;
constexpr int depthLimit = 30;

/// False for NaN, too.
bool isAcceptable(PQTPoint point) noexcept {
    return point.x >= -1 && point.x <= 1 && point.y >= -1 && point.y <= 1;
}

std::uint32_t quadrant(const PQTBounds& bounds, PQTPoint point) noexcept {
    const double midX = (bounds.minX + bounds.maxX) * 0.5;
    const double midY = (bounds.minY + bounds.maxY) * 0.5;
    return (point.y > midY ? 0U : 2U) + (point.x > midX ? 0U : 1U);
}

bool contains(const PQTBounds& area, PQTPoint point) noexcept {
    return area.minX <= point.x && point.x <= area.maxX && area.minY <= point.y && point.y <= area.maxY;
}

}  // namespace

PQTBounds QuadTreeIndex::childBounds(const PQTBounds& bounds, std::uint32_t child) noexcept {
    const double midX = (bounds.minX + bounds.maxX) * 0.5;
    const double midY = (bounds.minY + bounds.maxY) * 0.5;
    const bool isLeft = (child & 1U) != 0;
    const bool isBottom = (child & 2U) != 0;
    return {isLeft ? bounds.minX : midX, isBottom ? bounds.minY : midY, isLeft ? midX : bounds.maxX,
            isBottom ? midY : bounds.maxY};
}

std::uint32_t QuadTreeIndex::descend(const Node& node, PQTBounds& bounds, PQTPoint point) noexcept {
    const std::uint32_t child = quadrant(bounds, point);
    bounds = childBounds(bounds, child);
    return node.children + child;
}

std::uint32_t QuadTreeIndex::add(PQTPoint point, std::uint32_t item) {
    if (!isAcceptable(point)) {
        return none;
    }
    PQTBounds bounds = bounds_;
    std::uint32_t node = 0;
    for (int depth = 0;; ++depth) {
        if (nodes_[node].children == 0) {
            if (nodes_[node].count < leafCapacity || depth >= depthLimit) {
                break;
            }
            split(node, bounds);
        }
        node = descend(nodes_[node], bounds, point);
    }
    const std::uint32_t entry = newEntry(point, item);
    append(nodes_[node], entry);
    ++count_;
    isArranged_ = false;
    return entry;
}

void QuadTreeIndex::split(std::uint32_t node, const PQTBounds& bounds) {
    const auto children = static_cast<std::uint32_t>(nodes_.size());
    nodes_.resize(nodes_.size() + 4);
    std::uint32_t entry = nodes_[node].first;
    const std::uint32_t count = nodes_[node].count;
    nodes_[node] = {.children = children};
    for (std::uint32_t left = count; left > 0; --left) {
        const std::uint32_t following = next_[entry];
        append(nodes_[children + quadrant(bounds, points_[entry])], entry);
        entry = following;
    }
}

void QuadTreeIndex::append(Node& leaf, std::uint32_t entry) noexcept {
    (leaf.count == 0 ? leaf.first : next_[leaf.last]) = entry;
    leaf.last = entry;
    ++leaf.count;
}

std::uint32_t QuadTreeIndex::newEntry(PQTPoint point, std::uint32_t item) {
    if (unused_ != none) {
        const std::uint32_t entry = unused_;
        unused_ = next_[entry];
        points_[entry] = point;
        items_[entry] = item;
        return entry;
    }
    growByEighth(points_);
    growByEighth(items_);
    growByEighth(next_);
    points_.push_back(point);
    items_.push_back(item);
    next_.push_back(none);
    return static_cast<std::uint32_t>(points_.size() - 1);
}

std::optional<std::uint32_t> QuadTreeIndex::remove(PQTPoint point) {
    if (!isAcceptable(point)) {
        return std::nullopt;
    }
    PQTBounds bounds = bounds_;
    std::uint32_t node = 0;
    while (nodes_[node].children != 0) {
        node = descend(nodes_[node], bounds, point);
    }
    Node& leaf = nodes_[node];
    std::uint32_t previous = none;
    std::uint32_t entry = leaf.first;
    std::uint32_t left = leaf.count;
    while (left > 0 && points_[entry] != point) {
        previous = entry;
        entry = next_[entry];
        --left;
    }
    if (left == 0) {
        return std::nullopt;
    }
    (previous == none ? leaf.first : next_[previous]) = next_[entry];
    if (left == 1) {
        leaf.last = previous;
    }
    --leaf.count;
    next_[entry] = unused_;
    unused_ = entry;
    --count_;
    isArranged_ = false;
    return items_[entry];
}

void QuadTreeIndex::clear() noexcept {
    *this = QuadTreeIndex(bounds_);
}

void QuadTreeIndex::arrange() {
    if (isArranged_) {
        return;
    }
    std::vector<PQTPoint> points;
    std::vector<std::uint32_t> items;
    points.reserve(count_);
    items.reserve(count_);
    arrangeNode(0, points, items);
    points_ = std::move(points);
    items_ = std::move(items);
    next_.resize(count_);
    std::iota(next_.begin(), next_.end(), 1U);
    unused_ = none;
    isArranged_ = true;
}

void QuadTreeIndex::arrangeNode(std::uint32_t number, std::vector<PQTPoint>& points,
                                std::vector<std::uint32_t>& items) {
    Node& node = nodes_[number];
    const auto first = static_cast<std::uint32_t>(points.size());
    if (node.children == 0) {
        std::uint32_t entry = node.first;
        for (std::uint32_t left = node.count; left > 0; --left, entry = next_[entry]) {
            points.push_back(points_[entry]);
            items.push_back(items_[entry]);
        }
    } else {
        for (std::uint32_t child = 0; child < 4; ++child) {
            arrangeNode(node.children + child, points, items);
        }
        node.count = static_cast<std::uint32_t>(points.size()) - first;
    }
    node.first = first;
    node.last = first + node.count - 1;
}

void QuadTreeIndex::renumber(std::span<const std::uint32_t> numbers) {
    arrange();
    for (std::uint32_t& item : items_) {
        item = numbers[item];
    }
}

void QuadTreeIndex::search(const PQTBounds& area, std::vector<std::uint32_t>& found) const {
    searchNode(nodes_.front(), bounds_, area, found);
}

void QuadTreeIndex::searchNode(const Node& node, const PQTBounds& own, const PQTBounds& area,
                               std::vector<std::uint32_t>& found) const {
    if (node.children != 0) {
        forEachChildIn(own, area, [&](std::uint32_t child) {
            searchNode(nodes_[node.children + child], childBounds(own, child), area, found);
        });
        return;
    }
    std::uint32_t entry = node.first;
    for (std::uint32_t left = node.count; left > 0; --left, entry = next_[entry]) {
        if (contains(area, points_[entry])) {
            found.push_back(items_[entry]);
        }
    }
}

}  // namespace pelta::detail
