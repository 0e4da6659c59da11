#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <pelta/Annotations/PgmShape.h>
#include <pelta/Engine/MLNMapView.h>
#include <pelta/Geometry/PgmCameraPosition.h>
#include <pelta/Geometry/PgmCameraUpdate.h>
#include <pelta/Geometry/PgmLatLngBounds.h>
#include <pelta/Geometry/PgmProjection.h>
#include <pelta/Platform/UIView.h>
#include <pelta/View/PgmMapDelegate.h>
#include <pelta/View/PgmMapOptions.h>
#include <pelta/View/PgmMapTypes.h>

namespace pelta {

class PgmLocationAnnotationView;
class PgmLocationIcon;
class PrivateMapDelegate;
class ShapeRegistry;
struct OrnamentControls;

/// A map in a view hierarchy: the application's way to the camera, the gestures and the shapes on it.
///
/// Made with `create`, or with `make<T>` for subclasses; it loads its first style by itself. Setters store
/// the value, which is what the getter answers, and hand it to the engine's map view, which keeps its own
/// limits; a new view has not told the engine any of its defaults. Numbers that are not finite are stored but
/// ignored by the engine. Main thread only, but for `addShape` and `removeShape`.
class PgmMapView : public UIView {
 public:
    /// Runs when a camera movement has ended.
    using Completion = std::function<void()>;
    /// Shapes by their `shapeIndex`.
    using ShapesMap = std::map<std::uint64_t, std::shared_ptr<PgmShape>>;

    /// @name Creation
    /// @{
    /// @param frame     place in the superview, points.
    /// @param options   what to start with; null changes nothing.
    /// @param delegate  as `setDelegate`, from before the first event.
    [[nodiscard]] static std::shared_ptr<PgmMapView> create(
        CGRect frame, std::shared_ptr<PgmMapOptions> options = nullptr,
        const std::shared_ptr<PgmMapDelegate>& delegate = nullptr);
    /// A view from an interface description.
    [[nodiscard]] static std::shared_ptr<PgmMapView> createWithCoder(const PgmViewSettings& settings);
    /// For `make`; use the factories. Until `completeConstruction`, as in the constructor of a subclass,
    /// there is no engine view: setters only store, and what acts on the engine or the camera does nothing.
    explicit PgmMapView(CGRect frame, std::shared_ptr<PgmMapOptions> options = nullptr,
                        const std::shared_ptr<PgmMapDelegate>& delegate = nullptr);
    /// For `make`; see `createWithCoder`.
    explicit PgmMapView(const PgmViewSettings& settings);
    /// Takes the engine's view with it.
    ~PgmMapView() override;
    void completeConstruction(std::string_view className) override;
    /// The options that the view was made with; null when there were none.
    [[nodiscard]] const std::shared_ptr<PgmMapOptions>& mapOptions() const noexcept { return mapOptions_; }
    /// @}

    /// @name Events
    /// @{
    /// Held weakly; null when there is none.
    [[nodiscard]] std::shared_ptr<PgmMapDelegate> delegate() const { return delegate_.lock(); }
    void setDelegate(const std::shared_ptr<PgmMapDelegate>& delegate) { delegate_ = delegate; }
    /// Second listener to `regionIsChangingWithReason` and `mapViewDidChangeVisibleArea` alone, after
    /// `delegate`; for a cluster manager. Held weakly.
    [[nodiscard]] std::shared_ptr<PgmMapDelegate> clusterDelegate() const { return clusterDelegate_.lock(); }
    void setClusterDelegate(const std::shared_ptr<PgmMapDelegate>& delegate) { clusterDelegate_ = delegate; }
    /// @}

