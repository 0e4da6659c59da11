#include <thread>

#include "View/MapFixture.h"

namespace pelta {
namespace {

using testing::ElementsAre;

class ShapeRegistryTest : public MapFixture {
 protected:
    static std::shared_ptr<PgmMarker> namedMarker(const std::string& name) {
        auto marker = PgmMarker::create();
        marker->setIdentifier(name);
        return marker;
    }

    static std::shared_ptr<PgmPolyline> namedLine(const std::string& name) {
        auto line = PgmPolyline::create({{0, 0}, {1, 1}});
        line->setIdentifier(name);
        return line;
    }
};

TEST_F(ShapeRegistryTest, ShapesWaitForTheStyleAndAreDrawnInOneFrame) {
    serveStyle(labelledStyle());
    const auto map = makeMap();
    const auto marker = namedMarker("marker");
    const auto line = namedLine("line");
    const auto area = PgmPolygon::create({{0, 0}, {0, 1}, {1, 0}});
    area->setIdentifier("area");
    area->setZIndex(-1);
    marker->setMapView(map);
    line->setMapView(map);
    area->setMapView(map);
    EXPECT_EQ(map->shapesMap().size(), 3U);
    EXPECT_TRUE(marker->styleLayers().empty());

    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(map->first_symobol_id(), "places");
    EXPECT_THAT(layersOf(map),
                ElementsAre("ground", "area", "area_line", "line", "places", "roads", "marker"));
    const auto shown = engineOf(map).style()->imageForName(marker->iconImage()->reuseIdentifier());
    ASSERT_NE(shown, nullptr);
    EXPECT_TRUE(shown->isIdenticalTo(marker->iconImage()->image()));
}

TEST_F(ShapeRegistryTest, StackingFollowsGlobalIndexThenIndexThenAge) {
    serveStyle(labelledStyle());
    const auto map = makeLoadedMap();
    const auto first = namedMarker("first");
    const auto second = namedMarker("second");
    const auto third = namedMarker("third");
    for (const auto& marker : {third, first, second}) {
        marker->setMapView(map);
    }
    struct Case {
        const char* change;
        std::function<void()> make;
        std::vector<std::string> above, below;
    };
    const Case cases[] = {
        {"age", [] {}, {"first", "second", "third"}, {}},
        {"index before age", [&] { first->setZIndex(1); }, {"second", "third", "first"}, {}},
        {"negative index", [&] { third->setZIndex(-7); }, {"third", "second", "first"}, {}},
        {"global index first", [&] { second->setGlobalZIndex(1001); }, {"third", "first", "second"}, {}},
        {"below the labels", [&] { first->setGlobalZIndex(-1); }, {"third", "second"}, {"first"}},
        {"two below", [&] { second->setGlobalZIndex(-2); }, {"third"}, {"second", "first"}},
        {"zero is above", [&] { first->setGlobalZIndex(0); }, {"first", "third"}, {"second"}},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.change);
        testCase.make();
        port.runFrame();
        std::vector<std::string> expected{"ground"};
        expected.insert(expected.end(), testCase.below.begin(), testCase.below.end());
        expected.insert(expected.end(), {"places", "roads"});
        expected.insert(expected.end(), testCase.above.begin(), testCase.above.end());
        EXPECT_EQ(layersOf(map), expected);
    }
}

TEST_F(ShapeRegistryTest, LayersComeAndGoWithTheNextFrame) {
    const auto map = makeLoadedMap();
    const auto kept = namedMarker("kept");
    kept->setMapView(map);
    port.runFrame();
    const auto marker = namedMarker("marker");

    marker->setMapView(map);
    marker->setMapView(nullptr);
    port.runFrame();
    EXPECT_THAT(layersOf(map), ElementsAre("kept")) << "added and taken away before a frame";
    EXPECT_TRUE(map->willBeRemovedShapesMap().empty());

    marker->setMapView(map);
    port.runFrame();
    const auto layers = marker->styleLayers();
    marker->setMapView(nullptr);
    EXPECT_THAT(layersOf(map), ElementsAre("kept", "marker")) << "until the next frame";
    marker->setMapView(map);
    kept->setZIndex(1);
    port.runFrame();
    EXPECT_THAT(layersOf(map), ElementsAre("marker", "kept"));
    EXPECT_EQ(marker->styleLayers(), layers) << "the same layers again";

    marker->setMapView(nullptr);
    EXPECT_FALSE(marker->isAttached());
    port.runFrame();
    EXPECT_THAT(featuresOf(map), ElementsAre("kept", "marker")) << "until the source is rebuilt";
    kept->setPosition({1, 1});
    port.runFrame();
    EXPECT_THAT(featuresOf(map), ElementsAre("kept"));
}

TEST_F(ShapeRegistryTest, MovingToAnotherMapLeavesTheFirst) {
    const auto first = makeLoadedMap();
    const auto second = makeLoadedMap();
    const auto marker = namedMarker("marker");
    marker->setMapView(first);
    port.runFrame();
    marker->setMapView(second);
    port.runFrame();
    port.runFrame();
    EXPECT_TRUE(first->shapesMap().empty());
    EXPECT_TRUE(layersOf(first).empty());
    EXPECT_THAT(layersOf(second), ElementsAre("marker"));
    EXPECT_EQ(marker->mapView(), second);
}

TEST_F(ShapeRegistryTest, MapHoldsItsShapesAndShapesDoNotHoldTheMap) {
    auto map = makeLoadedMap();
    std::weak_ptr<PgmMarker> marker;
    {
        const auto made = namedMarker("marker");
        marker = made;
        made->setMapView(map);
    }
    port.runFrame();
    ASSERT_FALSE(marker.expired());
    const auto kept = marker.lock();
    map->removeFromSuperview();
    map.reset();
    EXPECT_EQ(kept->mapView(), nullptr);
    kept->setTitle("alone");
    kept->setZIndex(2);
    kept->setMapView(nullptr);
    EXPECT_EQ(kept->title(), "alone");
}

TEST_F(ShapeRegistryTest, ASecondStyleGetsTheSameLayersAndPictures) {
    const auto map = makeLoadedMap();
    const auto line = namedLine("line");
    const auto marker = namedMarker("marker");
    const auto late = namedMarker("late");
    line->setMapView(map);
    marker->setMapView(map);
    EXPECT_TRUE(port.runUntilIdle());
    const auto layer = marker->symbolLayer();

    engineOf(map).setStyleJSON(labelledStyle());
    late->setMapView(map);
    line->setColor(UIColor::white());
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(map->first_symobol_id(), "places");
    EXPECT_THAT(layersOf(map), ElementsAre("ground", "line", "places", "roads", "marker", "late"));
    EXPECT_EQ(engineOf(map).style()->layerWithIdentifier("marker"), layer);
    EXPECT_THAT(featuresOf(map), ElementsAre("line", "marker", "late"));
    EXPECT_NE(engineOf(map).style()->imageForName(marker->iconImage()->reuseIdentifier()), nullptr);
    EXPECT_EQ(line->lineLayer()->lineColor(), MLNExpression(UIColor::white()));
}

/// Counts what the map asks of it.
struct CountingShape : PgmShape {
    std::shared_ptr<MLNShape> feature() const override {
        ++featureReads;
        return PgmShape::feature();
    }
    std::shared_ptr<PgmImage> shapeImage() const override {
        ++imageReads;
        return image;
    }
    std::int64_t defaultGlobalZIndex() const override { return 42; }

