#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <random>

#include "View/MapFixture.h"

namespace pelta {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr CLLocationCoordinate2D seoul{37.5665, 126.9780};

class Place final : public PgmClusterItem {
 public:
    explicit Place(CLLocationCoordinate2D where) : position_(where) {}
    CLLocationCoordinate2D position() const override { return position_; }

 private:
    CLLocationCoordinate2D position_;
};

using Item = std::shared_ptr<PgmClusterItem>;

Item place(double latitude, double longitude) {
    return std::make_shared<Place>(CLLocationCoordinate2D{latitude, longitude});
}

/// The library's algorithm, counting its runs.
class CountedAlgorithm final : public PgmClusterAlgorithm {
 public:
    std::uint64_t minClusteringCount() const override { return real_.minClusteringCount(); }
    void setMinClusteringCount(std::uint64_t count) override { real_.setMinClusteringCount(count); }
    std::uint64_t maxDistanceBetweenItems() const override { return real_.maxDistanceBetweenItems(); }
    void setMaxDistanceBetweenItems(std::uint64_t distance) override {
        real_.setMaxDistanceBetweenItems(distance);
    }
    void add(Item item) override { real_.add(std::move(item)); }
    void add(std::span<const Item> items) override { real_.add(items); }
    void remove(const Item& item) override { real_.remove(item); }
    void remove(std::span<const Item> items) override { real_.remove(items); }
    void clear() override { real_.clear(); }
    std::vector<std::shared_ptr<PgmCluster>> clustersAtZoom(float zoom) override {
        zooms.push_back(zoom);
        return real_.clustersAtZoom(zoom);
    }

    std::vector<float> zooms;

 private:
    PgmNonHierarchicalDistanceBasedAlgorithm real_;
};

/// Writes down what it is told, and does what a test wants.
class Listener final : public PgmClusterManagerDelegate {
 public:
    void willRenderCluster(PgmClusterManager&, const std::shared_ptr<PgmCluster>& cluster,
                           PgmMarkerOptions& options) override {
        rendered.push_back(std::to_string(cluster->count()) + " items");
        action(options);
    }
    void willRenderClusterItem(PgmClusterManager&, const Item& item, PgmMarkerOptions& options) override {
        rendered.emplace_back(item->position() == options.position() ? "item" : "item elsewhere");
        action(options);
    }
    bool didTapCluster(PgmClusterManager&, const std::shared_ptr<PgmCluster>& cluster,
                       PgmMarkerOptions& options) override {
        tapped.push_back(std::to_string(cluster->count()) + " items");
        action(options);
        return isHandling;
    }
    bool didTapClusterItem(PgmClusterManager&, const Item&, PgmMarkerOptions& options) override {
        tapped.emplace_back("item");
        action(options);
        return isHandling;
    }

    std::vector<std::string> rendered, tapped;
    std::function<void(PgmMarkerOptions&)> action = [](PgmMarkerOptions&) {};
    bool isHandling = true;
};

class ClusterManagerTest : public MapFixture {
 protected:
    void SetUp() override {
        look(seoul, 10);
        manager->setAlgorithm(algorithm);
        manager->setDelegate(listener);
    }

    void look(CLLocationCoordinate2D target, double zoom) {
        map->setCameraPosition(PgmCameraPosition::cameraPosition(target, zoom));
    }

    std::vector<std::shared_ptr<PgmMarker>> markers() const {
        std::vector<std::shared_ptr<PgmMarker>> list;
        for (const auto& [index, shape] : map->shapesMap()) {
            list.push_back(std::dynamic_pointer_cast<PgmMarker>(shape));
        }
        return list;
    }

    /// A pair and a single item, close to Seoul, clustered at zoom 10.
    void addPairAndSingle() {
        const std::array items{place(37.5665, 126.9780), place(37.5666, 126.9781), place(37.6, 127.2)};
        manager->addItems(items);
        port.advance(0.25);
    }

