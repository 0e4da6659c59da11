#include <pelta/Pelta.h>

int main() {
    return pelta::runApplication([](pelta::UIWindow& window) {
        using namespace pelta;
        const CLLocationCoordinate2D seoul{37.5665, 126.9780};

        auto options = PgmMapOptions::create(PgmCameraPosition::cameraPosition(seoul, 11));
        options->setIsZoomControlVisible(true);
        auto map = PgmMapView::create(window.bounds(), options);
        window.addSubview(map);

        auto marker = PgmMarker::markerWithPosition(seoul);
        marker->setTitle("서울");
        marker->setTouchEvent([](PgmShape&) { return true; });
        marker->setMapView(map);
    });
}
