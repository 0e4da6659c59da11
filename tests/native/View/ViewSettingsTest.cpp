#include <functional>

#include "MapFixture.h"

namespace pelta {
namespace {

class ViewSettingsTest : public MapFixture {};

/// A setting of the view, and a part of the engine that has to follow it. Flags count as 0 and 1.
struct Setting {
    const char* name;
    std::function<void(PgmMapView&)> set;
    std::function<double(const PgmMapView&)> stored;
    std::function<double(PgmMapView&, MLNMapView&)> inForce;
    double value;
};

using Map = PgmMapView;
using Engine = MLNMapView;

const Setting settings[] = {
    {"latitude", [](Map& m) { m.setLatitude(37); }, [](const Map& m) { return m.latitude(); },
     [](Map&, Engine& e) { return e.centerCoordinate().latitude; }, 37},
    {"longitude", [](Map& m) { m.setLongitude(127); }, [](const Map& m) { return m.longitude(); },
     [](Map&, Engine& e) { return e.centerCoordinate().longitude; }, 127},
    {"zoom", [](Map& m) { m.setZoomLevel(11.5); }, [](const Map& m) { return m.zoomLevel(); },
     [](Map&, Engine& e) { return e.zoomLevel(); }, 11.5},
    {"lowest zoom", [](Map& m) { m.setMinimumZoomLevel(3); },
     [](const Map& m) { return m.minimumZoomLevel(); }, [](Map&, Engine& e) { return e.minimumZoomLevel(); },
     3},
    {"highest zoom", [](Map& m) { m.setMaximumZoomLevel(18); },
     [](const Map& m) { return m.maximumZoomLevel(); }, [](Map&, Engine& e) { return e.maximumZoomLevel(); },
     18},
    {"lowest tilt", [](Map& m) { m.setMinimumTilt(10); }, [](const Map& m) { return m.minimumTilt(); },
     [](Map&, Engine& e) { return e.minimumPitch(); }, 10},
    {"highest tilt", [](Map& m) { m.setMaximumTilt(50); }, [](const Map& m) { return m.maximumTilt(); },
     [](Map&, Engine& e) { return e.maximumPitch(); }, 50},
    {"scale bar", [](Map& m) { m.setIsScaleBarVisible(true); },
     [](const Map& m) { return m.isScaleBarVisible(); }, [](Map&, Engine& e) { return e.showsScale(); }, 1},
    {"compass", [](Map& m) { m.setIsCompassVisible(false); },
     [](const Map& m) { return m.isCompassVisible(); }, [](Map&, Engine& e) { return e.showsCompassView(); },
     0},
    {"logo", [](Map& m) { m.setIsLogoVisible(false); }, [](const Map& m) { return m.isLogoVisible(); },
     [](Map&, Engine& e) { return e.showsLogoView(); }, 0},
    {"taps on the logo", [](Map& m) { m.setIsLogoClickEnabled(false); },
     [](const Map& m) { return m.isLogoClickEnabled(); },
     [](Map&, Engine& e) { return e.logoView()->isUserInteractionEnabled(); }, 0},
    {"zoom control", [](Map& m) { m.setIsZoomControlVisible(true); },
     [](const Map& m) { return m.isZoomControlVisible(); },
     [](Map& m, Engine&) { return !m.zoomView()->isHidden(); }, 1},
    {"location button", [](Map& m) { m.setIsLocationButtonVisible(true); },
     [](const Map& m) { return m.isLocationButtonVisible(); },
     [](Map& m, Engine&) { return !m.locationView()->isHidden(); }, 1},
    {"zooming", [](Map& m) { m.setIsZoomGesturesEnabled(false); },
     [](const Map& m) { return m.isZoomGesturesEnabled(); },
     [](Map&, Engine& e) { return e.gestures().isZoomEnabled; }, 0},
    {"scrolling", [](Map& m) { m.setIsScrollGesturesEnabled(false); },
     [](const Map& m) { return m.isScrollGesturesEnabled(); },
     [](Map&, Engine& e) { return e.gestures().isScrollEnabled; }, 0},
    {"turning", [](Map& m) { m.setIsRotateGesturesEnabled(false); },
     [](const Map& m) { return m.isRotateGesturesEnabled(); },
     [](Map&, Engine& e) { return e.gestures().isRotateEnabled; }, 0},
    {"tilting", [](Map& m) { m.setIsTiltGesturesEnabled(false); },
     [](const Map& m) { return m.isTiltGesturesEnabled(); },
     [](Map&, Engine& e) { return e.gestures().isPitchEnabled; }, 0},
    {"deceleration", [](Map& m) { m.setDecelerationRate(0.99); },
     [](const Map& m) { return m.decelerationRate(); },
     [](Map&, Engine& e) { return e.gestures().decelerationRate; }, 0.99},
    {"inset",
     [](Map& m) {
         m.setContentInset({0, 30, 0, 0});
     },
     [](const Map& m) { return m.contentInset().left; },
     [](Map&, Engine& e) { return e.contentInset().left; }, 30},
    {"bounds",
     [](Map& m) {
         m.setConstraintBounds(PgmLatLngBounds::create({33, 124}, {39, 132}));
     },
     [](const Map& m) { return m.constraintBounds()->southWest().latitude; },
     [](Map&, Engine& e) { return e.maximumScreenBounds().sw.latitude; }, 33},
};

/// The first of them: limits and bounds may move the camera along.
constexpr std::size_t cameraSettings = 3;

TEST_F(ViewSettingsTest, EachReachesTheEngineAlone) {
    for (const auto& setting : settings) {
        SCOPED_TRACE(setting.name);
        for (const bool isInWindow : {false, true}) {
            const auto map = PgmMapView::create(window->bounds());
            if (isInWindow) {
                window->addSubview(map);
                port.runFrame();
            }
            std::vector<double> before;
            for (const auto& other : settings) {
                before.push_back(other.inForce(*map, engineOf(map)));
            }
            setting.set(*map);
            window->addSubview(map);
            EXPECT_EQ(setting.stored(*map), setting.value);
            for (std::size_t i = 0; i < std::size(settings); ++i) {
                const double now = settings[i].inForce(*map, engineOf(map));
                if (&settings[i] == &setting) {
                    EXPECT_NEAR(now, setting.value, 1e-9);
                    EXPECT_NE(now, before[i]) << "the case shows nothing";
                } else if (i >= cameraSettings) {
                    EXPECT_EQ(now, before[i]) << settings[i].name;
                }
            }
            map->removeFromSuperview();
        }
    }
}

TEST_F(ViewSettingsTest, ADoubleTapKeepsItsPlaceAlsoAcrossTheAntimeridian) {
    const auto map = makeLoadedMap();
    for (const double longitude : {127.0, 179.9, -179.9}) {
        for (const double x : {60.0, 700.0}) {
            map->moveCamera(PgmCameraUpdate::cameraUpdateTargetToZoomTo({37.5, longitude}, 8));
            port.runUntilIdle();
            const auto before = *map->projection()->latlng({x, 200});
            port.tap(*window, {x, 200});
            port.tap(*window, {x, 200});
            port.runUntilIdle();
            const auto after = *map->projection()->latlng({x, 200});
            EXPECT_NEAR(map->cameraPosition()->zoom(), 9, 1e-9);
            EXPECT_NEAR(after.latitude, before.latitude, 1e-6) << longitude << ' ' << x;
            EXPECT_NEAR(std::remainder(after.longitude - before.longitude, 360), 0, 1e-6)
                << longitude << ' ' << x;
        }
    }
}

}  // namespace
}  // namespace pelta
