#pragma once

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
/// Entries of a leaf are chained in the order of adding. `arrange` moves all entries into the order in which
/// searches report them; from then on until the next change, every node's entries are one range.
class QuadTreeIndex {
 public:
    explicit QuadTreeIndex(PQTBounds bounds) : bounds_(bounds), nodes_(1) {}

    /// @param item  a number of the caller's choice, given back by searches.
    /// @return the entry's place in the arrays, or `none` when the point is not finite or outside [-1, 1].
    std::uint32_t add(PQTPoint point, std::uint32_t item);

    /// Removes the earliest entry at exactly this point.
    /// @return its item's number.
    std::optional<std::uint32_t> remove(PQTPoint point);

    void clear() noexcept;
    [[nodiscard]] std::size_t count() const noexcept { return count_; }

    /// Brings the entries into order; keeps the tree's shape.
    void arrange();
    [[nodiscard]] bool isArranged() const noexcept { return isArranged_; }

    /// Arranges the entries and gives every item the number that stands at its old one in `numbers`.
    void renumber(std::span<const std::uint32_t> numbers);

    /// By an entry's place. Places that removals left unused hold stale values until the next `arrange`.
    [[nodiscard]] std::span<const PQTPoint> points() const noexcept { return points_; }
    [[nodiscard]] std::span<const std::uint32_t> items() const noexcept { return items_; }

    /// Appends the numbers of all items within the rectangle, in order.
    void search(const PQTBounds& area, std::vector<std::uint32_t>& found) const;

    /// Only when arranged: calls `visit(first, last, isInside)` in order for ranges of entries that hold all
    /// within the rectangle. Where `isInside` is false, some of the range may lie outside.
    template <class Visit>
    void forEachRange(const PQTBounds& area, Visit&& visit) const {
        visitRanges(nodes_.front(), bounds_, area, visit);
    }

 private:
    struct Node {
        std::uint32_t children =
            0;  // the first of four: top right, top left, bottom right, bottom left; 0 for a leaf
        std::uint32_t first = none;  // a leaf's chain; any node's range when arranged
        std::uint32_t last = none;
        std::uint32_t count = 0;
    };

    /// The child that a point belongs to, and on the way there the bounds of that child.
    static std::uint32_t descend(const Node& node, PQTBounds& bounds, PQTPoint point) noexcept;
    static PQTBounds childBounds(const PQTBounds& bounds, std::uint32_t child) noexcept;

    void split(std::uint32_t node, const PQTBounds& bounds);
    void append(Node& leaf, std::uint32_t entry) noexcept;
    std::uint32_t newEntry(PQTPoint point, std::uint32_t item);
    void arrangeNode(std::uint32_t node, std::vector<PQTPoint>& points, std::vector<std::uint32_t>& items);
    void searchNode(const Node& node, const PQTBounds& own, const PQTBounds& area,
                    std::vector<std::uint32_t>& found) const;

    template <class Visit>
    void visitRanges(const Node& node, const PQTBounds& own, const PQTBounds& area, Visit& visit) const {
        if (node.count == 0) {
            return;
        }
        const bool isInside =
            area.minX <= own.minX && own.maxX <= area.maxX && area.minY <= own.minY && own.maxY <= area.maxY;
        if (isInside || node.children == 0) {
            visit(node.first, node.first + node.count, isInside);
            return;
        }
        forEachChildIn(own, area, [&](std::uint32_t child) {
            visitRanges(nodes_[node.children + child], childBounds(own, child), area, visit);
        });
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

    PQTBounds bounds_;
    std::vector<Node> nodes_;
    std::vector<PQTPoint> points_;
    std::vector<std::uint32_t> items_;
    std::vector<std::uint32_t> next_;  // in a leaf's chain, or in the chain of unused entries
    std::uint32_t unused_ = none;
    std::size_t count_ = 0;
    bool isArranged_ = true;
};

}  // namespace pelta::detail
