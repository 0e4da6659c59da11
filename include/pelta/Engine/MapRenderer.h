#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <pelta/Engine/MLNShape.h>
#include <pelta/Engine/MLNStyle.h>
#include <pelta/Engine/MLNTypes.h>

/// @file
/// What a port supplies to the map engine: one `MapRenderer` for each map view, which draws what it is handed
/// and answers geometry questions. All behaviour above that (limits, transitions, events, fitting, the style
/// model, tracking, ornaments) is the engine's own and the same on every port.

namespace pelta {

class UIView;

/// One layer of a style document, as the engine's model enters it.
struct DocumentLayer {
    std::string identifier;                             ///< As in the document.
    MLNStyleLayerKind kind = MLNStyleLayerKind::other;  ///< What it draws.
    std::string sourceIdentifier;                       ///< Empty for layers without a source.
    float minimumZoomLevel = 0;                         ///< Drawn from this zoom on.
    float maximumZoomLevel = 24;                        ///< Not drawn from this zoom on.
    bool isVisible = true;                              ///< Drawn at all.
};

/// A style document that has been read and checked: version 8, an object of sources, a list of layers with
/// unique identifiers.
struct StyleDocument {
    std::string name;  ///< As in the document; empty without one.
    std::string text;  ///< The JSON text as fetched.
    std::string
        address;  ///< Where it came from; relative addresses in it start there. Empty for a given text.
    std::vector<DocumentLayer> layers;           ///< Bottom first.
    std::vector<std::string> sourceIdentifiers;  ///< Of the document's own sources.
};

/// What a renderer tells its map view, on the main thread and never from inside a call of the map view's.
class MapRendererHost {
 public:
    virtual ~MapRendererHost() = default;

    /// The document handed over with `applyStyle` is in place and takes layers, sources and images.
    virtual void rendererDidLoadStyle() = 0;

    /// A gesture begins to move the camera. Ends a transition that is under way.
    virtual void gestureWillBegin(MLNCameraChangeReason reason, bool animated) = 0;
    /// A gesture has moved the camera, which `camera()` already answers. The map view reports the event and
    /// renders the frame before it returns.
    virtual void gestureDidMove(MLNCameraChangeReason reason) = 0;
    /// The gesture and its after-run have ended.
    virtual void gestureDidEnd(MLNCameraChangeReason reason, bool animated) = 0;
    /// The nearest camera to a wanted one that the limits allow, for gestures.
    [[nodiscard]] virtual CameraState constrain(CameraState wanted) const = 0;

    /// Everything that was handed over has been drawn (see `MapRenderer::isSettled`).
    virtual void rendererDidSettle() = 0;
};

/// Draws one map. Coordinates are points of the map view, its top left corner at (0, 0).
///
/// Commands are in force for the next query. A renderer never moves the camera of its own accord but for
/// gestures, and calls its host only until it is destroyed.
class MapRenderer {
 public:
    virtual ~MapRenderer() = default;

    /// Size and scale of the drawn area changed; the camera stays.
    virtual void setSize(CGSize size, double screenScale) = 0;
    /// The middle of the area left by the inset, which is never without extent, is where the camera's centre
    /// is drawn.
    virtual void setContentInset(UIEdgeInsets inset) = 0;
    /// In force for the next touch.
    virtual void setGestures(const GestureSettings& settings) = 0;
    /// Limits have changed, for renderers whose gestures need to know them beyond
    /// `MapRendererHost::constrain`.
    virtual void setLimits(double minimumZoom, double maximumZoom, double minimumPitch,
                           double maximumPitch) = 0;

    /// Shows a camera, which is within the limits, without animation and without an event.
    virtual void setCamera(const CameraState& camera) = 0;
    /// The camera that the next frame would show.
    [[nodiscard]] virtual CameraState camera() const = 0;
    /// Where a coordinate is drawn, by the perspective with a field of view of 2·atan(1/3). Longitudes are
    /// not wrapped: 360 degrees more is the next copy of the world. A coordinate behind the eye gives a
    /// finite point far outside of the view. Non-finite input gives (0, 0).
    [[nodiscard]] virtual CGPoint pointForCoordinate(CLLocationCoordinate2D coordinate) const = 0;
    /// What is drawn at a point; a point above the horizon takes the horizon's nearest coordinate. Longitudes
    /// are not wrapped, latitudes end at ±90. Non-finite input gives the camera's centre.
    [[nodiscard]] virtual CLLocationCoordinate2D coordinateForPoint(CGPoint point) const = 0;

    /// Starts to load a document in place of the present one. Answers later with `rendererDidLoadStyle`,
    /// once; a newer document silences the older one. The layers, sources and images added before are gone
    /// with the old document; the map view commits them anew.
    ///
    /// @return why the document cannot be drawn, in which case nothing has changed; absent when it can.
    [[nodiscard]] virtual std::optional<std::string> applyStyle(const StyleDocument& document) = 0;
    /// Takes a frame's changes of the model. Called only while a document is in place, at most once a frame;
    /// `style` holds the model as it is to be drawn, the document's layers included.
    virtual void commit(const MLNStyle& style, const MLNStyleChanges& changes) = 0;
    /// Draws a frame with what has been handed over.
    virtual void drawFrame() = 0;
    /// True when nothing handed over is still on its way to the screen: no document loading, no worker's
    /// reply outstanding, no gesture or fading under way. When it turns true, the host's `rendererDidSettle`
    /// is called.
    [[nodiscard]] virtual bool isSettled() const = 0;

    /// The features drawn inside a rectangle, topmost first, each with the attributes and geometry it has in
    /// its source; symbols count by the boxes of icon and text, lines by their width, areas by their inside.
    ///
    /// @param layerIdentifiers  layers to ask, all layers when empty; unknown ones are skipped.
    [[nodiscard]] virtual std::vector<std::shared_ptr<const MLNFeature>> featuresInRect(
        CGRect rect, std::span<const std::string> layerIdentifiers) const = 0;
};

/// Makes the renderers of a port. Installed together with the port's `PlatformPort`.
class EnginePort {
 public:
    virtual ~EnginePort() = default;

    /// A renderer for a map view. `host` outlives it. `surface` is the view that answers `SurfaceContent`
    /// with itself as owner; where the renderer draws into something that the port shows, that is what it
    /// shows there.
    [[nodiscard]] virtual std::unique_ptr<MapRenderer> makeMapRenderer(MapRendererHost& host, UIView& surface,
                                                                       CGSize size, double screenScale) = 0;

    /// The installed port; a programming error that stops the process when there is none.
    [[nodiscard]] static EnginePort& current();
    /// Installs a port, or none; the caller keeps ownership.
    static void install(EnginePort* port);
};

}  // namespace pelta
