#include <pelta/Annotations/PgmMarkerOptions.h>

namespace pelta {

namespace {

/// Keeps the marker whose properties are a new marker's; made on first use, never shown.
struct MarkerHolder {
    static const PgmMarker& initMarker() {
        static const auto marker = PgmMarker::create();
        return *marker;
    }
};

void reset(PgmMarker& marker) {
    const auto& pristine = MarkerHolder::initMarker();
    marker.setPosition({});
    marker.setIconImage(pristine.iconImage());
    marker.setAnchor(pristine.anchor());
    marker.setTitle(pristine.title());
    marker.setTitleSize(pristine.titleSize());
    marker.setTitleColor(pristine.titleColor());
    marker.setTitleHaloColor(pristine.titleHaloColor());
    marker.setTitleMaxWidth(pristine.titleMaxWidth());
    marker.setTitleMargin(pristine.titleMargin());
    marker.setAlpha(pristine.alpha());
    marker.setAngle(pristine.angle());
    marker.setIconScale(pristine.iconScale());
    marker.setIsAllowOverlapMarkers(pristine.isAllowOverlapMarkers());
    marker.setIsAllowOverlapTitle(pristine.isAllowOverlapTitle());
    marker.setIsIconFlat(pristine.isIconFlat());
    marker.setIsTitleFlat(pristine.isTitleFlat());
    marker.setUserInfo(pristine.userInfo());
    marker.setGlobalZIndex(pristine.globalZIndex());
    marker.setZIndex(pristine.zIndex());
    marker.setVisibleMinZoom(pristine.visibleMinZoom());
    marker.setVisibleMaxZoom(pristine.visibleMaxZoom());
}

}  // namespace

std::shared_ptr<PgmMarkerOptionsImpl> PgmMarkerOptionsImpl::withMarker(std::shared_ptr<PgmMarker> marker) {
    return std::make_shared<PgmMarkerOptionsImpl>(std::move(marker));
}

std::shared_ptr<PgmMarkerOptionsImpl> PgmMarkerOptionsImpl::withResetMarker(
    std::shared_ptr<PgmMarker> marker) {
    reset(*marker);
    return withMarker(std::move(marker));
}

}  // namespace pelta