    /// @name Style
    /// What the map is drawn by: a document in the MapLibre style format, version 8. Shapes and camera stay
    /// when it changes.
    /// @{
    /// Loads a style in place of the present one, which stays until the new one has come, and stays if that
    /// fails. The delegate hears how it ended, never before this returns. Of styles set one after another
    /// only the last is answered. One that a subclass's constructor sets is the first one loaded, unless the
    /// options name another; see `PgmMapOptions::setStyleURL`.
    ///
    ///     map->setStyleURL("styles/dark.json");
    ///
    /// @param address  of the document, absolute or relative to the application's place. Addresses within the
    ///                 document are relative to the document.
    void setStyleURL(const std::string& address);
    /// The same for a document that is at hand; addresses within it are relative to the application's place.
    ///
    /// @param document  JSON in UTF-8.
    void setStyleJSON(std::string document);
    /// @}

    /// @name Camera
    /// @{
    /// The camera as it is; null without an engine view. A zoom and a tilt within the limits read back
    /// exactly as they were set, whatever the size of the view.
    [[nodiscard]] std::shared_ptr<PgmCameraPosition> cameraPosition() const;
    /// Moves the camera at once; null is ignored.
    void setCameraPosition(const std::shared_ptr<PgmCameraPosition>& position);
    /// Moves the camera and ends the following of the user's location. Null does nothing at all.
    void moveCamera(const std::shared_ptr<PgmCameraUpdate>& update);
    /// Moves the camera and lets a following of the user's location go on.
    ///
    /// @param completion  runs once when the movement has ended, also when it was interrupted; for one
    ///                    without animation before the call returns. May be empty.
    void moveCamera(const std::shared_ptr<PgmCameraUpdate>& update, Completion completion);
    /// Flies along an arc that zooms out and in again.
    ///
    /// @param position    null is ignored; the completion does not run then.
    /// @param duration    seconds; 0 jumps, a negative one lets the engine choose by the distance.
    /// @param completion  as in `moveCamera`.
    void flyToCamera(const std::shared_ptr<PgmCameraPosition>& position, double duration,
                     Completion completion);
    /// Last latitude that was set, 0 at first: the camera itself is in `cameraPosition`. Setting it keeps the
    /// longitude.
    [[nodiscard]] double latitude() const noexcept { return settings_.latitude; }
    void setLatitude(double degrees);
    /// Last longitude that was set, 0 at first. Setting it keeps the latitude.
    [[nodiscard]] double longitude() const noexcept { return settings_.longitude; }
    void setLongitude(double degrees);
    /// Last zoom level that was set, 15 at first.
    [[nodiscard]] double zoomLevel() const noexcept { return settings_.zoomLevel; }
    void setZoomLevel(double zoomLevel);
    /// Converts between points of this view and coordinates; a new object each time. One that is made before
    /// `completeConstruction` has no view.
    [[nodiscard]] std::shared_ptr<PgmProjection> projection() const;
    /// The coordinate rectangle of the whole view; null without an engine view.
    [[nodiscard]] std::shared_ptr<PgmLatLngBounds> contentBounds() const;
    /// @}

    /// @name Limits
    /// @{
    /// 1 at first.
    [[nodiscard]] double minimumZoomLevel() const noexcept { return settings_.minimumZoomLevel; }
    void setMinimumZoomLevel(double zoomLevel);
    /// 20 at first; where it is below the minimum, the maximum wins.
    [[nodiscard]] double maximumZoomLevel() const noexcept { return settings_.maximumZoomLevel; }
    void setMaximumZoomLevel(double zoomLevel);
    /// Degrees, 0 at first.
    [[nodiscard]] double minimumTilt() const noexcept { return settings_.minimumTilt; }
    void setMinimumTilt(double degrees);
    /// Degrees, 60 at first.
    [[nodiscard]] double maximumTilt() const noexcept { return settings_.maximumTilt; }
    void setMaximumTilt(double degrees);
    /// The area that the view may show; null without an engine view.
    [[nodiscard]] std::shared_ptr<PgmLatLngBounds> constraintBounds() const;
    /// Null is ignored: the previous area stays.
    void setConstraintBounds(const std::shared_ptr<PgmLatLngBounds>& bounds);
    /// Points from the view's edges within which the camera's target is the middle; zero at first. An inset
    /// whose left and right together reach the view's width, or top and bottom its height, is kept but has no
    /// effect on camera, fitting and ornaments while that is so.
    [[nodiscard]] UIEdgeInsets contentInset() const noexcept { return settings_.contentInset; }
    void setContentInset(UIEdgeInsets inset);
    /// @}

