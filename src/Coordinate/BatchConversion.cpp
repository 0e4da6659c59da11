#include "Coordinate/BatchConversion.h"

#if defined(__x86_64__) && defined(__AVX2__) && defined(__FMA__)

#include "Coordinate/GridPipeline.h"
#include "Coordinate/WideMath.h"

namespace pelta::detail {
namespace {

constexpr std::size_t lanes = 4;

/// Takes a point's place in a group where the group's point would spoil the arithmetic of its neighbours.
constexpr double harmless = 0;
/// Degrees or metres beyond which a point is left to the conversion of one.
constexpr double furthest = 1e7;

}  // namespace

bool hasWideConversion() noexcept {
    static const bool has = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    return has;
}

std::size_t convertWide(const GeoTrans& trans, int source, int destination, std::span<const GeoPoint> points,
                        std::span<GeoPoint> results) {
    const GridPipeline<WideMath> pipeline(source, destination);
    const std::size_t end = points.size() / lanes * lanes;
    for (std::size_t first = 0; first < end; first += lanes) {
        Wide x{};
        Wide y{};
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            x[lane] = points[first + lane].x;
            y[lane] = points[first + lane].y;
        }
        const WideCondition isNear =
            (WideMath::absolute(x) <= furthest) & (WideMath::absolute(y) <= furthest);
        WideCondition isOrdinary{};
        const auto result =
            pipeline.run(isNear ? x : Wide{} + harmless, isNear ? y : Wide{} + harmless, isOrdinary);
        isOrdinary = isOrdinary & isNear;
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            const GeoPoint point{x[lane], y[lane], 0};
            results[first + lane] = isOrdinary[lane] != 0 ? GeoPoint{result.x[lane], result.y[lane], 0}
                                                          : trans.convert(source, destination, point);
        }
    }
    return end;
}

}  // namespace pelta::detail

#else

namespace pelta::detail {

bool hasWideConversion() noexcept {
    return false;
}

std::size_t convertWide(const GeoTrans&, int, int, std::span<const GeoPoint>, std::span<GeoPoint>) {
    return 0;
}

}  // namespace pelta::detail

#endif
