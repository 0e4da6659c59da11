#pragma once

#include <span>

#include <pelta/Platform/CoreLocation.h>
#include <pelta/Platform/Log.h>

namespace pelta {

/// Stops the process when a new line or area has fewer than two coordinates.
inline void requireTwoOrMore(std::span<const CLLocationCoordinate2D> coords,
                             std::string_view file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (coords.size() < 2) {
        fatalError("coords count must be 2 or more", file, line);
    }
}

}  // namespace pelta
