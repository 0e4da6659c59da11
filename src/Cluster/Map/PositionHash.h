#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include <pelta/Platform/CoreLocation.h>

namespace pelta::detail {

/// Spreads a number over all 64 bits, so that any of them can choose a place in a table.
[[nodiscard]] inline std::uint64_t mixed(std::uint64_t value) noexcept {
    value = (value ^ (value >> 32U)) * 0xD6E8FEB86659FD93U;
    value = (value ^ (value >> 32U)) * 0xD6E8FEB86659FD93U;
    return value ^ (value >> 32U);
}

/// The bits of a number, the same for the two zeros, which are equal. (Emscripten's library lacks
/// `std::bit_cast`.)
[[nodiscard]] inline std::uint64_t bitsOf(double number) noexcept {
    const double oneZero = number + 0.0;
    std::uint64_t bits = 0;
    std::memcpy(&bits, &oneZero, sizeof bits);
    return bits;
}

/// Equal for equal positions, and as different for neighbours as for any others.
struct PositionHash {
    std::size_t operator()(CLLocationCoordinate2D position) const noexcept {
        return static_cast<std::size_t>(mixed(bitsOf(position.latitude) ^ mixed(bitsOf(position.longitude))));
    }
};

}  // namespace pelta::detail
