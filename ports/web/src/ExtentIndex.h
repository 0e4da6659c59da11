#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "Extent.h"

namespace pelta {

/// Rectangles on numbered floors, asked for the highest floor on which one of them meets another rectangle.
///
/// A loose quad tree: each rectangle lies in the deepest cell that is at least as large and holds its least
/// corner, so it reaches no further than one cell beyond. Each cell knows the highest floor below it.
class ExtentIndex {
 public:
    /// @param extent  as `Extent::grownBy` answers.
    void insert(const Extent& extent, std::size_t floor);

    /// The highest floor with a rectangle that meets `extent`, around the world; nothing if there is none.
    [[nodiscard]] std::optional<std::size_t> highestFloor(const Extent& extent) const;

 private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    static constexpr int deepestLevel = 30;

    struct Cell {
        std::array<std::size_t, 4> quarters{none, none, none, none};
        std::size_t firstEntry = none;
        std::size_t floorLimit = 0;  ///< One above the highest floor in here; 0 without entries.
    };
    struct Entry {
        Extent extent;
        std::size_t floor;
        std::size_t next;
    };
    /// A cell and the square it stands for.
    struct Place {
        std::size_t cell = 0;
        double x = 0;
        double y = 0;
        double size = 1;
    };
    /// The search for the highest floor: one above the best found so far, 0 for none.
    struct Search {
        Extent extent;
        std::size_t floorLimit = 0;
    };

    void insertOnce(const Extent& extent, std::size_t floor);
    [[nodiscard]] std::size_t quarter(std::size_t cell, std::size_t which);
    void look(const Place& place, Search& search) const;

    std::vector<Cell> cells_{Cell{}};
    std::vector<Entry> entries_;
};

}  // namespace pelta
