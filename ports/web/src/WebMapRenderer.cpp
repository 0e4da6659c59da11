#include "WebMapRenderer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <pelta/Platform/Dispatch.h>

#include "CssText.h"
#include "MapSurfaces.h"
#include "StyleAddresses.h"
#include "WebPort.h"

using emscripten::val;

namespace pelta {

namespace {

void setElementSize(const val& element, CGSize size) {
    element["style"].set("width", cssLength(size.width));
    element["style"].set("height", cssLength(size.height));
}

/// A style document as GL JS takes it.
val parsedDocument(const StyleDocument& document) {
    val parsed = val::global("JSON").call<val>("parse", document.text);
    resolveAddresses(parsed, document.address);
    return parsed;
}

bool isFinite(CGPoint point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

}  // namespace

WebMapRenderer::WebMapRenderer(MapRendererHost& host, UIView& surface, CGSize size, double screenScale,
                               bool isLiteral)
    : host_(host),
      surface_(&surface),
      element_(MapSurfaces::add(surface_)),
      constrainFunction_([this](const val& arguments) { return constrain(arguments); }),
      map_((setElementSize(element_, size), element_), screenScale, constrainFunction_.value()),
      compiler_(isLiteral),
      images_(map_.value()),
      size_(size),
      scale_(screenScale) {
    listen("movestart", &WebMapRenderer::movementDidBegin);
    listen("move", &WebMapRenderer::mapDidMove);
    listen("moveend", &WebMapRenderer::movementDidEnd);
    listen("style.load", &WebMapRenderer::styleDidLoad);
    listen("error", &WebMapRenderer::errorDidOccur);
    listen("render", &WebMapRenderer::mapDidRender);
    listen("idle", &WebMapRenderer::mapDidBecomeIdle);
    listen("webglcontextlost", &WebMapRenderer::contextDidGetLost);
    listen("webglcontextrestored", &WebMapRenderer::contextDidReturn);
    commandDepth_ = 0;
}

WebMapRenderer::~WebMapRenderer() {
    listeners_.clear();
    ++commandDepth_;
    map_.value().call<void>("remove");
    MapSurfaces::remove(surface_);
}

void WebMapRenderer::listen(const char* event, void (WebMapRenderer::*handler)(const val& event)) {
    listeners_.push_back(JsFunction::listener([this, handler](const val& what) { (this->*handler)(what); }));
    map_.on(event, listeners_.back().value());
}

template <class Work>
void WebMapRenderer::command(Work&& work) {
    ++commandDepth_;
    WebPort::shared().stayAhead();
    std::forward<Work>(work)();
    --commandDepth_;
    // A command ends the after-run of a gesture, silently.
    if (reason_ != MLNCameraChangeReason::none && !map_.isMoving()) {
        report([this] { gestureDidEnd(); });
    }
    setNeedsDrawing();
}

void WebMapRenderer::report(Report work) {
    reports_.push_back(std::move(work));
    if (isDrawing_ || commandDepth_ > 0) {
        MainQueue::async([self = std::weak_ptr(self_)] {
            if (const auto renderer = self.lock()) {
                (*renderer)->runReports();
            }
        });
    } else {
        runReports();
    }
}

void WebMapRenderer::runReports() {
    if (isReporting_) {
        return;
    }
    isReporting_ = true;
    const std::weak_ptr<WebMapRenderer*> self = self_;
    while (!self.expired() && !reports_.empty()) {
        const Report next = std::move(reports_.front());
        reports_.pop_front();
        next();
    }
    if (!self.expired()) {
        isReporting_ = false;
    }
}

void WebMapRenderer::setNeedsDrawing() noexcept {
    needsDrawing_ = true;
    isSettled_ = false;
}

// Commands

void WebMapRenderer::setSize(CGSize size, double screenScale) {
    const bool isScaleNew = std::exchange(scale_, screenScale) != screenScale;
    size_ = size;
    setElementSize(element_, size);
    command([&] {
        if (isScaleNew) {
            map_.value().call<void>("setPixelRatio", screenScale);
        } else {
            map_.value().call<void>("resize");
        }
    });
}

void WebMapRenderer::setContentInset(UIEdgeInsets inset) {
    inset_ = inset;
    setCamera(camera_);
}

void WebMapRenderer::setGestures(const GestureSettings& settings) {
    command([&] { applyGestures(map_.value(), settings); });
}

void WebMapRenderer::setLimits(double, double, double minimumPitch, double maximumPitch) {
    // Zoom limits act through `constrain`. GL JS refuses a minimum above the maximum at any moment.
    command([&] {
        map_.value().call<void>("setMinPitch", 0);
        map_.value().call<void>("setMaxPitch", maximumPitch);
        map_.value().call<void>("setMinPitch", std::min(minimumPitch, maximumPitch));
    });
}

void WebMapRenderer::setCamera(const CameraState& camera) {
    camera_ = camera;
    command([&] { map_.jumpTo(camera, inset_); });
}

CGPoint WebMapRenderer::pointForCoordinate(CLLocationCoordinate2D coordinate) const {
    // GL JS takes no latitudes beyond the poles.
    constexpr double furthestLatitude = 89.999999;
    if (!std::isfinite(coordinate.latitude) || !std::isfinite(coordinate.longitude)) {
        return {};
    }
    coordinate.latitude = std::clamp(coordinate.latitude, -furthestLatitude, furthestLatitude);
    return map_.project(coordinate);
}

CLLocationCoordinate2D WebMapRenderer::coordinateForPoint(CGPoint point) const {
    if (!isFinite(point)) {
        return camera_.center;
    }
    // Above the horizon GL JS answers with what lies behind the eye.
    constexpr double radiansPerDegree = 0.017453292519943295;
    constexpr double horizonAngle = 89.25;  // From the vertical; rays beyond it count as hitting the horizon.
    if (camera_.pitch > 0) {
        const double middle = std::clamp((inset_.top + size_.height - inset_.bottom) / 2, 0.0, size_.height);
        const double eyeDistance = 1.5 * std::max(size_.height, 1.0);
        const double horizon =
            middle - eyeDistance * std::tan((horizonAngle - camera_.pitch) * radiansPerDegree);
        point.y = std::max(point.y, horizon);
    }
    return map_.unproject(point);
}

void WebMapRenderer::commit(const MLNStyle& style, const MLNStyleChanges& changes) {
    auto work = [this, images = images_.changes(style, changes),
                 calls = compiler_.compile(style, changes, camera_.zoom)] {
        images();
        map_.run(calls);
    };
    if (isContextLost_) {
        waitingCommits_.emplace_back(std::move(work));
    } else {
        command(work);
    }
}

/// What merges with what depends on how wide lines are on the ground.
void WebMapRenderer::followZoom() {
    if (!isContextLost_ && !isLoading_ && compiler_.needsRecompiling(camera_.zoom)) {
        command([this] { map_.run(compiler_.recompile(camera_.zoom)); });
    }
}

void WebMapRenderer::drawFrame() {
    followZoom();
    if (!std::exchange(needsDrawing_, false) || isContextLost_) {
        return;
    }
    // What GL JS animates, and what reports come from, draws itself; there is no drawing within drawing.
    if (isReporting_ || isDrawing_ || map_.isMoving()) {
        return;
    }
    isDrawing_ = true;
    map_.value().call<void>("redraw");
    isDrawing_ = false;
}

// Style documents

std::optional<std::string> WebMapRenderer::applyStyle(const StyleDocument& document) {
    const val parsed = parsedDocument(document);
    if (const auto fault = GlMap::faultOf(parsed)) {
        const std::string name =
            document.address.empty() ? "The style document" : "\"" + document.address + "\"";
        return name + " is not a style that can be drawn: " + *fault + ". Correct the document there.";
    }
    loading_ = document;
    isLoading_ = true;
    command([&] { map_.setStyle(parsed); });
    return std::nullopt;
}

void WebMapRenderer::styleDidLoad(const val&) {
    isContextLost_ = false;
    setNeedsDrawing();
    if (std::exchange(isLoading_, false)) {
        waitingCommits_.clear();
        compiler_.reset(loading_);
        images_.reset();
        report([this] { host_.rendererDidLoadStyle(); });
        return;
    }
    for (const auto& commit : std::exchange(waitingCommits_, {})) {
        command(commit);
    }
}

void WebMapRenderer::errorDidOccur(const val& event) {
    const auto reason = event["error"]["message"].as<std::string>();
    val::global("console").call<void>("error", "The map reports: " + reason);
}

// GL JS's own movements

void WebMapRenderer::movementDidBegin(const val& event) {
    if (commandDepth_ == 0) {
        isSettled_ = false;
        cause_ = causeOfEvent(event["originalEvent"]);
    }
}

void WebMapRenderer::mapDidMove(const val&) {
    if (commandDepth_ == 0) {
        report([this, camera = map_.camera()] { gestureDidMove(camera); });
    }
}

void WebMapRenderer::movementDidEnd(const val&) {
    if (commandDepth_ == 0) {
        report([this] { gestureDidEnd(); });
    }
}

void WebMapRenderer::gestureDidMove(const CameraState& camera) {
    const MLNCameraChangeReason reason = reasonForMovement(camera_, camera, cause_);
    if (reason == MLNCameraChangeReason::none) {
        return;
    }
    const std::weak_ptr<WebMapRenderer*> self = self_;
    if (reason_ == MLNCameraChangeReason::none) {
        reason_ = reason;
        host_.gestureWillBegin(reason, cause_ == GestureCause::step);
        if (self.expired()) {
            return;
        }
    }
    reason_ = reason_ | reason;
    camera_ = map_.camera();  // Whoever heard of the beginning may have moved it.
    isSettled_ = false;
    host_.gestureDidMove(reason_);
    WebPort::shared().present();
}

void WebMapRenderer::gestureDidEnd() {
    const auto reason = std::exchange(reason_, MLNCameraChangeReason::none);
    if (reason != MLNCameraChangeReason::none) {
        host_.gestureDidEnd(reason, cause_ == GestureCause::step);
    }
}

val WebMapRenderer::constrain(const val& arguments) const {
    const val center = arguments[0];
    const val zoom = arguments[1];
    val allowed = val::object();
    allowed.set("center", center);
    allowed.set("zoom", zoom);
    if (commandDepth_ > 0) {
        return allowed;  // The map view has seen to its limits.
    }
    const auto longitude = center["lng"].as<double>();
    CameraState wanted = camera_;
    wanted.center = {center["lat"].as<double>(), longitude};
    wanted.zoom = zoom.as<double>();
    const CameraState nearest = host_.constrain(wanted);
    allowed.set("zoom", nearest.zoom);
    // The same longitude on another turn around the world is no difference: a drag goes on across the date
    // line.
    const double turn = std::remainder(nearest.center.longitude - longitude, 360);
    if (std::abs(turn) > 1e-12 || nearest.center.latitude != wanted.center.latitude) {
        allowed.set("center", center["constructor"].new_(longitude + turn, nearest.center.latitude));
    }
    return allowed;
}

// Rest and the drawing context

void WebMapRenderer::mapDidRender(const val&) {
    // All there is has been drawn. GL JS asks for its next frame after this.
    needsDrawing_ = needsDrawing_ && isDrawing_;
    WebPort::shared().stayAhead();
}

void WebMapRenderer::mapDidBecomeIdle(const val&) {
    if (isLoading_ || isContextLost_ || isSettled_) {
        return;
    }
    const std::string calls = compiler_.removeRetiredLayers();
    if (!calls.empty() || images_.hasRetired()) {
        command([&] {
            if (!calls.empty()) {
                map_.run(calls);
            }
            images_.removeRetired();
        });
        return;  // The engine comes to rest once more.
    }
    isSettled_ = true;
    report([this] {
        if (isSettled_) {
            host_.rendererDidSettle();
        }
    });
}

void WebMapRenderer::contextDidGetLost(const val&) {
    isContextLost_ = true;
    isSettled_ = false;
}

void WebMapRenderer::contextDidReturn(const val&) {
    // GL JS brings back what was loaded; a document that was on its way is handed over once more.
    if (isLoading_) {
        isContextLost_ = false;
        command([&] { map_.setStyle(parsedDocument(loading_)); });
    }
}

// Queries

std::vector<std::shared_ptr<const MLNFeature>> WebMapRenderer::featuresInRect(
    CGRect rect, std::span<const std::string> layerIdentifiers) const {
    if (!isFinite(rect.origin) || !isFinite({rect.maxX(), rect.maxY()})) {
        return {};
    }
    const std::vector<std::string> layers = compiler_.engineLayers(layerIdentifiers);
    if (layers.empty()) {
        return {};
    }
    return compiler_.features(layerIdentifiers, layers, map_.query(rect, layers));
}

}  // namespace pelta
