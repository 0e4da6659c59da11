#include "Stage.h"

#include <algorithm>
#include <utility>

namespace pelta::browser {

Stage& Stage::shared() {
    static Stage stage;
    return stage;
}

int Stage::openMap(CGRect frame, const std::string& style) {
    const auto options = PgmMapOptions::create();
    setStyle(*options, style);
    const auto view = PgmMapView::create(frame, options);
    MLNMapView& engine = *view->mapView();
    const auto recorder = std::make_shared<EngineRecorder>(engine.delegate());
    engine.setDelegate(recorder);
    window_->addSubview(view);
    maps_.push_back({view, recorder});
    return static_cast<int>(maps_.size()) - 1;
}

void Stage::closeMap(int index) {
    Map& closed = map(index);
    closed.view->removeFromSuperview();
    closed = {};
}

int Stage::addShape(std::shared_ptr<PgmShape> shape) {
    shapes_.push_back(std::move(shape));
    return static_cast<int>(shapes_.size()) - 1;
}

int Stage::numberOfShape(std::uint64_t shapeIndex) const {
    const auto found = std::find_if(shapes_.begin(), shapes_.end(), [shapeIndex](const auto& shape) {
        return shape->shapeIndex() == shapeIndex;
    });
    return found == shapes_.end() ? -1 : static_cast<int>(found - shapes_.begin());
}

}  // namespace pelta::browser
