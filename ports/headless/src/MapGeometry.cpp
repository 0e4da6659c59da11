#include "MapGeometry.h"

#include <algorithm>
#include <cstddef>

namespace pelta {

namespace {

struct Segment {
    CGPoint from;
    CGPoint to;
};

/// Twice the area of the triangle, positive when `c` lies to the right of the way from `a` to `b`.
double orientation(CGPoint a, CGPoint b, CGPoint c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

double squaredDistance(CGPoint point, const Segment& segment) {
    const double dx = segment.to.x - segment.from.x;
    const double dy = segment.to.y - segment.from.y;
    const double length = dx * dx + dy * dy;
    double along = 0;
    if (length > 0) {
        along = ((point.x - segment.from.x) * dx + (point.y - segment.from.y) * dy) / length;
        along = std::clamp(along, 0.0, 1.0);
    }
    const double x = segment.from.x + along * dx - point.x;
    const double y = segment.from.y + along * dy - point.y;
    return x * x + y * y;
}

bool doCross(const Segment& a, const Segment& b) {
    return orientation(a.from, a.to, b.from) * orientation(a.from, a.to, b.to) < 0 &&
           orientation(b.from, b.to, a.from) * orientation(b.from, b.to, a.to) < 0;
}

bool areNear(const Segment& a, const Segment& b, double distance) {
    const double limit = distance * distance;
    return doCross(a, b) || squaredDistance(a.from, b) <= limit || squaredDistance(a.to, b) <= limit ||
           squaredDistance(b.from, a) <= limit || squaredDistance(b.to, a) <= limit;
}

bool isSegmentNearQuad(const Segment& segment, const MapQuad& quad, double distance) {
    for (std::size_t i = 0; i < quad.size(); ++i) {
        if (areNear(segment, {quad[i], quad[(i + 1) % quad.size()]}, distance)) {
            return true;
        }
    }
    return false;
}

bool contains(std::span<const CGPoint> ring, CGPoint point) {
    bool isInside = false;
    CGPoint previous = ring.back();
    for (const CGPoint corner : ring) {
        if ((corner.y > point.y) != (previous.y > point.y)) {
            const double share = (point.y - corner.y) / (previous.y - corner.y);
            isInside ^= point.x < corner.x + share * (previous.x - corner.x);
        }
        previous = corner;
    }
    return isInside;
}

}  // namespace

MapBox MapBox::around(std::span<const CGPoint> points) noexcept {
    MapBox box{points.front().x, points.front().y, points.front().x, points.front().y};
    for (const CGPoint point : points.subspan(1)) {
        box.minX = std::min(box.minX, point.x);
        box.minY = std::min(box.minY, point.y);
        box.maxX = std::max(box.maxX, point.x);
        box.maxY = std::max(box.maxY, point.y);
    }
    return box;
}

bool MapBox::isNear(const MapBox& other, double margin) const noexcept {
    return minX - margin <= other.maxX && other.minX <= maxX + margin && minY - margin <= other.maxY &&
           other.minY <= maxY + margin;
}

bool isLineNearQuad(std::span<const CGPoint> line, const MapQuad& quad, double distance) noexcept {
    if (line.empty()) {
        return false;
    }
    if (contains(quad, line.front())) {
        return true;
    }
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
        if (isSegmentNearQuad({line[i], line[i + 1]}, quad, distance)) {
            return true;
        }
    }
    return line.size() == 1 && isSegmentNearQuad({line[0], line[0]}, quad, distance);
}

bool doesAreaTouchQuad(std::span<const MapLine> rings, const MapQuad& quad) noexcept {
    bool isCornerInside = false;
    for (const MapLine ring : rings) {
        if (isLineNearQuad(ring, quad, 0) || isSegmentNearQuad({ring.back(), ring.front()}, quad, 0)) {
            return true;
        }
        isCornerInside ^= contains(ring, quad[0]);
    }
    return isCornerInside;
}

}  // namespace pelta
