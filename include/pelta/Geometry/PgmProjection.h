#pragma once

#include <memory>
#include <optional>

#include <pelta/Geometry/PgmLatLngBounds.h>
#include <pelta/Platform/CoreGraphics.h>
#include <pelta/Platform/CoreLocation.h>

namespace pelta {

class PgmMapView;

/// Converts between points of a map view and coordinates, as the map stands at the moment of each call.
///
/// Points are those of the map view, its top left corner at (0, 0). The world is drawn again and again to
/// both sides: points are answered for the copy nearest to the camera's centre. A projection refers to its
/// view weakly and answers the stated fallback once the view is gone. Main thread only.
class PgmProjection {
 public:
    PgmProjection() = delete;
    /// A projection of a view; see `PgmMapView::projection`.
    explicit PgmProjection(std::weak_ptr<const PgmMapView> mapView) noexcept : mapView_(std::move(mapView)) {}

    /// The coordinate drawn at a point, its longitude from -180 up to 180; above the horizon the horizon's
    /// nearest coordinate. Absent without a view.
    [[nodiscard]] std::optional<CLLocationCoordinate2D> latlng(CGPoint point) const;
    /// Where a coordinate is drawn, also outside of the view; (0, 0) without a view.
    [[nodiscard]] CGPoint point(CLLocationCoordinate2D coord) const;
    /// The smallest coordinate rectangle around the corners of a screen rectangle; null without a view.
    /// Across the antimeridian its longitudes go on beyond ±180.
    [[nodiscard]] std::shared_ptr<PgmLatLngBounds> latlngBounds(CGRect viewBounds) const;
    /// The smallest screen rectangle around the corners of a coordinate rectangle, which is taken as a whole
    /// in the copy where its middle is nearest; zero without a view.
    [[nodiscard]] CGRect viewBounds(const PgmLatLngBounds& bounds) const;
    /// Metres on the ground that a point covers at the centre's latitude; 0 without a view.
    [[nodiscard]] double metersPerPixel() const;

 private:
    std::weak_ptr<const PgmMapView> mapView_;
};

}  // namespace pelta
