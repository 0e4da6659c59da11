#pragma once

#include <algorithm>
#include <limits>
#include <vector>

/// @file
/// Linear conditions for a camera that is to show something whole.

namespace pelta::fitting {

inline constexpr double unbounded = std::numeric_limits<double>::infinity();

/// Where a number may be.
struct Range {
    double low = -unbounded;
    double high = unbounded;

    [[nodiscard]] double middle() const noexcept { return (low + high) / 2; }
    /// The nearest value of the range; where nothing is left of it, what misses both ends alike.
    [[nodiscard]] double nearest(double wanted) const noexcept {
        return low <= high ? std::clamp(wanted, low, high) : middle();
    }
};

/// What a camera has to meet: size × world + right × x + down × y ≤ limit, with the side of the world in
/// points and the way (x, y) from the middle of what is shown to the camera's centre, in points of the ground
/// along the axes of the screen.
struct Condition {
    double size = 0;
    double right = 0;
    double down = 0;
    double limit = 0;

    [[nodiscard]] Condition times(double factor) const noexcept {
        return {size * factor, right * factor, down * factor, limit * factor};
    }
    [[nodiscard]] Condition plus(const Condition& other) const noexcept {
        return {size + other.size, right + other.right, down + other.down, limit + other.limit};
    }
};

using Conditions = std::vector<Condition>;
/// One of `size`, `right` and `down`.
using Unknown = double Condition::*;

/// What the conditions say about the other unknowns: each upper bound of the one lies above each lower bound
/// (Fourier and Motzkin).
[[nodiscard]] Conditions without(Unknown unknown, const Conditions& conditions);
/// The conditions with a value in place of an unknown.
[[nodiscard]] Conditions with(Unknown unknown, double value, Conditions conditions);
/// Where an unknown may be when the conditions hold no other. The lower end lies above the upper one when it
/// may be nowhere.
[[nodiscard]] Range rangeOf(Unknown unknown, const Conditions& conditions);

}  // namespace pelta::fitting