    /// Whether a place, or a copy of it further round the world, is drawn inside the view.
    bool isOnScreen(CLLocationCoordinate2D at) const {
        for (at.longitude -= 720; at.longitude < 900; at.longitude += 360) {
            const auto point = engineOf(map).convertCoordinate(at, nullptr);
            const auto size = map->bounds().size;
            if (point.x >= 0 && point.x <= size.width && point.y >= 0 && point.y <= size.height) {
                return std::isfinite(at.latitude) && std::isfinite(at.longitude);
            }
        }
        return false;
    }

    /// Every cluster in view has one marker, at its place; nothing else within the view has.
    void expectMarkersOfWhatIsVisible() {
        const auto visible = [&](const auto& list) {
            std::vector<std::pair<double, double>> positions;
            for (const auto& each : list) {
                if (const auto at = each->position(); isOnScreen(at)) {
                    positions.emplace_back(at.latitude, at.longitude);
                }
            }
            return positions;
        };
        EXPECT_THAT(visible(markers()), testing::UnorderedElementsAreArray(visible(manager->clusters())));
    }

    std::shared_ptr<PgmMapView> map = makeLoadedMap();
    std::shared_ptr<CountedAlgorithm> algorithm = std::make_shared<CountedAlgorithm>();
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();
    std::shared_ptr<PgmClusterManager> manager = PgmClusterManager::create(map);
};

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

/// Answers what a test wants.
class GivenClusters final : public PgmClusterAlgorithm {
 public:
    std::uint64_t minClusteringCount() const override { return 2; }
    void setMinClusteringCount(std::uint64_t) override {}
    std::uint64_t maxDistanceBetweenItems() const override { return 0; }
    void setMaxDistanceBetweenItems(std::uint64_t) override {}
    void add(Item) override {}
    void add(std::span<const Item>) override {}
    void remove(const Item&) override {}
    void remove(std::span<const Item>) override {}
    void clear() override {}
    std::vector<std::shared_ptr<PgmCluster>> clustersAtZoom(float) override {
        std::vector<std::shared_ptr<PgmCluster>> clusters;
        for (const auto& [longitude, items] : given) {
            clusters.push_back(
                std::make_shared<PgmStaticCluster>(CLLocationCoordinate2D{0, longitude}, items));
        }
        return clusters;
    }

    std::vector<std::pair<double, std::vector<Item>>> given;
};

TEST_F(ClusterManagerTest, GroupingsAreComparedByPositionsAndItems) {
    const auto given = std::make_shared<GivenClusters>();
    manager->setAlgorithm(given);
    manager->setSync(true);
    look({0, 0}, 5);
    const Item a = place(0, 0), b = place(0, 0), c = place(0, 0), d = place(0, 0);
    using Groups = decltype(given->given);
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
        given->given = start;
        manager->Pgmalidate();
        listener->rendered.clear();
        given->given = test.groups;
        manager->addItem(nullptr);
        EXPECT_EQ(listener->rendered, test.rendered);
        EXPECT_EQ(markers().size(), test.groups.size());
    }
}

/// Steps that grow with the square of the count would take minutes here.
TEST_F(ClusterManagerTest, ManyClustersMayBeNearEachOtherOrAtOnePosition) {
    constexpr std::size_t count = 100'000;
    std::mt19937 random(1);
    std::uniform_real_distribution<double> north(37.4, 37.6), east(126.9, 127.1);
    std::vector<Item> items;
    for (std::size_t i = 0; i < count; ++i) {
        items.push_back(place(north(random), east(random)));
        items.push_back(place(37.5, 127));
    }
    look({0, 0}, 10);
    algorithm->setMaxDistanceBetweenItems(0);
    algorithm->setMinClusteringCount(count * 10);
    manager->setSync(true);
    manager->addItems(items);
    algorithm->remove(std::span(items).first(2));
    manager->addItem(place(37.5, 127.01));
    ASSERT_EQ(manager->clusters().size(), 2 * count - 1);
    EXPECT_EQ(manager->clusters().back()->position().longitude, 127.01);
    EXPECT_THAT(markers(), IsEmpty());
}

