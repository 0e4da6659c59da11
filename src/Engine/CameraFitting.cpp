#include "Engine/CameraFitting.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "Engine/FittingConditions.h"
#include "Engine/Mercator.h"

namespace pelta {
namespace {

using fitting::Condition;
using fitting::Conditions;
using fitting::Range;
using fitting::unbounded;

constexpr double radiansPerDegree = std::numbers::pi / 180;
/// Rays this far from the vertical, in degrees, count as hitting the horizon.
constexpr double horizonAngle = 89.25;
/// Kept free beside the padding, points, so that rounding leaves every corner inside.
constexpr double margin = 1e-5;
/// Taken off the largest zoom, so that rounding leaves a place for the centre.
constexpr double zoomSlack = 1e-7;
/// Gives a share of the world that allows a single place the width that rounding needs.
constexpr double leastReach = 1e-9;

double sine(double degrees) noexcept {
    return std::sin(degrees * radiansPerDegree);
}

double cosine(double degrees) noexcept {
    return std::cos(degrees * radiansPerDegree);
}

bool isFinite(const UIEdgeInsets& insets) {
    return std::isfinite(insets.top + insets.left + insets.bottom + insets.right);
}

/// A stretch of the screen, shortened to its middle when there is none.
Range stretch(double low, double high) noexcept {
    return low < high ? Range{low, high} : Range{(low + high) / 2, (low + high) / 2};
}

/// A coordinate rectangle in the world, seen along the axes of the screen.
class TurnedRectangle {
 public:
    TurnedRectangle(const MLNCoordinateBounds& bounds, double bearing)
        : cosine_(cosine(bearing)), sine_(sine(bearing)) {
        const auto a = mercator::fromCoordinate(bounds.sw);
        const auto b = mercator::fromCoordinate(bounds.ne);
        middle_ = {(a.x + b.x) / 2, (a.y + b.y) / 2};
        width_ = std::abs(b.x - a.x);
        for (std::size_t i = 0; i < corners_.size(); ++i) {
            const double east = (i % 2 == 0 ? a.x : b.x) - middle_.x;
            const double south = (i / 2 == 0 ? a.y : b.y) - middle_.y;
            corners_[i] = {east * cosine_ + south * sine_, south * cosine_ - east * sine_};
        }
    }

    /// The largest of right × x + down × y over the corners, with x and y from the middle in sides of the
    /// world.
    [[nodiscard]] double furthest(double right, double down) const noexcept {
        double most = -unbounded;
        for (const auto& corner : corners_) {
            most = std::max(most, right * corner.x + down * corner.y);
        }
        return most;
    }

    /// What lies `right` and `down` from the middle, in sides of the world.
    [[nodiscard]] mercator::Position at(double right, double down) const noexcept {
        return {middle_.x + right * cosine_ - down * sine_, middle_.y + down * cosine_ + right * sine_};
    }

    /// The centre stays within the square of the world, and within half a world of every corner: the copy of
    /// a corner that is shown is the one nearest to the centre.
    [[nodiscard]] Conditions worldConditions() const {
        const double north = mercator::fromCoordinate({mercator::maximumLatitude, 0}).y;
        const double reach = std::max((1 - width_) / 2, 0.0) + leastReach;
        return {{middle_.y - (1 - north), sine_, cosine_, 0},
                {north - middle_.y, -sine_, -cosine_, 0},
                {-reach, cosine_, -sine_, 0},
                {-reach, -cosine_, sine_, 0}};
    }

