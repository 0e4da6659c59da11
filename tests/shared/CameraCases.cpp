#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "SharedCases.h"

namespace pelta::shared {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr CLLocationCoordinate2D seoul{37.5665, 126.978};

/// Zoom at which a span of longitudes takes up a width in points.
double zoomForSpan(double degrees, double points) {
    return std::log2(points * 360 / (degrees * 512));
}

double degreesForPoints(double points, double zoom) {
    return points * 360 / (512 * std::exp2(zoom));
}

/// The Mercator square's share of the world between the equator and a latitude.
double mercatorShare(double latitude) {
    return std::log(std::tan(pi / 4 + latitude * pi / 360)) / (2 * pi);
}

std::shared_ptr<PgmLatLngBounds> box(double south, double west, double north, double east) {
    return PgmLatLngBounds::create({south, west}, {north, east});
}

void readsBack(SharedScene& scene) {
    struct Row {
        CLLocationCoordinate2D target;
        double zoom, tilt, bearing;
    };
    for (const Row& row :
         {Row{seoul, 11, 0, 0}, Row{{-33.87, 151.2}, 7.25, 30, 350}, Row{{64.1, -21.9}, 14, 60, 90},
          Row{{0, 179.5}, 3, 15, 180}, Row{{-80, -60}, 20, 45, 359.5}, Row{{52.1, 4.3}, 12.5, 33, 10}}) {
        scene.look(row.target, row.zoom, row.tilt, row.bearing);
        scene.expectCamera(row.target, row.zoom, row.tilt, row.bearing, "camera");
        scene.expect(scene.map()->cameraPosition()->zoom() == row.zoom, "the zoom to the last digit");
    }
}

void limitsZoomAndTilt(SharedScene& scene) {
    auto& map = *scene.map();
    map.setMinimumZoomLevel(5);
    map.setMaximumZoomLevel(12);
    scene.look(seoul, 3);
    scene.expectCamera(seoul, 5, 0, 0, "below the minimum");
    scene.look(seoul, 15);
    scene.expectCamera(seoul, 12, 0, 0, "above the maximum");
    map.setMaximumZoomLevel(8);
    scene.expectCamera(seoul, 8, 0, 0, "new maximum");
    map.setMinimumZoomLevel(9);
    scene.look(seoul, 10);
    scene.expectCamera(seoul, 8, 0, 0, "crossing limits");
    map.setMinimumTilt(10);
    map.setMaximumTilt(40);
    scene.look(seoul, 8, 0);
    scene.expectCamera(seoul, 8, 10, 0, "below the minimum tilt");
    scene.look(seoul, 8, 60);
    scene.expectCamera(seoul, 8, 40, 0, "above the maximum tilt");
}

void staysOnTheGlobe(SharedScene& scene) {
    scene.look({89, 190}, 10);
    scene.expectCamera({85.05112878, -170}, 10, 0, 0, "north-east");
    scene.look({-89, -181}, 10);
    scene.expectCamera({-85.05112878, 179}, 10, 0, 0, "south-west");
}

void normalisesBearing(SharedScene& scene) {
    struct Row {
        double given, kept;
    };
    for (const Row& row : {Row{-30, 330}, Row{725, 5}, Row{360, 0}, Row{180, 180}, Row{-180, 180}}) {
        scene.look(seoul, 10, 20, row.given);
        scene.expectCamera(seoul, 10, 20, row.kept, "bearing");
        const double bearing = scene.map()->cameraPosition()->bearing();
        scene.expect(bearing >= 0 && bearing < 360, "a bearing is from 0 up to 360");
    }
}

void scrollsByPoints(SharedScene& scene) {
    const auto scroll = [&scene](CGPoint delta) {
        const auto params = PgmCameraUpdateParams::create();
        params->targetBy(delta);
        scene.map()->moveCamera(PgmCameraUpdate::cameraUpdateWithParams(params));
    };
    scroll({100, 0});
    scene.expectCamera({0, -degreesForPoints(100, 10)}, 10, 0, 0, "content to the right");
    scene.look(seoul, 9, 50, 70);
    const auto wanted = scene.at(200 + 60, 150 - 40);
    scroll({-60, 40});
    scene.expectCamera(wanted, 9, 50, 70, "content to the left and down, turned and tilted");
}

void fitsWithinLimits(SharedScene& scene) {
    scene.map()->setMaximumZoomLevel(16);
    scene.look(seoul, 10, 30, 40);
    scene.map()->moveCamera(PgmCameraUpdate::cameraUpdateFitBounds(box(10, 20, 10, 20)));
    scene.expectCamera({10, 20}, 16, 30, 40, "one point");
    scene.map()->moveCamera(PgmCameraUpdate::cameraUpdateFitBounds(box(-1, -1, 1, 1), 300));
    scene.expectNear(scene.map()->cameraPosition()->zoom(), 1, 1e-6, "no room");
}

void keepsCentreUnderInset(SharedScene& scene) {
    scene.look(seoul, 11, 40, 25);
    scene.map()->setContentInset({40, 120, 20, 0});
    scene.expectCamera(seoul, 11, 40, 25, "inset");
    scene.expectNear(scene.map()->projection()->point(seoul), {260, 160}, 1e-6, "middle of what is left");
    scene.map()->setContentInset({});
    scene.expectNear(scene.map()->projection()->point(seoul), SharedScene::middle, 1e-6, "no inset");
}

void ignoresInsetsThatLeaveNoArea(SharedScene& scene) {
    const auto bounds = box(-1, -2, 1, 2);
    struct Row {
        UIEdgeInsets inset;
        CGPoint middleWhenLarger;  ///< Of 900 × 800 points.
    };
    for (const Row& row : {Row{{0, 250, 0, 150}, {500, 400}}, Row{{100, 10, 200, 0}, {455, 350}},
                           Row{{0, 0, 0, 500}, {200, 400}}, Row{{700, 0, 0, 0}, {450, 750}}}) {
        scene.look(seoul, 11, 40, 25);
        scene.map()->setContentInset(row.inset);
        scene.expect(scene.map()->contentInset() == row.inset, "the inset is kept");
        scene.expectCamera(seoul, 11, 40, 25, "too large an inset");
        scene.expectNear(scene.map()->projection()->point(seoul), SharedScene::middle, 1e-6, "no effect");
        scene.look({0, 0}, 9);
        scene.map()->moveCamera(PgmCameraUpdate::cameraUpdateFitBounds(bounds));
        scene.expectNear(scene.map()->cameraPosition()->zoom(), zoomForSpan(4, 400), 1e-6,
                         "no effect on fitting");
        scene.look({0, 0}, 9);
        scene.map()->setFrame({{}, {900, 800}});
        scene.expectNear(scene.map()->projection()->point({0, 0}), row.middleWhenLarger, 1e-6, "room for it");
        scene.map()->moveCamera(PgmCameraUpdate::cameraUpdateFitBounds(bounds));
        scene.expectNear(scene.map()->projection()->point({0, 0}), row.middleWhenLarger, 1e-3,
                         "fitted there");
        scene.map()->setFrame({{}, SharedScene::size});
        scene.expectNear(scene.map()->projection()->point({0, 0}), SharedScene::middle, 1e-3,
                         "no room again");
    }
}

void staysWithinConstraintBounds(SharedScene& scene) {
    scene.map()->setConstraintBounds(box(-10, -10, 10, 10));
    scene.look({0, 0}, 1);
    const double fillingHeight = std::log2(300 / (2 * mercatorShare(10) * 512));
    const double filling = std::max(fillingHeight, zoomForSpan(20, 400));
    scene.expectCamera({0, 0}, filling, 0, 0, "filled");
    scene.look({0, 9.9}, 8);
    scene.expectCamera({0, 10 - degreesForPoints(200, 8)}, 8, 0, 0, "eastern edge");
    scene.look({-9.9, -3}, 8);
    const auto bottom = scene.at(200, 300);
    scene.expectNear(bottom, {-10, -3}, 1e-6, "southern edge");
}

void tellsScaleAndBounds(SharedScene& scene) {
    scene.look({60, 10}, 10);
    scene.expectNear(scene.map()->projection()->metersPerPixel(), pi * 6378137 / (512 * 1024), 1e-9,
                     "metres a point at 60 degrees");
    scene.look({0, 0}, 10);
    const auto bounds = scene.map()->contentBounds();
    scene.expectNear(bounds->northEast().longitude, degreesForPoints(200, 10), 1e-9, "eastern edge");
    scene.expectNear(mercatorShare(bounds->southWest().latitude), -150.0 / (512 * 1024), 1e-12,
                     "southern edge");
}

}  // namespace

std::vector<SharedCase> cameraCases() {
    return {{"camera_reads_back", {readsBack}},
            {"camera_limits_zoom_and_tilt", {limitsZoomAndTilt}},
            {"camera_stays_on_the_globe", {staysOnTheGlobe}},
            {"camera_normalises_bearing", {normalisesBearing}},
            {"camera_scrolls_by_points", {scrollsByPoints}},
            {"camera_fits_within_limits", {fitsWithinLimits}},
            {"camera_keeps_centre_under_inset", {keepsCentreUnderInset}},
            {"camera_ignores_insets_that_leave_no_area", {ignoresInsetsThatLeaveNoArea}},
            {"camera_stays_within_constraint_bounds", {staysWithinConstraintBounds}},
            {"camera_tells_scale_and_bounds", {tellsScaleAndBounds}}};
}

}  // namespace pelta::shared
