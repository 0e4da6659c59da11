#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <typeinfo>
#include <vector>

#include <pelta/Cluster/PgmCluster.h>
#include <pelta/Platform/CoreLocation.h>

#include "Cluster/ObjectTable.h"
#include "Cluster/QuadTreeIndex.h"

namespace pelta::detail {

/// One addition of an item. Its number is its place in the order of adding.
struct ItemRecord {
    std::shared_ptr<PgmClusterItem> item;
    CLLocationCoordinate2D position;   // when added
    std::uint32_t entry = none;        // its place in the tree; none when the tree does not hold it
    std::uint32_t isListed : 1 = 0;    // not removed yet, so that it may become a seed
    std::uint32_t isHashable : 1 = 0;  // the item implements PgmHashable
    // The record before this one of the same object, which may be dead; the oldest one's is its own.
    std::uint32_t olderOfSame : 30 = 0;

    /// A record is dead when neither seeds nor searches can come to it.
    [[nodiscard]] bool isAlive() const noexcept { return isListed || entry != none; }
};

/// The items in the order of adding, and the tree that finds them.
///
/// The list and the tree change apart: a removal ends all records of an object in the list, but in the tree
/// the earliest at the object's point, whichever it is.
class ItemStore {
 public:
    ItemStore();
    ItemStore(const ItemStore&) = delete;
    ItemStore& operator=(const ItemStore&) = delete;
    ~ItemStore() = default;

    void add(std::shared_ptr<PgmClusterItem> item);
    void remove(const PgmClusterItem& item);
    void clear();

    /// Brings the tree into order. To be called before reading after any change.
    void arrange();

    [[nodiscard]] const QuadTreeIndex& tree() const noexcept { return tree_; }
    [[nodiscard]] std::span<const ItemRecord> records() const noexcept { return records_; }
    /// The record before this one of the same object, dead or alive; `none` for the oldest. From an object's
    /// newest living record all its living ones are reached.
    [[nodiscard]] std::uint32_t olderOfSame(std::uint32_t number) const noexcept {
        const std::uint32_t older = records_[number].olderOfSame;
        return older == number ? none : older;
    }

    /// True when every living record has an object of its own and no item is hashable: then items are told
    /// apart by their records.
    [[nodiscard]] bool areItemsDistinct() const noexcept { return repeats_ == 0 && hashables_ == 0; }

 private:
    struct ObjectOf {
        const std::vector<ItemRecord>* records;
        const void* operator()(std::uint32_t number) const { return (*records)[number].item.get(); }
    };

    bool isHashable(const PgmClusterItem& item);
    void chain(std::uint32_t number);
    /// Both hand over an item that they let go.
    std::shared_ptr<PgmClusterItem> unlist(const PgmClusterItem& item);
    std::shared_ptr<PgmClusterItem> bury(std::uint32_t number);
    void compact();

    std::vector<ItemRecord> records_;
    QuadTreeIndex tree_;
    ObjectTable<ObjectOf> newest_;  // the newest living record of an object
    std::size_t dead_ = 0;
    std::size_t repeats_ = 0;    // living records beyond the first of an object
    std::size_t hashables_ = 0;  // living records of hashable items
    const std::type_info* lastType_ = nullptr;
    bool isLastTypeHashable_ = false;
};

}  // namespace pelta::detail
