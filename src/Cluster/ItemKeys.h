#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "Cluster/ItemStore.h"

namespace pelta::detail {

/// Which records and tree entries stand for one and the same item, when items repeat or are hashable.
///
/// Nearly every key needs only one entry to be looked at: if a key's entries all hold one object at one
/// point, every search that finds one finds them all, and only the last matters; the others are its echoes. A
/// key whose entries differ is a *shared* one, and what becomes of it has to be followed step by step
/// (`SharedKeyLedger`).
class ItemKeys {
 public:
    /// An entry of a shared key.
    struct SharedEntry {
        std::uint32_t entry;
        std::uint32_t key;     // counted from 0
        std::uint32_t object;  // counted by records; equal for the same object
    };

    /// @param items    must be arranged.
    /// @param current  by entry: where its item lies now. Entries whose items are nowhere are left out.
    ItemKeys(const ItemStore& items, std::span<const PQTPoint> current);

    /// The entry that decides whether the record's key has been claimed; `none` if the tree holds none, or
    /// when the key is shared.
    [[nodiscard]] std::uint32_t decidingEntry(std::uint32_t record) const { return deciding_[record]; }
    /// The record's shared key, or `none`.
    [[nodiscard]] std::uint32_t sharedKey(std::uint32_t record) const { return shared_[record]; }

    /// Entries to be ignored.
    [[nodiscard]] std::span<const std::uint32_t> echoes() const noexcept { return echoes_; }
    /// In the tree's order.
    [[nodiscard]] std::span<const SharedEntry> sharedEntries() const noexcept { return sharedEntries_; }
    /// Place of an entry in `sharedEntries`, or `none`.
    [[nodiscard]] std::uint32_t sharedIndex(std::uint32_t entry) const;
    [[nodiscard]] std::uint32_t sharedKeyCount() const noexcept { return sharedKeyCount_; }

 private:
    void findObjects(const ItemStore& items);
    void findKeys(const ItemStore& items);
    void sortEntries(const ItemStore& items, std::span<const PQTPoint> current);

    std::vector<std::uint32_t> object_;    // by record: the first record of the same object
    std::vector<std::uint32_t> key_;       // by record: the first record of an equal object
    std::vector<std::uint32_t> deciding_;  // by record
    std::vector<std::uint32_t> shared_;    // by record
    std::vector<std::uint32_t> echoes_;
    std::vector<SharedEntry> sharedEntries_;
    std::vector<std::uint32_t> byEntry_;  // places in `sharedEntries_`, ascending by entry
    std::uint32_t sharedKeyCount_ = 0;
};

}  // namespace pelta::detail
