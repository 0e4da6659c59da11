#include "Cluster/Map/ClusterTable.h"

#include <bit>

namespace pelta::detail {

ClusterTable::ClusterTable(const Grouping& grouping, std::size_t capacity)
    : grouping_(grouping), cells_(std::bit_ceil(capacity * 2 + 1), Grouping::none) {}

void ClusterTable::insert(std::uint32_t number) {
    std::uint32_t& cell = cells_[cellOf(grouping_, number)];
    if (cell == Grouping::none) {
        cell = number;
        ++size_;
    }
}

std::size_t ClusterTable::cellOf(const Grouping& others, std::uint32_t number) const {
    const std::size_t mask = cells_.size() - 1;
    std::size_t cell = others.hash(number) & mask;
    while (cells_[cell] != Grouping::none && !grouping_.isSame(cells_[cell], others, number)) {
        cell = (cell + 1) & mask;
    }
    return cell;
}

}  // namespace pelta::detail
