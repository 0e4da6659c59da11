#include <functional>

#include "View/MapFixture.h"

namespace pelta {
namespace {

class MarkerTest : public MapFixture {
 protected:
    std::shared_ptr<PgmMarker> attached() {
        auto marker = PgmMarker::create();
        marker->setMapView(map);
        return marker;
    }

    std::shared_ptr<PgmMapView> map = makeLoadedMap();
};

TEST_F(MarkerTest, EveryStyleSetterReachesTheLayerAtOnce) {
    struct Case {
        const char* name;
        std::function<void(PgmMarker&)> set;
        std::function<bool(const MLNSymbolStyleLayer&)> hasArrived;
    };
    const UIColor red{1, 0, 0, 0.5};
    const auto green = PgmImage::markerImageGreen();
    const std::vector<Case> cases{
        {"icon", [&](auto& m) { m.setIconImage(green); },
         [&](auto& l) { return l.iconImageName()->constant() == green->reuseIdentifier(); }},
        {"no icon", [](auto& m) { m.setIconImage(nullptr); },
         [](auto& l) {
             return l.iconImageName()->constant() == PgmImage::markerImageRed()->reuseIdentifier();
         }},
        {"scale", [](auto& m) { m.setIconScale(2); }, [](auto& l) { return l.iconScale()->constant() == 2; }},
        {"title", [](auto& m) { m.setTitle("서울"); },
         [](auto& l) { return l.text()->constant() == "서울"; }},
        {"title color", [&](auto& m) { m.setTitleColor(red); },
         [&](auto& l) { return l.textColor()->constant() == red; }},
        {"halo color", [&](auto& m) { m.setTitleHaloColor(red); },
         [&](auto& l) { return l.textHaloColor()->constant() == red; }},
        {"title size", [](auto& m) { m.setTitleSize(20); },
         [](auto& l) { return l.textFontSize()->constant() == 20; }},
        {"title width", [](auto& m) { m.setTitleMaxWidth(100); },
         [](auto& l) { return l.maximumTextWidth()->constant() == 5; }},
        {"markers overlap", [](auto& m) { m.setIsAllowOverlapMarkers(false); },
         [](auto& l) { return !l.iconAllowsOverlap()->constant(); }},
        {"symbols do not overrule", [](auto& m) { m.setIsAllowOverlapSymbols(true); },
         [](auto& l) { return !l.iconAllowsOverlap()->constant(); }},
        {"title overlap", [](auto& m) { m.setIsAllowOverlapTitle(false); },
         [](auto& l) { return !l.textAllowsOverlap()->constant(); }},
        {"flat icon", [](auto& m) { m.setIsIconFlat(true); },
         [](auto& l) {
             return l.iconPitchAlignment()->constant() == "map" &&
                    l.iconRotationAlignment()->constant() == "map" &&
                    l.textPitchAlignment()->constant() == "viewport";
         }},
        {"flat title", [](auto& m) { m.setIsTitleFlat(true); },
         [](auto& l) { return l.textPitchAlignment()->constant() == "map"; }},
        {"hidden", [](auto& m) { m.setIsVisible(false); }, [](auto& l) { return !l.isVisible(); }},
    };
    const auto marker = attached();
    port.runFrame();
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        testCase.set(*marker);
        EXPECT_TRUE(testCase.hasArrived(*marker->symbolLayer()));
        EXPECT_TRUE(map->needCheckShapeImage());
        EXPECT_FALSE(map->needUpdateShapes() || map->needReorderShapes());
        port.runFrame();
    }
}

TEST_F(MarkerTest, AnUpdateThatChangesNothingLeavesTheLayerUnchanged) {
    const auto marker = attached();
    port.runFrame();
    marker->setZIndex(3);
    marker->setTitle("");
    marker->setIsAllowOverlapSymbols(true);
    EXPECT_EQ(marker->symbolLayer()->changes(), 0U);
    marker->setTitle("changed");
    EXPECT_EQ(marker->symbolLayer()->changes(), 1U) << "the text alone";
}

TEST_F(MarkerTest, AlphaAngleAndAnchorWaitForAnotherChange) {
    const auto marker = attached();
    const auto offset = marker->symbolLayer()->iconOffset();
    marker->setAlpha(0.25);
    marker->setAngle(45);
    marker->setAnchor({0, 0});
    port.runFrame();
    const auto& layer = *marker->symbolLayer();
    EXPECT_EQ(layer.iconOpacity()->constant(), 1);
    EXPECT_EQ(layer.iconRotation()->constant(), 0);
    EXPECT_EQ(layer.iconOffset(), offset);
    marker->setTitle("now");
    EXPECT_EQ(layer.iconOpacity()->constant(), 0.25);
    EXPECT_EQ(layer.textOpacity()->constant(), 0.25);
    EXPECT_EQ(layer.iconRotation()->constant(), 45);
    EXPECT_NE(layer.iconOffset(), offset);
}

TEST_F(MarkerTest, PositionMovesTheFeature) {
    const auto marker = PgmMarker::markerWithPosition({10, 20});
    const auto feature = std::dynamic_pointer_cast<MLNPointFeature>(marker->feature());
    EXPECT_EQ(feature->coordinate(), (CLLocationCoordinate2D{10, 20}));
    EXPECT_EQ(*feature->attribute("shapeIndex"), MLNAttributeValue(marker->shapeIndex()));
    EXPECT_EQ(*feature->attribute("identifier"), MLNAttributeValue(marker->identifier()));
    marker->setMapView(map);
    port.runFrame();
    marker->setPosition({30, 40});
    EXPECT_EQ(feature->coordinate(), (CLLocationCoordinate2D{30, 40}));
    EXPECT_TRUE(map->needUpdateShapes());
}

TEST_F(MarkerTest, ResetOptionsGiveTheLooksOfANewMarker) {
    const auto marker = attached();
    const auto changed = PgmMarkerOptionsImpl::withMarker(marker);
    EXPECT_EQ(changed->marker(), marker);
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
    EXPECT_EQ(marker->zIndex(), 6);
    EXPECT_EQ(changed->identifier(), marker->identifier());
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
