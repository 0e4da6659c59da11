#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "MapSceneLayer.h"
#include "MapSceneSource.h"

namespace pelta {

/// The features that may be drawn in some area, found by what a layer's predicate asks for.
class MapCandidates {
 public:
    struct Entry {
        std::size_t valueHash;
        std::uint32_t feature;
    };

    MapCandidates() = default;
    /// The features of a source whose boxes touch an area in some copy of the world.
    ///
    /// @param attribute  what predicates ask for; features without it, or with one that is no text, are left
    ///                   out. Empty for predicates that ask for nothing.
    MapCandidates(const MapSceneSource& source, std::string_view attribute, const MapBox& area);

    [[nodiscard]] bool isEmpty() const noexcept { return entries_.empty(); }
    /// Those whose value has a hash, in drawing order.
    [[nodiscard]] std::span<const Entry> withHash(std::size_t valueHash) const;

 private:
    std::vector<Entry> entries_;  ///< Ascending by hash, then in drawing order.
};

/// The text of an attribute, or null when it is missing or no text.
[[nodiscard]] const std::string* textAttribute(const MLNShape& feature, std::string_view name);

/// True when a box touches an area in some copy of the world.
[[nodiscard]] bool isNearInSomeCopy(const MapBox& box, const MapBox& area) noexcept;

}  // namespace pelta
