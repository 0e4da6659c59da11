#include "Engine/DrawnKind.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include "Engine/Mercator.h"

namespace pelta {

namespace {

using Ring = std::span<const CLLocationCoordinate2D>;

/// Side lengths of the Mercator square below which nothing is told apart: less than a tenth of a point at the
/// highest zoom, and less than what is left of coordinates where they are written with nine decimals.
constexpr double smallestExtent = 1e-11;

/// Where a coordinate lies, seen from another.
CGVector offset(CLLocationCoordinate2D from, CLLocationCoordinate2D to) {
    const auto start = mercator::fromCoordinate(from);
    const auto end = mercator::fromCoordinate(to);
    return {end.x - start.x, end.y - start.y};
}

double lengthOf(CGVector vector) {
    return std::hypot(vector.dx, vector.dy);
}

bool areFinite(Ring coordinates) {
    return std::all_of(coordinates.begin(), coordinates.end(), [](CLLocationCoordinate2D each) {
        return std::isfinite(each.latitude) && std::isfinite(each.longitude);
    });
}

bool areApart(CLLocationCoordinate2D one, CLLocationCoordinate2D other) {
    return lengthOf(offset(one, other)) > smallestExtent;
}

bool hasTwoPlaces(Ring line) {
    return std::any_of(line.begin(), line.end(),
                       [&](CLLocationCoordinate2D each) { return areApart(line.front(), each); });
}

/// Whether a corner lies beside the straight line from the ring's first corner in a direction.
bool isBeside(Ring ring, CGVector direction, CLLocationCoordinate2D corner) {
    const CGVector place = offset(ring.front(), corner);
    return std::abs(direction.dx * place.dy - direction.dy * place.dx) > smallestExtent * lengthOf(direction);
}

/// Three corners, a third of the ring apart, show most rings to be wide.
bool isPlainlyWide(Ring ring) {
    const CGVector direction = offset(ring.front(), ring[ring.size() / 3]);
    return lengthOf(direction) > smallestExtent && isBeside(ring, direction, ring[ring.size() * 2 / 3]);
}

bool isStraight(Ring ring) {
    CGVector furthest;
    for (const CLLocationCoordinate2D corner : ring) {
        const CGVector place = offset(ring.front(), corner);
        furthest = lengthOf(place) > lengthOf(furthest) ? place : furthest;
    }
    return std::none_of(ring.begin(), ring.end(),
                        [&](CLLocationCoordinate2D corner) { return isBeside(ring, furthest, corner); });
}

/// Whether the parts of a ring that run one way cover as much as those that run the other way.
bool isBalanced(Ring ring) {
    double area = 0;
    double size = 0;
    CLLocationCoordinate2D previous = ring.back();
    for (const CLLocationCoordinate2D corner : ring) {
        const double east = corner.longitude - ring.front().longitude;
        const double north = corner.latitude - ring.front().latitude;
        const double part = (previous.longitude - ring.front().longitude) * north -
                            (previous.latitude - ring.front().latitude) * east;
        area += part;
        size += std::abs(part);
        previous = corner;
    }
    constexpr double rounding = 1e-9;
    return std::abs(area) <= size * rounding;
}

/// Whether every edge is walked as often one way as the other.
bool isWalkedThereAndBack(Ring ring) {
    using Edge = std::array<double, 4>;
    std::vector<Edge> forth;
    std::vector<Edge> back;
    CLLocationCoordinate2D previous = ring.back();
    for (const CLLocationCoordinate2D corner : ring) {
        if (corner != previous) {
            forth.push_back({previous.latitude, previous.longitude, corner.latitude, corner.longitude});
            back.push_back({corner.latitude, corner.longitude, previous.latitude, previous.longitude});
        }
        previous = corner;
    }
    std::sort(forth.begin(), forth.end());
    std::sort(back.begin(), back.end());
    return forth == back;
}

bool hasInside(Ring ring) {
    return (isPlainlyWide(ring) || !isStraight(ring)) && !(isBalanced(ring) && isWalkedThereAndBack(ring));
}

}  // namespace

std::optional<MLNShapeKind> drawnKindOfLine(Ring line) {
    return areFinite(line) && hasTwoPlaces(line) ? std::optional(MLNShapeKind::polyline) : std::nullopt;
}

std::optional<MLNShapeKind> drawnKindOfArea(Ring ring,
                                            std::span<const std::vector<CLLocationCoordinate2D>> holes) {
    if (!std::all_of(holes.begin(), holes.end(), areFinite)) {
        return std::nullopt;
    }
    const auto outline = drawnKindOfLine(ring);
    return outline && hasInside(ring) ? std::optional(MLNShapeKind::polygon) : outline;
}

bool hasThreePlaces(Ring ring) {
    const auto second = std::find_if(
        ring.begin(), ring.end(), [&](CLLocationCoordinate2D each) { return areApart(ring.front(), each); });
    return std::any_of(second, ring.end(), [&](CLLocationCoordinate2D each) {
        return areApart(ring.front(), each) && areApart(*second, each);
    });
}

}  // namespace pelta
