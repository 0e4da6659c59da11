#include "ExtentIndex.h"

#include <algorithm>

namespace pelta {

namespace {

Extent turnedBack(const Extent& extent) {
    return {extent.minX - 1, extent.minY, extent.maxX - 1, extent.maxY};
}

}  // namespace

void ExtentIndex::insert(const Extent& extent, std::size_t floor) {
    insertOnce(extent, floor);
    if (extent.maxX >= 1) {
        insertOnce(turnedBack(extent), floor);
    }
}

void ExtentIndex::insertOnce(const Extent& extent, std::size_t floor) {
    const double reach = std::max(extent.maxX - extent.minX, extent.maxY - extent.minY);
    const double cornerX = std::max(extent.minX, 0.0);
    Place place;
    cells_[0].floorLimit = std::max(cells_[0].floorLimit, floor + 1);
    for (int level = 0; level < deepestLevel && place.size / 2 >= reach; ++level) {
        place.size /= 2;
        const bool isEast = cornerX >= place.x + place.size;
        const bool isSouth = extent.minY >= place.y + place.size;
        place.x += isEast ? place.size : 0;
        place.y += isSouth ? place.size : 0;
        place.cell = quarter(place.cell, (isSouth ? 2U : 0U) + (isEast ? 1U : 0U));
        cells_[place.cell].floorLimit = std::max(cells_[place.cell].floorLimit, floor + 1);
    }
    entries_.push_back({extent, floor, cells_[place.cell].firstEntry});
    cells_[place.cell].firstEntry = entries_.size() - 1;
}

std::size_t ExtentIndex::quarter(std::size_t cell, std::size_t which) {
    if (cells_[cell].quarters[which] == none) {
        cells_[cell].quarters[which] = cells_.size();
        cells_.emplace_back();
    }
    return cells_[cell].quarters[which];
}

std::optional<std::size_t> ExtentIndex::highestFloor(const Extent& extent) const {
    Search search{extent};
    look({}, search);
    if (extent.maxX >= 1) {
        search.extent = turnedBack(extent);
        look({}, search);
    }
    return search.floorLimit > 0 ? std::optional(search.floorLimit - 1) : std::nullopt;
}

void ExtentIndex::look(const Place& place, Search& search) const {
    const Cell& cell = cells_[place.cell];
    const bool isRoot = place.cell == 0;  // Also holds what is larger than the world.
    const Extent reach{place.x, place.y, place.x + 2 * place.size, place.y + 2 * place.size};
    if (cell.floorLimit <= search.floorLimit || !(isRoot || reach.meets(search.extent))) {
        return;
    }
    for (std::size_t i = cell.firstEntry; i != none; i = entries_[i].next) {
        if (entries_[i].floor >= search.floorLimit && entries_[i].extent.meets(search.extent)) {
            search.floorLimit = entries_[i].floor + 1;
        }
    }
    for (std::size_t which = 0; which < cell.quarters.size(); ++which) {
        if (cell.quarters[which] != none) {
            const double half = place.size / 2;
            look({cell.quarters[which], place.x + (which % 2 == 1 ? half : 0),
                  place.y + (which >= 2 ? half : 0), half},
                 search);
        }
    }
}

}  // namespace pelta
