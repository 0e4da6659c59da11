#include <algorithm>
#include <limits>

#include "View/MapFixture.h"

namespace pelta {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr CLLocationCoordinate2D seoul{37.5665, 126.978};

struct TextSource : PgmImageTextDataSource {
    explicit TextSource(std::optional<std::string> text) : text(std::move(text)) {}
    std::optional<std::string> title(PgmShape& /*with*/) override {
        ++calls;
        return text;
    }
    std::optional<std::string> text;
    int calls = 0;
};

struct ViewSource : PgmImageViewDataSource {
    explicit ViewSource(std::shared_ptr<UIView> shown) : shown(std::move(shown)) {}
    std::shared_ptr<UIView> view(PgmShape& /*with*/) override {
        if (const auto work = std::exchange(atNextCall, nullptr)) {
            work();
        }
        return shown;
    }
    std::shared_ptr<UIView> shown;
    std::function<void()> atNextCall;
};

class InfoWindowTest : public MapFixture {
 protected:
    std::shared_ptr<PgmInfoWindow> open(const std::shared_ptr<PgmImageDataSource>& source) {
        auto info = PgmInfoWindow::create();
        info->setImageDataSource(source);
        info->setPosition(seoul);
        info->setMapView(map);
        EXPECT_TRUE(port.runUntilIdle());
        return info;
    }

    static CLLocationCoordinate2D placeOf(const PgmInfoWindow& info) {
        return static_cast<const MLNPointFeature&>(*info.feature()).coordinate();
    }

    static CGVector offsetOf(const PgmInfoWindow& info) {
        const auto& pair = std::get<std::vector<double>>(*info.feature()->attribute("iconOffset"));
        return {pair.at(0), pair.at(1)};
    }

