#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// @file
/// A region quad tree over points of a flat plane.

namespace pelta {

namespace detail {
class QuadTreeIndex;
}

/// Point of the tree's plane; any unit.
struct PQTPoint {
    double x = 0;  ///< Rightwards.
    double y = 0;  ///< Upwards.
    friend bool operator==(const PQTPoint&, const PQTPoint&) = default;
};

/// Axis-parallel rectangle of the tree's plane, borders included. "Top" is the larger y.
struct PQTBounds {
    double minX = 0;  ///< Left border.
    double minY = 0;  ///< Lower border.
    double maxX = 0;  ///< Right border.
    double maxY = 0;  ///< Upper border.
    friend bool operator==(const PQTBounds&, const PQTBounds&) = default;
};

/// What a quad tree holds: anything with a point.
class PQTPointQuadTreeItem {
 public:
    virtual ~PQTPointQuadTreeItem() = default;
    /// Where the item lies. The tree reads it when the item is added and again when it is asked to remove
    /// one; a change in between does not move the item inside the tree.
    [[nodiscard]] virtual PQTPoint point() const = 0;
};

/// Holds items by their points and answers which lie in a rectangle.
///
/// A node is a leaf until a 65th item arrives; then its items, in the order in which they came, move into
/// four quadrants and the new one follows. Nodes 30 levels below the root never split, so their leaves grow
/// without limit. Nodes are never merged again: after removals, emptied leaves stay, and so does the order in
/// which a search reports what is added later. A point on a dividing line belongs to the left and to the
/// bottom.
///
/// Points must be finite and lie within [-1, 1] on both axes, whatever the tree's bounds; others are ignored.
/// At most 2^30 items. Not thread-safe. Moving a tree leaves an empty one behind that may only be destroyed
/// or assigned to.
class PQTPointQuadTree {
 public:
    /// An empty tree.
    /// @param bounds  area that the quadrants divide, fixed for the tree's life.
    explicit PQTPointQuadTree(PQTBounds bounds);
    ~PQTPointQuadTree();
    /// Takes another tree's contents; that tree may then only be destroyed or assigned to.
    PQTPointQuadTree(PQTPointQuadTree&&) noexcept;
    /// As the constructor, in place of what this tree holds.
    PQTPointQuadTree& operator=(PQTPointQuadTree&&) noexcept;
    PQTPointQuadTree(const PQTPointQuadTree&) = delete;
    PQTPointQuadTree& operator=(const PQTPointQuadTree&) = delete;

    /// Adds an item, which the tree then shares. Nothing happens for a null item or an unacceptable point.
    void add(std::shared_ptr<PQTPointQuadTreeItem> item);

    /// Removes the earliest added item whose point equals that of `item`, whichever item that is.
    /// @return whether there was one.
    bool remove(const PQTPointQuadTreeItem& item);

    /// All items within the rectangle, borders included: the quadrants in the order top right, top left,
    /// bottom right, bottom left, and within a leaf in the order of adding. A rectangle with a NaN holds
    /// nothing.
    [[nodiscard]] std::vector<std::shared_ptr<PQTPointQuadTreeItem>> searchWithBounds(PQTBounds bounds) const;

    /// Removes all items and forgets all splits.
    void clear() noexcept;

    /// Number of items held.
    [[nodiscard]] std::size_t count() const noexcept;

 private:
    std::unique_ptr<detail::QuadTreeIndex> index_;
    std::vector<std::shared_ptr<PQTPointQuadTreeItem>> items_;  // by number; unused numbers hold null
    std::vector<std::uint32_t> freeNumbers_;
};

}  // namespace pelta