    /// @name Ornaments
    /// @{
    /// True at first.
    [[nodiscard]] bool isScaleBarVisible() const noexcept { return settings_.isScaleBarVisible; }
    void setIsScaleBarVisible(bool visible);
    /// True at first; the compass is seen while the map is turned.
    [[nodiscard]] bool isCompassVisible() const noexcept { return settings_.isCompassVisible; }
    void setIsCompassVisible(bool visible);
    /// False at first.
    [[nodiscard]] bool isZoomControlVisible() const noexcept { return settings_.isZoomControlVisible; }
    void setIsZoomControlVisible(bool visible);
    /// False at first.
    [[nodiscard]] bool isLocationButtonVisible() const noexcept { return settings_.isLocationButtonVisible; }
    void setIsLocationButtonVisible(bool visible);
    /// False at first.
    [[nodiscard]] bool isLogoVisible() const noexcept { return settings_.isLogoVisible; }
    void setIsLogoVisible(bool visible);
    /// Whether the logo takes taps, true at first; taps beside it go to the map in any case.
    [[nodiscard]] bool isLogoClickEnabled() const noexcept { return settings_.isLogoClickEnabled; }
    void setIsLogoClickEnabled(bool enabled);
    /// Where the logo stands.
    [[nodiscard]] PgmPosition logoViewPosition() const noexcept { return PgmPosition::bottomLeft; }
    /// Points from the edges at which the logo stands.
    [[nodiscard]] CGPoint logoViewMargins() const noexcept { return {8, 8}; }
    /// The zoom control: a container with a button to zoom in, a divider and a button to zoom out.
    [[nodiscard]] const std::shared_ptr<UIView>& zoomView() const noexcept;
    /// Where the zoom control stands, `centerRight` at first.
    [[nodiscard]] PgmPosition zoomViewPosition() const noexcept;
    void setZoomViewPosition(PgmPosition position);
    /// Points from the edges at which the zoom control stands, (8, 0) at first.
    [[nodiscard]] CGPoint zoomViewMargins() const noexcept;
    void setZoomViewMargins(CGPoint margins);
    /// The location button within its container.
    [[nodiscard]] const std::shared_ptr<UIView>& locationView() const noexcept;
    /// Where the location button stands, `bottomRight` at first.
    [[nodiscard]] PgmPosition locationViewPosition() const noexcept;
    void setLocationViewPosition(PgmPosition position);
    /// Points from the edges at which the location button stands, (8, 8) at first.
    [[nodiscard]] CGPoint locationViewMargins() const noexcept;
    void setLocationViewMargins(CGPoint margins);
    /// Answers true when it has dealt with the press.
    using LocationButtonEvent = std::function<bool(PgmMapView&)>;
    /// What a press of the location button asks before anything else; empty at first.
    [[nodiscard]] const LocationButtonEvent& locationButtonEvent() const noexcept {
        return locationButtonEvent_;
    }
    /// With an event that answers true the button does nothing of its own, with any other, and with none, it
    /// does what `locactionAction` does, which asks no event.
    ///
    ///     map->setLocationButtonEvent([](PgmMapView& map) {
    ///         const bool isOff = map.userTrackingMode() == PgmUserTrackingMode::off;
    ///         map.setUserTrackingMode(isOff ? PgmUserTrackingMode::follow : PgmUserTrackingMode::off);
    ///         return true;
    ///     });
    void setLocationButtonEvent(LocationButtonEvent event) { locationButtonEvent_ = std::move(event); }
    /// Shows another picture on the location button, such as one for each state of the following. The button
    /// keeps its size; the picture stands in its middle at a size of its own.
    ///
    /// @param image    absent: the built-in pictures are back.
    /// @param pressed  while the button is pressed; absent: `image` then too.
    void setLocationButtonImage(std::optional<UIImage> image, std::optional<UIImage> pressed = std::nullopt);
    /// Places a view that the application has added to this one as the map's own controls are placed: within
    /// the safe area, moved inwards by the content inset. It stays there until this is called again, as
    /// after a change of the inset, or of the size while the inset is too large for it. Nothing happens
    /// before `completeConstruction`. A position that is none of the enumeration is a programming error that
    /// stops the process.
    ///
    /// @param constraints  those that have placed the view so far; they are let go and replaced.
    /// @param size         points; zero both ways leaves the view's extent to other constraints.
    /// @param margins      points from the edges.
    void updateConstraintsForOrnament(const std::shared_ptr<UIView>& ornament,
                                      std::vector<std::shared_ptr<NSLayoutConstraint>>& constraints,
                                      PgmPosition position, CGSize size, CGPoint margins);
    /// Places the zoom control and the location button anew; happens by itself when the safe area or the
    /// content inset changes, and when a new size changes whether that has effect.
    void refreshOrnamentConstraints();
    void layoutSubviews() override;
    void safeAreaInsetsDidChange() override;
    /// Zooms in, animated, to one level more than the camera is going to, as a press of the button does. The
    /// rest of where it is going to stays.
    void plusAction();
    /// Zooms out likewise, to one level less.
    void minusAction();
    /// Sets `userTrackingMode` to what it is: the user's location is shown and followed once more, and a
    /// camera that has moved away is led back to it.
    void locactionAction();
    /// @}

