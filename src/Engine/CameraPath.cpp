#include "Engine/CameraPath.h"

#include <algorithm>
#include <cmath>

#include "Engine/Mercator.h"

namespace pelta {
namespace {

/// Start and differences of everything that a path interpolates.
struct Span {
    CameraState start;
    CameraState end;
    mercator::Position origin;
    double dx = 0;
    double dy = 0;
    double turn = 0;

    Span(const CameraState& from, const CameraState& to) : start(from), end(to) {
        origin = mercator::fromCoordinate(from.center);
        const auto target = mercator::fromCoordinate(to.center);
        dx = target.x - origin.x - std::round(target.x - origin.x);
        dy = target.y - origin.y;
        turn = std::remainder(to.bearing - from.bearing, 360.0);
    }

    /// @param travelled  share of the way between the centres, 0 to 1.
    [[nodiscard]] CameraState at(double progress, double travelled, double zoom) const {
        const auto center = mercator::toCoordinate({origin.x + dx * travelled, origin.y + dy * travelled});
        return {{center.latitude, mercator::wrapLongitude(center.longitude)},
                zoom,
                std::lerp(start.pitch, end.pitch, progress),
                mercator::normalizeBearing(start.bearing + turn * progress)};
    }
};

/// Below this change of zoom a path counts as level.
constexpr double levelZoomChange = 1e-6;

/// Share of the way at which the picture grows about a fixed point while the zoom changes by `change ×
/// progress`.
double homotheticShare(double change, double progress) {
    return std::abs(change) < levelZoomChange
               ? progress
               : std::expm1(-change * progress * std::log(2.0)) / std::expm1(-change * std::log(2.0));
}

/// The optimal path in the plane of distance travelled and width seen, both in points at the start's zoom.
class FlightArc {
 public:
    FlightArc(double startWidth, double endWidth, double distance)
        : startWidth_(startWidth), distance_(distance) {
        constexpr double rho2 = curvature * curvature;
        // Below a pixel's fraction the two-dimensional solution loses its digits.
        isZoomOnly_ = distance < 1e-6 * std::max(startWidth, endWidth);
        if (isZoomOnly_) {
            direction_ = endWidth < startWidth ? -1 : 1;
            length_ = std::abs(std::log(endWidth / startWidth)) / curvature;
            return;
        }
        const double widths = endWidth * endWidth - startWidth * startWidth;
        const double path = rho2 * rho2 * distance * distance;
        startAngle_ = -std::asinh((widths + path) / (2 * startWidth * rho2 * distance));
        const double endAngle = -std::asinh((widths - path) / (2 * endWidth * rho2 * distance));
        length_ = (endAngle - startAngle_) / curvature;
    }

    [[nodiscard]] double length() const noexcept { return length_; }

    /// Width seen after the given part of the arc's length, in widths of the start.
    [[nodiscard]] double widthAt(double progress) const noexcept {
        const double s = progress * length_;
        return isZoomOnly_ ? std::exp(direction_ * curvature * s)
                           : std::cosh(startAngle_) / std::cosh(startAngle_ + curvature * s);
    }

    /// Share of the distance travelled after the given part of the arc's length.
    [[nodiscard]] double shareAt(double progress) const noexcept {
        if (isZoomOnly_) {
            return progress;
        }
        const double angle = startAngle_ + curvature * progress * length_;
        const double travelled = std::cosh(startAngle_) * std::tanh(angle) - std::sinh(startAngle_);
        return std::clamp(startWidth_ * travelled / (curvature * curvature * distance_), 0.0, 1.0);
    }

 private:
    /// How much zooming is preferred to panning; the value that people liked best in the authors' study.
    static constexpr double curvature = 1.42;

    double startWidth_;
    double distance_;
    double startAngle_ = 0;
    double length_ = 0;
    double direction_ = 1;
    bool isZoomOnly_ = false;
};

}  // namespace

CameraPath makeEasePath(const CameraState& start, const CameraState& end) {
    return [span = Span(start, end)](double progress) {
        const double change = span.end.zoom - span.start.zoom;
        return span.at(progress, homotheticShare(change, progress), span.start.zoom + change * progress);
    };
}

CameraFlight makeFlight(const CameraState& start, const CameraState& end, CGSize viewSize) {
    constexpr double flightSpeed = 1.2;  // lengths of arc a second
    const Span span(start, end);
    const double width = std::max({viewSize.width, viewSize.height, 1.0});
    const double distance = std::hypot(span.dx, span.dy) * mercator::worldSize(start.zoom);
    const FlightArc arc(width, width * std::exp2(start.zoom - end.zoom), distance);
    const auto path = [span, arc](double progress) {
        return span.at(progress, arc.shareAt(progress), span.start.zoom - std::log2(arc.widthAt(progress)));
    };
    return {path, arc.length() / flightSpeed};
}

}  // namespace pelta
