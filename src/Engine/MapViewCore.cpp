#include "Engine/MapViewCore.h"

#include <utility>

#include <pelta/Engine/MLNFillStyleLayer.h>
#include <pelta/Engine/MLNLineStyleLayer.h>
#include <pelta/Engine/MLNSymbolStyleLayer.h>
#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/UIWindow.h>

#include "Engine/TapZoom.h"

namespace pelta {
namespace {

constexpr double zoomDuration = 0.3;  // seconds

std::shared_ptr<MLNStyleLayer> makeDocumentLayer(const DocumentLayer& description) {
    const auto& identifier = description.identifier;
    const auto& source = description.sourceIdentifier;
    std::shared_ptr<MLNStyleLayer> layer;
    switch (description.kind) {
        case MLNStyleLayerKind::fill:
            layer = std::make_shared<MLNFillStyleLayer>(identifier, source);
            break;
        case MLNStyleLayerKind::line:
            layer = std::make_shared<MLNLineStyleLayer>(identifier, source);
            break;
        case MLNStyleLayerKind::symbol:
            layer = std::make_shared<MLNSymbolStyleLayer>(identifier, source);
            break;
        default:
            layer = std::make_shared<MLNDocumentStyleLayer>(identifier, description.kind);
    }
    layer->setMinimumZoomLevel(description.minimumZoomLevel);
    layer->setMaximumZoomLevel(description.maximumZoomLevel);
    layer->setIsVisible(description.isVisible);
    return layer;
}

}  // namespace

/// Keeps the core, and with it the renderer that calls, alive during a call from the renderer.
class MLNMapView::Core::HostCall {
 public:
    explicit HostCall(Core& core) : core_(core.shared_from_this()) { ++core_->hostCalls_; }
    ~HostCall() { --core_->hostCalls_; }
    HostCall(const HostCall&) = delete;
    HostCall& operator=(const HostCall&) = delete;

