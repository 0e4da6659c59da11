#include <emscripten/bind.h>
#include <memory>
#include <string>
#include <utility>

#include "Stage.h"

// What taps reach, and the map's own controls.

namespace pelta::browser {

namespace {

/// Writes down what an application hears of taps: "tap" and "long" of the map, shapes by their names.
class TapLog final : public PgmMapDelegate {
 public:
    static const std::shared_ptr<TapLog>& shared() {
        static const auto log = std::make_shared<TapLog>();
        return log;
    }
    void didTapMapView(PgmMapView&, CLLocationCoordinate2D) override { note("tap"); }
    void didLongTapMapView(PgmMapView&, CLLocationCoordinate2D) override { note("long"); }
    void didFailToLocateUser(PgmMapView&, CLLocationFailure reason) override {
        note(reason == CLLocationFailure::denied ? "denied" : "unavailable");
    }
    void note(const std::string& event) { events_ += (events_.empty() ? "" : " ") + event; }
    [[nodiscard]] std::string take() { return std::exchange(events_, {}); }

 private:
    std::string events_;
};

PgmMapView& view(int map) {
    return *Stage::shared().map(map).view;
}

void makeTouchable(int shape, const std::string& name, bool accepts) {
    Stage::shared().shape(shape).setTouchEvent([name, accepts](PgmShape&) {
        TapLog::shared()->note(name);
        return accepts;
    });
}

/// Shows everything that can stand over a map, with the logo and the scale bar.
void showControls(int map) {
    view(map).setIsZoomControlVisible(true);
    view(map).setIsLocationButtonVisible(true);
    view(map).setIsLogoVisible(true);
    view(map).setIsScaleBarVisible(true);
}

}  // namespace

}  // namespace pelta::browser

EMSCRIPTEN_BINDINGS(tap_commands) {
    using namespace pelta::browser;
    using pelta::PgmUserTrackingMode;
    command("listenToTaps", [](int map) { view(map).setDelegate(TapLog::shared()); });
    command("takeTaps", [] { return TapLog::shared()->take(); });
    command("makeTouchable", makeTouchable);
    command("showControls", showControls);
    command("followUser", [](int map) { view(map).setUserTrackingMode(PgmUserTrackingMode::follow); });
    command("preferNearest",
            [](int map, bool preferred) { view(map).setIsNearestShapePreferred(preferred); });
    command("setZoomOutEnabled", [](int map, bool enabled) {
        dynamic_cast<pelta::UIButton&>(*view(map).zoomView()->subviews().back()).setIsEnabled(enabled);
    });
}
