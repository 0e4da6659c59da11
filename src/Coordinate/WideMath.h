#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <immintrin.h>

namespace pelta::detail {

/// Four numbers that are worked on in step, and the outcome of comparing four pairs.
using Wide = double __attribute__((vector_size(32)));
using WideCondition = std::int64_t __attribute__((vector_size(32)));

/// Arithmetic of the conversion steps on four ordinary points: angles within a few turns, no number that is
/// not finite. Polynomials are Taylor series up to the term that vanishes in rounding on the reduced range.
struct WideMath {
    using Number = Wide;
    using Condition = WideCondition;

    static Wide squareRoot(Wide value) { return _mm256_sqrt_pd(value); }
    static Wide absolute(Wide value) { return value < 0.0 ? -value : value; }
    static Wide choose(WideCondition condition, Wide yes, Wide no) { return condition ? yes : no; }
    static WideCondition always() { return WideCondition{-1, -1, -1, -1}; }
    static WideCondition both(WideCondition one, WideCondition other) { return one & other; }
    static bool any(WideCondition condition) {
        return (condition[0] | condition[1] | condition[2] | condition[3]) != 0;
    }
    static Wide nearest(Wide value) {
        return _mm256_round_pd(value, _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC);
    }

    static void sineAndCosine(Wide angle, Wide& sine, Wide& cosine) {
        // π/2 in three parts, of which the first two have so many zero bits that their multiples are exact.
        constexpr double part1 = 1.57079632673412561417e+00;
        constexpr double part2 = 6.07710050630396597660e-11;
        constexpr double part3 = 2.02226624879595063154e-21;
        const Wide quarter = nearest(angle * 0.63661977236758134308);
        const Wide r = ((angle - quarter * part1) - quarter * part2) - quarter * part3;
        const Wide r2 = r * r;
        const Wide s = r + r * r2 * polynomial(r2, sineTerms);
        const Wide c = 1.0 - 0.5 * r2 + r2 * r2 * polynomial(r2, cosineTerms);
        const Wide half = quarter * 0.5;
        const auto isOdd = (half - nearest(half)) != 0.0;
        // Quarters counted modulo 4: 0, 1, 2 or 3.
        const Wide turn = quarter - 4.0 * _mm256_floor_pd(quarter * 0.25);
        const Wide plainSine = isOdd ? c : s;
        const Wide plainCosine = isOdd ? s : c;
        sine = (turn >= 2.0) ? -plainSine : plainSine;
        cosine = ((turn == 1.0) | (turn == 2.0)) ? -plainCosine : plainCosine;
    }

    /// atan of any ratio.
    static Wide arcTangent(Wide ratio) {
        const Wide size = absolute(ratio);
        const auto isSteep = size > 1.0;
        const Wide slope = isSteep ? 1.0 / size : size;
        const Wide angle = arcTangentOfSlope(slope);
        const Wide positive = isSteep ? 1.5707963267948966 - angle : angle;
        return (ratio < 0.0) ? -positive : positive;
    }

    /// atan2 for an x that is not 0.
    static Wide arcTangent2(Wide y, Wide x) {
        const Wide half = arcTangent(y / x);
        const Wide turn = (y < 0.0) ? Wide{} - 3.141592653589793 : Wide{} + 3.141592653589793;
        return (x < 0.0) ? half + turn : half;
    }

 private:
    // 1/3!, 1/5!, … with signs, lowest power first.
    static constexpr std::array<double, 8> sineTerms{-1.0 / 6,
                                                     1.0 / 120,
                                                     -1.0 / 5040,
                                                     1.0 / 362880,
                                                     -1.0 / 39916800,
                                                     1.0 / 6227020800.0,
                                                     -1.0 / 1307674368000.0,
                                                     1.0 / 355687428096000.0};
    static constexpr std::array<double, 7> cosineTerms{
        1.0 / 24,        -1.0 / 720,           1.0 / 40320,           -1.0 / 3628800,
        1.0 / 479001600, -1.0 / 87178291200.0, 1.0 / 20922789888000.0};
    static constexpr std::array<double, 6> arcTangentTerms{-1.0 / 3, 1.0 / 5,   -1.0 / 7,
                                                           1.0 / 9,  -1.0 / 11, 1.0 / 13};
    /// atan(i / 8).
    static constexpr std::array<double, 9> arcTangentOfEighths{0.0,
                                                               0.12435499454676144,
                                                               0.24497866312686414,
                                                               0.3587706702705722,
                                                               0.4636476090008061,
                                                               0.5585993153435624,
                                                               0.6435011087932844,
                                                               0.7188299996216245,
                                                               0.7853981633974483};

    template <std::size_t Count>
    static Wide polynomial(Wide x, const std::array<double, Count>& terms) {
        Wide sum = Wide{} + terms[Count - 1];
        for (std::size_t i = Count - 1; i > 0; --i) {
            sum = sum * x + terms[i - 1];
        }
        return sum;
    }

    /// atan of a slope from 0 to 1: the nearest eighth from the table, and the rest, at most 1/16, by its
    /// series.
    static Wide arcTangentOfSlope(Wide slope) {
        const Wide eighth = nearest(slope * 8.0);
        const Wide start = eighth * 0.125;
        const Wide rest = (slope - start) / (1.0 + slope * start);
        const Wide rest2 = rest * rest;
        Wide base{};
        for (int lane = 0; lane < 4; ++lane) {
            base[lane] = arcTangentOfEighths[static_cast<std::size_t>(eighth[lane]) & 15U];
        }
        return base + (rest + rest * rest2 * polynomial(rest2, arcTangentTerms));
    }
};

}  // namespace pelta::detail
