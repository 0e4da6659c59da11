#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <pelta/Engine/MLNAnnotation.h>
#include <pelta/Engine/MLNMapCamera.h>
#include <pelta/Engine/MLNMapViewDelegate.h>
#include <pelta/Engine/MLNStyle.h>
#include <pelta/Engine/MLNTypes.h>
#include <pelta/Platform/UIControls.h>

namespace pelta {

/// The engine's map: a camera over a style.
///
/// Commands take effect at once, queries answer synchronously, changes of the style show at the next frame.
/// Numbers that are not finite are ignored by setters; of a camera the parts that are not finite stay as they
/// are, and the centre is one part. Any change of the camera reports will-change, is-changing (at least once,
/// the last with the final camera) and did-change to the delegate; one without animation does so before the
/// call returns. A change without animation to where the camera is already reports nothing. A new change ends
/// a transition under way where it is; the newest wins, also over one that is still reporting. The
/// completions of changes that the view's release cuts short run later, from the main queue. Main thread
/// only.
class MLNMapView : public UIView {
 public:
    /// Runs once when a camera change has ended, also when it was interrupted.
    using Completion = std::function<void()>;

    /// A view at zoom 0 over (0, 0), zoom limits 0 to 22, pitch limits 0 to 60.
    ///
    /// @param styleURL  address of the style document, fetched at once. None, an empty one, or one with
    ///                  blanks or control characters leaves the map empty.
    [[nodiscard]] static std::shared_ptr<MLNMapView> initWithFrameStyleURL(
        CGRect frame, std::optional<std::string> styleURL);
    /// For `make`; use the factory.
    explicit MLNMapView(CGRect frame);
    ~MLNMapView() override;
    void completeConstruction(std::string_view className) override;

    /// Held weakly.
    [[nodiscard]] std::shared_ptr<MLNMapViewDelegate> delegate() const;
    void setDelegate(const std::shared_ptr<MLNMapViewDelegate>& delegate);

    /// @name Style
    /// @{
    /// The loaded style; null until a document has loaded.
    [[nodiscard]] MLNStyle* style() const noexcept;
    /// Loads another document; the present style stays until it has arrived. On failure the delegate is told
    /// and the present style stays, or the map stays empty.
    void setStyleURL(const std::string& address);
    /// Loads a document from its text, asynchronously too.
    void setStyleJSON(std::string document);
    /// Asks for a frame.
    void triggerRepaint();
    /// @}

    /// @name Camera
    /// @{
    /// The camera as it is now. What was set within the limits reads back unchanged, to the last digit.
    [[nodiscard]] CameraState cameraState() const;
    /// Moves the camera within the limits.
    ///
    /// @param duration        seconds; 0, negative or non-finite: without animation.
    /// @param timingFunction  progress over time; none is linear.
    /// @param completion      runs exactly once, also when the change is interrupted; for a change without
    ///                        animation before the call returns. May be empty.
    void setCameraState(const CameraState& camera, double duration,
                        const std::optional<CAMediaTimingFunction>& timingFunction, Completion completion);
    /// Flies along an arc that zooms out and in again (van Wijk and Nuij, "Smooth and efficient zooming and
    /// panning", 2003). A negative duration lets the engine choose one by the distance; 0 and non-finite ones
    /// jump.
    void flyToCameraState(const CameraState& camera, double duration, Completion completion);

    /// The camera as it is now, by its altitude for the view's present size.
    [[nodiscard]] MLNMapCamera camera() const;
    /// Animated: 0.3 s, ease-in ease-out. The altitude counts for the view's present size; that of the
    /// present zoom level leaves the zoom level exactly as it is.
    void setCamera(const MLNMapCamera& camera, bool animated);
    /// As `setCameraState`.
    void setCamera(const MLNMapCamera& camera, double duration,
                   const std::optional<CAMediaTimingFunction>& timingFunction, Completion completion);
    /// As `flyToCameraState`.
    void flyToCamera(const MLNMapCamera& camera, double duration, Completion completion);