    /// @name Gestures
    /// All enabled at first.
    /// @{
    /// Two fingers, double taps and taps of two fingers zoom.
    [[nodiscard]] bool isZoomGesturesEnabled() const noexcept { return settings_.isZoomGesturesEnabled; }
    void setIsZoomGesturesEnabled(bool enabled);
    /// A finger moves the map.
    [[nodiscard]] bool isScrollGesturesEnabled() const noexcept { return settings_.isScrollGesturesEnabled; }
    void setIsScrollGesturesEnabled(bool enabled);
    /// Two fingers turn the map.
    [[nodiscard]] bool isRotateGesturesEnabled() const noexcept { return settings_.isRotateGesturesEnabled; }
    void setIsRotateGesturesEnabled(bool enabled);
    /// Two fingers side by side tilt the map.
    [[nodiscard]] bool isTiltGesturesEnabled() const noexcept { return settings_.isTiltGesturesEnabled; }
    void setIsTiltGesturesEnabled(bool enabled);
    /// Share of its speed that a fling keeps each millisecond, 0.998 at first; 0 switches flinging off.
    [[nodiscard]] CGFloat decelerationRate() const noexcept { return settings_.decelerationRate; }
    void setDecelerationRate(CGFloat rate);
    /// @}

    /// @name Taps
    /// What the engine view's recognisers call, once the double tap has been ruled out.
    /// @{
    /// Whether a tap goes to the nearest shape instead of the topmost, false at first.
    [[nodiscard]] bool isNearestShapePreferred() const noexcept { return settings_.isNearestShapePreferred; }
    /// Lets each of many shapes that crowd together be tapped. Of those with a `touchEvent` that are drawn
    /// within 22 points of a tap, one is asked all the same: the topmost symbol whose picture or title holds
    /// the tapped point; else the symbol or line that is nearest to it, by the sides of the smallest square
    /// about the point that it reaches into, to a quarter of a point; else the topmost area. Of equally near
    /// ones the topmost is asked. The outline of an area counts as the area.
    ///
    ///     map->setIsNearestShapePreferred(true);  // pins in a city
    void setIsNearestShapePreferred(bool preferred) noexcept {
        settings_.isNearestShapePreferred = preferred;
    }
    /// Offers a tap that has ended to the topmost shape with a `touchEvent` that is drawn within 22 points of
    /// it, or the nearest; where there is none, or it declines, the delegate is told.
    void handleSingleTap(const UIGestureRecognizer& recognizer);
    /// Tells the delegate of a long press that has begun; shapes are not asked.
    void handleLongTapGesture(const UIGestureRecognizer& recognizer);
    /// Notes a tap on the logo in the log while `isLogoClickEnabled`.
    void handleLogoSingleTap(const UIGestureRecognizer& recognizer);
    /// A hand over what is drawn of a shape with a `touchEvent`.
    [[nodiscard]] UIPointerStyle pointerStyle(CGPoint point) const override;
    /// @}

