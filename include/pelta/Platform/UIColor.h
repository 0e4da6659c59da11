#pragma once

namespace pelta {

/// Colour in sRGB with straight (not premultiplied) alpha; every component from 0 to 1. Values outside are
/// kept and clamped when drawn.
struct UIColor {
    double red = 0;    ///< 0 to 1.
    double green = 0;  ///< 0 to 1.
    double blue = 0;   ///< 0 to 1.
    double alpha = 1;  ///< Opacity, 0 to 1.

    /// Opaque black.
    [[nodiscard]] static constexpr UIColor black() noexcept { return {0, 0, 0, 1}; }
    /// Opaque white.
    [[nodiscard]] static constexpr UIColor white() noexcept { return {1, 1, 1, 1}; }
    /// Fully transparent black.
    [[nodiscard]] static constexpr UIColor clear() noexcept { return {0, 0, 0, 0}; }

    /// The same colour with another opacity.
    [[nodiscard]] constexpr UIColor withAlpha(double value) const noexcept {
        return {red, green, blue, value};
    }

    friend bool operator==(const UIColor&, const UIColor&) = default;
};

}  // namespace pelta
