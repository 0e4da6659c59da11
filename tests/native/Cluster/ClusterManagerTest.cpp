#include <array>
#include <cmath>

#include "Cluster/ClusterManagerFixture.h"

namespace pelta {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ClusterManagerTest : public ClusterManagerFixture {};

TEST_F(ClusterManagerTest, ABurstOfChangesIsClusteredOnceAfterTheLast) {
    for (int i = 0; i < 100; ++i) {
        manager->addItem(place(37.5 + i * 1e-5, 127));
    }
    port.advance(0.15);
    const auto last = place(37.5, 127);
    manager->addItem(last);
    port.advance(0.19);
    EXPECT_THAT(algorithm->zooms, IsEmpty());
    port.advance(0.02);
    EXPECT_THAT(algorithm->zooms, ElementsAre(10));
    EXPECT_THAT(listener->rendered, ElementsAre("101 items"));
    EXPECT_EQ(markers().size(), 1U);

    manager->removeItem(last);
    manager->setSync(true);
    manager->addItem(last);
    EXPECT_THAT(algorithm->zooms, ElementsAre(10, 10)) << "sync: at once";
    manager->clearItems();
    EXPECT_THAT(markers(), IsEmpty());
}

TEST_F(ClusterManagerTest, AnotherRoundedZoomIsClusteredAnew) {
    addPairAndSingle();
    algorithm->zooms.clear();
    struct Case {
        double zoom;
        bool immediately;
        std::vector<float> atOnce, later;
    };
    const std::vector<Case> cases{
        {10.1, true, {}, {}},   {10.4, true, {}, {}},    {10.6, true, {11}, {}}, {11.4, true, {}, {}},
        {10.4, true, {10}, {}}, {12.6, false, {}, {13}}, {13.49, false, {}, {}},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.zoom);
        manager->setCameraChangedImmy(testCase.immediately);
        look(seoul, testCase.zoom);
        EXPECT_EQ(std::exchange(algorithm->zooms, {}), testCase.atOnce);
        port.advance(0.25);
        EXPECT_EQ(std::exchange(algorithm->zooms, {}), testCase.later);
    }
}

TEST_F(ClusterManagerTest, AnEqualResultDrawsNothingUnlessForced) {
    algorithm->add(place(37.5, 126.8));
    addPairAndSingle();
    const auto before = markers();
    const Item single = manager->clusters()[1]->items()[0];
    listener->rendered.clear();
    manager->setSync(true);
    // The same groups in another order.
    algorithm->remove(single);
    algorithm->add(place(std::nan(""), std::nan("")));
    manager->addItem(single);
    EXPECT_THAT(listener->rendered, IsEmpty());
    EXPECT_EQ(markers(), before);

    manager->Pgmalidate();
    EXPECT_THAT(listener->rendered, ElementsAre("2 items", "item", "item"));
    EXPECT_EQ(markers(), before) << "markers are used again";
}

TEST_F(ClusterManagerTest, GroupingsAreComparedByPositionsAndItems) {
    manager->setSync(true);
    look({0, 0}, 5);
    const Item a = place(0, 0), b = place(0, 0), c = place(0, 0), d = place(0, 0);
    using Groups = CountedAlgorithm::Groups;
    const Groups start{{0, {a, b}}, {1, {c}}, {1, {d}}};
    struct Case {
        const char* what;
        Groups groups;
        std::vector<std::string> rendered;
    };
    for (const Case& test :
         {Case{"in another order", {{1, {d}}, {0, {b, a}}, {1, {c}}}, {}},
          Case{"one moved", {{0, {a, b}}, {1, {c}}, {1.5, {d}}}, {"item elsewhere"}},
          Case{"one with other items", {{0, {a, c}}, {1, {c}}, {1, {d}}}, {"2 items"}},
          Case{"one with more", {{0, {a, b, d}}, {1, {c}}, {1, {d}}}, {"3 items"}},
          Case{"items at one position changed", {{0, {a, b}}, {1, {c}}, {1, {a}}}, {"item elsewhere"}},
          Case{"the same one twice", {{0, {a, b}}, {1, {c}}, {1, {c}}}, {"item elsewhere"}},
          Case{"one less", {{0, {a, b}}, {1, {c}}}, {}}}) {
        SCOPED_TRACE(test.what);
        algorithm->given = start;
        manager->Pgmalidate();
        listener->rendered.clear();
        algorithm->given = test.groups;
        manager->addItem(nullptr);
        EXPECT_EQ(listener->rendered, test.rendered);
        EXPECT_EQ(markers().size(), test.groups.size());
    }
}

/// Steps that grow with the square of the count would take minutes here.
TEST_F(ClusterManagerTest, ManyClustersMayBeNearEachOtherOrAtOnePosition) {
    constexpr std::size_t count = 100'000;
    std::vector<Item> items;
    for (std::size_t i = 0; i < count; ++i) {
        items.push_back(place(37.4 + 1e-6 * static_cast<double>(i), 127));
        items.push_back(place(37.5, 127));
    }
    look({0, 0}, 10);
    algorithm->setMaxDistanceBetweenItems(0);
    algorithm->setMinClusteringCount(count * 10);
    manager->setSync(true);
    manager->addItems(items);
    algorithm->remove(items[0]);  // One is replaced: as many as before.
    manager->addItem(place(37.5, 127.01));
    ASSERT_EQ(manager->clusters().size(), 2 * count);
    EXPECT_EQ(manager->clusters().back()->position().longitude, 127.01);
    EXPECT_THAT(markers(), IsEmpty());
}

