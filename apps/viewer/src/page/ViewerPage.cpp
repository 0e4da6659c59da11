#include "page/ViewerPage.h"

#include <algorithm>
#include <utility>

#include <pelta/Platform/PlatformPort.h>
#include <pelta/Platform/UILayout.h>

#include "data/GeoJsonReader.h"
#include "data/LoadReport.h"
#include "data/Text.h"
#include "map/KoreaScene.h"

namespace pelta::viewer {

namespace {

/// Points to keep free around what is shown; above, a marker stands up from its place.
constexpr UIEdgeInsets fitPadding{64, 40, 48, 40};
constexpr double flightDuration = 1.2;

std::shared_ptr<PgmLatLngBounds> unionOf(const std::shared_ptr<PgmLatLngBounds>& a,
                                         const std::shared_ptr<PgmLatLngBounds>& b) {
    if (!a || !b) {
        return a ? a : b;
    }
    return PgmLatLngBounds::create({std::min(a->southWest().latitude, b->southWest().latitude),
                                    std::min(a->southWest().longitude, b->southWest().longitude)},
                                   {std::max(a->northEast().latitude, b->northEast().latitude),
                                    std::max(a->northEast().longitude, b->northEast().longitude)});
}

/// The last part of an address, without its query: what a person calls the file.
std::string fileName(std::string_view address) {
    const std::string_view path = address.substr(0, address.find_first_of("?#"));
    const auto slash = path.find_last_of('/');
    const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
    return percentDecoded(name.empty() ? address : name);
}

}  // namespace

ViewerPage::ViewerPage(PageAddress address) : address_(std::move(address)) {}

void ViewerPage::open(UIWindow& window) {
    panel_.setState("loading");
    panel_.setIsSnapshot(address_.isSnapshot);
    placeMap(window);
    placeCamera();
    if (address_.data) {
        fetchData();
    } else {
        showKorea();
    }
    tell();
}

void ViewerPage::placeMap(UIWindow& window) {
    const auto options = PgmMapOptions::create();
    options->setIsScaleBarVisible(!address_.isSnapshot);
    options->setIsCompassVisible(!address_.isSnapshot);
    map_ = PgmMapView::create(window.bounds(), options, shared_from_this());
    map_->setIsLogoVisible(!address_.isSnapshot);
    window.addSubview(map_);
    map_->setTranslatesAutoresizingMaskIntoConstraints(false);
    std::vector<std::shared_ptr<NSLayoutConstraint>> edges;
    for (const auto edge : {NSLayoutAttribute::left, NSLayoutAttribute::top, NSLayoutAttribute::right,
                            NSLayoutAttribute::bottom}) {
        edges.push_back(NSLayoutConstraint::equal(map_->anchor(edge), window.anchor(edge)));
    }
    NSLayoutConstraint::activate(edges);
    window.layoutIfNeeded();

    MLNMapView& engine = *map_->mapView();
    styleWatch_ = StyleWatch::start(
        engine,
        [this] {
            isStyleLoading_ = false;
            loadingDidEnd();
        },
        [this](std::string_view message) { styleDidFail(message); });
    if (address_.style) {
        engine.setStyleURL(*address_.style);
    }
}

void ViewerPage::placeCamera() {
    if (const auto& camera = address_.camera) {
        map_->setCameraPosition(
            PgmCameraPosition::create(camera->target, camera->zoom, camera->tilt, camera->bearing));
    } else {
        map_->moveCamera(PgmCameraUpdate::cameraUpdateFitBounds(koreaBounds(), fitPadding));
    }
}

void ViewerPage::showKorea() {
    Scene scene = koreaScene(pins_);
    put(std::move(scene.shapes));
    bounds_ = koreaBounds();
    entries_.push_back({"Large cities of Korea", inWords(scene.counts)});
}

void ViewerPage::fetchData() {
    isDataLoading_ = true;
    const std::string name = fileName(*address_.data);
    PlatformPort::current().fetchText(*address_.data,
                                      [self = shared_from_this(), name](const FetchResult& result) {
                                          self->isDataLoading_ = false;
                                          if (result.isOk) {
                                              self->dataDidArrive(name, result.text);
                                          } else {
                                              self->entries_.push_back({name, "not loaded"});
                                              self->problems_.push_back(name + ": " + result.message);
                                              self->tell();
                                          }
                                          self->loadingDidEnd();
                                      });
}

void ViewerPage::dataDidArrive(const std::string& name, std::string_view text) {
    addDocument(name, text);
    if (address_.isFit && bounds_) {
        map_->moveCamera(PgmCameraUpdate::cameraUpdateFitBounds(bounds_, fitPadding));
    }
    tell();
}

void ViewerPage::styleDidFail(std::string_view message) {
    isStyleLoading_ = false;
    styleProblem_ = message;
    tell();
    loadingDidEnd();
}

void ViewerPage::openDocument(const std::string& name, std::string_view text, bool isReplacing) {
    panel_.setState("loading");
    if (isReplacing) {
        clear();
    }
    addDocument(name, text);
    tell();
    showAll();
    loadingDidEnd();
}

void ViewerPage::addDocument(const std::string& name, std::string_view text) {
    const MapData data = readGeoJson(text, name);
    put(shapesOf(data, pins_));
    bounds_ = unionOf(bounds_, boundsOf(data));
    entries_.push_back({name, inWords(countsOf(data))});
    for (auto& message : completed(data.problems, data.problemCount)) {
        problems_.push_back(std::move(message));
    }
    for (auto& message : completed(data.leftOuts, data.leftOutCount)) {
        leftOuts_.push_back(std::move(message));
    }
}

void ViewerPage::clear() {
    for (const auto& shape : shapes_) {
        shape->setMapView(nullptr);
    }
    shapes_.clear();
    entries_.clear();
    problems_.clear();
    leftOuts_.clear();
    bounds_ = nullptr;
    address_.problems.clear();
}

void ViewerPage::put(Shapes shapes) {
    for (auto& shape : shapes) {
        shape->setMapView(map_);
        shapes_.push_back(std::move(shape));
    }
}

void ViewerPage::showAll() {
    if (bounds_) {
        const auto update = PgmCameraUpdate::cameraUpdateFitBounds(bounds_, fitPadding);
        update->setAnimation(PgmCameraUpdateAnimation::fly);
        update->setAnimationDuration(flightDuration);
        map_->moveCamera(update);
    }
}

void ViewerPage::tell() {
    std::vector<std::string> problems = problems_;
    if (!styleProblem_.empty()) {
        problems.insert(problems.begin(), styleProblem_);
    }
    panel_.setEntries(entries_);
    panel_.setMessages(address_.problems, problems, leftOuts_);

    problems.insert(problems.begin(), address_.problems.begin(), address_.problems.end());
    if (problems.empty()) {
        panel_.hideBanner();
    } else {
        const auto others = problems.size() - 1;
        panel_.showBanner(
            problems.front() +
            (others > 0 ? " (and " + std::to_string(others) + " more, listed in the panel)" : ""));
    }
}

void ViewerPage::loadingDidEnd() {
    if (!isStyleLoading_ && !isDataLoading_) {
        // The map reports that it is idle once more, now with everything on it.
        map_->triggerRepaint();
    }
}

void ViewerPage::mapViewDidBecomeIdle(PgmMapView&) {
    if (!isStyleLoading_ && !isDataLoading_) {
        panel_.setState("ready");
    }
}

}  // namespace pelta::viewer
