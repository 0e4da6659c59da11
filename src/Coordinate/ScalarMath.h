#pragma once

#include <cmath>

namespace pelta::detail {

/// Arithmetic of the conversion steps on one point, by the standard library.
struct ScalarMath {
    using Number = double;
    using Condition = bool;

    static void sineAndCosine(double angle, double& sine, double& cosine) {
        sine = std::sin(angle);
        cosine = std::cos(angle);
    }
    static double arcTangent2(double y, double x) { return std::atan2(y, x); }
    static double arcTangent(double ratio) { return std::atan(ratio); }
    static double squareRoot(double value) { return std::sqrt(value); }
    static double absolute(double value) { return std::abs(value); }
    static double choose(bool condition, double yes, double no) { return condition ? yes : no; }
    static bool always() { return true; }
    static bool both(bool one, bool other) { return one && other; }
    static bool any(bool condition) { return condition; }
};

}  // namespace pelta::detail