    /// @name User location
    /// @{
    /// The mode that was set last, `off` at first. A pan ends the following and leaves this value, so that
    /// the location button takes the following up again; how the location is followed now is told to
    /// `PgmMapDelegate::didChangeUserTrackingMode`.
    [[nodiscard]] PgmUserTrackingMode userTrackingMode() const noexcept { return settings_.userTrackingMode; }
    /// Shows the user's location and follows it as the mode says; `off` hides it. Setting the present mode
    /// takes it up anew, and leads a camera that has moved away back. A value that is none of the enumeration
    /// is a programming error that stops the process.
    void setUserTrackingMode(PgmUserTrackingMode mode);
    /// How the user's location is drawn; never null.
    [[nodiscard]] const std::shared_ptr<PgmLocationIcon>& locationIcon() const noexcept {
        return locationIcon_;
    }
    /// The view that draws the user's location; never null. It is in the engine's map view while the location
    /// is shown and known.
    [[nodiscard]] const std::shared_ptr<PgmLocationAnnotationView>& locationAnnotaionView() const noexcept {
        return locationAnnotaionView_;
    }
    /// @}

    /// @name Shapes
    /// What shapes and cluster managers use. Applications show a shape with `PgmShape::setMapView`.
    /// @{
    /// The shapes on the map by their `shapeIndex`.
    [[nodiscard]] const ShapesMap& shapesMap() const noexcept;
    /// Shapes taken from the map whose layers leave it at the next frame.
    [[nodiscard]] const ShapesMap& willBeRemovedShapesMap() const noexcept;
    /// Puts a shape on the map and draws it. Its layers leave the style of the map that it was on before.
    /// Does not set the shape's own `mapView`. Null is ignored, here and in `removeShape`.
    ///
    /// Both may be called on any thread. All of their work is done on the main thread, and the caller waits
    /// for it as in `MainQueue::sync`.
    void addShape(const std::shared_ptr<PgmShape>& shape);
    /// Takes a shape from the map; its layers go at the next frame.
    void removeShape(const std::shared_ptr<PgmShape>& shape);
    /// Updates the shape's layers and has the next frame take in everything new; nothing before a style has
    /// loaded, which draws all shapes by itself.
    void drawShape(PgmShape& shape);
    /// Replaces the contents of a source by the features of all shapes whose `mapView` is set; nothing when
    /// the style has no such source.
    void updateSource(std::string_view identifier);
    /// Brings the layers of all shapes into their stacking order and takes out those of removed shapes.
    void reorderShapes();
    /// Puts into the style every picture that a shape needs and whose name the style does not have. Pictures
    /// stay in the style, but for those that an info window has drawn and no longer shows: such a picture
    /// leaves once no shape of the map needs one of its name and a frame without it has been drawn.
    void checkShapeImage();
    /// The three kinds of work that wait for the next frame, done in this order. Setting one does not ask for
    /// a frame; `triggerRepaint` does.
    [[nodiscard]] bool needReorderShapes() const noexcept;
    void setNeedReorderShapes(bool need) noexcept;
    /// Whether the shapes' source is to be rebuilt.
    [[nodiscard]] bool needUpdateShapes() const noexcept;
    void setNeedUpdateShapes(bool need) noexcept;
    /// Whether pictures are to be put into the style.
    [[nodiscard]] bool needCheckShapeImage() const noexcept;
    void setNeedCheckShapeImage(bool need) noexcept;
    /// Asks the engine for a frame; nothing without an engine view.
    void triggerRepaint();
    /// @}

