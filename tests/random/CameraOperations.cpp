/// Camera moves and limits.

#include "Kinds.h"

namespace pelta::random {

namespace {

void jump(PgmMapView& map, const Operation& operation) {
    map.setCameraPosition(PgmCameraPosition::cameraPosition(operation.coordinate(1), operation.number(2),
                                                            operation.number(3), operation.number(4)));
}

std::shared_ptr<PgmCameraUpdate> animated(std::shared_ptr<PgmCameraUpdate> update,
                                          const Operation& operation) {
    update->setAnimation(*PgmCameraUpdateAnimationFromRaw(operation.arguments[3]));
    update->setAnimationDuration(operation.duration(4));
    return update;
}

void moveTo(PgmMapView& map, const Operation& operation) {
    map.moveCamera(
        animated(PgmCameraUpdate::cameraUpdateTargetToZoomTo(operation.coordinate(1), operation.number(2)),
                 operation));
}

void moveBy(PgmMapView& map, const Operation& operation) {
    const auto params = PgmCameraUpdateParams::create();
    params->targetBy({operation.number(1), operation.number(2)});
    params->bearingBy(operation.number(1));
    params->tiltBy(operation.number(2));
    map.moveCamera(animated(PgmCameraUpdate::cameraUpdateWithParams(params), operation));
}

void moveBriefly(World& world, const Operation& operation) {
    if (const auto map = world.map(operation.arguments[0])) {
        const auto update = PgmCameraUpdate::cameraUpdateTargetTo(operation.coordinate(1));
        update->setAnimation(*PgmCameraUpdateAnimationFromRaw(operation.arguments[2]));
        map->moveCamera(update, world.action(operation));
    }
}

std::shared_ptr<PgmLatLngBounds> boundsOf(const Operation& operation) {
    return PgmLatLngBounds::bounds(operation.coordinate(1), operation.coordinate(2));
}

void fit(PgmMapView& map, const Operation& operation) {
    map.moveCamera(PgmCameraUpdate::cameraUpdateFitBounds(boundsOf(operation), operation.number(3)));
}

void fly(World& world, const Operation& operation) {
    if (const auto map = world.map(operation.arguments[0])) {
        map->flyToCamera(PgmCameraPosition::cameraPosition(operation.coordinate(1), operation.number(2)),
                         operation.duration(3), world.action(operation));
    }
}

void press(PgmMapView& map, const Operation& operation) {
    constexpr void (PgmMapView::*actions[])() = {&PgmMapView::plusAction, &PgmMapView::minusAction,
                                                 &PgmMapView::locactionAction};
    (map.*actions[operation.arguments[1] % 3])();
}

}  // namespace

std::vector<OperationKind> cameraOperations() {
    return {
        onMap("{map} jumps to {coordinate}, zoom {number}, tilt {number}, bearing {number}", 20, jump),
        onMap("{map} moves to {coordinate}, zoom {number}, {animation}, for {seconds}", 20, moveTo),
        onMap("{map} moves by {number}, {number}, {animation}, for {seconds}", 12, moveBy),
        {"{map} moves to {coordinate}, {animation}, and then: {operation}", 15, moveBriefly},
        onMap("{map} moves nowhere", 2, [](PgmMapView& map, const Operation&) { map.moveCamera(nullptr); }),
        onMap("{map} fits {coordinate} and {coordinate}, padded by {number}", 10, fit),
        {"{map} flies to {coordinate}, zoom {number}, in {seconds}, and then: {operation}", 8, fly},
        sets("{map} takes the latitude {number}", 4, &PgmMapView::setLatitude),
        sets("{map} takes the longitude {number}", 4, &PgmMapView::setLongitude),
        sets("{map} takes the zoom {number}", 8, &PgmMapView::setZoomLevel),
        sets("{map} has the least zoom {number}", 6, &PgmMapView::setMinimumZoomLevel),
        sets("{map} has the most zoom {number}", 6, &PgmMapView::setMaximumZoomLevel),
        sets("{map} has the least tilt {number}", 4, &PgmMapView::setMinimumTilt),
        sets("{map} has the most tilt {number}", 4, &PgmMapView::setMaximumTilt),
        onMap("{map} stays within {coordinate} and {coordinate}", 6,
              [](PgmMapView& map, const Operation& o) { map.setConstraintBounds(boundsOf(o)); }),
        onMap("a control of {map} is pressed, {variant}", 8, press),
    };
}

}  // namespace pelta::random
