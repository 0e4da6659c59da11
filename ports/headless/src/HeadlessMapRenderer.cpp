#include "HeadlessMapRenderer.h"

#include <algorithm>
#include <optional>

#include <pelta/Platform/Dispatch.h>

#include "MapFeatureQuery.h"

namespace pelta {

namespace {

/// The part of a rectangle, whose sides may be negative, that lies in the view and below the horizon; nothing
/// when there is none.
std::optional<CGRect> visiblePart(CGRect rect, CGSize size, double horizon) {
    const auto [left, right] = std::minmax({rect.origin.x, rect.origin.x + rect.size.width});
    const auto [top, bottom] = std::minmax({rect.origin.y, rect.origin.y + rect.size.height});
    const double minX = std::max(left, 0.0);
    const double minY = std::max({top, 0.0, horizon});
    const double maxX = std::min(right, size.width);
    const double maxY = std::min(bottom, size.height);
    if (!(minX <= maxX) || !(minY <= maxY)) {
        return std::nullopt;
    }
    return CGRect{{minX, minY}, {maxX - minX, maxY - minY}};
}

}  // namespace

HeadlessMapRenderer::HeadlessMapRenderer(MapRendererHost& host, CGSize size) : host_(host), size_(size) {
    updateTransform();
}

void HeadlessMapRenderer::setSize(CGSize size, double /*screenScale*/) {
    size_ = size;
    updateTransform();
}

void HeadlessMapRenderer::setContentInset(UIEdgeInsets inset) {
    inset_ = inset;
    updateTransform();
}

// No finger moves this map, so there is nothing to allow or to limit.
void HeadlessMapRenderer::setGestures(const GestureSettings& /*settings*/) {}
void HeadlessMapRenderer::setLimits(double /*minimumZoom*/, double /*maximumZoom*/, double /*minimumPitch*/,
                                    double /*maximumPitch*/) {}

void HeadlessMapRenderer::setCamera(const CameraState& camera) {
    camera_ = camera;
    updateTransform();
}

void HeadlessMapRenderer::updateTransform() {
    transform_ = MapTransform(camera_, size_, inset_);
}

CGPoint HeadlessMapRenderer::pointForCoordinate(CLLocationCoordinate2D coordinate) const {
    return transform_.pointForCoordinate(coordinate);
}

CLLocationCoordinate2D HeadlessMapRenderer::coordinateForPoint(CGPoint point) const {
    return transform_.coordinateForPoint(point);
}

std::optional<std::string> HeadlessMapRenderer::applyStyle(const StyleDocument& /*document*/) {
    isLoading_ = true;
    ++latestLoad_;
    MainQueue::async([self = std::weak_ptr(self_), load = latestLoad_] {
        const auto renderer = self.lock();
        if (renderer && (*renderer)->latestLoad_ == load) {
            (*renderer)->finishLoading();
        }
    });
    return std::nullopt;
}

void HeadlessMapRenderer::finishLoading() {
    isLoading_ = false;
    scene_ = {};
    MainQueue::async([self = std::weak_ptr(self_)] {
        const auto renderer = self.lock();
        if (renderer && (*renderer)->isSettled()) {
            (*renderer)->host_.rendererDidSettle();
        }
    });
    host_.rendererDidLoadStyle();
}

void HeadlessMapRenderer::commit(const MLNStyle& style, const MLNStyleChanges& changes) {
    scene_.commit(style, changes);
}

// Nothing to paint: a committed scene is on the screen.
void HeadlessMapRenderer::drawFrame() {}

std::vector<std::shared_ptr<const MLNFeature>> HeadlessMapRenderer::featuresInRect(
    CGRect rect, std::span<const std::string> layerIdentifiers) const {
    const auto visible = visiblePart(rect, size_, transform_.horizon());
    if (!visible) {
        return {};
    }
    return MapFeatureQuery(scene_, text_, transform_, camera_.zoom, *visible).run(layerIdentifiers);
}

}  // namespace pelta
