#pragma once

#include <memory>
#include <string>

#include <pelta/Engine/MLNAnnotation.h>
#include <pelta/Platform/UIView.h>

namespace pelta {

class MLNMapView;

/// Shows an annotation of a map. The map view keeps the middle of the view on the annotation's position and
/// selects the annotation when the view is tapped; the view itself takes no touches, so that the gestures of
/// the map go through it.
class MLNAnnotationView : public UIView {
 public:
    /// A view without extent.
    /// @param reuseIdentifier  free for whoever makes the view.
    explicit MLNAnnotationView(std::string reuseIdentifier);
    /// A view with a frame, points; the map view moves it.
    explicit MLNAnnotationView(CGRect frame) : UIView(frame) {}

    /// As given at the making; empty without.
    [[nodiscard]] const std::string& reuseIdentifier() const noexcept { return reuseIdentifier_; }
    /// True while the annotation is selected.
    [[nodiscard]] bool isSelected() const noexcept { return isSelected_; }
    /// Called by the map view when the selection changes; by itself it selects nothing on the map. Overrides
    /// call the base.
    virtual void setSelected(bool selected, bool animated);

 private:
    std::string reuseIdentifier_;
    bool isSelected_ = false;
};

/// Shows the user's own position.
class MLNUserLocationAnnotationView : public MLNAnnotationView {
 public:
    using MLNAnnotationView::MLNAnnotationView;

    /// The map view that shows the user's position by this view, held weakly; null before the first one.
    [[nodiscard]] std::shared_ptr<MLNMapView> mapView() const { return mapView_.lock(); }
    /// For the map view.
    void setMapView(const std::shared_ptr<MLNMapView>& mapView) { mapView_ = mapView; }
    /// What is known of the user; null while nothing is, or the map does not show it.
    [[nodiscard]] const MLNUserLocation* userLocation() const;
    /// Called by the map view in every frame in which the camera, the position or the heading have changed,
    /// once the view stands at its place. Overrides call the base.
    virtual void update() {}

 private:
    std::weak_ptr<MLNMapView> mapView_;
};

}  // namespace pelta
