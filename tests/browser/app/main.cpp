#include <pelta/Pelta.h>

int main() {
    return pelta::runApplication([](pelta::UIWindow& window) {
        using namespace pelta;
        const CLLocationCoordinate2D seoul{37.5665, 126.9780};
        auto map = PgmMapView::create(window.bounds());
        window.addSubview(map);
        map->mapView()->setStyleJSON(
            R"({"version":8,"name":"t","sources":{},"layers":[{"id":"bg","type":"background","paint":{"background-color":"#c3dce8"}}]})");
        map->setCameraPosition(PgmCameraPosition::cameraPosition(seoul, 11));
        auto marker = PgmMarker::markerWithPosition(seoul);
        marker->setTitle("서울 Seoul");
        marker->setMapView(map);
    });
}
