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

/// A setting by its setter, its getter, and what the engine answers.
template <class Value, class Answer>
Setting row(const char* name, void (Map::*set)(Value), Value (Map::*get)() const,
            Answer (Engine::*answer)() const, std::type_identity_t<Value> value) {
    return {name, [=](Map& map) { (map.*set)(value); },
            [=](const Map& map) { return static_cast<double>((map.*get)()); },
            [=](Map&, Engine& engine) { return static_cast<double>((engine.*answer)()); },
            static_cast<double>(value)};
}

/// The same for one of the engine's gesture settings.
template <class Value>
Setting row(const char* name, void (Map::*set)(Value), Value (Map::*get)() const,
            Value GestureSettings::*answer, std::type_identity_t<Value> value) {
    return {name, [=](Map& map) { (map.*set)(value); },
            [=](const Map& map) { return static_cast<double>((map.*get)()); },
            [=](Map&, Engine& engine) { return static_cast<double>(engine.gestures().*answer); },
            static_cast<double>(value)};
}

using Gestures = GestureSettings;
constexpr UIEdgeInsets inset{0, 30, 0, 0};

const Setting settings[] = {
    {"latitude", [](Map& m) { m.setLatitude(37); }, [](const Map& m) { return m.latitude(); },
     [](Map&, Engine& e) { return e.centerCoordinate().latitude; }, 37},
    {"longitude", [](Map& m) { m.setLongitude(127); }, [](const Map& m) { return m.longitude(); },
     [](Map&, Engine& e) { return e.centerCoordinate().longitude; }, 127},
    row("zoom", &Map::setZoomLevel, &Map::zoomLevel, &Engine::zoomLevel, 11.5),
    row("lowest zoom", &Map::setMinimumZoomLevel, &Map::minimumZoomLevel, &Engine::minimumZoomLevel, 3),
    row("highest zoom", &Map::setMaximumZoomLevel, &Map::maximumZoomLevel, &Engine::maximumZoomLevel, 18),
    row("lowest tilt", &Map::setMinimumTilt, &Map::minimumTilt, &Engine::minimumPitch, 10),
    row("highest tilt", &Map::setMaximumTilt, &Map::maximumTilt, &Engine::maximumPitch, 50),
    row("scale bar", &Map::setIsScaleBarVisible, &Map::isScaleBarVisible, &Engine::showsScale, true),
    row("compass", &Map::setIsCompassVisible, &Map::isCompassVisible, &Engine::showsCompassView, false),
    row("logo", &Map::setIsLogoVisible, &Map::isLogoVisible, &Engine::showsLogoView, false),
    {"taps on the logo", [](Map& m) { m.setIsLogoClickEnabled(false); },
     [](const Map& m) { return m.isLogoClickEnabled(); },
     [](Map&, Engine& e) { return e.logoView()->isUserInteractionEnabled(); }, 0},
    {"zoom control", [](Map& m) { m.setIsZoomControlVisible(true); },
     [](const Map& m) { return m.isZoomControlVisible(); },
     [](Map& m, Engine&) { return !m.zoomView()->isHidden(); }, 1},
    {"location button", [](Map& m) { m.setIsLocationButtonVisible(true); },
     [](const Map& m) { return m.isLocationButtonVisible(); },
     [](Map& m, Engine&) { return !m.locationView()->isHidden(); }, 1},
    row("zooming", &Map::setIsZoomGesturesEnabled, &Map::isZoomGesturesEnabled, &Gestures::isZoomEnabled,
        false),
    row("scrolling", &Map::setIsScrollGesturesEnabled, &Map::isScrollGesturesEnabled,
        &Gestures::isScrollEnabled, false),
    row("turning", &Map::setIsRotateGesturesEnabled, &Map::isRotateGesturesEnabled,
        &Gestures::isRotateEnabled, false),
    row("tilting", &Map::setIsTiltGesturesEnabled, &Map::isTiltGesturesEnabled, &Gestures::isPitchEnabled,
        false),
    row("deceleration", &Map::setDecelerationRate, &Map::decelerationRate, &Gestures::decelerationRate, 0.99),
    {"inset", [](Map& m) { m.setContentInset(inset); }, [](const Map& m) { return m.contentInset().left; },
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

}  // namespace
}  // namespace pelta
