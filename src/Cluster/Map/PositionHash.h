#pragma once

#include <cstddef>
#include <cstdint>

#include <pelta/Platform/CoreLocation.h>

namespace pelta::detail {

/// Spreads a number over all 64 bits, so that any of them can choose a place in a table.
[[nodiscard]] inline std::uint64_t mixed(std::uint64_t value) noexcept {
    value = (value ^ (value >> 32U)) * 0xD6E8FEB86659FD93U;
    value = (value ^ (value >> 32U)) * 0xD6E8FEB86659FD93U;
    return value ^ (value >> 32U);
}

/// Equal for equal positions, and as different for neighbours as for any others.
struct PositionHash {
    std::size_t operator()(CLLocationCoordinate2D position) const noexcept {
        // Adding 0 makes one number of the two zeros, which are equal.
        const auto latitude = __builtin_bit_cast(std::uint64_t, position.latitude + 0.0);
        const auto longitude = __builtin_bit_cast(std::uint64_t, position.longitude + 0.0);
        return static_cast<std::size_t>(mixed(latitude ^ mixed(longitude)));
    }
};

}  // namespace pelta::detail
