#include "page/ViewerPage.h"

#include <emscripten/val.h>
#include <utility>

#include <pelta/Platform/PlatformPort.h>
#include <pelta/Platform/UILayout.h>

#include "data/GeoJsonReader.h"
#include "data/LoadReport.h"
#include "data/Text.h"
#include "map/KoreaScene.h"
#include "map/MapSwitches.h"

using emscripten::val;

namespace pelta::viewer {

namespace {

/// Points to keep free around what is shown; above, a marker stands up from its place.
constexpr UIEdgeInsets fitPadding{64, 40, 48, 40};
constexpr double flightDuration = 1.2;

constexpr const char* worldPlacesAddress = "data/places.geojson";

/// The last part of an address, without its query: what a person calls the file.
std::string fileName(std::string_view address) {
    const std::string_view path = address.substr(0, address.find_first_of("?#"));
    const auto slash = path.find_last_of('/');
    const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
    return percentDecoded(name.empty() ? address : name);
}

/// A browser that gives pages no clipboard leaves the text to be selected by hand.
void copyText(std::string_view text) {
    const val clipboard = val::global("navigator")["clipboard"];
    if (!clipboard.isUndefined()) {
        clipboard.call<val>("writeText", std::string(text));
    }
}

}  // namespace

ViewerPage::ViewerPage(std::string query) : query_(std::move(query)), address_(parsePageAddress(query_)) {}

void ViewerPage::open(UIWindow& window) {
    panel_.setState("loading");
    panel_.setIsSnapshot(address_.isSnapshot);
    placeMap(window);
    placeCamera();
    contents_ = std::make_unique<MapContents>(map_);
    placeWindow_ = std::make_shared<PlaceWindow>(map_, [this](std::string_view text) {
        copyText(text);
        panel_.showNotice("Copied " + std::string(text));
    });
    if (address_.data) {
        fetchData();
    } else {
        showKorea();
    }
    setIsClustered(address_.isClustered);
    showSwitches();
    tell();
}

void ViewerPage::placeMap(UIWindow& window) {
    const auto options = PgmMapOptions::create();
    options->setIsScaleBarVisible(!address_.isSnapshot);
    options->setIsCompassVisible(!address_.isSnapshot);
    options->setIsZoomControlVisible(!address_.isSnapshot);
    options->setIsLocationButtonVisible(!address_.isSnapshot);
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
    connectLocationButton();

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

/// The button shows and follows the user also when nothing has been asked for in the panel before.
void ViewerPage::connectLocationButton() {
    for (const auto& view : map_->locationView()->subviews()) {
        if (const auto button = std::dynamic_pointer_cast<UIButton>(view)) {
            button->setTouchUpInside([this] {
                if (map_->userTrackingMode() == PgmUserTrackingMode::off) {
                    map_->setUserTrackingMode(PgmUserTrackingMode::follow);
                } else {
                    map_->locactionAction();
                }
                showSwitches();
            });
        }
    }
}

void ViewerPage::showSwitches() {
    for (const MapSwitch& known : mapSwitches()) {
        panel_.setSwitch(known.name, known.value(*map_));
    }
    panel_.setSwitch("cluster", contents_->isClustered() ? 1 : 0);
}

void ViewerPage::setSwitch(const std::string& name, double value) {
    if (name == "cluster") {
        setIsClustered(value != 0);
        shareAddress();
        tell();
    } else {
        setMapSwitch(*map_, name, value);
    }
    showSwitches();
}

void ViewerPage::setIsClustered(bool isClustered) {
    if (isClustered == contents_->isClustered()) {
        return;
    }
    contents_->setIsClustered(isClustered);
    if (loadingCount_ == 0 && contents_->needsWorldPlaces()) {
        fetchWorldPlaces();
    }
}

void ViewerPage::showKorea() {
    PinPictures pins;
    Scene scene = koreaScene(pins);
    contents_->showScene(std::move(scene.shapes), koreaBounds());
    entries_.push_back({"Large cities of Korea", inWords(scene.counts)});
}

void ViewerPage::fetchData() {
    ++loadingCount_;
    const std::string name = fileName(*address_.data);
    PlatformPort::current().fetchText(*address_.data,
                                      [self = shared_from_this(), name](const FetchResult& result) {
                                          --self->loadingCount_;
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

void ViewerPage::fetchWorldPlaces() {
    ++loadingCount_;
    panel_.setState("loading");
    PlatformPort::current().fetchText(
        worldPlacesAddress, [self = shared_from_this()](const FetchResult& result) {
            --self->loadingCount_;
            if (result.isOk) {
                self->contents_->setWorldPlaces(readGeoJson(result.text, "Places of the world"));
            } else {
                self->problems_.push_back("Places of the world: " + result.message);
            }
            self->tell();
            self->loadingDidEnd();
        });
}

void ViewerPage::dataDidArrive(const std::string& name, std::string_view text) {
    addDocument(name, text);
    if (address_.isFit && contents_->bounds()) {
        map_->moveCamera(PgmCameraUpdate::cameraUpdateFitBounds(contents_->bounds(), fitPadding));
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
        contents_->clear();
        placeWindow_->close();
        entries_.clear();
        problems_.clear();
        leftOuts_.clear();
        address_.problems.clear();
    }
    addDocument(name, text);
    tell();
    showAll();
    loadingDidEnd();
}

void ViewerPage::addDocument(const std::string& name, std::string_view text) {
    MapData data = readGeoJson(text, name);
    entries_.push_back({name, inWords(countsOf(data))});
    for (auto& message : completed(data.problems, data.problemCount)) {
        problems_.push_back(std::move(message));
    }
    for (auto& message : completed(data.leftOuts, data.leftOutCount)) {
        leftOuts_.push_back(std::move(message));
    }
    contents_->add(std::move(data));
}

void ViewerPage::showAll() {
    if (contents_->bounds()) {
        const auto update = PgmCameraUpdate::cameraUpdateFitBounds(contents_->bounds(), fitPadding);
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
    std::vector<Panel::Entry> entries = entries_;
    if (contents_->clusteredCount() > 0) {
        entries.push_back({"Clusters", std::to_string(contents_->clusteredCount()) + " points"});
    } else if (contents_->needsWorldPlaces() && loadingCount_ > 0) {
        entries.push_back({"Clusters", "loading the places of the world…"});
    }
    panel_.setEntries(entries);
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
    if (!isStyleLoading_ && loadingCount_ == 0) {
        // The map reports that it is idle once more, now with everything on it.
        map_->triggerRepaint();
    }
}

void ViewerPage::shareAddress() {
    const auto camera = map_->cameraPosition();
    if (address_.isSnapshot || camera == nullptr || contents_ == nullptr) {
        return;
    }
    query_ = sharedQuery(query_, {camera->target(), camera->zoom(), camera->tilt(), camera->bearing()},
                         contents_->isClustered());
    val::global("history").call<void>("replaceState", val::null(), std::string(), query_);
}

void ViewerPage::regionIsChangingWithReason(PgmMapView&, PgmCameraUpdateReason) {
    if (placeWindow_ != nullptr) {
        placeWindow_->cameraDidMove();
    }
}

void ViewerPage::regionDidChangeAnimated(PgmMapView&, bool, PgmCameraUpdateReason) {
    shareAddress();
}

void ViewerPage::didTapMapView(PgmMapView&, CLLocationCoordinate2D) {
    contents_->closeTitle();
    placeWindow_->close();
}

void ViewerPage::didLongTapMapView(PgmMapView&, CLLocationCoordinate2D latLng) {
    contents_->closeTitle();
    placeWindow_->open(latLng);
}

void ViewerPage::mapViewDidBecomeIdle(PgmMapView&) {
    if (placeWindow_ != nullptr) {
        // Another size of the page moves places without a movement of the camera.
        placeWindow_->cameraDidMove();
    }
    if (!isStyleLoading_ && loadingCount_ == 0) {
        panel_.setState("ready");
    }
}

}  // namespace pelta::viewer
