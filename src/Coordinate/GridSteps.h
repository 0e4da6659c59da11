#pragma once

#include "Coordinate/GridParameters.h"

namespace pelta::detail {

/// Angles in radians, lengths in metres; x, y, z as in `GeoPoint`.
template <class Math>
struct StepPoint {
    typename Math::Number x;
    typename Math::Number y;
    typename Math::Number z;
};

/// Sine and cosine of an angle.
template <class Math>
struct Direction {
    typename Math::Number sine;
    typename Math::Number cosine;
};

/// The steps of a conversion for ordinary points, one at a time or several in step, as `Math` has it. Where
/// the standard formulas take sines of multiple angles, these are worked out of the simple one's.
template <class Math>
struct GridSteps {
    using Number = typename Math::Number;

    [[nodiscard]] static Direction<Math> directionOf(Number angle) {
        Direction<Math> direction;
        Math::sineAndCosine(angle, direction.sine, direction.cosine);
        return direction;
    }

    /// An angle with its sine and cosine.
    struct Angle {
        Number value;
        Direction<Math> direction;
    };

    /// e1 sin 2φ − e2 sin 4φ + e3 sin 6φ.
    [[nodiscard]] static Number meridianWaves(const MeridianSeries& series, const Direction<Math>& phi) {
        const Number sine2 = 2.0 * phi.sine * phi.cosine;
        const Number cosine2 = 1.0 - 2.0 * phi.sine * phi.sine;
        // sin 4φ = 2 s c and sin 6φ = s (4 c² − 1), in terms of the doubled angle.
        return sine2 * (series.e1 - series.e2 * 2.0 * cosine2 + series.e3 * (4.0 * cosine2 * cosine2 - 1.0));
    }

    /// Geodetic to geocentric coordinates, for a latitude within ±π/2.
    [[nodiscard]] static StepPoint<Math> toGeocentric(const GridParameters& grid,
                                                      const Direction<Math>& longitude,
                                                      const Direction<Math>& latitude, Number height) {
        const double es = grid.eccentricitySquared;
        const Number normal = grid.major / Math::squareRoot(1.0 - es * latitude.sine * latitude.sine);
        const Number across = (normal + height) * latitude.cosine;
        return {across * longitude.cosine, across * longitude.sine,
                (normal * (1.0 - es) + height) * latitude.sine};
    }

    /// Sine and cosine of the latitude and distance from the axis of a geocentric point.
    struct Toms {
        Number sine;
        Number cosine;
        Number axisDistance;
    };

    [[nodiscard]] static Toms latitudeOf(const GridParameters& grid, const StepPoint<Math>& p) {
        const Number w = Math::squareRoot(p.x * p.x + p.y * p.y);
        const Number t0 = p.z * GeoTrans::AD_C;
        const Number s0 = Math::squareRoot(t0 * t0 + w * w);
        const Number sinB0 = t0 / s0;
        const Number cosB0 = w / s0;
        const Number t1 = p.z + grid.minor * grid.secondEccentricitySquared * sinB0 * sinB0 * sinB0;
        const Number sum = w - grid.major * grid.eccentricitySquared * cosB0 * cosB0 * cosB0;
        const Number s1 = Math::squareRoot(t1 * t1 + sum * sum);
        return {t1 / s1, sum / s1, w};
    }

