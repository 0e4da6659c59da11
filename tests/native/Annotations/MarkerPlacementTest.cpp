#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

#include "View/MapFixture.h"

namespace pelta {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

struct Placement {
    const char* name;
    int pixelWidth, pixelHeight;
    double pictureScale, screenScale;
    CGPoint anchor;
    double angle, iconScale, titleSize, titleMargin;
};

class MarkerPlacementTest : public MapFixture {
 protected:
    std::shared_ptr<PgmMarker> place(const Placement& placement) {
        port.setScreenScale(placement.screenScale);
        const auto bytes = static_cast<std::size_t>(placement.pixelWidth * placement.pixelHeight) * 4;
        const auto picture = UIImage::fromPixels(placement.pixelWidth, placement.pixelHeight,
                                                 placement.pictureScale, std::vector<std::uint8_t>(bytes));
        auto marker = PgmMarker::markerWithIconImage(PgmImage::imageWith(*picture));
        marker->setAnchor(placement.anchor);
        marker->setAngle(placement.angle);
        marker->setIconScale(placement.iconScale);
        marker->setTitleSize(placement.titleSize);
        marker->setTitleMargin(placement.titleMargin);
        marker->setMapView(map);
        return marker;
    }

    std::shared_ptr<PgmMapView> map = makeLoadedMap();
};

/// Where the engine draws a point of the icon, given in points from the picture's middle: it shifts the
/// picture by the offset, scales it, and turns it about the position.
CGPoint drawnPoint(const MLNSymbolStyleLayer& layer, CGPoint fromMiddle) {
    const double scale = layer.iconScale()->constant();
    const double angle = layer.iconRotation()->constant() * 3.14159265358979323846 / 180;
    const auto offset = layer.iconOffset()->constant();
    const double x = (fromMiddle.x + offset.dx) * scale;
    const double y = (fromMiddle.y + offset.dy) * scale;
    return {x * std::cos(angle) - y * std::sin(angle), x * std::sin(angle) + y * std::cos(angle)};
}

TEST_F(MarkerPlacementTest, TipOnThePositionTitleBelowInfoWindowAbove) {
    const Placement cases[] = {
        {"pin", 60, 80, 2, 2, {0.5, 1}, 0, 1, 12, 0},
        {"pin at one pixel a point", 31, 41, 1, 1, {0.5, 1}, 0, 1, 12, 3},
        {"turned pin", 60, 80, 2, 2, {0.5, 1}, 30, 1, 12, 0},
        {"top left, turned left", 64, 20, 1, 2, {0, 0}, -75, 0.7, 16, 1},
        {"outside of the picture", 33, 47, 3, 3, {1.5, -0.5}, 123.4, 2.2, 14, 10},
        {"several turns", 33, 47, 1, 1.25, {0.2, 0.9}, 725, 1, 11, -2},
        {"no icon size", 60, 80, 2, 2, {0.5, 1}, 30, 0, 12, 0},
        {"title on the icon", 60, 80, 2, 2, {0.5, 1}, 0, 1, 0.5, -5},
    };
    for (const auto& placement : cases) {
        SCOPED_TRACE(placement.name);
        const auto marker = place(placement);
        const auto& layer = *marker->symbolLayer();
        const double width = placement.pixelWidth / placement.pictureScale;
        const double height = placement.pixelHeight / placement.pictureScale;

        const auto tip =
            drawnPoint(layer, {(placement.anchor.x - 0.5) * width, (placement.anchor.y - 0.5) * height});
        EXPECT_NEAR(tip.x, 0, 1e-9);
        EXPECT_NEAR(tip.y, 0, 1e-9);

        double left = infinity, right = -infinity, top = infinity, bottom = -infinity;
        for (const auto& [x, y] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}}) {
            const auto corner = drawnPoint(layer, {x * width / 2, y * height / 2});
            left = std::min(left, corner.x);
            right = std::max(right, corner.x);
            top = std::min(top, corner.y);
            bottom = std::max(bottom, corner.y);
        }
        const double pixel = 1 / placement.screenScale;
        const auto offset = layer.textOffset()->constant();
        const CGPoint title{offset.dx * placement.titleSize, offset.dy * placement.titleSize};
        EXPECT_NEAR(title.x, (left + right) / 2, pixel / 2 + 1e-9);
        EXPECT_NEAR(title.y, bottom + placement.titleMargin + 4 * pixel, pixel / 2 + 1e-9);
        EXPECT_NEAR(title.y / pixel, std::round(title.y / pixel), 1e-6) << "a whole pixel";

        const auto window = marker->mInfoWindowOffset();
        EXPECT_NEAR(window.dx, (left + right) / 2, pixel / 2 + 1e-9);
        EXPECT_NEAR(window.dy, top, pixel / 2 + 1e-9);
    }
}

TEST_F(MarkerPlacementTest, ANumberThatIsNotFiniteKeepsWhatWasDrawn) {
    const Placement placement{"pin", 60, 80, 2, 2, {0.5, 1}, 30, 1.5, 14, 5};
    const auto drawn = [](const PgmMarker& marker) {
        const auto& layer = *marker.symbolLayer();
        const auto icon = layer.iconOffset()->constant();
        const auto title = layer.textOffset()->constant();
        const auto window = marker.mInfoWindowOffset();
        std::vector numbers{icon.dx, icon.dy, title.dx, title.dy, window.dx, window.dy};
        for (const auto& number : {layer.iconScale(), layer.iconRotation(), layer.iconOpacity(),
                                   layer.textOpacity(), layer.textFontSize(), layer.maximumTextWidth()}) {
            numbers.push_back(number->constant());
        }
        return numbers;
    };
    using M = PgmMarker;
    const std::tuple<void (M::*)(double), double (M::*)() const, double> cases[] = {
        {&M::setIconScale, &M::iconScale, 2},
        {&M::setAngle, &M::angle, 60},
        {&M::setAlpha, &M::alpha, 0.5},
        {&M::setTitleSize, &M::titleSize, 20},
        {&M::setTitleMaxWidth, &M::titleMaxWidth, 70},
        {&M::setTitleMargin, &M::titleMargin, 9},
    };
    for (const auto& [set, get, good] : cases) {
        SCOPED_TRACE(good);
        const auto marker = place(placement);
        marker->setTitleMaxWidth(50);
        const auto write = [&, set = set](PgmMarker& target, double value) {
            (target.*set)(value);
            target.setIsTitleFlat(!target.isTitleFlat());  // Some wait for another change.
        };
        const auto before = drawn(*marker);
        for (const double bad : {nan, infinity, -infinity}) {
            write(*marker, bad);
            EXPECT_EQ(drawn(*marker), before) << bad;
            EXPECT_TRUE(std::isnan(bad) ? std::isnan((*marker.*get)()) : (*marker.*get)() == bad);
        }
        write(*marker, good);
        EXPECT_NE(drawn(*marker), before);

        const auto neverDrawn = PgmMarker::create();
        (*neverDrawn.*set)(nan);
        neverDrawn->setMapView(map);
        const auto fresh = PgmMarker::create();
        fresh->setMapView(map);
        EXPECT_EQ(drawn(*neverDrawn), drawn(*fresh)) << "as a new marker";
    }
}

}  // namespace
}  // namespace pelta
