#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <pelta/Pelta.h>

namespace pelta::shared {

/// Writes down a map's camera events as one line, such as "will-animated(developer) changing(developer)
/// did-animated(developer)". Steps of one change in a row are one "changing".
class EventRecorder final : public PgmMapDelegate {
 public:
    void regionWillChangeAnimated(PgmMapView& mapView, bool animated, PgmCameraUpdateReason reason) override;
    void regionIsChangingWithReason(PgmMapView& mapView, PgmCameraUpdateReason reason) override;
    void regionDidChangeAnimated(PgmMapView& mapView, bool animated, PgmCameraUpdateReason reason) override;
    void mapViewDidBecomeIdle(PgmMapView& mapView) override;

    /// Called after each event has been written down, steps in a row too; such as "changing(developer)".
    using Listener = std::function<void(PgmMapView& mapView, std::string_view event)>;
    void setListener(Listener listener) { listener_ = std::move(listener); }
    /// The line since the last call.
    [[nodiscard]] std::string take();
    /// How often the map has come to rest so far.
    [[nodiscard]] int idleCount() const noexcept { return idleCount_; }

 private:
    void note(PgmMapView& mapView, const std::string& event);

    std::string events_;
    std::string last_;
    Listener listener_;
    int idleCount_ = 0;
};

/// What a shared case works on: a map view of 400 × 300 points in a window of its own, with an empty style,
/// at zoom 10 over (0, 0), and the failures so far. Releasing it takes the map from the window.
class SharedScene {
 public:
    static constexpr CGSize size{400, 300};
    static constexpr CGPoint middle{200, 150};

    /// @param window  400 × 300 points.
    explicit SharedScene(UIWindow& window);
    ~SharedScene();
    SharedScene(const SharedScene&) = delete;
    SharedScene& operator=(const SharedScene&) = delete;

    [[nodiscard]] const std::shared_ptr<PgmMapView>& map() const noexcept { return map_; }
    [[nodiscard]] MLNMapView& engine() const noexcept { return *map_->mapView(); }
    [[nodiscard]] EventRecorder& events() noexcept { return *events_; }

    /// Jumps to a camera.
    void look(CLLocationCoordinate2D target, double zoom, double tilt = 0, double bearing = 0);
    /// The coordinate drawn at a point.
    [[nodiscard]] CLLocationCoordinate2D at(double x, double y) const;
    /// Puts a shape on the map under a name that `hits` tells.
    void add(const std::shared_ptr<PgmShape>& shape, std::string name);
    /// Names of the shapes drawn within one point of a place, topmost first, in one line.
    [[nodiscard]] std::string hits(double x, double y) const;
    /// The same for a rectangle.
    [[nodiscard]] std::string hitsIn(CGRect rect) const;

    /// @name Checks, which note a failure with what was expected
    /// @{
    void expect(bool isRight, std::string_view what);
    void expectEqual(std::string_view actual, std::string_view expected, std::string_view what);
    void expectNear(double actual, double expected, double tolerance, std::string_view what);
    void expectNear(CGPoint actual, CGPoint expected, double tolerance, std::string_view what);
    void expectNear(CLLocationCoordinate2D actual, CLLocationCoordinate2D expected, double tolerance,
                    std::string_view what);
    /// The camera as the map view tells it; angles and zoom within 1e-6, the target within 1e-7 degrees.
    void expectCamera(CLLocationCoordinate2D target, double zoom, double tilt, double bearing,
                      std::string_view what);
    /// @}
    [[nodiscard]] const std::vector<std::string>& failures() const noexcept { return failures_; }

 private:
    std::shared_ptr<PgmMapView> map_;
    std::shared_ptr<EventRecorder> events_;
    std::vector<std::string> failures_;
};

}  // namespace pelta::shared