TEST_F(ClusterManagerTest, MarkersShowAClusterOrItsItem) {
    struct Case {
        std::uint64_t minimum;
        std::vector<std::string> rendered;
        bool hasItemAnIcon;
    };
    addPairAndSingle();
    for (const Case& testCase :
         {Case{2, {"2 items", "item"}, false}, Case{1, {"2 items", "1 items"}, true},
          Case{0, {"2 items", "1 items"}, true}, Case{3, {"item", "item", "item"}, false}}) {
        SCOPED_TRACE(testCase.minimum);
        listener->rendered.clear();
        algorithm->setMinClusteringCount(testCase.minimum);
        // Titles show that a marker which is used again starts from the defaults.
        listener->action = [&](PgmMarkerOptions& options) {
            EXPECT_EQ(options.title(), "");
            options.setTitle("T");
        };
        manager->Pgmalidate();
        EXPECT_EQ(listener->rendered, testCase.rendered);
        for (const auto& marker : markers()) {
            const bool isSingle = marker->position().longitude > 127;
            const auto icon = manager->clusterIconGenerator()->iconForCount(isSingle ? 1 : 2);
            const bool hasIcon = isSingle ? testCase.hasItemAnIcon : testCase.minimum < 3;
            EXPECT_EQ(marker->iconImage(), hasIcon ? icon : PgmImage::markerImageRed());
            EXPECT_EQ(marker->title(), "T");
            EXPECT_EQ(marker->mapView(), map);
        }
    }
}

TEST_F(ClusterManagerTest, TapsReachTheManagersDelegateAlone) {
    addPairAndSingle();
    listener->action = [](PgmMarkerOptions& options) { options.setTitle("tapped"); };
    for (const bool isHandling : {true, false}) {
        listener->isHandling = isHandling;
        for (const auto& marker : markers()) {
            EXPECT_EQ(marker->touchEvent()(*marker), isHandling);
            EXPECT_EQ(marker->title(), "tapped");
        }
    }
    EXPECT_THAT(listener->tapped, ElementsAre("2 items", "item", "2 items", "item"));
    // A marker that was kept belongs to the cluster of the newest result.
    manager->setSync(true);
    manager->addItem(place(38.2, 126.5));
    EXPECT_TRUE(markers()[0]->touchEvent()(*markers()[0]) == listener->isHandling);
    EXPECT_EQ(listener->tapped.back(), "2 items");
    const auto orphan = markers()[0];
    listener = nullptr;
    EXPECT_FALSE(orphan->touchEvent()(*orphan)) << "no delegate";
    manager = nullptr;
    EXPECT_FALSE(orphan->touchEvent()(*orphan)) << "no manager";
}

TEST_F(ClusterManagerTest, CallbacksMayDoAnything) {
    constexpr CLLocationCoordinate2D aside{37.6, 127.2};
    const auto removeShapes = [this] {
        for (const auto& marker : markers()) {
            marker->setMapView(nullptr);
        }
    };
    const std::vector<std::pair<const char*, std::function<void()>>> actions{
        {"remove items at once", [this] { manager->setSync(true), manager->clearItems(); }},
        {"remove shapes", removeShapes},
        {"force a clustering", [this] { manager->Pgmalidate(); }},
        {"move the camera out", [this] { look(seoul, 13); }},
        {"move the camera in", [&] { look(aside, 19.6); }},
        {"move it aside", [&] { look(aside, map->cameraPosition()->zoom()); }},
        {"release the delegate", [this] { listener = nullptr; }},
        {"release the manager", [this] { manager = nullptr; }},
        {"release the map", [this] { map->removeFromSuperview(), map = nullptr; }},
    };
    for (const auto& [name, action] : actions) {
        for (const bool isCameraMoving : {false, true}) {
            SCOPED_TRACE(testing::Message() << name << (isCameraMoving ? " while the camera moves" : ""));
            map = makeLoadedMap();
            look(seoul, 10);
            manager = PgmClusterManager::create(map);
            listener = std::make_shared<Listener>();
            manager->setDelegate(listener);
            bool isArmed = !isCameraMoving;
            bool hasActed = false;
            // A copy: the listener may go while it is called.
            listener->action = [&isArmed, &hasActed, act = action](PgmMarkerOptions&) {
                if (std::exchange(isArmed, false)) {
                    hasActed = true;
                    act();
                }
            };
            addPairAndSingle();
            isArmed = isCameraMoving;
            if (map) {
                look(seoul, 19.6);  // where the pair comes apart
            }
            port.advance(1);
            EXPECT_TRUE(hasActed);
            if (map && manager) {
                const auto zoom = std::round(map->cameraPosition()->zoom());
                const auto atRest = manager->algorithm()->clustersAtZoom(static_cast<float>(zoom));
                EXPECT_EQ(manager->clusters().size(), atRest.size());
                expectMarkersOfWhatIsVisible();
            }
            if (map && (!manager || manager->clusters().empty())) {
                EXPECT_THAT(markers(), IsEmpty()) << "they went with what they stood for";
            }
        }
    }
}

TEST_F(ClusterManagerTest, ReleasesEndWhatWasAskedFor) {
    addPairAndSingle();
    manager->addItem(place(38, 127));
    std::weak_ptr<PgmMarker> marker = markers()[0];
    manager = nullptr;
    port.advance(1);
    EXPECT_TRUE(marker.expired());
    EXPECT_THAT(markers(), IsEmpty());

    manager = PgmClusterManager::create(map);
    addPairAndSingle();
    marker = markers()[0];
    map->removeFromSuperview();
    map = nullptr;
    manager->Pgmalidate();
    manager = nullptr;
    EXPECT_TRUE(marker.expired());
}

}  // namespace
}  // namespace pelta
