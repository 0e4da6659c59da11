#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <pelta/Cluster/PQTPointQuadTree.h>

namespace pelta::detail {

/// "No such thing" among the numbers of entries, items and clusters.
inline constexpr std::uint32_t none = UINT32_MAX;

/// Makes room for one more element in steps of an eighth, so that little stands empty.
template <class T>
void growByEighth(std::vector<T>& elements) {
    if (elements.size() == elements.capacity()) {
        elements.reserve(elements.size() + elements.size() / 8 + 16);
    }
}

/// The quad tree over numbered points, in flat arrays.
///
/// Entries of a leaf are chained in the order of adding. `arrange` moves all entries so that every node's
/// entries are one range, and a leaf's are sorted into cells, four by four; the chains keep the order. That
/// is undone by the next change.
class QuadTreeIndex {
 public:
    explicit QuadTreeIndex(PQTBounds bounds) : nodes_(1, Node{.bounds = bounds}) {}

    /// @param item  a number of the caller's choice, given back by searches.
    /// @return the entry's place in the arrays, or `none` when the point is not finite or outside [-1, 1].
    std::uint32_t add(PQTPoint point, std::uint32_t item);

    /// Removes the earliest entry at exactly this point.
    /// @return its item's number.
    std::optional<std::uint32_t> remove(PQTPoint point);

    void clear() noexcept;
    [[nodiscard]] std::size_t count() const noexcept { return count_; }

    /// Appends the numbers of all items within the rectangle, in order.
    void search(const PQTBounds& area, std::vector<std::uint32_t>& found) const;

    /// Keeps the tree's shape and order.
    void arrange();
    [[nodiscard]] bool isArranged() const noexcept { return isArranged_; }

    /// Arranges the entries and gives every item the number that stands at its old one in `numbers`.
    void renumber(std::span<const std::uint32_t> numbers);

    /// By an entry's place, without gaps when arranged.
    [[nodiscard]] std::span<const PQTPoint> points() const noexcept { return points_; }
    [[nodiscard]] std::span<const std::uint32_t> items() const noexcept { return items_; }

    // The rest is only for the arranged tree.

    /// Calls `visit(entry)` in the order in which a search for everything reports.
    template <class Visit>
    void forEachEntry(Visit&& visit) const {
        for (const Leaf& leaf : leaves_) {
            std::uint32_t entry = nodes_[leaf.node].first;
            for (std::uint32_t left = leaf.count; left > 0; --left, entry = next_[entry]) {
                visit(entry);
            }
        }
    }

    /// Calls `visit(leaf, first, last)` for every leaf that is not empty, and the range of its entries.
    template <class Visit>
    void forEachLeaf(Visit&& visit) const {
        for (std::uint32_t leaf = 0; leaf < leaves_.size(); ++leaf) {
            visit(leaf, leaves_[leaf].first, leaves_[leaf].first + leaves_[leaf].count);
        }
    }

    /// @name Bringing near, ahead of time, what a search that starts in a leaf will read
    /// Three steps, each of which needs that the processor has done the one before.
    /// @{
    [[gnu::always_inline]] void fetchLeaf(std::uint32_t leaf) const { __builtin_prefetch(&leaves_[leaf]); }
    [[gnu::always_inline]] void fetchSiblings(std::uint32_t leaf, const PQTBounds& area) const {
        if (!isInside(area, leaves_[leaf].bounds)) {
            const Node* siblings = &nodes_[firstSibling(leaves_[leaf].node)];
            __builtin_prefetch(siblings);
            __builtin_prefetch(siblings + 1);
            __builtin_prefetch(siblings + 2);
            __builtin_prefetch(siblings + 3);
        }
    }
    [[gnu::always_inline]] void fetchNeighbours(std::uint32_t leaf, const PQTBounds& area) const {
        if (!isInside(area, leaves_[leaf].bounds)) {
            const std::uint32_t first = firstSibling(leaves_[leaf].node);
            for (std::uint32_t node = first; node < first + 4 && node < nodes_.size(); ++node) {
                const Node& sibling = nodes_[node];
                if (sibling.children == 0 && sibling.count > 0 && meet(sibling.bounds, area)) {
                    __builtin_prefetch(&leaves_[sibling.leaf]);
                }
            }
            __builtin_prefetch(&nodes_[nodes_[first].parent]);
        }
    }
    /// @}

    /// True when a square of this half width is not much larger than the leaf.
    [[nodiscard]] bool isSmall(std::uint32_t leaf, double halfWidth) const noexcept {
        return halfWidth < leaves_[leaf].bounds.maxX - leaves_[leaf].bounds.minX;
    }

    /// Calls `visit(first, last, isInside)`, in any order, for ranges of entries that hold all within the
    /// rectangle. Where `isInside` is false, some of the range may lie outside.
    /// @param start  a leaf whose bounds meet the rectangle.
    template <class Visit>
    void forEachRange(std::uint32_t start, const PQTBounds& area, Visit&& visit) const {
        if (isInside(area, leaves_[start].bounds)) {
            visitCells(leaves_[start], area, visit);
            return;
        }
        std::uint32_t number = nodes_[leaves_[start].node].parent;
        while (number != 0 && !isInside(area, nodes_[number].bounds)) {
            number = nodes_[number].parent;
        }
        std::array<std::uint32_t, 4UL * (depthLimit + 1)> waiting;
        std::size_t count = 0;
        for (waiting[count++] = number; count > 0;) {
            const Node& node = nodes_[waiting[--count]];
            if (node.count == 0) {
                continue;
            }
            if (node.children == 0) {
                visitCells(leaves_[node.leaf], area, visit);
            } else if (isInside(node.bounds, area)) {
                visit(node.first, node.first + node.count, true);
            } else {
                forEachChildIn(node.bounds, area,
                               [&](std::uint32_t child) { waiting[count++] = node.children + child; });
            }
        }
    }