 private:
    double cosine_;
    double sine_;
    mercator::Position middle_;
    double width_ = 0;
    std::array<mercator::Position, 4> corners_;
};

/// The part of the screen in which something is to be shown, in points from where the camera's centre is
/// drawn, and the ground in it, by the drawn perspective: the eye looks at the centre from 1.5 view heights
/// away, and an inset moves the picture without turning the eye.
class ShownArea {
 public:
    ShownArea(const FittingFrame& frame, double pitch) : cosine_(cosine(pitch)) {
        const auto padding = isFinite(frame.padding) ? frame.padding : UIEdgeInsets{};
        const auto& inset = frame.inset;
        const CGSize size{std::max(frame.viewSize.width, 1.0), std::max(frame.viewSize.height, 1.0)};
        const double eyeDistance = 1.5 * size.height;
        const double horizon =
            pitch > 0 ? -eyeDistance * std::tan((horizonAngle - pitch) * radiansPerDegree) : -unbounded;
        const double x = std::clamp((inset.left + size.width - inset.right) / 2, 0.0, size.width);
        const double y = std::clamp((inset.top + size.height - inset.bottom) / 2, 0.0, size.height);
        const double left = inset.left + padding.left + margin - x;
        const double right = size.width - inset.right - padding.right - margin - x;
        const double top = std::max(inset.top + padding.top + margin - y, horizon);
        const double bottom = std::max(size.height - inset.bottom - padding.bottom - margin - y, horizon);
        tilt_ = sine(pitch) / eyeDistance;
        isEmpty_ = left >= right || top >= bottom;
        across_ = stretch(left, right);
        along_ = stretch(top, bottom);
    }

    [[nodiscard]] bool isEmpty() const noexcept { return isEmpty_; }

    /// All corners are drawn inside. A corner u to the right and v down from the centre is drawn u / distance
    /// to the right and v cos pitch / distance down, distance = 1 − v × tilt: each edge is a straight line on
    /// the ground.
    [[nodiscard]] Conditions conditions(const TurnedRectangle& rectangle) const {
        const auto keep = [&rectangle](double right, double down, double limit) {
            return Condition{rectangle.furthest(right, down), -right, -down, limit};
        };
        return {keep(1, across_.high * tilt_, across_.high), keep(-1, -across_.low * tilt_, -across_.low),
                keep(0, cosine_ + along_.high * tilt_, along_.high),
                keep(0, -(cosine_ + along_.low * tilt_), -along_.low)};
    }

    /// How far down on the ground the middle of something lies whose upper and lower end are drawn at the
    /// same distance from the middle of the area.
    ///
    /// @param half  half its length on the ground.
    [[nodiscard]] double middleOnGround(double half) const noexcept {
        const double middle = along_.middle();
        const double bend = tilt_ * (cosine_ + middle * tilt_);
        return 2 * (middle - bend * half * half) /
               (cosine_ + 2 * middle * tilt_ + std::hypot(cosine_, 2 * bend * half));
    }

 private:
    double cosine_;
    double tilt_ = 0;  // share of the centre's distance by which a point further down is nearer to the eye
    bool isEmpty_ = false;
    Range across_;
    Range along_;
};

Range sizesOf(const Conditions& conditions) {
    return rangeOf(&Condition::size, without(&Condition::down, without(&Condition::right, conditions)));
}

}  // namespace

CameraState cameraFitting(const MLNCoordinateBounds& bounds, const FittingFrame& frame,
                          const CameraState& present, const CameraLimits& limits) {
    if (!std::isfinite(bounds.sw.latitude + bounds.sw.longitude + bounds.ne.latitude + bounds.ne.longitude)) {
        return present;
    }
    const TurnedRectangle rectangle(bounds, present.bearing);
    const ShownArea area(frame, present.pitch);
    const auto screen = area.conditions(rectangle);
    auto all = rectangle.worldConditions();
    all.insert(all.end(), screen.begin(), screen.end());
    auto sizes = sizesOf(all);
    if (sizes.low > sizes.high) {  // Too near to the edge of the world for any camera: its limits will hold.
        all = screen;
        sizes = sizesOf(all);
    }

    CameraState fitted = present;
    const double largest = std::min(sizes.high / mercator::worldSize(0), std::numeric_limits<double>::max());
    fitted.zoom = limits.constrainZoom(area.isEmpty() || largest <= 0 ? limits.minimumZoom()
                                                                      : std::log2(largest) - zoomSlack);

    const double world = mercator::worldSize(fitted.zoom);
    all = with(&Condition::size, world, std::move(all));
    const double down = rangeOf(&Condition::down, without(&Condition::right, all))
                            .nearest(-area.middleOnGround(rectangle.furthest(0, world)));
    const auto besides = with(&Condition::down, down, with(&Condition::size, world, screen));
    const double right = rangeOf(&Condition::right, with(&Condition::down, down, all))
                             .nearest(rangeOf(&Condition::right, besides).middle());
    fitted.center = mercator::toCoordinate(rectangle.at(right / world, down / world));
    return limits.constrain(fitted, frame.viewSize);
}

}  // namespace pelta