    std::shared_ptr<PgmMapView> map = makeLoadedMap();
};

int alphaAt(const UIImage& image, double x, double y) {
    const auto column = static_cast<std::size_t>(x * image.scale());
    const auto row = static_cast<std::size_t>(y * image.scale());
    return image.pixels()[(row * static_cast<std::size_t>(image.pixelWidth()) + column) * 4 + 3];
}

TEST_F(InfoWindowTest, TheBubbleFitsItsText) {
    // The pictures: 24 points in the middle, 22 on each side, 34 high.
    constexpr double height = 34 + 10;
    constexpr double smallest = 24 + 22 + 22 + 30;
    const std::pair<double, std::string> cases[] = {{1, ""}, {2, "서울특별시청"}, {3, std::string(100, 'w')}};
    for (const auto& [scale, text] : cases) {
        SCOPED_TRACE(text);
        port.setScreenScale(scale);
        const auto source = std::make_shared<TextSource>(text);
        const auto info = open(text.empty() ? nullptr : source);
        const auto& image = info->iconImage()->image();
        const double label = std::ceil(sizeOfText(text, UIFont::systemFont(15)).width * scale) / scale;
        EXPECT_NEAR(image.size().width, std::max(label + 30, smallest), 1 / scale);
        EXPECT_EQ(image.size().height, height);
        EXPECT_EQ(image.scale(), scale);
        // One body with the tip in the middle and nothing beside it; no seam where the pieces meet.
        const double middle = image.size().width / 2;
        for (double x = 6; x < image.size().width - 6; x += 0.5 / scale) {
            ASSERT_EQ(alphaAt(image, x, 20), 255) << x;
        }
        EXPECT_GT(alphaAt(image, middle - 0.5, height - 1.5), 200);
        EXPECT_LT(alphaAt(image, middle - 10, height - 1.5), 40);
        EXPECT_LT(alphaAt(image, middle + 10, height - 1.5), 40);
    }
}

TEST_F(InfoWindowTest, WhatCannotBeDrawnLeavesThePictureAsItIs) {
    const auto text = std::make_shared<TextSource>("one");
    const auto info = open(text);
    const auto first = info->iconImage();
    const auto redraw = [&](const std::shared_ptr<PgmImageDataSource>& source) {
        info->setImageDataSource(source);
        EXPECT_TRUE(port.runUntilIdle());
    };
    for (const auto& nothing : {std::optional<std::string>(), std::optional<std::string>("")}) {
        redraw(std::make_shared<TextSource>(nothing));
    }
    for (const CGSize size : {CGSize{0, 20}, CGSize{20, -1}, CGSize{9000, 1}}) {
        redraw(std::make_shared<ViewSource>(make<UIView>(CGRect{{}, size})));
    }
    redraw(std::make_shared<ViewSource>(nullptr));
    EXPECT_EQ(info->iconImage(), first);

    info->invalidate();
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(info->iconImage()->image().size(), (CGSize{98, 44}))
        << "sources are held weakly: an empty bubble";
    const auto view = std::make_shared<ViewSource>(make<UIView>(CGRect{{}, {33, 21}}));
    redraw(view);
    EXPECT_EQ(info->iconImage()->image().size(), (CGSize{33, 21}));

    const auto longSource = std::make_shared<TextSource>(std::string(30000, 'w'));
    redraw(longSource);
    const auto& cut = info->iconImage()->image();
    EXPECT_LE(cut.size().width, 2000);
    EXPECT_GT(cut.size().width, 1970) << "as much of the text as fits";
}

TEST_F(InfoWindowTest, StandsOnItsMarkerOrAtItsPosition) {
    const auto marker = PgmMarker::markerWithPosition(seoul);
    const auto other = PgmMarker::markerWithPosition({35, 129});
    other->setIconScale(2);
    const auto info = PgmInfoWindow::create();
    for (const auto& shape : std::initializer_list<std::shared_ptr<PgmShape>>{marker, other, info}) {
        shape->setMapView(map);
    }
    EXPECT_EQ(info->feature()->attribute("identifier"), nullptr) << "it is nowhere yet";
    info->setMarker(marker);
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(marker->infoWindow(), info);
    EXPECT_EQ(placeOf(*info), seoul);
    EXPECT_EQ(offsetOf(*info), (CGVector{0, -40}));

    info->setOffset({3, nan});
    EXPECT_EQ(offsetOf(*info), (CGVector{0, -40})) << "seen with the next move or picture";
    info->setMarker(other);
    EXPECT_EQ(marker->infoWindow(), nullptr);
    EXPECT_EQ(offsetOf(*info), (CGVector{3, -80})) << "what is no number counts as 0";
    info->setOffset({3, 1});
    info->invalidate();
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(offsetOf(*info), (CGVector{3, -79}));

    other->setPosition({1, 1});
    EXPECT_EQ(info->position(), (CLLocationCoordinate2D{35, 129})) << "stays where the marker was";
    info->setPosition({1, 2});
    EXPECT_EQ(info->marker(), nullptr);
    EXPECT_EQ(other->infoWindow(), info) << "the marker holds it all the same";
    EXPECT_EQ(offsetOf(*info), (CGVector{3, 1}));
    info->setPosition(std::nullopt);
    EXPECT_EQ(placeOf(*info), (CLLocationCoordinate2D{1, 2})) << "drawn where it was";
    EXPECT_NE(info->feature()->attribute("iconImageName"), nullptr);

    const auto second = PgmInfoWindow::create();
    info->setMarker(marker);
    second->setMarker(marker);
    info->setMarker(nullptr);
    EXPECT_EQ(marker->infoWindow(), second) << "a window lets go only of its own marker";
    EXPECT_EQ(info->position(), std::nullopt);
}

TEST_F(InfoWindowTest, StandsOnTheIconAsItIsDrawn) {
    const auto marker = PgmMarker::markerWithPosition(seoul);
    const auto source = std::make_shared<TextSource>("text");
    const auto former = open(source);
    former->setMarker(marker);
    const auto info = open(source);
    info->setMarker(marker);
    EXPECT_TRUE(port.runUntilIdle());
    const auto picture = PgmImage::imageWith(
        *UIImage::fromPixels(20, 60, 2, std::vector<std::uint8_t>(std::size_t{20} * 60 * 4)));
    struct Case {
        const char* change;
        std::function<void()> make;
        CGVector former, present;
    };
    const CGPoint middle{0.5, 0.5};
    const CGPoint own{3, 4};
    const auto comeBack = [&] {
        marker->setMapView(nullptr);
        marker->setIconScale(2);
        marker->setMapView(map);
    };
    const Case cases[] = {
        {"marker on no map", [] {}, {0, 0}, {0, 0}},
        {"marker put on the map last", [&] { marker->setMapView(map); }, {0, -40}, {0, -40}},
        {"scale", [&] { marker->setIconScale(2); }, {0, -80}, {0, -80}},
        {"picture", [&] { marker->setIconImage(picture); }, {0, -60}, {0, -60}},
        {"anchor, not drawn yet", [&] { marker->setAnchor(middle); }, {0, -60}, {0, -60}},
        {"anchor, drawn", [&] { marker->setTitle("title"); }, {0, -30}, {0, -30}},
        {"angle, not drawn yet", [&] { marker->setAngle(90); }, {0, -30}, {0, -30}},
        {"angle, drawn", [&] { marker->setZIndex(1); }, {0, -10}, {0, -10}},
        {"own offset, not drawn yet", [&] { info->setOffset(own); }, {0, -10}, {0, -10}},
        {"own offset waits on", [&] { marker->setIconScale(1); }, {0, -5}, {0, -5}},
        {"own offset, drawn", [&] { info->invalidate(); }, {0, -5}, {3, -1}},
        {"moved away", [&] { former->setPosition(seoul), marker->setIconScale(4); }, {0, 0}, {3, -16}},
        {"marker back", comeBack, {0, 0}, {3, -6}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.change);
        const auto revision = info->feature()->revision();
        each.make();
        EXPECT_EQ(map->needUpdateShapes(), info->feature()->revision() != revision);
        EXPECT_TRUE(port.runUntilIdle());
        EXPECT_EQ(offsetOf(*former), each.former);
        EXPECT_EQ(offsetOf(*info), each.present);
    }
}

TEST_F(InfoWindowTest, PicturesNoLongerShownLeaveTheStyle) {
    const auto source = std::make_shared<ViewSource>(make<UIView>(CGRect{{}, {8, 4}}));
    const auto info = open(source);
    auto& style = *engineOf(map).style();
    const auto has = [&](const std::shared_ptr<PgmImage>& image) {
        return style.imageForName(image->reuseIdentifier()) != nullptr;
    };
    const auto redraw = [&] {
        info->invalidate();
        EXPECT_TRUE(port.runUntilIdle());
    };
    std::vector<std::shared_ptr<PgmImage>> drawn{info->iconImage()};
    for (int i = 0; i < 500; ++i) {
        info->invalidate();
        if (i % 3 != 0) {
            port.runFrame();
            ASSERT_TRUE(has(info->iconImage()));
            ASSERT_TRUE(i < 2 || i % 3 == 2 || has(drawn.back())) << "until the frame without it is drawn";
            drawn.push_back(info->iconImage());
        }
    }
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(std::count_if(drawn.begin(), drawn.end(), has), 1);

    const auto ownName = PgmImage::imageWith(PgmImage::markerImageRed()->image());
    const auto marker = PgmMarker::markerWithIconImage(ownName);
    marker->setMapView(map);
    EXPECT_TRUE(port.runUntilIdle());
    const auto lent = info->iconImage();
    marker->setIconImage(lent);
    redraw();
    EXPECT_TRUE(has(lent)) << "a marker shows it";
    redraw();
    marker->setIconImage(nullptr);
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_FALSE(has(lent));

    const auto replaced = info->iconImage();
    style.setImage(PgmImage::markerImageBlue()->image(), replaced->reuseIdentifier());
    redraw();
    EXPECT_TRUE(has(replaced)) << "the application's own picture under the same name";

    const auto other = makeLoadedMap();
    const std::function<void()> leavings[] = {
        [&] { map->removeShape(info); }, [&] { info->setMapView(nullptr); }, [&] { info->setMapView(other); },
        [&] { info->setPosition(std::nullopt), info->setMapView(nullptr); }};
    for (const auto& leave : leavings) {
        info->setPosition(seoul);
        info->setMapView(map);
        EXPECT_TRUE(port.runUntilIdle());
        const auto last = info->iconImage();
        EXPECT_TRUE(has(last));
        leave();
        EXPECT_TRUE(port.runUntilIdle());
        EXPECT_FALSE(has(last));
    }
    EXPECT_TRUE(has(ownName) && has(PgmImage::markerImageRed())) << "no other picture is removed";
}

TEST_F(InfoWindowTest, IsDrawnForEachMapAndStyle) {
    const auto source = std::make_shared<TextSource>("text");
    const auto info = open(source);
    const auto first = info->iconImage();
    const auto other = makeMap();
    info->setMapView(other);
    EXPECT_EQ(info->iconImage(), nullptr);
    EXPECT_EQ(info->feature()->attribute("iconImageName"), nullptr);
    EXPECT_TRUE(port.runUntilIdle());
    ASSERT_NE(info->iconImage(), nullptr) << "drawn once the style has loaded";
    EXPECT_EQ(featuresOf(other), info->identifier());
    const int calls = source->calls;
    other->mapView()->setStyleJSON(labelledStyle());
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(source->calls, calls + 1);
    EXPECT_NE(other->mapView()->style()->imageForName(info->iconImage()->reuseIdentifier()), nullptr);
    info->invalidate();
    info->setPosition(seoul);
    info->setImageDataSource(source);
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(source->calls, calls + 4) << "one drawing for each change";
}

TEST_F(InfoWindowTest, OutlivesNobody) {
    auto marker = PgmMarker::markerWithPosition(seoul);
    auto info = PgmInfoWindow::create();
    const std::weak_ptr<PgmInfoWindow> weak = info;
    info->setMarker(marker);
    info.reset();
    EXPECT_FALSE(weak.expired()) << "held by its marker";
    marker->infoWindow()->setMapView(map);
    const std::weak_ptr<PgmMarker> weakMarker = marker;
    marker.reset();
    EXPECT_TRUE(weakMarker.expired());
    EXPECT_FALSE(weak.expired()) << "held by the map";
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(weak.lock()->marker(), nullptr);
    EXPECT_EQ(offsetOf(*weak.lock()), CGVector{});

    const auto source = std::make_shared<ViewSource>(nullptr);
    weak.lock()->setImageDataSource(source);
    source->atNextCall = [&] {
        weak.lock()->setMapView(nullptr);
        map->removeFromSuperview();
        map.reset();
    };
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_TRUE(weak.expired());
}

}  // namespace
}  // namespace pelta
