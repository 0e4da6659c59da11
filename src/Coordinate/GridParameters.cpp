#include "Coordinate/GridParameters.h"

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace pelta {
namespace {

using detail::GridParameters;
using detail::MeridianSeries;

constexpr double eccentricitySquared(std::size_t system) {
    const double ratio = GeoTrans::m_arMinor[system] / GeoTrans::m_arMajor[system];
    return 1 - ratio * ratio;
}

constexpr MeridianSeries meridianSeries(double es) {
    return {1 - 0.25 * es * (1 + es / 16 * (3 + 1.25 * es)),
            0.375 * es * (1 + 0.25 * es * (1 + 0.46875 * es)), 0.05859375 * es * es * (1 + 0.75 * es),
            es * es * es * (35.0 / 3072)};
}

double meridianDistance(const MeridianSeries& series, double latitude) {
    return series.e0 * latitude - series.e1 * std::sin(2 * latitude) + series.e2 * std::sin(4 * latitude) -
           series.e3 * std::sin(6 * latitude);
}

GridParameters makeParameters(std::size_t system) {
    GridParameters grid;
    grid.major = GeoTrans::m_arMajor[system];
    grid.minor = GeoTrans::m_arMinor[system];
    grid.eccentricitySquared = eccentricitySquared(system);
    grid.secondEccentricitySquared = grid.eccentricitySquared / (1 - grid.eccentricitySquared);
    grid.scale = GeoTrans::m_arScaleFactor[system];
    grid.centralMeridian = GeoTrans::m_arLonCenter[system];
    grid.falseEasting = GeoTrans::m_arFalseEasting[system];
    grid.falseNorthing = GeoTrans::m_arFalseNorthing[system];
    grid.meridian = meridianSeries(grid.eccentricitySquared);
    grid.originDistance = grid.major * meridianDistance(grid.meridian, GeoTrans::m_arLatCenter[system]);
    grid.needsDatumShift = system == GeoTrans::KATEC || system == GeoTrans::TM;
    return grid;
}

const std::array<GridParameters, 5>& allParameters() {
    static const std::array<GridParameters, 5> all{makeParameters(0), makeParameters(1), makeParameters(2),
                                                   makeParameters(3), makeParameters(4)};
    return all;
}

GeoTrans::Table tableOf(double GridParameters::*field) {
    GeoTrans::Table table{};
    for (std::size_t system = 0; system < table.size(); ++system) {
        table[system] = allParameters()[system].*field;
    }
    return table;
}

}  // namespace

const GeoTrans::Table& GeoTrans::m_Es() {
    static const Table table = tableOf(&GridParameters::eccentricitySquared);
    return table;
}

const GeoTrans::Table& GeoTrans::m_Esp() {
    static const Table table = tableOf(&GridParameters::secondEccentricitySquared);
    return table;
}

const GeoTrans::Table& GeoTrans::src_m() {
    static const Table table = tableOf(&GridParameters::originDistance);
    return table;
}

const GeoTrans::Table& GeoTrans::dst_m() {
    return src_m();
}

namespace detail {

const GridParameters& gridParameters(int system) {
    if (system < 0 || system > 4) {
        std::fprintf(stderr, "GeoTrans: there is no coordinate system %d; the systems are 0 to 4\n", system);
        std::abort();
    }
    return allParameters()[static_cast<std::size_t>(system)];
}

}  // namespace detail
}  // namespace pelta
