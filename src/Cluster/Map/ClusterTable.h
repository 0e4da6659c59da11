#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Cluster/Map/Grouping.h"

namespace pelta::detail {

/// Finds the clusters of one grouping that are the same as those of another.
///
/// A hash table by position and items alone: it makes no difference how near to each other clusters are, or
/// how many share one position.
class ClusterTable {
 public:
    /// @param grouping  must outlive this.
    /// @param capacity  the most clusters that are put in.
    ClusterTable(const Grouping& grouping, std::size_t capacity);

    /// Puts a cluster in, unless one that is the same stands there.
    void insert(std::uint32_t number);
    /// How many stand there.
    [[nodiscard]] std::size_t size() const noexcept { return size_; }

    /// Number of the cluster that is the same as another grouping's, or `Grouping::none`.
    [[nodiscard]] std::uint32_t find(const Grouping& others, std::uint32_t number) const {
        return cells_[cellOf(others, number)];
    }

 private:
    /// Where such a cluster stands, or would stand.
    [[nodiscard]] std::size_t cellOf(const Grouping& others, std::uint32_t number) const;

    const Grouping& grouping_;
    std::vector<std::uint32_t> cells_;  // half full at most, a power of two; the next one where one is taken
    std::size_t size_ = 0;
};

}  // namespace pelta::detail