    /// What is seen in the middle of what the content inset leaves, degrees.
    [[nodiscard]] CLLocationCoordinate2D centerCoordinate() const;
    /// Moves the centre's latitude alone; beyond the square of the Mercator world it ends at its edge.
    void setLatitude(double latitude);
    /// Moves along the parallel at once, degrees.
    void setLongitude(double longitude);
    /// Zoom of the camera as it is now.
    [[nodiscard]] double zoomLevel() const;
    /// Zooms about the centre at once.
    void setZoomLevel(double zoomLevel);
    /// Zooms about the centre, `animated` in 0.3 s.
    void setZoomLevel(double zoomLevel, bool animated);
    /// Adds to the zoom level that the camera is going to, in 0.3 s; centre, pitch and direction of its
    /// destination stay. What is not finite, or ends at a limit that the destination is at, does nothing.
    void zoomBy(double levels);
    /// Bearing of the upward direction, degrees clockwise from north, 0 ≤ direction < 360.
    [[nodiscard]] double direction() const;
    /// Turns the map to north, animated, as a tap on the compass does; the reason is `resetNorth`.
    void resetNorth();
    /// @}

    /// @name Limits
    /// @{
    /// Limits apply at once to the present camera and to every later one. Zoom limits are clamped to 0…24,
    /// pitch limits to 0…85; a minimum above the maximum is kept as given and the maximum wins.
    void setMinimumZoomLevel(double zoomLevel);
    /// Highest zoom, 22 at first.
    void setMaximumZoomLevel(double zoomLevel);
    /// Lowest pitch, degrees, 0 at first.
    void setMinimumPitch(double pitch);
    /// Highest pitch, degrees, 60 at first.
    void setMaximumPitch(double pitch);
    /// Lowest zoom as last set.
    [[nodiscard]] double minimumZoomLevel() const;
    /// Highest zoom as last set.
    [[nodiscard]] double maximumZoomLevel() const;
    /// Lowest pitch as last set, degrees.
    [[nodiscard]] double minimumPitch() const;
    /// Highest pitch as last set, degrees.
    [[nodiscard]] double maximumPitch() const;
    /// The area that the view may show; the whole world at first. While set, the zoom is at least what fills
    /// the view with the area and the centre stays where no edge of the unturned view crosses it.
    [[nodiscard]] MLNCoordinateBounds maximumScreenBounds() const;
    /// Corners may come in any order; the whole world lifts the limit.
    void setMaximumScreenBounds(const MLNCoordinateBounds& bounds);
    /// Insets from the view's edges within which the centre is the middle, points. They are kept as set, and
    /// have no effect on camera, fitting and ornaments while left and right together reach the view's width
    /// or top and bottom its height; whether they do is found anew when the size changes.
    [[nodiscard]] UIEdgeInsets contentInset() const;
    void setContentInset(UIEdgeInsets inset);
    /// The content inset that has effect at the view's present size: `contentInset`, or none.
    [[nodiscard]] UIEdgeInsets effectiveContentInset() const;
    /// The centre coordinate keeps its place on the earth and moves on the screen; animated over 0.3 s when
    /// asked.
    void setContentInset(UIEdgeInsets inset, bool animated, Completion completionHandler);
    /// @}

    /// @name Gestures
    /// @{
    /// Two fingers and double taps zoom.
    void setZoomEnabled(bool enabled);
    /// A finger moves the map.
    void setScrollEnabled(bool enabled);
    /// Two fingers turn the map.
    void setRotateEnabled(bool enabled);
    /// Two fingers side by side tilt the map.
    void setPitchEnabled(bool enabled);
    /// See `GestureSettings::decelerationRate`; values out of its range are ignored.
    void setDecelerationRate(CGFloat rate);
    /// The gestures' settings as they are.
    [[nodiscard]] const GestureSettings& gestures() const;
    /// @}

