#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <pelta/Engine/MapRenderer.h>

#include "MapScene.h"
#include "MapText.h"
#include "MapTransform.h"

namespace pelta {

/// A map without pixels: the exact perspective, and a scene that answers what is drawn where.
///
/// Documents load at the next turn of the main queue; frames take no time. Symbols are never left out because
/// they collide, whatever their overlap properties say; opacity and colours play no part, so that a symbol
/// with an opacity of 0 is still found. The layers of a style document have no data here and are never found.
class HeadlessMapRenderer final : public MapRenderer {
 public:
    HeadlessMapRenderer(MapRendererHost& host, CGSize size);

    void setSize(CGSize size, double screenScale) override;
    void setContentInset(UIEdgeInsets inset) override;
    void setGestures(const GestureSettings& settings) override;
    void setLimits(double minimumZoom, double maximumZoom, double minimumPitch, double maximumPitch) override;

    void setCamera(const CameraState& camera) override;
    [[nodiscard]] CameraState camera() const override { return camera_; }
    [[nodiscard]] CGPoint pointForCoordinate(CLLocationCoordinate2D coordinate) const override;
    [[nodiscard]] CLLocationCoordinate2D coordinateForPoint(CGPoint point) const override;

    [[nodiscard]] std::optional<std::string> applyStyle(const StyleDocument& document) override;
    void commit(const MLNStyle& style, const MLNStyleChanges& changes) override;
    void drawFrame() override;
    [[nodiscard]] bool isSettled() const override { return !isLoading_; }

    [[nodiscard]] std::vector<std::shared_ptr<const MLNFeature>> featuresInRect(
        CGRect rect, std::span<const std::string> layerIdentifiers) const override;

 private:
    void updateTransform();
    void finishLoading();

    MapRendererHost& host_;
    CGSize size_;
    UIEdgeInsets inset_;
    CameraState camera_;
    MapTransform transform_;
    MapScene scene_;
    mutable MapText text_;
    std::uint64_t latestLoad_ = 0;
    bool isLoading_ = false;
    /// What tasks hold weakly, so that they end with the renderer.
    std::shared_ptr<HeadlessMapRenderer*> self_ = std::make_shared<HeadlessMapRenderer*>(this);
};

}  // namespace pelta