 private:
    static constexpr int depthLimit = 30;
    static constexpr std::uint32_t mostInCells = 255;

    struct Node {
        PQTBounds bounds;
        std::uint32_t parent = 0;  // of the root: itself
        std::uint32_t children =
            0;  // the first of four: top right, top left, bottom right, bottom left; 0 for a leaf
        std::uint32_t first = none;  // of a leaf's chain, or of an arranged inner node's range
        std::uint32_t last = none;   // of a leaf's chain
        std::uint32_t count = 0;     // of an inner node only when arranged
        std::uint32_t leaf = none;   // of a leaf, when arranged and not empty
    };

    /// An arranged leaf, in the space of one line of the processor's cache.
    struct Leaf {
        PQTBounds bounds;
        std::uint32_t node;
        std::uint32_t first;
        std::uint32_t count;
        std::array<std::uint8_t, 17>
            cells;  // where each cell starts, counted from `first`; not for large leaves
    };

    static bool isInside(const PQTBounds& inner, const PQTBounds& outer) noexcept {
        return outer.minX <= inner.minX && inner.maxX <= outer.maxX && outer.minY <= inner.minY &&
               inner.maxY <= outer.maxY;
    }

    static bool meet(const PQTBounds& a, const PQTBounds& b) noexcept {
        return a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
    }

    /// Nodes come into being four at a time, behind the root.
    static std::uint32_t firstSibling(std::uint32_t node) noexcept {
        return node == 0 ? 0 : (node - 1) / 4 * 4 + 1;
    }

    /// The quarter of an interval in which a value lies, 0 to 3; never falls as the value grows.
    static std::uint32_t quarter(double low, double high, double value) noexcept {
        const double middle = (low + high) * 0.5;
        return static_cast<std::uint32_t>(value > (low + middle) * 0.5) +
               static_cast<std::uint32_t>(value > middle) +
               static_cast<std::uint32_t>(value > (middle + high) * 0.5);
    }
    static std::uint32_t cellOf(const PQTBounds& bounds, PQTPoint point) noexcept {
        return quarter(bounds.minY, bounds.maxY, point.y) * 4 + quarter(bounds.minX, bounds.maxX, point.x);
    }

    static PQTBounds childBounds(const PQTBounds& bounds, std::uint32_t child) noexcept;

    void split(std::uint32_t node);
    void append(Node& leaf, std::uint32_t entry) noexcept;
    std::uint32_t newEntry(PQTPoint point, std::uint32_t item);
    void searchNode(const Node& node, const PQTBounds& area, std::vector<std::uint32_t>& found) const;

    /// The arrays of entries while they are being arranged.
    struct Entries {
        std::vector<PQTPoint> points;
        std::vector<std::uint32_t> items;
        std::vector<std::uint32_t> next;
    };
    void arrangeNode(std::uint32_t number, Entries& arranged);
    void arrangeLeaf(std::uint32_t number, Entries& arranged);

    template <class Visit>
    void visitCells(const Leaf& leaf, const PQTBounds& area, Visit& visit) const {
        const PQTBounds& own = leaf.bounds;
        const bool isWhole = isInside(own, area);
        if (isWhole || leaf.count > mostInCells) {
            visit(leaf.first, leaf.first + leaf.count, isWhole);
            return;
        }
        const std::uint32_t left = quarter(own.minX, own.maxX, area.minX);
        const std::uint32_t right = quarter(own.minX, own.maxX, area.maxX);
        const std::uint32_t bottom = quarter(own.minY, own.maxY, area.minY);
        const std::uint32_t top = quarter(own.minY, own.maxY, area.maxY);
        for (std::uint32_t row = bottom; row <= top; ++row) {
            visit(leaf.first + leaf.cells[row * 4 + left], leaf.first + leaf.cells[row * 4 + right + 1],
                  false);
        }
    }

    /// Calls `visit(child)` for the quadrants of `own` that meet the rectangle, in order.
    template <class Visit>
    static void forEachChildIn(const PQTBounds& own, const PQTBounds& area, Visit&& visit) {
        const double midX = (own.minX + own.maxX) * 0.5;
        const double midY = (own.minY + own.maxY) * 0.5;
        const bool isRight = area.maxX > midX;
        const bool isLeft = area.minX <= midX;
        if (area.maxY > midY) {
            if (isRight) {
                visit(0U);
            }
            if (isLeft) {
                visit(1U);
            }
        }
        if (area.minY <= midY) {
            if (isRight) {
                visit(2U);
            }
            if (isLeft) {
                visit(3U);
            }
        }
    }

    std::vector<Node> nodes_;
    std::vector<PQTPoint> points_;
    std::vector<std::uint32_t> items_;
    std::vector<std::uint32_t> next_;  // in a leaf's chain, or in the chain of unused entries
    std::vector<Leaf> leaves_;         // when arranged: those that are not empty, in order
    std::uint32_t unused_ = none;
    std::size_t count_ = 0;
    bool isArranged_ = true;
};

}  // namespace pelta::detail
