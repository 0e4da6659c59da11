#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <pelta/Engine/MapRenderer.h>

#include "GlMap.h"
#include "JsFunction.h"
#include "MapGestures.h"
#include "StyleCompiler.h"
#include "StyleImages.h"

namespace pelta {

/// Draws a map with GL JS.
///
/// The camera is the map view's but for gestures, which are GL JS's. While a command of the map view runs, GL
/// JS's own movement events mean nothing and are left out; those that come while it draws a frame for us wait
/// until that is over, because the host must not be called from inside its own calls.
class WebMapRenderer final : public MapRenderer {
 public:
    /// @param isLiteral  see `setDrawsLayersLiterally`.
    WebMapRenderer(MapRendererHost& host, UIView& surface, CGSize size, double screenScale, bool isLiteral);
    ~WebMapRenderer() override;

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
    [[nodiscard]] bool isSettled() const override { return isSettled_; }

    [[nodiscard]] std::vector<std::shared_ptr<const MLNFeature>> featuresInRect(
        CGRect rect, std::span<const std::string> layerIdentifiers) const override;

 private:
    using Report = std::function<void()>;

    void listen(const char* event, void (WebMapRenderer::*handler)(const emscripten::val& event));
    /// Runs a command on GL JS without hearing its movement events.
    template <class Work>
    void command(Work&& work);
    /// Calls the host, at once or, while a call of the map view's is under way, afterwards.
    void report(Report work);
    void runReports();

    /// @name GL JS's events
    /// @{
    void movementDidBegin(const emscripten::val& event);
    void mapDidMove(const emscripten::val& event);
    void movementDidEnd(const emscripten::val& event);
    void styleDidLoad(const emscripten::val& event);
    void errorDidOccur(const emscripten::val& event);
    void mapDidRender(const emscripten::val& event);
    void mapDidBecomeIdle(const emscripten::val& event);
    void contextDidGetLost(const emscripten::val& event);
    void contextDidReturn(const emscripten::val& event);
    /// @}

    void gestureDidMove(const CameraState& camera);
    void gestureDidEnd();
    void setNeedsDrawing() noexcept;
    void followZoom();
    [[nodiscard]] emscripten::val constrain(const emscripten::val& arguments) const;

    MapRendererHost& host_;
    const void* surface_;
    int commandDepth_ = 1;  ///< The map's construction counts as a command.
    emscripten::val element_;
    JsFunction constrainFunction_;
    GlMap map_;
    std::vector<JsFunction> listeners_;
    StyleCompiler compiler_;
    StyleImages images_;

    CGSize size_;
    double scale_;
    UIEdgeInsets inset_;
    CameraState camera_;

    StyleDocument loading_;  ///< The document under way; without text when there is none.
    bool isLoading_ = false;
    bool isContextLost_ = false;
    std::vector<std::function<void()>> waitingCommits_;  ///< Made while the drawing context was lost.

    GestureCause cause_ = GestureCause::continuous;
    MLNCameraChangeReason reason_ = MLNCameraChangeReason::none;  ///< Of the gesture under way, else none.

    bool isDrawing_ = false;  ///< GL JS draws a frame for us.
    bool isReporting_ = false;
    bool needsDrawing_ = true;
    bool isSettled_ = false;
    std::deque<Report> reports_;
    /// What tasks and running reports hold weakly, to learn that the renderer has gone.
    std::shared_ptr<WebMapRenderer*> self_ = std::make_shared<WebMapRenderer*>(this);
};

}  // namespace pelta
