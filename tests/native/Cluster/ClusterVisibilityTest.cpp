#include <cmath>
#include <limits>

#include "Cluster/ClusterManagerFixture.h"

namespace pelta {
namespace {

using testing::IsEmpty;

class ClusterVisibilityTest : public ClusterManagerFixture {};

TEST_F(ClusterVisibilityTest, PanningAddsAndTheNextClusteringClearsUp) {
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
    EXPECT_EQ(featuresOf(map), first[0]->identifier());
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

TEST_F(ClusterVisibilityTest, ClustersAreShownWhereverTheyAreOnTheScreen) {
    constexpr CGRect small{{0, 0}, {200, 150}};
    struct Case {
        const char* what;
        CGRect frame;
        std::function<void()> start, change;
        int areaEvents;  // -1: several
    };
    const auto counter = std::make_shared<AreaCounter>();
    const auto go = [this](double latitude, double longitude, double zoom, double tilt = 0) {
        return [=, this] {
            map->setCameraPosition(PgmCameraPosition::create({latitude, longitude}, zoom, tilt, tilt / 2));
        };
    };
    const auto inset = [this](const UIEdgeInsets& insets) {
        return [=, this] { map->setContentInset(insets); };
    };
    const auto grow = [this] { map->setFrame(window->bounds()); };
    const auto stay = go(37, 127, 4);
    constexpr UIEdgeInsets wide{0, 500, 0, 0}, high{0, 0, 400, 0};
    const CGRect all = window->bounds();
    const std::vector<Case> cases{
        {"west of the antimeridian", all, stay, go(37, -170, 1.5), 0},
        {"east of it", all, stay, go(37, 175, 1.5), 0},
        {"across it at one zoom", all, go(37, 160, 4), go(37, 179, 4), 0},
        {"a view wider than the world", all, stay, [&] { map->setMinimumZoomLevel(0), go(10, 100, 0)(); }, 0},
        {"turned and tilted", all, stay, go(20, -178, 2, 50), 0},
        {"the same groups from further away", all, go(35, 125, 6.4), go(35, 125, 4.6), 0},
        {"the view grows", small, stay, grow, 1},
        {"the view is laid out late", {}, stay, grow, 1},
        {"another inset", all, stay, inset(wide), 1},
        {"an inset that a listener changes again", all, stay,
         [&] {
             counter->again = wide, inset({0, 100, 0, 0})();
         },
         2},
        {"an inset over time", all, stay, [&] { engineOf(map).setContentInset(high, true, {}); }, -1},
        {"inset and size in one frame", small, stay,
         [&] {
             inset({50, 0, 0, 0})(), grow();
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

TEST_F(ClusterVisibilityTest, PositionsBeyondTheWorldAreLeftOut) {
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

TEST_F(ClusterVisibilityTest, ViewsOfAnySizeAreClustered) {
    for (const CGSize size :
         {CGSize{400, 5e-324}, CGSize{5e-324, 300}, CGSize{400, 1e-300}, CGSize{1e300, 1e300}}) {
        SCOPED_TRACE(size.height);
        const auto view =
            PgmMapView::create({{}, size}, PgmMapOptions::create(PgmCameraPosition::create(seoul, 7, 30, 0)));
        const auto sized = PgmClusterManager::create(view);
        sized->addItem(place(seoul.latitude, seoul.longitude));
        sized->Pgmalidate();
        EXPECT_EQ(sized->clusters().size(), 1U);
        EXPECT_NEAR(view->cameraPosition()->zoom(), 7, 1e-6);
    }
}

}  // namespace
}  // namespace pelta