    /// @name Geometry
    /// @{
    /// The world is drawn again and again to both sides. What is drawn at a point has a longitude from -180
    /// up to 180 whichever copy it is in; where a coordinate is drawn is answered of the copy nearest to the
    /// camera's centre; coordinate rectangles go on beyond ±180, so that they are in one piece.
    ///
    /// Points of `view`, or of this view when null, here and below.
    [[nodiscard]] CLLocationCoordinate2D convertPoint(CGPoint point,
                                                      const UIView* toCoordinateFromView) const;
    /// Where a coordinate is drawn in a view, points.
    [[nodiscard]] CGPoint convertCoordinate(CLLocationCoordinate2D coordinate,
                                            const UIView* toPointToView) const;
    /// The smallest coordinate rectangle around the four corners of a screen rectangle. Across the
    /// antimeridian its longitudes are not wrapped.
    [[nodiscard]] MLNCoordinateBounds convertRect(CGRect rect,
                                                  const UIView* toCoordinateBoundsFromView) const;
    /// The smallest screen rectangle around the four corners of a coordinate rectangle, which is looked up as
    /// a whole in the copy of the world where its middle is nearest to the camera's centre.
    [[nodiscard]] CGRect convertCoordinateBounds(const MLNCoordinateBounds& bounds,
                                                 const UIView* toRectToView) const;
    /// The coordinate rectangle of the whole view, not wrapped either.
    [[nodiscard]] MLNCoordinateBounds visibleCoordinateBounds() const;
    /// Metres on the ground that a point covers at a latitude, at the present zoom.
    [[nodiscard]] double metersPerPointAtLatitude(double latitude) const;
    /// The camera that shows all four corners of a coordinate rectangle inside the content inset and the
    /// padding, with the present pitch and heading, at the largest zoom at which any centre does. On a tilted
    /// map that may bring the rectangle to the far end of what is seen. Limits of the camera come first.
    /// Always answers: equal corners give the maximum zoom, padding that leaves no room the minimum zoom.
    [[nodiscard]] CameraState cameraStateThatFitsCoordinateBounds(const MLNCoordinateBounds& bounds,
                                                                  UIEdgeInsets edgePadding) const;
    /// The same by its altitude for the view's present size.
    [[nodiscard]] MLNMapCamera cameraThatFitsCoordinateBounds(const MLNCoordinateBounds& bounds,
                                                              UIEdgeInsets edgePadding) const;
    /// The features drawn inside a rectangle of this view in the given layers, topmost first.
    [[nodiscard]] std::vector<std::shared_ptr<const MLNFeature>> visibleFeaturesInRect(
        CGRect rect, std::span<const std::string> inStyleLayersWithIdentifiers) const;
    /// @}

    /// @name Ornaments
    /// @{
    /// Off at first.
    void setShowsScale(bool shows);
    /// Whether the scale bar is shown.
    [[nodiscard]] bool showsScale() const;
    /// On at first; the compass is seen while the map is turned.
    void setShowsCompassView(bool shows);
    /// Whether the compass is shown while the map is turned.
    [[nodiscard]] bool showsCompassView() const;
    /// On at first; a logo without a picture has no extent.
    void setShowsLogoView(bool shows);
    /// Whether the logo is shown.
    [[nodiscard]] bool showsLogoView() const;
    /// On at first. Kept for applications that ask: no such button is drawn, ports show credits elsewhere.
    void setShowsAttributionButton(bool shows);
    /// Whether the credits button is shown.
    [[nodiscard]] bool showsAttributionButton() const;
    /// Bottom left; holds constraints with the identifiers "width" and "height".
    [[nodiscard]] const std::shared_ptr<UIImageView>& logoView() const;
    /// Top right; holds constraints with the identifiers "width" and "height". Shows the bearing, and turns
    /// the map to north when tapped.
    [[nodiscard]] const std::shared_ptr<UIImageView>& compassView() const;
    /// Top left.
    [[nodiscard]] const std::shared_ptr<UIView>& scaleBar() const;
    /// @}

    /// @name User location
    /// @{
    /// Switches the port's location source on or off for this view. Off forgets the location; the tracking
    /// mode stays and rests until the location is shown again. On asks the delegate for the view that shows
    /// it.
    void setShowsUserLocation(bool shows);
    /// Whether the user's location is shown.
    [[nodiscard]] bool showsUserLocation() const;
    /// Shows or hides where the device points, beside the user's location.
    void setShowsHeading(bool shows);
    /// Whether the heading is shown.
    [[nodiscard]] bool showsHeading() const;
    /// Null while not shown or not yet known.
    [[nodiscard]] const MLNUserLocation* userLocation() const;
    /// With another mode than none the camera moves to each reported location, animated, until a pan ends it
    /// or the mode is set to none. Following the heading or the course also turns the map, once they are
    /// known. Moving the camera by a command does not end it; setting the present mode once more leads back.
    void setUserTrackingMode(MLNUserTrackingMode mode);
    /// How the camera follows the user's location.
    [[nodiscard]] MLNUserTrackingMode userTrackingMode() const;
    /// Selects the annotation of the user's location as a tap on its view does; nothing while it is not
    /// shown, or selected already.
    void selectAnnotation(const MLNAnnotation& annotation, bool animated);
    /// Ends the selection; nothing when the annotation is not selected.
    void deselectAnnotation(const MLNAnnotation& annotation, bool animated);
    /// The selected annotation, or null.
    [[nodiscard]] const MLNAnnotation* selectedAnnotation() const;
    /// @}

    void layoutSubviews() override;
    [[nodiscard]] ViewContent content() const override;

 private:
    class Core;
    /// A reference of one's own, for calls in which a callback may release the view.
    [[nodiscard]] std::shared_ptr<Core> core() const;

    std::shared_ptr<Core> core_;
};

}  // namespace pelta
