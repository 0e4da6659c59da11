#include <pelta/Annotations/PgmPolygon.h>

#include "Annotations/CoordinateCheck.h"

namespace pelta {

std::shared_ptr<PgmPolygon> PgmPolygon::create(std::vector<CLLocationCoordinate2D> coords,
                                               UIColor fillColor) {
    return make<PgmPolygon>(std::move(coords), fillColor);
}

void PgmPolygon::completeConstruction(std::string_view className) {
    PgmAreaShape::completeConstruction(className);
    updateFeature();
    requireTwoOrMore(coords_);
}

void PgmPolygon::setCoords(std::vector<CLLocationCoordinate2D> coords) {
    coords_ = std::move(coords);
    updateFeature();
}

void PgmPolygon::setHoles(std::vector<Ring> holes) {
    holes_ = std::move(holes);
    updateFeature();
}

void PgmPolygon::updateFeature() {
    setRing(coords_, holes_);
}

}  // namespace pelta
