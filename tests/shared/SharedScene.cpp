#include "SharedScene.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace pelta::shared {

namespace {

constexpr const char* emptyStyle = R"({"version":8,"name":"shared","sources":{},"layers":[]})";

std::string_view nameOf(PgmCameraUpdateReason reason) {
    switch (reason) {
        case PgmCameraUpdateReason::developer:
            return "developer";
        case PgmCameraUpdateReason::gesture:
            return "gesture";
        case PgmCameraUpdateReason::control:
            return "control";
        default:
            return "reserved";
    }
}

std::string eventText(std::string_view kind, bool animated, PgmCameraUpdateReason reason) {
    std::string text(kind);
    text += animated ? "-animated(" : "(";
    text += nameOf(reason);
    return text + ")";
}

template <class... Parts>
std::string joined(const Parts&... parts) {
    std::ostringstream text;
    text.precision(12);
    (text << ... << parts);
    return text.str();
}

}  // namespace

void EventRecorder::regionWillChangeAnimated(PgmMapView& mapView, bool animated,
                                             PgmCameraUpdateReason reason) {
    note(mapView, eventText("will", animated, reason));
}

void EventRecorder::regionIsChangingWithReason(PgmMapView& mapView, PgmCameraUpdateReason reason) {
    note(mapView, eventText("changing", false, reason));
}

void EventRecorder::regionDidChangeAnimated(PgmMapView& mapView, bool animated,
                                            PgmCameraUpdateReason reason) {
    note(mapView, eventText("did", animated, reason));
}

void EventRecorder::mapViewDidBecomeIdle(PgmMapView& /*mapView*/) {
    ++idleCount_;
}

void EventRecorder::note(PgmMapView& mapView, const std::string& event) {
    if (event != last_ || event.rfind("changing", 0) != 0) {
        events_ += (events_.empty() ? "" : " ") + event;
    }
    last_ = event;
    if (listener_) {
        listener_(mapView, event);
    }
}

std::string EventRecorder::take() {
    last_.clear();
    return std::exchange(events_, {});
}

SharedScene::SharedScene(UIWindow& window) : events_(std::make_shared<EventRecorder>()) {
    const auto options = PgmMapOptions::create(PgmCameraPosition::create({}, 10, 0, 0));
    options->setStyleJSON(emptyStyle);
    map_ = PgmMapView::create({{0, 0}, size}, options);
    map_->setDelegate(events_);
    window.addSubview(map_);
}

SharedScene::~SharedScene() {
    map_->removeFromSuperview();
}

void SharedScene::look(CLLocationCoordinate2D target, double zoom, double tilt, double bearing) {
    map_->setCameraPosition(PgmCameraPosition::create(target, zoom, tilt, bearing));
}

CLLocationCoordinate2D SharedScene::at(double x, double y) const {
    return engine().convertPoint({x, y}, nullptr);
}

void SharedScene::add(const std::shared_ptr<PgmShape>& shape, std::string name) {
    shape->setUserInfo({{"name", name}});
    shape->setMapView(map_);
}

std::string SharedScene::hits(double x, double y) const {
    return hitsIn({{x - 1, y - 1}, {2, 2}});
}

std::string SharedScene::hitsIn(CGRect rect) const {
    std::vector<std::string> names;
    for (const auto& feature : engine().visibleFeaturesInRect(rect, {})) {
        const auto* index = feature->attribute("shapeIndex");
        const auto* number = index != nullptr ? std::get_if<std::uint64_t>(index) : nullptr;
        const auto shape = map_->shapesMap().find(number != nullptr ? *number : 0);
        std::string name = "?";
        if (shape != map_->shapesMap().end()) {
            name = std::any_cast<std::string>(shape->second->userInfo().at("name"));
        }
        if (std::find(names.begin(), names.end(), name) == names.end()) {
            names.push_back(std::move(name));
        }
    }
    std::string line;
    for (const std::string& name : names) {
        line += (line.empty() ? "" : " ") + name;
    }
    return line;
}

void SharedScene::expect(bool isRight, std::string_view what) {
    if (!isRight) {
        failures_.emplace_back(what);
    }
}

void SharedScene::expectEqual(std::string_view actual, std::string_view expected, std::string_view what) {
    expect(actual == expected, joined(what, ": \"", actual, "\" instead of \"", expected, "\""));
}

void SharedScene::expectNear(double actual, double expected, double tolerance, std::string_view what) {
    expect(std::abs(actual - expected) <= tolerance, joined(what, ": ", actual, " instead of ", expected));
}

void SharedScene::expectNear(CGPoint actual, CGPoint expected, double tolerance, std::string_view what) {
    expect(
        std::hypot(actual.x - expected.x, actual.y - expected.y) <= tolerance,
        joined(what, ": (", actual.x, ", ", actual.y, ") instead of (", expected.x, ", ", expected.y, ")"));
}

void SharedScene::expectNear(CLLocationCoordinate2D actual, CLLocationCoordinate2D expected, double tolerance,
                             std::string_view what) {
    expect(
        std::hypot(actual.latitude - expected.latitude, actual.longitude - expected.longitude) <= tolerance,
        joined(what, ": ", actual.latitude, ", ", actual.longitude, " instead of ", expected.latitude, ", ",
               expected.longitude));
}

void SharedScene::expectCamera(CLLocationCoordinate2D target, double zoom, double tilt, double bearing,
                               std::string_view what) {
    const auto position = map_->cameraPosition();
    expectNear(position->target(), target, 1e-7, joined(what, ", target"));
    expectNear(position->zoom(), zoom, 1e-6, joined(what, ", zoom"));
    expectNear(position->tilt(), tilt, 1e-6, joined(what, ", tilt"));
    const double turn = std::remainder(position->bearing() - bearing, 360);
    expectNear(turn, 0, 1e-6, joined(what, ", bearing ", bearing, " missed by"));
}

}  // namespace pelta::shared
