#include <algorithm>
#include <cmath>

#include <pelta/Platform/CALayer.h>

namespace pelta {

namespace {

double finiteOrZero(double value) noexcept {
    return std::isfinite(value) ? value : 0;
}

/// One coordinate of a cubic Bézier curve that starts at 0 and ends at 1.
struct BezierCoordinate {
    double first;   ///< Of the first control point.
    double second;  ///< Of the second control point.

    [[nodiscard]] double at(double t) const noexcept {
        const double u = 1 - t;
        return 3 * u * u * t * first + 3 * u * t * t * second + t * t * t;
    }

    [[nodiscard]] double slopeAt(double t) const noexcept {
        const double u = 1 - t;
        return 3 * u * u * first + 6 * u * t * (second - first) + 3 * t * t * (1 - second);
    }
};

/// The curve parameter where a growing coordinate has a value: Newton's steps, kept inside a bracket that is
/// halved whenever a step would leave it.
double parameterAt(const BezierCoordinate& coordinate, double value) noexcept {
    double low = 0;
    double high = 1;
    double t = value;
    for (int step = 0; step < 64; ++step) {
        const double error = coordinate.at(t) - value;
        if (std::abs(error) < 1e-15) {
            break;
        }
        (error < 0 ? low : high) = t;
        const double next = t - error / coordinate.slopeAt(t);  // Not finite where the curve stands still.
        t = next > low && next < high ? next : (low + high) / 2;
    }
    return t;
}

}  // namespace

CAMediaTimingFunction::CAMediaTimingFunction(double x1, double y1, double x2, double y2) noexcept
    : x1_(std::clamp(finiteOrZero(x1), 0.0, 1.0)),
      y1_(finiteOrZero(y1)),
      x2_(std::clamp(finiteOrZero(x2), 0.0, 1.0)),
      y2_(finiteOrZero(y2)) {}

double CAMediaTimingFunction::progressAt(double time) const noexcept {
    if (!(time > 0)) {
        return 0;
    }
    if (time >= 1) {
        return 1;
    }
    if (x1_ == y1_ && x2_ == y2_) {
        return time;
    }
    return BezierCoordinate{y1_, y2_}.at(parameterAt({x1_, x2_}, time));
}

}  // namespace pelta
