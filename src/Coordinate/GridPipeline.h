#pragma once

#include <numbers>

#include "Coordinate/GridSteps.h"

namespace pelta::detail {

/// Whole conversions of ordinary points, without branches on the point's values so that several can go in
/// step.
///
/// Ordinary are points that stay, at every step of their way, up to 67 degrees from the equator, where the
/// height has one formula, and within one turn of longitude. Each step is judged by what goes into it: its
/// sines would fold a latitude beyond a pole back onto the earth. Whether a point was ordinary is only known
/// at the end; the rest is for `GeoTrans`' own steps.
template <class Math>
class GridPipeline {
 public:
    using Number = typename Math::Number;
    using Condition = typename Math::Condition;
    using Steps = GridSteps<Math>;

    GridPipeline(int source, int destination)
        : source_(source),
          destination_(destination),
          sourceGrid_(gridParameters(source)),
          destinationGrid_(gridParameters(destination)),
          world_(gridParameters(GeoTrans::GEO)) {}

    /// @param x,y         degrees or metres, by the source's system.
    /// @param isOrdinary  set where the result is right.
    [[nodiscard]] StepPoint<Math> run(Number x, Number y, Condition& isOrdinary) const {
        isOrdinary = Math::always();
        StepPoint<Math> place =
            source_ == GeoTrans::GEO
                ? StepPoint<Math>{x * degree, y * degree, Number{}}
                : fromGrid(x - sourceGrid_.falseEasting, y - sourceGrid_.falseNorthing, isOrdinary);
        isOrdinary = Math::both(isOrdinary, isOrdinaryPlace(place));
        if (destination_ == GeoTrans::GEO) {
            return {place.x / degree, place.y / degree, Number{}};
        }
        typename Steps::Angle latitude{place.y, {}};
        if (destinationGrid_.needsDatumShift) {
            shift(place, latitude, world_, destinationGrid_, -1);
            isOrdinary = Math::both(isOrdinary, isOffThePoles(latitude.value));
        } else {
            latitude.direction = Steps::directionOf(latitude.value);
        }
        return Steps::project(destinationGrid_, latitude, place.x - destinationGrid_.centralMeridian);
    }

 private:
    static constexpr double degree = std::numbers::pi / 180;
    static constexpr double highestLatitude = 67 * degree;

    [[nodiscard]] static Condition isOffThePoles(Number latitude) {
        return Math::absolute(latitude) <= highestLatitude;
    }

    [[nodiscard]] static Condition isOrdinaryPlace(const StepPoint<Math>& place) {
        return Math::both(Math::absolute(place.x) <= std::numbers::pi, isOffThePoles(place.y));
    }

    /// @param isOrdinary  cleared where a step's input is not ordinary.
    [[nodiscard]] StepPoint<Math> fromGrid(Number easting, Number northing, Condition& isOrdinary) const {
        const auto foot = Steps::footPoint(sourceGrid_, northing);
        isOrdinary = Math::both(isOrdinary, isOffThePoles(foot.value));
        StepPoint<Math> place = Steps::unproject(sourceGrid_, foot, easting);
        if (sourceGrid_.needsDatumShift) {
            isOrdinary = Math::both(isOrdinary, isOrdinaryPlace(place));
            typename Steps::Angle latitude{place.y, {}};
            shift(place, latitude, sourceGrid_, world_, 1);
        }
        return place;
    }

    /// Moves longitude, latitude and height from one ellipsoid to another. `latitude` receives the new
    /// latitude.
    static void shift(StepPoint<Math>& place, typename Steps::Angle& latitude, const GridParameters& from,
                      const GridParameters& to, double sign) {
        StepPoint<Math> geocentric =
            Steps::toGeocentric(from, Steps::directionOf(place.x), Steps::directionOf(place.y), place.z);
        geocentric.x = geocentric.x + sign * datumShift[0];
        geocentric.y = geocentric.y + sign * datumShift[1];
        geocentric.z = geocentric.z + sign * datumShift[2];
        const auto toms = Steps::latitudeOf(to, geocentric);
        const Number normal =
            to.major / Math::squareRoot(1.0 - to.eccentricitySquared * toms.sine * toms.sine);
        latitude = {Math::arcTangent(toms.sine / toms.cosine), {toms.sine, toms.cosine}};
        place = {Math::arcTangent2(geocentric.y, geocentric.x), latitude.value,
                 toms.axisDistance / toms.cosine - normal};
    }

    int source_;
    int destination_;
    const GridParameters& sourceGrid_;
    const GridParameters& destinationGrid_;
    const GridParameters& world_;
};

}  // namespace pelta::detail
