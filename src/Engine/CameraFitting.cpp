#include "Engine/CameraFitting.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "Engine/Mercator.h"

namespace pelta {
namespace {

/// The axes of a turned map: x to the right and y down on the screen.
class ScreenAxes {
 public:
    explicit ScreenAxes(double bearing)
        : cosine_(std::cos(bearing * std::numbers::pi / 180)),
          sine_(std::sin(bearing * std::numbers::pi / 180)) {}

    [[nodiscard]] mercator::Position fromWorld(mercator::Position p) const noexcept {
        return {p.x * cosine_ + p.y * sine_, p.y * cosine_ - p.x * sine_};
    }
    [[nodiscard]] mercator::Position toWorld(mercator::Position p) const noexcept {
        return {p.x * cosine_ - p.y * sine_, p.y * cosine_ + p.x * sine_};
    }

 private:
    double cosine_;
    double sine_;
};

/// The smallest rectangle in screen axes around the corners of a coordinate rectangle.
struct TurnedBox {
    mercator::Position low{std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
    mercator::Position high{std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest()};

    TurnedBox(const MLNCoordinateBounds& bounds, const ScreenAxes& axes) {
        const auto a = mercator::fromCoordinate(bounds.sw);
        const auto b = mercator::fromCoordinate(bounds.ne);
        for (const mercator::Position corner : {a, b, {a.x, b.y}, {b.x, a.y}}) {
            const auto turned = axes.fromWorld(corner);
            low = {std::min(low.x, turned.x), std::min(low.y, turned.y)};
            high = {std::max(high.x, turned.x), std::max(high.y, turned.y)};
        }
    }
};

bool isFinite(const UIEdgeInsets& insets) {
    return std::isfinite(insets.top + insets.left + insets.bottom + insets.right);
}

/// The zoom at which a part of the world has a length in points; without an extent any zoom will do.
double zoomForLength(double length, double extent) {
    constexpr double noExtent = 1e-15;
    return extent > noExtent ? std::log2(length / (mercator::worldSize(0) * extent))
                             : std::numeric_limits<double>::max();
}

}  // namespace

CameraState cameraFitting(const MLNCoordinateBounds& bounds, const FittingFrame& frame,
                          const CameraState& present, const CameraLimits& limits) {
    if (!std::isfinite(bounds.sw.latitude + bounds.sw.longitude + bounds.ne.latitude + bounds.ne.longitude)) {
        return present;
    }
    const UIEdgeInsets padding = isFinite(frame.padding) ? frame.padding : UIEdgeInsets{};
    const double width =
        frame.viewSize.width - frame.inset.left - frame.inset.right - padding.left - padding.right;
    const double height =
        frame.viewSize.height - frame.inset.top - frame.inset.bottom - padding.top - padding.bottom;
    const ScreenAxes axes(present.bearing);
    const TurnedBox box(bounds, axes);

    CameraState fitted = present;
    fitted.zoom = width > 0 && height > 0
                      ? limits.constrainZoom(std::min(zoomForLength(width, box.high.x - box.low.x),
                                                      zoomForLength(height, box.high.y - box.low.y)))
                      : limits.constrainZoom(limits.minimumZoom());
    // The middle of the padded area lies beside the middle of the inset area, where the centre is drawn.
    const double world = mercator::worldSize(fitted.zoom);
    const mercator::Position center{(box.low.x + box.high.x - (padding.left - padding.right) / world) / 2,
                                    (box.low.y + box.high.y - (padding.top - padding.bottom) / world) / 2};
    fitted.center = mercator::toCoordinate(axes.toWorld(center));
    return limits.constrain(fitted, frame.viewSize);
}

}  // namespace pelta
