#pragma once

#include <cstddef>
#include <span>

#include <pelta/Coordinate/GeoTrans.h>

namespace pelta::detail {

/// True where the processor and the build have the wide conversion.
[[nodiscard]] bool hasWideConversion() noexcept;

/// Converts points four at a time, those that are not ordinary one at a time by `trans`. Only where
/// `hasWideConversion`.
/// @return how many were converted: all but up to three at the end.
std::size_t convertWide(const GeoTrans& trans, int source, int destination, std::span<const GeoPoint> points,
                        std::span<GeoPoint> results);

}  // namespace pelta::detail
