#pragma once

#include <memory>

#include <pelta/Engine/MLNMapViewDelegate.h>
#include <pelta/Geometry/PgmCameraUpdate.h>

namespace pelta {

class PgmMapView;

/// Hears the engine for one map view and passes on what concerns the application. Silent once the view is
/// gone; holds it while a callback runs.
class PrivateMapDelegate final : public MLNMapViewDelegate {
 public:
    void setPgmMapView(std::weak_ptr<PgmMapView> mapView) { pgmMapView_ = std::move(mapView); }

    void didFinishLoadingStyle(MLNMapView& mapView, MLNStyle& style) override;
    void mapViewDidFailLoadingMap(MLNMapView& mapView, std::string_view message) override;
    void regionWillChange(MLNMapView& mapView, MLNCameraChangeReason reason, bool animated) override;
    void regionIsChanging(MLNMapView& mapView, MLNCameraChangeReason reason) override;
    void regionDidChange(MLNMapView& mapView, MLNCameraChangeReason reason, bool animated) override;
    void mapViewDidChangeVisibleArea(MLNMapView& mapView) override;
    void mapViewWillStartRenderingFrame(MLNMapView& mapView) override;
    void mapViewDidBecomeIdle(MLNMapView& mapView) override;
    void didUpdateUserLocation(MLNMapView& mapView, const MLNUserLocation& userLocation) override;
    void didFailToLocateUser(MLNMapView& mapView, CLLocationFailure reason) override;
    void didChangeUserTrackingMode(MLNMapView& mapView, MLNUserTrackingMode mode, bool animated) override;
    [[nodiscard]] std::shared_ptr<MLNAnnotationView> viewForAnnotation(
        MLNMapView& mapView, const MLNAnnotation& annotation) override;
    void didSelectAnnotation(MLNMapView& mapView, const MLNAnnotation& annotation) override;
    [[nodiscard]] bool annotationCanShowCallout(MLNMapView& mapView,
                                                const MLNAnnotation& annotation) override;

 private:
    std::weak_ptr<PgmMapView> pgmMapView_;
};

/// Gestures come before the compass's return to north, that before everything else.
[[nodiscard]] PgmCameraUpdateReason cameraUpdateReason(MLNCameraChangeReason reason) noexcept;

}  // namespace pelta
