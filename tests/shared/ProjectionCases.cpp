#include <cmath>
#include <initializer_list>
#include <limits>

#include "SharedCases.h"

namespace pelta::shared {

namespace {

constexpr double eyeDistance = 1.5 * SharedScene::size.height;
/// Half way between the equator and the edge of the Mercator square.
constexpr double quarterLatitude = 66.51326044311186;
/// Longitude degrees a point at zoom 10; near the equator latitude degrees too, within what is checked.
constexpr double degreesPerPoint = 360.0 / (512 * 1024);

CGPoint project(const SharedScene& scene, CLLocationCoordinate2D coordinate) {
    return scene.map()->projection()->point(coordinate);
}

void projectsMercator(SharedScene& scene) {
    scene.look({0, 0}, 2);
    struct Row {
        CLLocationCoordinate2D coordinate;
        CGPoint point;
    };
    for (const Row& row :
         {Row{{0, 0}, {200, 150}}, Row{{0, 90}, {712, 150}}, Row{{0, -45}, {-56, 150}},
          Row{{quarterLatitude, 0}, {200, -362}}, Row{{-quarterLatitude, 180}, {1224, 662}},
          Row{{85.0511287798066, -180}, {-824, -874}}, Row{{0, 370}, {200 + 2048 * 10.0 / 360, 150}}}) {
        scene.expectNear(project(scene, row.coordinate), row.point, 1e-6, "at zoom 2");
    }
}

void turnsWithBearing(SharedScene& scene) {
    struct Row {
        double bearing;
        CGPoint eastIsAt;
    };
    const double slant = 50 * std::sqrt(2.0);
    for (const Row& row : {Row{0, {300, 150}}, Row{90, {200, 50}}, Row{180, {100, 150}}, Row{270, {200, 250}},
                           Row{45, {200 + slant, 150 - slant}}}) {
        scene.look({0, 0}, 10, 0, row.bearing);
        scene.expectNear(project(scene, {0, 100 * degreesPerPoint}), row.eastIsAt, 1e-6, "100 points east");
    }
}

void foreshortensWithTilt(SharedScene& scene) {
    for (const double degrees : {20.0, 45.0, 60.0}) {
        scene.look({0, 0}, 10, degrees);
        const double tilt = degrees * 3.14159265358979323846 / 180;
        for (const double north : {-120.0, 80.0, 400.0}) {
            const double scale = eyeDistance / (eyeDistance + north * std::sin(tilt));
            const CGPoint wanted{200 + 90 * scale, 150 - north * std::cos(tilt) * scale};
            scene.expectNear(project(scene, {north * degreesPerPoint, 90 * degreesPerPoint}), wanted, 1e-3,
                             "90 points east");
        }
    }
}

void invertsItself(SharedScene& scene) {
    struct Row {
        CLLocationCoordinate2D target;
        double zoom, tilt, bearing;
        UIEdgeInsets inset;
    };
    for (const Row& row :
         {Row{{0, 0}, 2, 0, 0, {}}, Row{{37.5, 127}, 11, 60, 30, {}}, Row{{-70, -120}, 18, 35, 211, {}},
          Row{{51.5, 179.9}, 6, 45, 300, {50, 10, 0, 90}}}) {
        scene.map()->setContentInset(row.inset);
        scene.look(row.target, row.zoom, row.tilt, row.bearing);
        for (const CGPoint point : {CGPoint{0, 0}, {400, 0}, {133, 77}, {399, 299}, {0, 300}}) {
            scene.expectNear(project(scene, scene.at(point.x, point.y)), point, 1e-4, "there and back");
        }
    }
}

void boundsRectangles(SharedScene& scene) {
    const auto projection = scene.map()->projection();
    const CGRect rect{{50, 60}, {200, 100}};
    const auto bounds = projection->latlngBounds(rect);
    const CGRect back = projection->viewBounds(*bounds);
    scene.expectNear(back.origin, rect.origin, 1e-4, "origin");
    scene.expectNear(back.size.width, 200, 1e-4, "width");
    scene.expectNear(back.size.height, 100, 1e-4, "height");
    scene.look({0, 0}, 10, 0, 90);
    const auto turned = projection->latlngBounds(rect);
    scene.expectNear(turned->northEast().longitude, 90 * degreesPerPoint, 1e-9, "east is up");
    scene.expectNear(turned->southWest().longitude, -10 * degreesPerPoint, 1e-9, "west is down");
}

void answersOfTheNearestCopy(SharedScene& scene) {
    constexpr double pointsPerDegree = 512 * 256 / 360.0;
    const auto projection = scene.map()->projection();
    struct Row {
        double center, longitude, east;  ///< Degrees.
    };
    for (const Row& row : {Row{179.9, -179.9, 0.2}, Row{179.9, 180.1, 0.2}, Row{179.9, 540.1, 0.2},
                           Row{-179.9, 179.9, -0.2}, Row{-179.9, 0, 179.9}, Row{0, -900.5, 179.5}}) {
        scene.look({0, row.center}, 8);
        const double x = 200 + row.east * pointsPerDegree;
        scene.expectNear(project(scene, {0, row.longitude}), {x, 150}, 1e-6, "in the nearest copy");
        // The rectangle goes where its middle is nearest, whatever its corners would do by themselves.
        for (const double half : {0.05, 2.0, 170.0}) {
            const auto bounds =
                PgmLatLngBounds::create({-1, row.longitude - half}, {1, row.longitude + half});
            const CGRect rect = projection->viewBounds(*bounds);
            scene.expectNear(rect.midX(), x, 1e-4, "middle of a rectangle");
            scene.expectNear(rect.size.width, 2 * half * pointsPerDegree, 1e-4, "width of a rectangle");
        }
    }
    for (const double center : {179.9, -179.9}) {
        scene.look({0, center}, 8);
        const double wrapped = center > 0 ? -179.9 : 179.9;
        const double x = center > 0 ? 200 + 0.2 * pointsPerDegree : 200 - 0.2 * pointsPerDegree;
        scene.expectNear(projection->latlng({x, 150})->longitude, wrapped, 1e-9, "across the antimeridian");
        const double reach = 200 / pointsPerDegree;
        for (const auto& bounds :
             {projection->latlngBounds({{0, 0}, SharedScene::size}), scene.map()->contentBounds()}) {
            scene.expectNear(bounds->southWest().longitude, center - reach, 1e-9, "western edge");
            scene.expectNear(bounds->northEast().longitude, center + reach, 1e-9, "eastern edge");
        }
    }
    scene.look({0, 100}, 0);
    for (double x = 0; x <= 400; x += 8) {
        const double longitude = projection->latlng({x, 150})->longitude;
        scene.expect(longitude >= -180 && longitude <= 180, "longitudes from -180 to 180");
    }
}

void staysFinite(SharedScene& scene) {
    scene.look({37.5, 127}, 12, 60, 10);
    const auto isFinite = [](CGPoint point) { return std::isfinite(point.x) && std::isfinite(point.y); };
    for (const CLLocationCoordinate2D coordinate :
         {CLLocationCoordinate2D{90, 0}, {-90, 0}, {-37.5, -53}, {30, 125}, {0, 1e6}, {0, 1e300}}) {
        scene.expect(isFinite(project(scene, coordinate)), "a finite point");
    }
    for (const CGPoint point : {CGPoint{200, -2000}, {-1e6, 50}, {200, 1e6}}) {
        const auto coordinate = scene.at(point.x, point.y);
        scene.expect(std::isfinite(coordinate.longitude) && std::abs(coordinate.latitude) <= 90,
                     "a place on the globe");
    }
    const double nan = std::numeric_limits<double>::quiet_NaN();
    scene.expectNear(project(scene, {nan, 0}), {0, 0}, 0, "no coordinate");
    scene.expectNear(scene.at(nan, 0), {37.5, 127}, 1e-9, "no point");
}

}  // namespace

std::vector<SharedCase> projectionCases() {
    return {{"projection_is_mercator", {projectsMercator}},
            {"projection_turns_with_bearing", {turnsWithBearing}},
            {"projection_foreshortens_with_tilt", {foreshortensWithTilt}},
            {"projection_inverts_itself", {invertsItself}},
            {"projection_bounds_rectangles", {boundsRectangles}},
            {"projection_answers_of_the_nearest_copy", {answersOfTheNearestCopy}},
            {"projection_stays_finite", {staysFinite}}};
}

}  // namespace pelta::shared
