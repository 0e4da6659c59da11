#include <cmath>
#include <set>

#include <pelta/Platform/UIGraphics.h>

#include "View/MapFixture.h"

namespace pelta {
namespace {

using Generator = PgmDefaultClusterIconGenerator;
using Pixel = std::array<int, 4>;

class ClusterIconTest : public MapFixture {
 protected:
    static std::vector<UIColor> threeColors() { return {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}; }

    /// A picture of 40 × 30 points of one colour, a pixel a point.
    static UIImage picture(std::uint8_t red) {
        std::vector<std::uint8_t> pixels(40 * 30 * 4, 255);
        for (std::size_t i = 0; i < pixels.size(); i += 4) {
            pixels[i] = red;
        }
        return *UIImage::fromPixels(40, 30, 1, std::move(pixels));
    }

    /// The colour at a point of an icon.
    static Pixel pixelAt(const UIImage& image, double x, double y) {
        const auto column = static_cast<std::size_t>(x * image.scale());
        const auto row = static_cast<std::size_t>(y * image.scale());
        const auto* bytes =
            &image.pixels()[(row * static_cast<std::size_t>(image.pixelWidth()) + column) * 4];
        return {bytes[0], bytes[1], bytes[2], bytes[3]};
    }

    static Pixel pixelOf(UIColor color) {
        const auto byte = [](double part) { return static_cast<int>(std::lround(part * 255)); };
        return {byte(color.red), byte(color.green), byte(color.blue), byte(color.alpha)};
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
    const auto oneCriterion = Generator::createWithColors(threeColors(), {7});
    const auto empty = Generator::createWithColors({}, {1, 2});
    const auto colors = kPgmCriteriaBackgroundColors();
    const std::vector<Case> cases{
        {"default", usual, 0, 0, colors[0]},
        {"default", usual, 49, 0, colors[0]},
        {"default", usual, 50, 1, colors[1]},
        {"default", usual, 99, 1, colors[1]},
        {"default", usual, 100, 2, colors[2]},
        {"default", usual, 499, 3, colors[3]},
        {"default", usual, 500, 4, colors[4]},
        {"default", usual, 10000, 4, colors[4]},
        {"default", usual, INT64_MAX, 4, colors[4]},
        {"three colours", three, 99, 1, {0, 1, 0}},
        {"three colours", three, 100, 2, {0, 0, 1}},
        {"three colours", three, 9999, 2, {0, 0, 1}},
        {"one criterion", oneCriterion, 999, 0, {1, 0, 0}},
        {"no colours", empty, 2, 1, colors[1]},
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
        EXPECT_EQ(pixelAt(image, diameter / 2, 3), pixelOf(testCase.color));
        EXPECT_EQ(pixelAt(image, 1, 1)[3], 0) << "beside the oval";
        int white = 0;
        for (double x = diameter / 2 - text.width / 2; x < diameter / 2 + text.width / 2; x += 0.5) {
            white += pixelAt(image, x, diameter / 2) == Pixel{255, 255, 255, 255} ? 1 : 0;
        }
        EXPECT_GT(white, 0) << "the count in the middle";
    }
}

TEST_F(ClusterIconTest, PicturesCarryTheCountAndKeepTheirSize) {
    const auto generator = Generator::createWithImages({picture(10), picture(90)}, {2, 50, 100});
    for (const auto& [count, red] : std::map<std::int64_t, int>{{2, 10}, {49, 10}, {50, 90}, {5000, 90}}) {
        const UIImage image = generator->iconForCount(count)->image();
        EXPECT_EQ(image.size(), (CGSize{40, 30}));
        EXPECT_EQ(pixelAt(image, 2, 2), (Pixel{red, 255, 255, 255})) << count;
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
