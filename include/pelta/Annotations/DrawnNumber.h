#pragma once

#include <cmath>

namespace pelta {

/// A number of a shape, as it was set and as it is drawn: one that is not finite is told by the getter and
/// otherwise passed over.
class DrawnNumber {
 public:
    /// @param first  what is drawn until a finite number is set.
    constexpr explicit DrawnNumber(double first) noexcept : set_(first), drawn_(first) {}

    /// The number as it was set last.
    [[nodiscard]] double asSet() const noexcept { return set_; }
    /// Keeps any number; what is drawn stays until `draw`.
    void set(double number) noexcept { set_ = number; }

    /// Takes over the number that was set, if it is finite.
    /// @return what is to be drawn, always finite.
    double draw() noexcept {
        drawn_ = std::isfinite(set_) ? set_ : drawn_;
        return drawn_;
    }

 private:
    double set_;
    double drawn_;
};

}  // namespace pelta
