#include "View/MapFixture.h"

namespace pelta {
namespace {

constexpr CLLocationCoordinate2D center{2, 0};

/// Extreme but finite numbers: everything answers, and in a time that nobody notices.
class ExtremeNumbersTest : public MapFixture {
 protected:
    ExtremeNumbersTest() { map->setCameraPosition(PgmCameraPosition::create(center, 5, 0, 0)); }

    /// Whether something is found within a point of a place beside the view's middle.
    bool isFound(CGVector beside) {
        EXPECT_TRUE(port.runUntilIdle());
        const CGPoint point{windowSize.width / 2 + beside.dx, windowSize.height / 2 + beside.dy};
        return !engineOf(map).visibleFeaturesInRect({{point.x - 1, point.y - 1}, {2, 2}}, {}).empty();
    }

    std::shared_ptr<PgmMapView> map = makeLoadedMap();
};

std::shared_ptr<PgmShape> line(double width, std::vector<double> pattern = {}) {
    auto made = PgmPolyline::create({{2, -1}, {2, 1}});
    made->setWidth(width);
    made->setPattern(std::move(pattern));
    return made;
}

std::shared_ptr<PgmShape> area(double longitude) {
    return PgmPolygon::create({{0, -longitude}, {10, longitude}, {10, -longitude}});
}

template <class... Values>
std::shared_ptr<PgmShape> marker(std::string title, void (PgmMarker::*set)(Values...),
                                 const Values&... values) {
    auto made = PgmMarker::markerWithPosition(center);
    made->setTitle(std::move(title));
    (*made.*set)(values...);
    return made;
}

std::string words(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += std::to_string(i) + " ";
    }
    return text;
}

TEST_F(ExtremeNumbersTest, TapsAreAnswered) {
    struct Case {
        const char* name;
        std::shared_ptr<PgmShape> shape;
        CGVector beside;
        bool isFound;
    };
    const Case cases[] = {
        {"beside an area around the world again and again", area(1e12), {0, 0}, false},
        {"inside it", area(1e12), {0, -250}, true},
        {"an area as wide as numbers go", area(1e308), {0, -250}, true},
        {"a line wider than the world", line(1e300), {300, 200}, true},
        {"a line with long dashes", line(4, {1e300, 1e-300}), {0, 0}, true},
        {"beside it", line(4, {1e300, 1e-300}), {0, 20}, false},
        {"a circle of no radius", PgmCircle::create(center, 5e-324), {0, 0}, false},
        {"a circle around the world", PgmCircle::create(center, 1e7), {0, 0}, true},
        {"an icon larger than the world", marker("", &PgmMarker::setIconScale, 1e300), {300, -200}, true},
        {"an icon of no size", marker("", &PgmMarker::setIconScale, 5e-324), {0, -20}, false},
        {"letters larger than the world", marker("W", &PgmMarker::setTitleSize, 1e300), {0, 200}, true},
        {"a title far away", marker("W", &PgmMarker::setTitleMargin, 1e300), {0, 10}, false},
        {"a title in many lines", marker(words(3000), &PgmMarker::setTitleMaxWidth, 1e-300), {0, 200}, true},
        {"turned again and again", marker("", &PgmMarker::setAngle, 1e300), {250, 0}, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        c.shape->setMapView(map);
        EXPECT_EQ(isFound(c.beside), c.isFound);
        c.shape->setMapView(nullptr);
    }
}

TEST_F(ExtremeNumbersTest, SnapshotsAreTaken) {
    map->setUserTrackingMode(PgmUserTrackingMode::none);
    port.reportLocation({.coordinate = center});
    for (const auto& [radius, scale] : {std::pair{1e30, 1.0}, {50.0, 1e200}}) {
        map->locationIcon()->setCircleRadius(radius);
        map->locationIcon()->setScale(scale);
        EXPECT_TRUE(port.runUntilIdle());
        EXPECT_TRUE(map->snapshot());
    }
}

}  // namespace
}  // namespace pelta
