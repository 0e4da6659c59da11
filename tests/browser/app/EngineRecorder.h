#pragma once

#include <functional>
#include <memory>
#include <string>

#include <pelta/Pelta.h>

namespace pelta::browser {

/// Stands between an engine's map view and its delegate and writes down what passes.
class EngineRecorder final : public MLNMapViewDelegate {
 public:
    explicit EngineRecorder(std::shared_ptr<MLNMapViewDelegate> inner) : inner_(std::move(inner)) {}

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
    std::shared_ptr<MLNAnnotationView> viewForAnnotation(MLNMapView& mapView,
                                                         const MLNAnnotation& annotation) override;
    void didSelectAnnotation(MLNMapView& mapView, const MLNAnnotation& annotation) override;

    /// Runs once at the next movement of the camera, from inside the delegate's call.
    void setAtNextMove(std::function<void()> work) { atNextMove_ = std::move(work); }
    /// The camera events since the last call, such as "will(4) changing(4) did(4)": reasons as the sum of
    /// their bits, an "a" before the animated ones; equal events in a row are one.
    [[nodiscard]] std::string takeEvents();
    [[nodiscard]] const std::string& failure() const noexcept { return failure_; }
    [[nodiscard]] int loadedStyles() const noexcept { return loadedStyles_; }
    [[nodiscard]] int idleCount() const noexcept { return idleCount_; }
    [[nodiscard]] int frameCount() const noexcept { return frameCount_; }
    [[nodiscard]] const std::string& location() const noexcept { return location_; }

 private:
    void note(const std::string& event);

    std::shared_ptr<MLNMapViewDelegate> inner_;
    std::function<void()> atNextMove_;
    std::string events_;
    std::string last_;
    std::string failure_;
    std::string location_;
    int loadedStyles_ = 0;
    int idleCount_ = 0;
    int frameCount_ = 0;
};

}  // namespace pelta::browser
