#include "View/MapFixture.h"

namespace pelta {
namespace {

class MarkerTest : public MapFixture {
 protected:
    MarkerTest() { marker->setMapView(map); }

    std::shared_ptr<PgmMapView> map = makeLoadedMap();
    std::shared_ptr<PgmMarker> marker = PgmMarker::create();
};

TEST_F(MarkerTest, AnUpdateThatChangesNothingLeavesTheLayerUnchanged) {
    port.runFrame();
    marker->setZIndex(3);
    marker->setTitle("");
    marker->setIsAllowOverlapSymbols(true);
    EXPECT_EQ(marker->symbolLayer()->changes(), 0U);
    marker->setTitle("changed");
    EXPECT_EQ(marker->symbolLayer()->changes(), 1U) << "the text alone";
}

TEST_F(MarkerTest, APictureWithoutANameOfItsOwnGetsOne) {
    const UIImage picture = PgmImage::markerImageBlue()->image();
    const auto first = PgmImage::imageWith(picture, "");
    const auto second = PgmImage::imageWith(picture, "");
    EXPECT_THAT(first->reuseIdentifier(), testing::MatchesRegex("I:[0-9]+"));
    EXPECT_NE(first->reuseIdentifier(), second->reuseIdentifier());
    const auto named = PgmImage::imageNamedInBundle("peltamap_default_location_icon", &Bundle::library(), "");
    EXPECT_EQ(named->reuseIdentifier().size(), 36U);
    EXPECT_EQ(PgmImage::imageWith(picture, "given")->reuseIdentifier(), "given");
}

TEST_F(MarkerTest, ResetOptionsGiveTheLooksOfANewMarker) {
    const auto changed = PgmMarkerOptionsImpl::withMarker(marker);
    changed->setPosition({1, 2});
    changed->setIconImage(PgmImage::markerImageGray());
    changed->setAnchor({0, 0});
    changed->setTitle("title");
    changed->setTitleSize(30);
    changed->setTitleColor(UIColor::white());
    changed->setTitleHaloColor(UIColor::black());
    changed->setTitleMaxWidth(7);
    changed->setTitleMargin(8);
    changed->setAlpha(0.5);
    changed->setAngle(9);
    changed->setIconScale(3);
    changed->setIsAllowOverlapMarkers(false);
    changed->setIsAllowOverlapTitle(false);
    changed->setIsIconFlat(true);
    changed->setIsTitleFlat(true);
    changed->setUserInfo({{"key", std::string("value")}});
    changed->setGlobalZIndex(5);
    changed->setZIndex(6);
    changed->setVisibleMinZoom(7);
    changed->setVisibleMaxZoom(8);
    EXPECT_EQ(marker->title(), "title");
    marker->setIsAllowOverlapSymbols(true);
    marker->setTag(77);
    marker->setIsVisible(false);
    marker->setTouchEvent([](PgmShape&) { return true; });

    const auto reset = PgmMarkerOptionsImpl::withResetMarker(marker);
    const auto fresh = PgmMarkerOptionsImpl::withMarker(PgmMarker::create());
    const auto looks = [](const PgmMarkerOptions& o) {
        return std::tuple(o.position(), o.iconImage(), o.anchor(), o.title(), o.titleSize(), o.titleColor(),
                          o.titleHaloColor(), o.titleMaxWidth(), o.titleMargin(), o.alpha(), o.angle(),
                          o.iconScale(), o.isAllowOverlapMarkers(), o.isAllowOverlapTitle(), o.isIconFlat(),
                          o.isTitleFlat(), o.userInfo().size(), o.globalZIndex(), o.zIndex(),
                          o.visibleMinZoom(), o.visibleMaxZoom());
    };
    EXPECT_TRUE(looks(*reset) == looks(*fresh));
    EXPECT_EQ(marker->symbolLayer()->iconOpacity()->constant(), 1) << "drawn, not only stored";
    EXPECT_TRUE(marker->isAllowOverlapSymbols());
    EXPECT_EQ(marker->tag(), 77U);
    EXPECT_FALSE(marker->isVisible());
    EXPECT_TRUE(marker->touchEvent());
}

}  // namespace
}  // namespace pelta