    /// @name Engine
    /// @{
    /// The engine's map view, which fills this one; null only before `completeConstruction`.
    [[nodiscard]] const std::shared_ptr<MLNMapView>& mapView() const noexcept { return engine_; }
    /// True once a style has loaded.
    [[nodiscard]] bool didFinishLoadingMap() const noexcept;
    /// Identifier of the loaded style's lowest symbol layer; absent before a style has loaded and when it has
    /// none.
    [[nodiscard]] const std::optional<std::string>& first_symobol_id() const noexcept;
    /// Takes over the options' values one by one: the camera, then the flags and limits in the order of
    /// `PgmMapOptions` (the logo's excepted), then `updateOptions`. The style is for new maps alone.
    void applyMapOptions(const PgmMapOptions& options);
    /// Sets the engine's camera to what it is, so that new limits take effect.
    void updateOptions();
    /// @}

 private:
    friend class PgmInfoWindow;
    friend class PrivateMapDelegate;

    struct Settings {
        double latitude = 0;
        double longitude = 0;
        double zoomLevel = 15;
        double minimumZoomLevel = 1;
        double maximumZoomLevel = 20;
        double minimumTilt = 0;
        double maximumTilt = 60;
        UIEdgeInsets contentInset;
        PgmUserTrackingMode userTrackingMode = PgmUserTrackingMode::off;
        bool isScaleBarVisible = true;
        bool isCompassVisible = true;
        bool isZoomControlVisible = false;
        bool isLocationButtonVisible = false;
        bool isLogoVisible = false;
        bool isZoomGesturesEnabled = true;
        bool isScrollGesturesEnabled = true;
        bool isRotateGesturesEnabled = true;
        bool isTiltGesturesEnabled = true;
        bool isLogoClickEnabled = true;
        bool isNearestShapePreferred = false;
        CGFloat decelerationRate = GestureSettings{}.decelerationRate;
    };

    /// Tells the delegate how the user's location is followed, if that is another way than it was told last.
    void tellTrackingMode();
    void locationButtonAction();
    void mapViewInit();
    void setStyleOf(const PgmMapOptions& options);
    void recognizersInit();
    void controllerInit();
    [[nodiscard]] std::shared_ptr<PgmMapView> sharedThis();
    /// Held during a call whose events may make the application release the view; null while the view is
    /// still being constructed, when nobody can.
    [[nodiscard]] std::shared_ptr<UIView> keepAlive() noexcept { return weak_from_this().lock(); }

    std::shared_ptr<MLNMapView> engine_;
    std::shared_ptr<PgmMapOptions> startOptions_;
    std::shared_ptr<PgmMapOptions> mapOptions_;
    std::shared_ptr<PrivateMapDelegate> mapDelegate_;
    std::unique_ptr<ShapeRegistry> shapes_;
    std::unique_ptr<OrnamentControls> controls_;
    std::shared_ptr<PgmLocationAnnotationView> locationAnnotaionView_;
    std::shared_ptr<PgmLocationIcon> locationIcon_;
    std::weak_ptr<PgmMapDelegate> delegate_;
    std::weak_ptr<PgmMapDelegate> clusterDelegate_;
    /// Hands over the style that was set before the engine's view was there.
    std::function<void(MLNMapView&)> firstStyle_;
    LocationButtonEvent locationButtonEvent_;
    PgmUserTrackingMode toldTrackingMode_ = PgmUserTrackingMode::off;
    Settings settings_;
};

}  // namespace pelta
