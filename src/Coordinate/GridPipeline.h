#pragma once

#include <numbers>

#include "Coordinate/GridSteps.h"

namespace pelta::detail {

/// Whole conversions of ordinary points, without branches on the point's values so that several can go in
/// step.
///
/// Ordinary are points up to 67 degrees from the equator, where the height has one formula, and within one
/// turn of longitude. Whether a point was is only known at the end; the rest is for `GeoTrans`' own steps.
template <class Math>
class GridPipeline {
 public:
    using Number = typename Math::Number;
    using Steps = GridSteps<Math>;

    GridPipeline(int source, int destination)
        : source_(source),
          destination_(destination),
          sourceGrid_(gridParameters(source)),
          destinationGrid_(gridParameters(destination)),
          world_(gridParameters(GeoTrans::GEO)) {}

    /// @param x,y         degrees or metres, by the source's system.
    /// @param isOrdinary  set where the result is right.
    [[nodiscard]] StepPoint<Math> run(Number x, Number y, typename Math::Condition& isOrdinary) const {
        StepPoint<Math> place = source_ == GeoTrans::GEO
                                    ? StepPoint<Math>{x * degree, y * degree, Number{}}
                                    : fromGrid(x - sourceGrid_.falseEasting, y - sourceGrid_.falseNorthing);
        const typename Math::Condition isOnTheSphere = Math::absolute(place.x) <= std::numbers::pi;
        const typename Math::Condition isOffThePoles = Math::absolute(place.y) <= highestLatitude;
        isOrdinary = isOnTheSphere & isOffThePoles;
        if (destination_ == GeoTrans::GEO) {
            return {place.x / degree, place.y / degree, Number{}};
        }
        typename Steps::Angle latitude{place.y, {}};
        if (destinationGrid_.needsDatumShift) {
            shift(place, latitude, world_, destinationGrid_, -1);
            isOrdinary = isOrdinary & (Math::absolute(latitude.value) <= highestLatitude);
        } else {
            latitude.direction = Steps::directionOf(latitude.value);
        }
        return Steps::project(destinationGrid_, latitude, place.x - destinationGrid_.centralMeridian);
    }

 private:
    static constexpr double degree = std::numbers::pi / 180;
    static constexpr double highestLatitude = 67 * degree;

    [[nodiscard]] StepPoint<Math> fromGrid(Number easting, Number northing) const {
        const auto foot = Steps::footPoint(sourceGrid_, northing);
        StepPoint<Math> place = Steps::unproject(sourceGrid_, foot, easting);
        if (sourceGrid_.needsDatumShift) {
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
