/// Camera moves and limits.

#include <array>

#include "Arguments.h"

namespace pelta::random {

namespace {

std::shared_ptr<PgmCameraPosition> positionAt(const Operation& operation) {
    return PgmCameraPosition::cameraPosition(coordinateAt(operation, 1), numberAt(operation, 2),
                                             numberAt(operation, 3), numberAt(operation, 4));
}

void jump(PgmMapView& map, const Operation& operation) {
    map.setCameraPosition(positionAt(operation));
}

std::shared_ptr<PgmCameraUpdate> animated(std::shared_ptr<PgmCameraUpdate> update,
                                          const Operation& operation) {
    update->setAnimation(*PgmCameraUpdateAnimationFromRaw(operation.arguments[3]));
    update->setAnimationDuration(secondsAt(operation, 4));
    return update;
}

void moveTo(PgmMapView& map, const Operation& operation) {
    map.moveCamera(animated(
        PgmCameraUpdate::cameraUpdateTargetToZoomTo(coordinateAt(operation, 1), numberAt(operation, 2)),
        operation));
}

void moveBy(PgmMapView& map, const Operation& operation) {
    const auto params = PgmCameraUpdateParams::create();
    params->targetBy({numberAt(operation, 1), numberAt(operation, 2)});
    params->bearingBy(numberAt(operation, 1));
    params->tiltBy(numberAt(operation, 2));
    map.moveCamera(animated(PgmCameraUpdate::cameraUpdateWithParams(params), operation));
}

void moveBriefly(World& world, const Operation& operation) {
    if (const auto map = mapAt(world, operation, 0)) {
        const auto update = PgmCameraUpdate::cameraUpdateTargetTo(coordinateAt(operation, 1));
        update->setAnimation(*PgmCameraUpdateAnimationFromRaw(operation.arguments[2]));
        map->moveCamera(update, world.action(operation));
    }
}

void moveNowhere(PgmMapView& map, const Operation& /*operation*/) {
    map.moveCamera(nullptr);
}

void fit(PgmMapView& map, const Operation& operation) {
    map.moveCamera(PgmCameraUpdate::cameraUpdateFitBounds(
        PgmLatLngBounds::bounds(coordinateAt(operation, 1), coordinateAt(operation, 2)),
        numberAt(operation, 3)));
}

void fly(World& world, const Operation& operation) {
    if (const auto map = mapAt(world, operation, 0)) {
        map->flyToCamera(
            PgmCameraPosition::cameraPosition(coordinateAt(operation, 1), numberAt(operation, 2)),
            secondsAt(operation, 3), world.action(operation));
    }
}

template <void (PgmMapView::*setter)(double)>
void setNumber(PgmMapView& map, const Operation& operation) {
    (map.*setter)(numberAt(operation, 1));
}

void constrain(PgmMapView& map, const Operation& operation) {
    map.setConstraintBounds(PgmLatLngBounds::bounds(coordinateAt(operation, 1), coordinateAt(operation, 2)));
}

void press(PgmMapView& map, const Operation& operation) {
    switch (operation.arguments[1] % 3) {
        case 0:
            map.plusAction();
            break;
        case 1:
            map.minusAction();
            break;
        default:
            map.locactionAction();
            break;
    }
}

constexpr std::array kinds{
    OperationKind{"{map} jumps to {coordinate}, zoom {number}, tilt {number}, bearing {number}", 20,
                  onMap<jump>},
    OperationKind{"{map} moves to {coordinate}, zoom {number}, {animation}, for {seconds}", 20,
                  onMap<moveTo>},
    OperationKind{"{map} moves by {number}, {number}, {animation}, for {seconds}", 12, onMap<moveBy>},
    OperationKind{"{map} moves to {coordinate}, {animation}, and then: {operation}", 15, moveBriefly},
    OperationKind{"{map} moves nowhere", 2, onMap<moveNowhere>},
    OperationKind{"{map} fits {coordinate} and {coordinate}, padded by {number}", 10, onMap<fit>},
    OperationKind{"{map} flies to {coordinate}, zoom {number}, in {seconds}, and then: {operation}", 8, fly},
    OperationKind{"{map} takes the latitude {number}", 4, onMap<setNumber<&PgmMapView::setLatitude>>},
    OperationKind{"{map} takes the longitude {number}", 4, onMap<setNumber<&PgmMapView::setLongitude>>},
    OperationKind{"{map} takes the zoom {number}", 8, onMap<setNumber<&PgmMapView::setZoomLevel>>},
    OperationKind{"{map} has the least zoom {number}", 6, onMap<setNumber<&PgmMapView::setMinimumZoomLevel>>},
    OperationKind{"{map} has the most zoom {number}", 6, onMap<setNumber<&PgmMapView::setMaximumZoomLevel>>},
    OperationKind{"{map} has the least tilt {number}", 4, onMap<setNumber<&PgmMapView::setMinimumTilt>>},
    OperationKind{"{map} has the most tilt {number}", 4, onMap<setNumber<&PgmMapView::setMaximumTilt>>},
    OperationKind{"{map} stays within {coordinate} and {coordinate}", 6, onMap<constrain>},
    OperationKind{"a control of {map} is pressed, {variant}", 8, onMap<press>},
};

}  // namespace

std::span<const OperationKind> cameraOperations() {
    return kinds;
}

}  // namespace pelta::random