 private:
    std::shared_ptr<Core> core_;
};

MLNMapView::Core::Core(const std::shared_ptr<MLNMapView>& view)
    : events_(view),
      camera_(events_, [this] { requestFrame(); }),
      contentInset_([this] {
          isVisibleAreaNew_ = true;
          requestFrame();
      }),
      tracking_(camera_, events_, [this] { userDidMove(); }),
      annotation_(tracking_, events_),
      ornaments_(*view,
                 [weak = std::weak_ptr(view)] {
                     if (const auto tapped = weak.lock()) {
                         tapped->resetNorth();
                     }
                 }),
      styleLoader_({[this](StyleDocument document) { applyDocument(std::move(document)); },
                    [this](const std::string& message) { styleDidFail(message); }}) {}

void MLNMapView::Core::open() {
    const auto view = events_.view();
    surfaceSize_ = view->bounds().size;
    surfaceScale_ = UIScreen::scale();
    renderer_ = EnginePort::current().makeMapRenderer(*this, *view, surfaceSize_, surfaceScale_);
    renderer_->setGestures(gestures_);
    contentInset_.open(*renderer_, surfaceSize_);
    camera_.setViewSize(surfaceSize_);
    camera_.open(*renderer_);
    addTapZoom(*view, [weak = weak_from_this()](double change, CGPoint fixed) {
        if (const auto self = weak.lock()) {
            self->zoomBy(change, fixed);
        }
    });
    annotation_.open();
    FrameLoop::add(weak_from_this());
    requestFrame();
}

void MLNMapView::Core::close() {
    camera_.close();
    contentInset_.close();
    setShowsUserLocation(false);
    style_.reset();
    arrivingDocument_.reset();
    if (hostCalls_ > 0) {
        // The renderer is further up the call stack.
        MainQueue::async(
            [self = shared_from_this(), renderer = std::shared_ptr<MapRenderer>(std::move(renderer_))] {});
    }
    renderer_.reset();
}

void MLNMapView::Core::layout() {
    if (const auto view = events_.view()) {
        view->layoutIfNeeded();
    }
}

const MapRenderer& MLNMapView::Core::renderer() {
    layout();
    return *renderer_;
}

void MLNMapView::Core::requestFrame() {
    needsFrame_ = true;
    isAtRest_ = false;
    if (!isFrameUnderWay_) {
        FrameLoop::request();
    }
}

void MLNMapView::Core::updateSurface() {
    const auto view = events_.view();
    if (!view || !renderer_) {
        return;
    }
    const auto size = view->bounds().size;
    const double scale = UIScreen::scale();
    if (size != surfaceSize_ || scale != surfaceScale_) {
        surfaceSize_ = size;
        surfaceScale_ = scale;
        renderer_->setSize(size, scale);
        contentInset_.setViewSize(size);
        ornaments_.setContentInset(contentInset_.effective());
        isVisibleAreaNew_ = true;
        camera_.setViewSize(size);
    }
}

void MLNMapView::Core::setContentInset(const UIEdgeInsets& inset, bool animated, Completion completion) {
    layout();
    contentInset_.set(inset, animated, std::move(completion));
    ornaments_.setContentInset(contentInset_.effective());
}

void MLNMapView::Core::setShowsUserLocation(bool shows) {
    if (shows != tracking_.showsLocation()) {
        tracking_.setShowsLocation(shows, std::shared_ptr<LocationObserver>(shared_from_this(), &tracking_));
        annotation_.showsLocationDidChange();
    }
}

void MLNMapView::Core::userDidMove() {
    annotation_.setNeedsUpdate();
    requestFrame();
}

void MLNMapView::Core::zoomBy(double change, CGPoint fixed) {
    if (!gestures_.isZoomEnabled || !renderer_) {
        return;
    }
    // Taps in quick succession add up.
    auto wanted = camera_.state();
    wanted.zoom = camera_.destination().zoom + change;
    const double zoom = camera_.constrain(wanted).zoom;
    if (zoom == camera_.destination().zoom) {
        return;
    }
    const auto place = renderer().coordinateForPoint(fixed);
    camera_.easeTo(zoomedAbout(camera_.state(), place, zoom), zoomDuration,
                   CAMediaTimingFunction::easeInEaseOut(),
                   change > 0 ? MLNCameraChangeReason::gestureZoomIn : MLNCameraChangeReason::gestureZoomOut);
}

// Style

void MLNMapView::Core::loadStyle(const std::string& address) {
    styleLoader_.loadAddress(address);
    requestFrame();
}

void MLNMapView::Core::loadStyleText(std::string text) {
    styleLoader_.loadText(std::move(text));
    requestFrame();
}

void MLNMapView::Core::applyDocument(StyleDocument document) {
    const auto self = shared_from_this();
    if (!renderer_) {
        return;
    }
    if (const auto fault = renderer_->applyStyle(document)) {
        styleDidFail(*fault);
        return;
    }
    arrivingDocument_ = std::move(document);
    arrivingDocument_->text = {};  // The renderer's affair from now on.
    requestFrame();
}

void MLNMapView::Core::rendererDidLoadStyle() {
    const HostCall call(*this);
    if (!renderer_ || !arrivingDocument_) {
        return;
    }
    const auto document = std::move(*arrivingDocument_);
    arrivingDocument_.reset();
    style_.reset();  // Frees its layers for the new style.
    style_ = std::make_unique<MLNStyle>(document.name, [this] { styleDidChange(); });
    enterDocumentLayers(document);
    requestFrame();
    events_.tell([this](auto& delegate, auto& view) { delegate.didFinishLoadingStyle(view, *style_); });
}

void MLNMapView::Core::enterDocumentLayers(const StyleDocument& document) {
    for (const auto& layer : document.layers) {
        style_->addDocumentLayer(makeDocumentLayer(layer));
    }
}

void MLNMapView::Core::styleDidFail(std::string_view message) {
    const auto self = shared_from_this();
    requestFrame();
    events_.tell([message](auto& delegate, auto& view) { delegate.mapViewDidFailLoadingMap(view, message); });
}

void MLNMapView::Core::styleDidChange() {
    if (!isPreparingFrame_) {
        requestFrame();
    }
}

// Frames

void MLNMapView::Core::advanceTo(double now) {
    const auto self = shared_from_this();
    isFrameUnderWay_ = true;
    layout();
    updateSurface();
    contentInset_.advanceTo(now);
    camera_.advanceTo(now);
}

void MLNMapView::Core::renderFrame() {
    const auto self = shared_from_this();
    layout();
    // All that was asked for so far is part of this frame, and so is what the delegate changes in the style
    // now.
    isFrameUnderWay_ = true;
    reportVisibleArea();
    needsFrame_ = !camera_.isAtRest() || contentInset_.isMoving() || isVisibleAreaNew_;
    isPreparingFrame_ = true;
    events_.tell([](auto& delegate, auto& view) { delegate.mapViewWillStartRenderingFrame(view); });
    isPreparingFrame_ = false;
    isFrameUnderWay_ = false;
    if (!renderer_) {
        return;
    }
    commitChanges();
    renderer_->drawFrame();
    showCamera();
    if (needsFrame_) {
        FrameLoop::request();
    }
    reportIdleIfAtRest();
}

void MLNMapView::Core::reportVisibleArea() {
    if (std::exchange(isVisibleAreaNew_, false)) {
        events_.tell([](auto& delegate, auto& view) { delegate.mapViewDidChangeVisibleArea(view); });
    }
}

/// Brings what lies over the map in line with the frame just drawn.
void MLNMapView::Core::showCamera() {
    ornaments_.showCamera(camera_.state());
    annotation_.showCamera(camera_.state(), *renderer_);
}

void MLNMapView::Core::commitChanges() {
    if (style_ && !arrivingDocument_ && style_->hasChanges()) {
        style_->takeChanges([this](const MLNStyleChanges& changes) { renderer_->commit(*style_, changes); });
    }
}

void MLNMapView::Core::reportIdleIfAtRest() {
    const bool isBusy = needsFrame_ || !camera_.isAtRest() || contentInset_.isMoving() ||
                        styleLoader_.isLoading() || arrivingDocument_.has_value() || !renderer_ ||
                        !renderer_->isSettled();
    if (!isBusy && !isAtRest_) {
        isAtRest_ = true;
        events_.tell([](auto& delegate, auto& view) { delegate.mapViewDidBecomeIdle(view); });
    }
}

// From the renderer

void MLNMapView::Core::gestureWillBegin(MLNCameraChangeReason reason, bool animated) {
    const HostCall call(*this);
    isAtRest_ = false;
    tracking_.gestureWillBegin(reason);
    camera_.gestureWillBegin(reason, animated);
}

void MLNMapView::Core::gestureDidMove(MLNCameraChangeReason reason) {
    const HostCall call(*this);
    isAtRest_ = false;
    camera_.gestureDidMove(reason);
    renderFrame();
}

void MLNMapView::Core::gestureDidEnd(MLNCameraChangeReason reason, bool animated) {
    const HostCall call(*this);
    camera_.gestureDidEnd(reason, animated);
    requestFrame();
}

CameraState MLNMapView::Core::constrain(CameraState wanted) const {
    return camera_.constrain(wanted);
}

void MLNMapView::Core::rendererDidSettle() {
    const HostCall call(*this);
    reportIdleIfAtRest();
}

}  // namespace pelta
