#pragma once

#include <memory>
#include <string>
#include <vector>

#include <pelta/Pelta.h>

/// A stop of a bus route.
struct BusStop {
    std::string name;
    pelta::CLLocationCoordinate2D position;
};

/// A bus route on a map: a line through its stops and a named marker on each. Taken from the map when it
/// goes.
class BusRoute {
 public:
    /// @param stops  two or more.
    BusRoute(std::shared_ptr<pelta::PgmMapView> map, std::vector<BusStop> stops, pelta::UIColor color);
    ~BusRoute();
    BusRoute(const BusRoute&) = delete;
    BusRoute& operator=(const BusRoute&) = delete;

    /// Brings the whole route into view in half a second.
    void show();
    /// The stop that is drawn nearest to a point of the map view.
    const BusStop& stopNearestTo(pelta::CGPoint point) const;
    const std::vector<std::shared_ptr<pelta::PgmMarker>>& markers() const { return markers_; }

 private:
    std::shared_ptr<pelta::PgmMapView> map_;
    std::vector<BusStop> stops_;
    std::shared_ptr<pelta::PgmPolyline> line_;
    std::vector<std::shared_ptr<pelta::PgmMarker>> markers_;
};
