#include <cmath>

#include <pelta/Platform/CoreGraphics.h>

namespace pelta {

namespace {

using Matrix = std::array<CGFloat, 16>;

Matrix product(const Matrix& left, const Matrix& right) noexcept {
    Matrix result{};
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            for (std::size_t k = 0; k < 4; ++k) {
                result[row * 4 + column] += left[row * 4 + k] * right[k * 4 + column];
            }
        }
    }
    return result;
}

/// Rotation about a unit axis, for row vectors.
Matrix rotation(CGFloat angle, CGFloat x, CGFloat y, CGFloat z) noexcept {
    const CGFloat s = std::sin(angle);
    const CGFloat c = std::cos(angle);
    const CGFloat t = 1 - c;
    return {t * x * x + c,
            t * x * y + s * z,
            t * x * z - s * y,
            0,  //
            t * x * y - s * z,
            t * y * y + c,
            t * y * z + s * x,
            0,  //
            t * x * z + s * y,
            t * y * z - s * x,
            t * z * z + c,
            0,  //
            0,
            0,
            0,
            1};
}

}  // namespace

CGAffineTransform CGAffineTransform::rotation(CGFloat angle) noexcept {
    const CGFloat s = std::sin(angle);
    const CGFloat c = std::cos(angle);
    return {c, s, -s, c, 0, 0};
}

CATransform3D CATransform3D::rotatedBy(CGFloat angle, CGFloat x, CGFloat y, CGFloat z) const noexcept {
    const CGFloat length = std::hypot(x, y, z);
    if (!(length > 0) || !std::isfinite(length) || !std::isfinite(angle)) {
        return *this;
    }
    return {product(pelta::rotation(angle, x / length, y / length, z / length), m)};
}

}  // namespace pelta
