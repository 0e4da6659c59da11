#include "Cluster/QuadTreeIndex.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace pelta::detail {

namespace {

constexpr std::uint32_t leafCapacity = 64;

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

std::uint32_t QuadTreeIndex::add(PQTPoint point, std::uint32_t item) {
    if (!isAcceptable(point)) {
        return none;
    }
    std::uint32_t node = 0;
    for (int depth = 0;; ++depth) {
        if (nodes_[node].children == 0) {
            if (nodes_[node].count < leafCapacity || depth >= depthLimit) {
                break;
            }
            split(node);
        }
        node = nodes_[node].children + quadrant(nodes_[node].bounds, point);
    }
    const std::uint32_t entry = newEntry(point, item);
    append(nodes_[node], entry);
    ++count_;
    isArranged_ = false;
    return entry;
}

void QuadTreeIndex::split(std::uint32_t node) {
    const auto children = static_cast<std::uint32_t>(nodes_.size());
    const PQTBounds bounds = nodes_[node].bounds;
    for (std::uint32_t child = 0; child < 4; ++child) {
        growByEighth(nodes_);
        nodes_.push_back({.bounds = childBounds(bounds, child), .parent = node});
    }
    std::uint32_t entry = nodes_[node].first;
    const std::uint32_t count = nodes_[node].count;
    nodes_[node].children = children;
    nodes_[node].count = 0;
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
    std::uint32_t node = 0;
    while (nodes_[node].children != 0) {
        node = nodes_[node].children + quadrant(nodes_[node].bounds, point);
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
    *this = QuadTreeIndex(nodes_.front().bounds);
}

void QuadTreeIndex::arrange() {
    if (isArranged_) {
        return;
    }
    Entries arranged;
    arranged.points.resize(count_);
    arranged.items.resize(count_);
    arranged.next.resize(count_);
    leaves_.clear();
    arrangeNode(0, arranged);
    leaves_.shrink_to_fit();
    points_ = std::move(arranged.points);
    items_ = std::move(arranged.items);
    next_ = std::move(arranged.next);
    unused_ = none;
    isArranged_ = true;
}

void QuadTreeIndex::arrangeNode(std::uint32_t number, Entries& arranged) {
    Node& node = nodes_[number];
    if (node.children == 0) {
        arrangeLeaf(number, arranged);
        return;
    }
    const auto end = [this] { return leaves_.empty() ? 0 : leaves_.back().first + leaves_.back().count; };
    node.first = end();
    for (std::uint32_t child = 0; child < 4; ++child) {
        arrangeNode(node.children + child, arranged);
    }
    node.count = end() - node.first;
}

void QuadTreeIndex::arrangeLeaf(std::uint32_t number, Entries& arranged) {
    Node& node = nodes_[number];
    if (node.count == 0) {
        return;
    }
    Leaf leaf{node.bounds, number, 0, node.count, {}};
    if (!leaves_.empty()) {
        leaf.first = leaves_.back().first + leaves_.back().count;
    }
    const bool hasCells = leaf.count <= mostInCells;
    std::array<std::uint32_t, 17> places{};
    if (hasCells) {
        std::uint32_t entry = node.first;
        for (std::uint32_t left = leaf.count; left > 0; --left, entry = next_[entry]) {
            ++places[cellOf(leaf.bounds, points_[entry]) + 1];
        }
        std::partial_sum(places.begin(), places.end(), places.begin());
        std::transform(places.begin(), places.end(), leaf.cells.begin(),
                       [](std::uint32_t place) { return static_cast<std::uint8_t>(place); });
    }
    std::uint32_t previous = none;
    std::uint32_t first = none;
    std::uint32_t entry = node.first;
    for (std::uint32_t left = leaf.count; left > 0; --left, entry = next_[entry]) {
        const std::uint32_t cell = hasCells ? cellOf(leaf.bounds, points_[entry]) : 0;
        const std::uint32_t place = leaf.first + places[cell]++;
        arranged.points[place] = points_[entry];
        arranged.items[place] = items_[entry];
        (previous == none ? first : arranged.next[previous]) = place;
        previous = place;
    }
    node.first = first;
    node.last = previous;
    node.leaf = static_cast<std::uint32_t>(leaves_.size());
    growByEighth(leaves_);
    leaves_.push_back(leaf);
}

void QuadTreeIndex::renumber(std::span<const std::uint32_t> numbers) {
    arrange();
    for (std::uint32_t& item : items_) {
        item = numbers[item];
    }
}

void QuadTreeIndex::search(const PQTBounds& area, std::vector<std::uint32_t>& found) const {
    searchNode(nodes_.front(), area, found);
}

void QuadTreeIndex::searchNode(const Node& node, const PQTBounds& area,
                               std::vector<std::uint32_t>& found) const {
    if (node.children != 0) {
        forEachChildIn(node.bounds, area,
                       [&](std::uint32_t child) { searchNode(nodes_[node.children + child], area, found); });
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
