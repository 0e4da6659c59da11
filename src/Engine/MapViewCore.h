#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <pelta/Engine/MLNMapView.h>
#include <pelta/Engine/MapRenderer.h>
#include <pelta/Platform/Frames.h>

#include "Engine/CameraController.h"
#include "Engine/ContentInset.h"
#include "Engine/MapViewEvents.h"
#include "Engine/Ornaments.h"
#include "Engine/StyleLoader.h"
#include "Engine/UserLocationAnnotation.h"
#include "Engine/UserTracking.h"

namespace pelta {

/// What stands behind a map view: it owns the renderer and the parts, takes part in frames, and hands what
/// comes from the renderer to the part concerned.
///
/// A callback may release the view at any moment, which closes the core. So everything from outside keeps the
/// core alive with a reference of its own until it returns, and the parts are asked for the renderer anew
/// after every callback.
class MLNMapView::Core final : public MapRendererHost,
                               public FrameParticipant,
                               public std::enable_shared_from_this<MLNMapView::Core> {
 public:
    /// @param view  is being made and fully constructed.
    explicit Core(const std::shared_ptr<MLNMapView>& view);
    /// Second step, once the core is shared: joins the frames and makes the renderer.
    void open();
    /// The view is going away.
    void close();

    [[nodiscard]] MapViewEvents& events() noexcept { return events_; }
    [[nodiscard]] CameraController& camera() noexcept { return camera_; }
    [[nodiscard]] ContentInset& contentInset() noexcept { return contentInset_; }
    [[nodiscard]] Ornaments& ornaments() noexcept { return ornaments_; }
    [[nodiscard]] UserTracking& tracking() noexcept { return tracking_; }
    [[nodiscard]] UserLocationAnnotation& annotation() noexcept { return annotation_; }
    [[nodiscard]] MLNStyle* style() const noexcept { return style_.get(); }
    /// For the view's own queries: the renderer with the view's layout solved.
    [[nodiscard]] const MapRenderer& renderer();
    /// Solves the layout of the view's tree if it is outstanding.
    void layout();

    void loadStyle(const std::string& address);
    void loadStyleText(std::string text);
    void requestFrame();
    /// Tells the renderer the view's size and the screen's scale if they are new to it.
    void updateSurface();
    void setContentInset(const UIEdgeInsets& inset, bool animated, Completion completion);
    void setShowsUserLocation(bool shows);
    /// Zooms as a gesture does, while what is seen at a point of the view stays there; nothing while zooming
    /// is switched off.
    void zoomBy(double change, CGPoint fixed);

    [[nodiscard]] const GestureSettings& gestures() const noexcept { return gestures_; }
    template <class Change>
    void changeGestures(Change&& change) {
        change(gestures_);
        renderer_->setGestures(gestures_);
    }
    /// Kept for the view; there is no such button, ports show the credits elsewhere.
    bool showsAttributionButton = true;

    void advanceTo(double now) override;
    void renderFrame() override;

    void rendererDidLoadStyle() override;
    void gestureWillBegin(MLNCameraChangeReason reason, bool animated) override;
    void gestureDidMove(MLNCameraChangeReason reason) override;
    void gestureDidEnd(MLNCameraChangeReason reason, bool animated) override;
    [[nodiscard]] CameraState constrain(CameraState wanted) const override;
    void rendererDidSettle() override;

 private:
    class HostCall;

    void applyDocument(StyleDocument document);
    void enterDocumentLayers(const StyleDocument& document);
    void styleDidFail(std::string_view message);
    void styleDidChange();
    void userDidMove();
    void showCamera();
    void reportVisibleArea();
    void commitChanges();
    void reportIdleIfAtRest();

    MapViewEvents events_;
    CameraController camera_;
    ContentInset contentInset_;
    UserTracking tracking_;
    UserLocationAnnotation annotation_;
    Ornaments ornaments_;
    StyleLoader styleLoader_;
    GestureSettings gestures_;

    std::unique_ptr<MapRenderer> renderer_;
    CGSize surfaceSize_;
    double surfaceScale_ = 0;
    int hostCalls_ = 0;  // calls from the renderer that have not returned

    std::unique_ptr<MLNStyle> style_;
    std::optional<StyleDocument> arrivingDocument_;  // handed to the renderer, not yet in place

    bool needsFrame_ = false;        // something has changed that no frame shows yet
    bool isVisibleAreaNew_ = false;  // by size or inset, which nobody has been told
    bool isFrameUnderWay_ = false;   // a frame has begun and has not been handed to the renderer
    bool isPreparingFrame_ = false;  // the delegate is changing the style for the frame under way
    bool isAtRest_ = false;
};

}  // namespace pelta