    /// Transverse Mercator, geographic to grid.
    ///
    /// @param longitude  from the central meridian.
    [[nodiscard]] static StepPoint<Math> project(const GridParameters& grid, const Angle& latitude,
                                                 Number longitude) {
        const double es = grid.eccentricitySquared;
        const double esp = grid.secondEccentricitySquared;
        const Number s = latitude.direction.sine;
        const Number c = latitude.direction.cosine;
        const Number al = c * longitude;
        const Number als = al * al;
        const Number curvature = esp * c * c;
        const Number tq = s / c;
        const Number t = tq * tq;
        const Number normal = grid.major / Math::squareRoot(1.0 - es * s * s);
        const Number east = 1.0 + als / 6.0 *
                                      (1.0 - t + curvature +
                                       als / 20.0 * (5.0 - 18.0 * t + t * t + 72.0 * curvature - 58.0 * esp));
        const Number north =
            0.5 + als / 24.0 *
                      (5.0 - t + 9.0 * curvature + 4.0 * curvature * curvature +
                       als / 30.0 * (61.0 - 58.0 * t + t * t + 600.0 * curvature - 330.0 * esp));
        const Number distance = grid.major * (grid.meridian.e0 * latitude.value -
                                              meridianWaves(grid.meridian, latitude.direction));
        return {
            grid.falseEasting + grid.scale * normal * al * east,
            grid.falseNorthing + grid.scale * (distance - grid.originDistance + normal * tq * als * north),
            Number{}};
    }

    /// The direction turned by a small angle (at most 0.003, where the series' next terms vanish in
    /// rounding).
    [[nodiscard]] static Direction<Math> turned(const Direction<Math>& direction, Number angle) {
        const Number square = angle * angle;
        const Number sine = angle * (1.0 - square / 6.0 * (1.0 - square / 20.0));
        const Number cosine = 1.0 - square * 0.5 * (1.0 - square / 12.0 * (1.0 - square / 30.0));
        return {direction.sine * cosine + direction.cosine * sine,
                direction.cosine * cosine - direction.sine * sine};
    }

    /// The latitude of the foot point: fixed-point iteration on the meridian series, to `EPSLN` or seven
    /// passes. No pass moves it by more than the series' waves, a quarter of a percent of a radian.
    [[nodiscard]] static Angle footPoint(const GridParameters& grid, Number northing) {
        const Number con = (northing / grid.scale + grid.originDistance) / grid.major;
        Angle foot{con, directionOf(con)};
        auto isMoving = Math::always();
        for (int pass = 0; pass < 7 && Math::any(isMoving); ++pass) {
            const Number step =
                (con + meridianWaves(grid.meridian, foot.direction)) / grid.meridian.e0 - foot.value;
            const Number applied = Math::choose(isMoving, step, Number{});
            foot.value = foot.value + applied;
            foot.direction = turned(foot.direction, applied);
            isMoving = Math::both(isMoving, Math::absolute(step) > GeoTrans::EPSLN);
        }
        return foot;
    }

    /// Transverse Mercator, grid to geographic, for a foot point within ±π/2.
    ///
    /// @param easting  less the false easting.
    [[nodiscard]] static StepPoint<Math> unproject(const GridParameters& grid, const Angle& foot,
                                                   Number easting) {
        const double es = grid.eccentricitySquared;
        const double esp = grid.secondEccentricitySquared;
        const Number s = foot.direction.sine;
        const Number c = foot.direction.cosine;
        const Number tangent = s / c;
        const Number curvature = esp * c * c;
        const Number cs = curvature * curvature;
        const Number t = tangent * tangent;
        const Number ts = t * t;
        const Number con = 1.0 - es * s * s;
        const Number normal = grid.major / Math::squareRoot(con);
        const Number radius = normal * (1.0 - es) / con;
        const Number d = easting / (normal * grid.scale);
        const Number ds = d * d;
        const Number latitude =
            foot.value -
            normal * tangent * ds / radius *
                (0.5 - ds / 24.0 *
                           (5.0 + 3.0 * t + 10.0 * curvature - 4.0 * cs - 9.0 * esp -
                            ds / 30.0 *
                                (61.0 + 90.0 * t + 298.0 * curvature + 45.0 * ts - 252.0 * esp - 3.0 * cs)));
        const Number longitude =
            grid.centralMeridian +
            d *
                (1.0 -
                 ds / 6.0 *
                     (1.0 + 2.0 * t + curvature -
                      ds / 20.0 * (5.0 - 2.0 * curvature + 28.0 * t - 3.0 * cs + 8.0 * esp + 24.0 * ts))) /
                c;
        return {longitude, latitude, Number{}};
    }
};

}  // namespace pelta::detail
