#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Cluster/QuadTreeIndex.h"

namespace pelta::detail {

/// Finds the number kept for an object, by the object's identity: a hash table with open addressing of
/// numbers alone. `ObjectOf` tells the address of the object that a number stands for.
template <class ObjectOf>
class ObjectTable {
 public:
    explicit ObjectTable(ObjectOf objectOf) : objectOf_(objectOf) {}

    /// The object's number, or `none`.
    [[nodiscard]] std::uint32_t find(const void* object) const {
        return cells_.empty() ? none : cells_[place(object)];
    }

    /// Gives the object a number, in place of the one that it had.
    void set(const void* object, std::uint32_t number) {
        if ((count_ + 1) * 4 > cells_.size() * 3) {
            rebuild();
        }
        std::uint32_t& cell = cells_[place(object)];
        count_ += cell == none ? 1 : 0;
        cell = number;
    }

    /// Forgets the object. Must run while its number still stands for it.
    void erase(const void* object) {
        if (find(object) == none) {
            return;
        }
        const std::size_t mask = cells_.size() - 1;
        std::size_t hole = place(object);
        for (std::size_t i = (hole + 1) & mask; cells_[i] != none; i = (i + 1) & mask) {
            // Moves back what a probe for it would miss behind the hole.
            const std::size_t home = homeOf(objectOf_(cells_[i]));
            if (((i - home) & mask) >= ((i - hole) & mask)) {
                cells_[hole] = cells_[i];
                hole = i;
            }
        }
        cells_[hole] = none;
        --count_;
    }

    void clear() {
        cells_ = {};
        count_ = 0;
    }

 private:
    [[nodiscard]] std::size_t homeOf(const void* object) const {
        constexpr std::uint64_t golden = 0x9E3779B97F4A7C15;
        const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(object));
        return static_cast<std::size_t>((address * golden) >> shift_);
    }

    /// Where the object's number stands, or would stand.
    [[nodiscard]] std::size_t place(const void* object) const {
        const std::size_t mask = cells_.size() - 1;
        std::size_t i = homeOf(object);
        while (cells_[i] != none && objectOf_(cells_[i]) != object) {
            i = (i + 1) & mask;
        }
        return i;
    }

    void rebuild() {
        const std::vector<std::uint32_t> old = std::move(cells_);
        cells_.assign(old.empty() ? 16 : old.size() * 2, none);
        shift_ = 64;
        for (std::size_t size = cells_.size(); size > 1; size /= 2) {
            --shift_;
        }
        for (const std::uint32_t number : old) {
            if (number != none) {
                cells_[place(objectOf_(number))] = number;
            }
        }
    }

    ObjectOf objectOf_;
    std::vector<std::uint32_t> cells_;  // a power of two, three quarters full at most
    std::size_t count_ = 0;
    int shift_ = 64;
};

}  // namespace pelta::detail
