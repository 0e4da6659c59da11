#include <array>
#include <atomic>
#include <thread>

#include "View/MapFixture.h"

namespace pelta {
namespace {

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
    const auto area = PgmPolygon::create({{0, 0}, {0, 1}, {1, 0}});
    area->setIdentifier("area");
    area->setZIndex(-1);
    for (const auto& shape :
         std::initializer_list<std::shared_ptr<PgmShape>>{marker, namedLine("line"), area}) {
        shape->setMapView(map);
    }
    EXPECT_EQ(map->shapesMap().size(), 3U);
    EXPECT_TRUE(marker->styleLayers().empty());

    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(map->first_symobol_id(), "places");
    EXPECT_EQ(layersOf(map), "ground area area_line line places roads marker");
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
        const char* layers;
    };
    const Case cases[] = {
        {"age", [] {}, "ground places roads first second third"},
        {"index before age", [&] { first->setZIndex(1); }, "ground places roads second third first"},
        {"negative index", [&] { third->setZIndex(-7); }, "ground places roads third second first"},
        {"global index", [&] { second->setGlobalZIndex(1001); }, "ground places roads third first second"},
        {"below the labels", [&] { first->setGlobalZIndex(-1); }, "ground first places roads third second"},
        {"two below", [&] { second->setGlobalZIndex(-2); }, "ground second first places roads third"},
        {"zero is above", [&] { first->setGlobalZIndex(0); }, "ground second places roads first third"},
    };
    for (const auto& [change, make, layers] : cases) {
        make();
        port.runFrame();
        EXPECT_EQ(layersOf(map), layers) << change;
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
    EXPECT_EQ(layersOf(map), "kept") << "added and taken away before a frame";
    EXPECT_TRUE(map->willBeRemovedShapesMap().empty());

    marker->setMapView(map);
    port.runFrame();
    const auto layers = marker->styleLayers();
    marker->setMapView(nullptr);
    EXPECT_EQ(layersOf(map), "kept marker") << "until the next frame";
    marker->setMapView(map);
    kept->setZIndex(1);
    port.runFrame();
    EXPECT_EQ(layersOf(map), "marker kept");
    EXPECT_EQ(marker->styleLayers(), layers) << "the same layers again";

    marker->setMapView(nullptr);
    EXPECT_FALSE(marker->isAttached());
    port.runFrame();
    EXPECT_EQ(featuresOf(map), "kept marker") << "until the source is rebuilt";
    kept->setPosition({1, 1});
    port.runFrame();
    EXPECT_EQ(featuresOf(map), "kept");
}

TEST_F(ShapeRegistryTest, ItsLayersAreOnTheMapThatAShapeWasPutOnLast) {
    // Maps: A and B have a style, L gets one at the end; "." lets a frame be drawn, "-" takes the shape away.
    for (const std::string moves : {"A.B", "B.A", "A.B.A", "B.A.B", "A.BA", "B.AB", "A.BA.B", "L.A", "A.L.A",
                                    "A.LA", "LB", "A.L", "A.L-", "L-", "A.BA-", "A.B-"}) {
        SCOPED_TRACE(moves);
        serveStyle(emptyStyle());
        const auto loadedA = makeLoadedMap();
        const auto loadedB = makeLoadedMap();
        serveStyle("no style");
        const auto late = makeMap();
        EXPECT_TRUE(port.runUntilIdle());
        const std::map<char, std::shared_ptr<PgmMapView>> maps{{'A', loadedA}, {'B', loadedB}, {'L', late}};
        const auto marker = namedMarker("marker");
        for (const auto& [name, map] : maps) {
            namedLine("line")->setMapView(map);
        }
        for (const char move : moves) {
            if (move == '.') {
                port.runFrame();
            } else {
                marker->setMapView(move == '-' ? nullptr : maps.at(move));
            }
        }
        port.runFrame();
        EXPECT_TRUE(late->willBeRemovedShapesMap().empty()) << "held without need";
        engineOf(late).setStyleJSON(emptyStyle());
        EXPECT_TRUE(port.runUntilIdle());
        for (const auto& [name, map] : maps) {
            EXPECT_EQ(layersOf(map), name == moves.back() ? "line marker" : "line") << "map " << name;
        }
    }
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
    EXPECT_EQ(layersOf(map), "ground line places roads marker late");
    EXPECT_EQ(engineOf(map).style()->layerWithIdentifier("marker"), layer);
    EXPECT_EQ(featuresOf(map), "line marker late");
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

/// Runs the application's work when it is asked for something, once.
struct AskedMarker : PgmMarker {
    using Work = std::function<void()>;
    enum Question { layers, geometry, picture };

    void updateLayerProperty() override {
        PgmMarker::updateLayerProperty();
        answer(layers);
    }
    std::shared_ptr<MLNShape> feature() const override {
        answer(geometry);
        return PgmMarker::feature();
    }
    std::shared_ptr<PgmImage> shapeImage() const override {
        answer(picture);
        return PgmMarker::shapeImage();
    }
    void answer(Question question) const {
        if (work && question == asked) {
            std::exchange(work, nullptr)();
        }
    }
    mutable Work work;
    Question asked = layers;
};

TEST_F(ShapeRegistryTest, AShapeThatIsAskedMayDoAnythingToTheMap) {
    struct Stage {
        std::shared_ptr<PgmMapView> map;
        std::vector<std::shared_ptr<PgmShape>> shapes;
    };
    struct Case {
        const char* what;
        void (*act)(Stage& stage, PgmShape& asked);
        const char* left;
    };
    const Case cases[] = {
        {"takes itself away", [](Stage&, PgmShape& asked) { asked.setMapView(nullptr); }, "a b"},
        {"takes all away and forgets them",
         [](Stage& stage, PgmShape&) {
             for (const auto& shape : std::exchange(stage.shapes, {})) {
                 shape->setMapView(nullptr);
             }
         },
         ""},
        {"puts another on", [](Stage& stage, PgmShape&) { namedMarker("c")->setMapView(stage.map); },
         "a asked b c"},
        {"does the frame's work",
         [](Stage& stage, PgmShape&) {
             stage.map->updateSource("pel-shapes");
             stage.map->checkShapeImage();
             stage.map->reorderShapes();
         },
         "a asked b"},
        {"replaces the style",
         [](Stage& stage, PgmShape&) { engineOf(stage.map).setStyleJSON(labelledStyle()); },
         "ground places roads a asked b"},
        {"releases the map",
         [](Stage& stage, PgmShape&) {
             stage.map->removeFromSuperview();
             stage = {};
         },
         ""},
    };
    for (const auto question : {AskedMarker::layers, AskedMarker::geometry, AskedMarker::picture}) {
        for (const auto& each : cases) {
            SCOPED_TRACE(std::string(each.what) + " when asked for " + std::to_string(question));
            Stage stage{makeLoadedMap(), {}};
            for (const std::string name : {"a", "asked", "b"}) {
                const auto marker = name == "asked" ? make<AskedMarker>() : PgmMarker::create();
                marker->setIdentifier(name);
                marker->setIconImage(PgmImage::imageWith(PgmImage::markerImageBlue()->image()));
                marker->setMapView(stage.map);
                stage.shapes.push_back(marker);
            }
            port.runFrame();
            const std::weak_ptr<PgmMapView> map = stage.map;
            auto& asked = static_cast<AskedMarker&>(*stage.shapes[1]);
            asked.asked = question;
            asked.work = [&] { each.act(stage, asked); };
            stage.map->setNeedUpdateShapes(true);
            stage.map->setNeedCheckShapeImage(true);
            stage.map->drawShape(asked);
            EXPECT_TRUE(port.runUntilIdle());
            if (stage.map) {
                stage.map->setNeedUpdateShapes(true);
                port.runFrame();
                EXPECT_EQ(layersOf(stage.map), each.left);
            } else {
                EXPECT_TRUE(map.expired());
            }
        }
    }
}

/// Notes whether it was ever drawn on another thread than the main one.
struct ThreadMarker : PgmMarker {
    void updateLayerProperty() override {
        isDrawnElsewhere = isDrawnElsewhere || !MainQueue::isMainThread();
        PgmMarker::updateLayerProperty();
    }
    bool isDrawnElsewhere = false;
};

TEST_F(ShapeRegistryTest, OtherThreadsPutShapesOnAndTakeThemAwayByTheMainThread) {
    constexpr std::size_t perThread = 300;
    const auto map = makeLoadedMap();
    const auto other = makeLoadedMap();
    std::array<std::vector<std::shared_ptr<ThreadMarker>>, 4> shapes;
    for (auto& each : shapes) {
        std::generate_n(std::back_inserter(each), perThread, [] { return make<ThreadMarker>(); });
    }
    const auto onThreads =
        [&](const std::function<void(const std::shared_ptr<ThreadMarker>&, std::size_t)>& work) {
            std::atomic<std::size_t> finished{0};
            std::vector<std::thread> threads;
            for (const auto& own : shapes) {
                threads.emplace_back([&] {
                    for (std::size_t i = 0; i < own.size(); ++i) {
                        work(own[i], i);
                    }
                    ++finished;
                });
            }
            while (!MainQueue::nextDue()) {
                std::this_thread::yield();
            }
            EXPECT_EQ(finished, 0U) << "waiting for the main thread";
            while (finished < threads.size()) {
                port.runFrame();
            }
            for (auto& thread : threads) {
                thread.join();
            }
        };
    onThreads([&](const auto& shape, std::size_t i) {
        i % 2 == 0 ? shape->setMapView(map) : map->addShape(shape);
    });
    EXPECT_EQ(map->shapesMap().size(), 4 * perThread);
    onThreads([&](const auto& shape, std::size_t i) {
        i % 2 == 0 ? shape->setMapView(i % 4 == 0 ? other : nullptr) : map->removeShape(shape);
    });
    EXPECT_TRUE(map->shapesMap().empty());
    EXPECT_EQ(other->shapesMap().size(), perThread);
    for (const auto& own : shapes) {
        EXPECT_TRUE(
            std::none_of(own.begin(), own.end(), [](const auto& each) { return each->isDrawnElsewhere; }));
    }
}

}  // namespace
}  // namespace pelta
