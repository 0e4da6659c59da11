#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include <pelta/Engine/MLNMapView.h>
#include <pelta/Engine/MLNMapViewDelegate.h>

namespace pelta::viewer {

/// Hears whether a map's style has loaded or failed, which the map view does not report to its own delegate.
/// Stands between the engine and the delegate that it finds there and passes every event on.
class StyleWatch final : public MLNMapViewDelegate {
 public:
    using Loaded = std::function<void()>;
    using Failed = std::function<void(std::string_view message)>;

    /// Starts listening; the caller keeps the result for as long as the map shall go on working.
    [[nodiscard]] static std::shared_ptr<StyleWatch> start(MLNMapView& map, Loaded loaded, Failed failed);
    StyleWatch(std::shared_ptr<MLNMapViewDelegate> next, Loaded loaded, Failed failed);

    void didFinishLoadingStyle(MLNMapView& map, MLNStyle& style) override;
    void mapViewDidFailLoadingMap(MLNMapView& map, std::string_view message) override;
    void regionWillChange(MLNMapView& map, MLNCameraChangeReason reason, bool animated) override;
    void regionIsChanging(MLNMapView& map, MLNCameraChangeReason reason) override;
    void regionDidChange(MLNMapView& map, MLNCameraChangeReason reason, bool animated) override;
    void mapViewDidChangeVisibleArea(MLNMapView& map) override;
    void mapViewWillStartRenderingFrame(MLNMapView& map) override;
    void mapViewDidBecomeIdle(MLNMapView& map) override;
    void didUpdateUserLocation(MLNMapView& map, const MLNUserLocation& location) override;
    void didFailToLocateUser(MLNMapView& map, CLLocationFailure reason) override;
    void didChangeUserTrackingMode(MLNMapView& map, MLNUserTrackingMode mode, bool animated) override;
    std::shared_ptr<MLNAnnotationView> viewForAnnotation(MLNMapView& map,
                                                         const MLNAnnotation& annotation) override;
    void didSelectAnnotation(MLNMapView& map, const MLNAnnotation& annotation) override;
    bool annotationCanShowCallout(MLNMapView& map, const MLNAnnotation& annotation) override;

 private:
    std::shared_ptr<MLNMapViewDelegate> next_;
    Loaded loaded_;
    Failed failed_;
};

}  // namespace pelta::viewer