    std::shared_ptr<PgmImage> image;
    mutable int featureReads = 0;
    mutable int imageReads = 0;
};

TEST_F(ShapeRegistryTest, ABurstOfChangesIsOneFramesWork) {
    const auto map = makeLoadedMap();
    const auto shape = make<CountingShape>();
    EXPECT_EQ(shape->identifier(), "CountingShape_" + std::to_string(shape->shapeIndex()));
    EXPECT_EQ(shape->globalZIndex(), 42);
    shape->setMapView(map);
    const auto marker = namedMarker("marker");
    marker->setMapView(map);
    for (int i = 0; i < 10; ++i) {
        marker->setPosition({1.0 * i, 0});
        marker->setTitle(std::to_string(i));
        marker->setZIndex(i);
    }
    EXPECT_EQ(shape->featureReads + shape->imageReads, 0);
    port.runFrame();
    EXPECT_EQ(shape->featureReads, 1);
    EXPECT_EQ(shape->imageReads, 1);
    marker->setTitle("again");
    port.runFrame();
    EXPECT_EQ(shape->featureReads, 1) << "a title does not touch the source";
    EXPECT_EQ(shape->imageReads, 2);
}

TEST_F(ShapeRegistryTest, AShapeAddedOnAnotherThreadIsDrawnOnTheMainThread) {
    struct ThreadShape : PgmShape {
        void updateLayerProperty() override { drawnOn = std::this_thread::get_id(); }
        std::thread::id drawnOn;
    };
    const auto map = makeLoadedMap();
    const auto shape = make<ThreadShape>();
    std::thread worker([&] { map->addShape(shape); });
    while (shape->drawnOn == std::thread::id{}) {
        port.advance(0.01);
    }
    worker.join();
    EXPECT_EQ(shape->drawnOn, std::this_thread::get_id());
    EXPECT_EQ(map->shapesMap().count(shape->shapeIndex()), 1U);
}

}  // namespace
}  // namespace pelta
