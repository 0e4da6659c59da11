#include <cmath>
#include <set>

#include <pelta/Platform/UIGraphics.h>

#include "View/MapFixture.h"

namespace pelta {
namespace {

using Generator = PgmDefaultClusterIconGenerator;

class ClusterIconTest : public MapFixture {
 protected:
    static std::vector<UIColor> threeColors() { return {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}; }

    /// A picture of 40 × 30 points of one shade of grey, a pixel a point.
    static UIImage picture(std::uint8_t shade) {
        return *UIImage::fromPixels(40, 30, 1, std::vector<std::uint8_t>(40 * 30 * 4, shade));
    }

    /// The colour at a point of an icon, as near as bytes are.
    static UIColor colorAt(const UIImage& image, double x, double y) {
        const auto column = static_cast<std::size_t>(x * image.scale());
        const auto row = static_cast<std::size_t>(y * image.scale());
        const auto place = (row * static_cast<std::size_t>(image.pixelWidth()) + column) * 4;
        const auto part = [&](std::size_t i) { return std::round(image.pixels()[place + i] / 2.55) / 100; };
        return {part(0), part(1), part(2), part(3)};
    }
};

TEST_F(ClusterIconTest, BadgesHaveTheSizeAndColorOfTheirBucket) {
    struct Case {
        const char* of;
        std::shared_ptr<Generator> generator;
        std::int64_t count;
        std::size_t bucket;
        UIColor color;
    };
    const auto usual = Generator::create();
    const auto three = Generator::createWithColors(threeColors(), {10, 50, 100, 200, 500});
    const auto single = Generator::createWithColors(threeColors(), {7});
    const auto empty = Generator::createWithColors({}, {1, 2});
    const auto colors = kPgmCriteriaBackgroundColors();
    const Case cases[] = {
        {"default", usual, 0, 0, colors[0]},          {"default", usual, 49, 0, colors[0]},
        {"default", usual, 50, 1, colors[1]},         {"default", usual, 499, 3, colors[3]},
        {"default", usual, 500, 4, colors[4]},        {"default", usual, INT64_MAX, 4, colors[4]},
        {"three colours", three, 99, 1, {0, 1, 0}},   {"three colours", three, 9999, 2, {0, 0, 1}},
        {"one criterion", single, 999, 0, {1, 0, 0}}, {"no colours", empty, 2, 1, colors[1]},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testing::Message() << testCase.of << ' ' << testCase.count);
        const UIImage image = testCase.generator->iconForCount(testCase.count)->image();
        const CGSize text = sizeOfText(std::to_string(testCase.count), UIFont::boldSystemFont(16));
        const double diameter =
            std::max({text.width, text.height, 20.0}) + static_cast<double>(testCase.bucket) * 3 + 20;
        EXPECT_EQ(image.scale(), 2);
        EXPECT_NEAR(image.size().width, diameter, 0.5);
        EXPECT_NEAR(image.size().height, diameter, 0.5);
        EXPECT_EQ(colorAt(image, diameter / 2, 3), testCase.color);
        EXPECT_EQ(colorAt(image, 1, 1).alpha, 0) << "beside the oval";
        int white = 0;
        for (double x = diameter / 2 - text.width / 2; x < diameter / 2 + text.width / 2; x += 0.5) {
            white += colorAt(image, x, diameter / 2) == UIColor::white() ? 1 : 0;
        }
        EXPECT_GT(white, 0) << "the count in the middle";
    }
}

TEST_F(ClusterIconTest, PicturesCarryTheCountAndKeepTheirSize) {
    const auto generator = Generator::createWithImages({picture(51), picture(255)}, {2, 50, 100});
    for (const auto& [count, shade] :
         std::map<std::int64_t, double>{{2, 0.2}, {49, 0.2}, {50, 1}, {5000, 1}}) {
        const UIImage image = generator->iconForCount(count)->image();
        EXPECT_EQ(image.size(), (CGSize{40, 30}));
        EXPECT_EQ(colorAt(image, 2, 2).alpha, shade) << count;
    }
    EXPECT_FALSE(Generator::createWithImages({}, {5})->backgroundImages().has_value());
}

TEST_F(ClusterIconTest, AHundredCountsAreAHundredPicturesDrawnOnce) {
    const auto generator = Generator::create();
    std::set<std::string> names;
    for (std::int64_t count = 0; count < 100; ++count) {
        const auto icon = generator->iconForCount(count);
        names.insert(icon->reuseIdentifier());
        EXPECT_EQ(generator->iconForCount(count), icon);
    }
    EXPECT_EQ(names.size(), 100U);
    // On a screen of this scale the picture would need a bitmap beyond what the platform draws.
    port.setScreenScale(100);
    const auto wide = *UIImage::fromPixels(400, 1, 1, std::vector<std::uint8_t>(400 * 4, 255));
    EXPECT_EQ(Generator::createWithImages({wide}, {1})->iconForCount(1), PgmImage::markerImageRed());
}

TEST_F(ClusterIconTest, ProgrammingErrorsStopTheProcess) {
    for (const auto& criteria : std::vector<Generator::Criteria>{{}, {50, 10}, {0, 10}}) {
        EXPECT_DEATH((void)Generator::createWithColors(threeColors(), criteria), "icon criteria must be");
    }
    EXPECT_DEATH((void)Generator::create()->iconForCount(-1), "cannot have -1 items");
}

}  // namespace
}  // namespace pelta