TEST_F(ClusterManagerTest, PanningAddsAndTheNextClusteringClearsUp) {
    for (double longitude = 120; longitude < 134; longitude += 0.8) {
        manager->addItem(place(37.5, longitude));
    }
    port.advance(0.25);
    const auto first = markers();
    EXPECT_EQ(first.size(), 1U);
    const auto firstPosition = first[0]->position();
    std::size_t count = first.size();
    for (double longitude = seoul.longitude; longitude < 129; longitude += 0.3) {
        look({37.5, longitude}, 10.2);
        expectMarkersOfWhatIsVisible();
        EXPECT_GE(markers().size(), count);
        count = markers().size();
    }
    EXPECT_EQ(count, 3U) << "one stays behind for each that came";
    look(seoul, 10.2);
    EXPECT_EQ(markers().size(), count) << "what was there is found again";

    algorithm->add(place(0, 0));
    look({37.5, 127.2}, 11);
    EXPECT_EQ(markers(), first) << "and keeps the very marker at its position";
    EXPECT_EQ(first[0]->position(), firstPosition);
    port.runFrame();
    EXPECT_EQ(featuresOf(map).size(), 1U);
}

/// Counts how often it hears that another part of the world is visible.
class AreaCounter final : public PgmMapDelegate {
 public:
    void mapViewDidChangeVisibleArea(PgmMapView& map) override {
        if (++count == 1 && again) {
            map.setContentInset(*again);
        }
    }
    int count = 0;
    std::optional<UIEdgeInsets> again;  // set from within the first call
};

TEST_F(ClusterManagerTest, ClustersAreShownWhereverTheyAreOnTheScreen) {
    constexpr CGRect small{{0, 0}, {200, 150}};
    struct Case {
        const char* what;
        CGRect frame;
        std::function<void()> start, change;
        int areaEvents;  // -1: several
    };
    const auto counter = std::make_shared<AreaCounter>();
    const auto lookTurned = [this](double latitude, double longitude, double zoom) {
        map->setCameraPosition(PgmCameraPosition::create({latitude, longitude}, zoom, 50, 30));
    };
    const auto stay = [this] { look({37, 127}, 4); };
    const std::vector<Case> cases{
        {"west of the antimeridian", window->bounds(), stay,
         [this] {
             look({37, -170}, 1.5);
         },
         0},
        {"east of it", window->bounds(), stay,
         [this] {
             look({37, 175}, 1.5);
         },
         0},
        {"across it at one zoom", window->bounds(),
         [this] {
             look({37, 160}, 4);
         },
         [this] {
             look({37, 179}, 4);
         },
         0},
        {"a view wider than the world", window->bounds(), stay,
         [this] {
             map->setMinimumZoomLevel(0), look({10, 100}, 0);
         },
         0},
        {"turned and tilted", window->bounds(), stay, [&] { lookTurned(20, -178, 2); }, 0},
        {"the same groups from further away", window->bounds(),
         [this] {
             look({35, 125}, 6.4);
         },
         [this] {
             look({35, 125}, 4.6);
         },
         0},
        {"the view grows", small, stay, [this] { map->setFrame(window->bounds()); }, 1},
        {"the view is laid out late", {}, stay, [this] { map->setFrame(window->bounds()); }, 1},
        {"another inset", window->bounds(), stay,
         [this] {
             map->setContentInset({0, 500, 0, 0});
         },
         1},
        {"an inset that a listener changes again", window->bounds(), stay,
         [&] {
             counter->again = UIEdgeInsets{0, 500, 0, 0};
             map->setContentInset({0, 100, 0, 0});
         },
         2},
        {"an inset over time", window->bounds(), stay,
         [this] {
             engineOf(map).setContentInset({0, 0, 400, 0}, true, {});
         },
         -1},
        {"inset and size in one frame", small, stay,
         [this] {
             map->setContentInset({50, 0, 0, 0}), map->setFrame(window->bounds());
         },
         1},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        map = PgmMapView::create(test.frame);
        window->addSubview(map);
        manager = PgmClusterManager::create(map);
        counter->again.reset();
        map->setDelegate(counter);
        test.start();
        port.advance(1);
        for (int north = -75; north < 80; north += 10) {
            for (int east = -175; east < 180; east += 10) {
                manager->algorithm()->add(place(north, east));
            }
        }
        manager->algorithm()->add(place(37, -538));
        manager->Pgmalidate();
        expectMarkersOfWhatIsVisible();
        const auto before = markers().size();
        counter->count = 0;
        test.change();
        port.advance(1);
        expectMarkersOfWhatIsVisible();
        EXPECT_GT(markers().size(), before);
        EXPECT_TRUE(test.areaEvents < 0 ? counter->count > 5 : counter->count == test.areaEvents)
            << counter->count;
        map->removeFromSuperview();
    }
}

