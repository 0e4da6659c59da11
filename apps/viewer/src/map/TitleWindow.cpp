#include "map/TitleWindow.h"

#include <utility>

#include "map/PlaceTexts.h"

namespace pelta::viewer {

void TitleWindow::toggle(const std::shared_ptr<PgmMarker>& marker) {
    if (window_->mapView() != nullptr && window_->marker() == marker) {
        close();
        return;
    }
    text_ = marker->title().empty() ? placeTexts(marker->position()).front().numbers : marker->title();
    window_->setImageDataSource(shared_from_this());
    window_->setOffset({});
    window_->setMarker(marker);
    window_->setMapView(marker->mapView());
}

void TitleWindow::open(const std::shared_ptr<PgmMapView>& map, CLLocationCoordinate2D place, std::string text,
                       CGFloat height) {
    text_ = std::move(text);
    window_->setImageDataSource(shared_from_this());
    window_->setMarker(nullptr);
    window_->setOffset({0, -height});
    window_->setPosition(place);
    window_->setMapView(map);
}

void TitleWindow::close() {
    window_->setMapView(nullptr);
    window_->setMarker(nullptr);
}

std::optional<std::string> TitleWindow::title(PgmShape&) {
    return text_;
}

}  // namespace pelta::viewer
