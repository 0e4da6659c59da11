#include <array>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <proj.h>
#include <random>
#include <vector>

#include <pelta/Coordinate/GeoTrans.h>
#include <pelta/Coordinate/PgmGridPoint.h>

#include "Timing.h"

// Conversion between WGS84 and KATEC beside PROJ's, with the same ellipsoids, shift and projection. PROJ's
// transformation is made once.

namespace {

using namespace pelta;
using bench::median;
using bench::milliseconds;

constexpr std::size_t count = 200'000;

constexpr const char* pipeline =
    "+proj=pipeline +step +proj=unitconvert +xy_in=deg +xy_out=rad"
    " +step +proj=cart +ellps=WGS84 +step +inv +proj=helmert +x=-146.43 +y=507.89 +z=681.46"
    " +step +inv +proj=cart +ellps=bessel"
    " +step +proj=tmerc +lat_0=38 +lon_0=128 +k=0.9999 +x_0=400000 +y_0=600000 +ellps=bessel";

std::vector<GeoPoint> pointsOverKorea() {
    std::mt19937_64 random(20261121);
    std::uniform_real_distribution<double> latitude(33, 39);
    std::uniform_real_distribution<double> longitude(124, 132);
    std::vector<GeoPoint> points(count);
    for (GeoPoint& point : points) {
        point = {longitude(random), latitude(random), 0};
    }
    return points;
}

/// PROJ's call for one point.
class Proj {
 public:
    Proj() : transformation_(proj_create(PJ_DEFAULT_CTX, pipeline)) {
        if (transformation_ == nullptr) {
            std::fputs("PROJ does not know the pipeline\n", stderr);
            std::exit(1);
        }
    }
    ~Proj() { proj_destroy(transformation_); }
    Proj(const Proj&) = delete;
    Proj& operator=(const Proj&) = delete;

    [[nodiscard]] GeoPoint forward(const GeoPoint& point) const {
        const PJ_COORD result = proj_trans(transformation_, PJ_FWD, proj_coord(point.x, point.y, 0, 0));
        return {result.xy.x, result.xy.y, 0};
    }
    [[nodiscard]] GeoPoint back(const GeoPoint& point) const {
        const PJ_COORD result = proj_trans(transformation_, PJ_INV, proj_coord(point.x, point.y, 0, 0));
        return {result.xy.x, result.xy.y, 0};
    }

 private:
    PJ* transformation_;
};

/// Sum of all results: keeps the work from being left out.
double sum = 0;

template <class Convert>
double timeOfEach(const std::vector<GeoPoint>& points, Convert&& convert) {
    return milliseconds([&] {
        for (const GeoPoint& point : points) {
            const GeoPoint result = convert(point);
            sum += result.x + result.y;
        }
    });
}

double timeOfBatch(const std::vector<GeoPoint>& points, std::vector<GeoPoint>& grid,
                   std::vector<GeoPoint>& back) {
    return milliseconds([&] {
        GeoTrans().convert(GeoTrans::GEO, GeoTrans::KATEC, points, grid);
        GeoTrans().convert(GeoTrans::KATEC, GeoTrans::GEO, grid, back);
        sum += back[count / 2].x;
    });
}

void print(const char* name, const std::vector<double>& ours, const std::vector<double>& rival) {
    constexpr double nanosecondsInMillisecond = 1e6;
    const double perPoint = nanosecondsInMillisecond / static_cast<double>(count);
    std::printf("  %-42s %7.1f ns   proj_trans %7.1f ns   ratio %.3f\n", name, median(ours) * perPoint,
                median(rival) * perPoint, median(ours) / median(rival));
}

}  // namespace

int main(int argumentCount, char** words) {
    const int turns = bench::isShortForm(argumentCount, words) ? 1 : 15;
    const Proj proj;
    const std::vector<GeoPoint> points = pointsOverKorea();
    std::vector<GeoPoint> grid(count);
    std::vector<GeoPoint> back(count);
    std::vector<double> one, batch, object, rivalBoth, rivalForward;
    for (int turn = 0; turn < turns; ++turn) {
        rivalBoth.push_back(
            timeOfEach(points, [&](const GeoPoint& point) { return proj.back(proj.forward(point)); }));
        one.push_back(timeOfEach(points, [](const GeoPoint& point) {
            const GeoTrans trans;
            return trans.convert(GeoTrans::KATEC, GeoTrans::GEO,
                                 trans.convert(GeoTrans::GEO, GeoTrans::KATEC, point));
        }));
        batch.push_back(timeOfBatch(points, grid, back));
        rivalForward.push_back(
            timeOfEach(points, [&](const GeoPoint& point) { return proj.forward(point); }));
        object.push_back(timeOfEach(points, [](const GeoPoint& point) {
            const PgmKatec katec(CLLocationCoordinate2D{point.y, point.x});
            return GeoPoint{katec.x, katec.y, 0};
        }));
    }
    std::printf("Grid conversion, %zu points over Korea, median of %d turns (sum of results %.6g)\n", count,
                turns, sum);
    print("WGS84 to KATEC and back, one point", one, rivalBoth);
    print("WGS84 to KATEC and back, batch", batch, rivalBoth);
    print("PgmKatec from a coordinate", object, rivalForward);
    return 0;
}