TEST_F(ClusterManagerTest, WhateverTheCameraDoesEachVisibleClusterHasOneMarker) {
    std::mt19937 random(1);
    std::vector<Item> items;
    for (int i = 0; i < 3000; ++i) {
        items.push_back(
            place(std::normal_distribution(37.0, 1.0)(random), std::normal_distribution(127.0, 1.0)(random)));
    }
    manager->setSync(true);
    manager->addItems(items);
    std::uniform_real_distribution<double> shift(-1, 1);
    for (int step = 0; step < 60; ++step) {
        SCOPED_TRACE(step);
        look({37 + shift(random), 127 + shift(random)}, 6 + 4 * (1 + shift(random)));
        if (step % 10 == 0) {
            manager->removeItem(items[static_cast<std::size_t>(step)]);
        }
        expectMarkersOfWhatIsVisible();
    }
    EXPECT_GT(manager->clusters().size(), 10U);
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
        {"move the camera in",
         [this] {
             look({37.6, 127.2}, 19.6);
         }},
        {"move it aside",
         [this] {
             look({37.6, 127.2}, map->cameraPosition()->zoom());
         }},
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
    const auto isForgotten = [this](const char* what, auto&& release) {
        SCOPED_TRACE(what);
        addPairAndSingle();
        manager->addItem(place(38, 127));
        const std::weak_ptr<PgmMarker> marker = markers()[0];
        const std::weak_ptr<PgmClusterManager> oldManager = manager;
        release();
        port.advance(1);
        EXPECT_TRUE(marker.expired());
        EXPECT_EQ(oldManager.expired(), manager == nullptr);
    };
    isForgotten("manager", [this] { manager = nullptr; });
    EXPECT_THAT(markers(), IsEmpty());
    look(seoul, 12);

    manager = PgmClusterManager::create(map);
    isForgotten("view and then manager", [this] {
        map->removeFromSuperview();
        map = nullptr;
        manager->Pgmalidate();
        manager = nullptr;
    });
    manager = PgmClusterManager::create(nullptr);
    manager->addItem(place(1, 1));
    port.advance(1);
    EXPECT_THAT(manager->clusters(), IsEmpty());
}

TEST_F(ClusterManagerTest, PositionsBeyondTheWorldAreLeftOut) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::nan("");
    manager->setSync(true);
    algorithm->setMinClusteringCount(1);
    const std::vector<CLLocationCoordinate2D> odd{{nan, 0},         {0, nan},     {infinity, 0}, {89, 0},
                                                  {-89.9, 0},       {91, 181},    {-1000, -181}, {0, 1e300},
                                                  {-infinity, nan}, {85.06, 180}, {0, -540.1}};
    for (const auto& [latitude, longitude] : odd) {
        manager->addItem(place(latitude, longitude));
    }
    for (const double zoom : {1.0, 5.0, 20.0}) {
        for (const auto center : {CLLocationCoordinate2D{0, 0}, {85, 179.9}, {-85, -179.9}}) {
            look(center, zoom);
            manager->Pgmalidate();
            port.runFrame();
            expectMarkersOfWhatIsVisible();
        }
    }
    manager->clearItems();
    EXPECT_THAT(markers(), IsEmpty());
}

}  // namespace
}  // namespace pelta
