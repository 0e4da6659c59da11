#include "Engine/TapZoom.h"

#include <cmath>
#include <memory>

#include "Engine/Mercator.h"

namespace pelta {

void addTapZoom(UIView& mapView, std::function<void(double change, CGPoint fixed)> zoom) {
    const auto zoomBy = [zoom = std::move(zoom)](double change) {
        return [zoom, change](UIGestureRecognizer& recognizer) {
            const auto view = recognizer.view();
            if (view && recognizer.state() == UIGestureRecognizerState::ended) {
                zoom(change, recognizer.locationInView(view.get()));
            }
        };
    };
    const auto twice = std::make_shared<UITapGestureRecognizer>(zoomBy(1));
    twice->setNumberOfTapsRequired(2);
    mapView.addGestureRecognizer(twice);
    const auto twoFingers = std::make_shared<UITapGestureRecognizer>(zoomBy(-1));
    twoFingers->setNumberOfTouchesRequired(2);
    mapView.addGestureRecognizer(twoFingers);
}

CameraState zoomedAbout(CameraState camera, CLLocationCoordinate2D fixed, double zoom) {
    // The picture grows about the place: the centre keeps its direction from it, at another distance.
    const double share = std::exp2(camera.zoom - zoom);
    const auto place = mercator::fromCoordinate(fixed);
    const auto center = mercator::fromCoordinate(camera.center);
    const double dx = center.x - place.x;
    const auto moved = mercator::toCoordinate(
        {center.x - (dx - std::round(dx)) * (1 - share), place.y + (center.y - place.y) * share});
    camera.center = {moved.latitude, mercator::wrapLongitude(moved.longitude)};
    camera.zoom = zoom;
    return camera;
}

}  // namespace pelta
