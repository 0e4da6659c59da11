#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <tuple>

#include <pelta/Platform/Make.h>
#include <pelta/Platform/UIControls.h>
#include <pelta/headless/HeadlessPort.h>

namespace pelta {
namespace {

constexpr UIColor red{1, 0, 0, 1};
constexpr UIColor green{0, 1, 0, 1};
constexpr UIColor blue{0, 0, 1, 1};

using Pixel = std::array<int, 4>;

Pixel pixelAt(const UIImage& image, int x, int y) {
    const auto bytes = image.pixels().subspan(static_cast<std::size_t>(y * image.pixelWidth() + x) * 4, 4);
    return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

const Pixel redPixel{255, 0, 0, 255};
const Pixel greenPixel{0, 255, 0, 255};
const Pixel bluePixel{0, 0, 255, 255};

class DrawingTest : public ::testing::Test {
 protected:
    static UIImage picture(CGSize size, const std::function<void(GraphicsContext&)>& draw) {
        return UIGraphicsImageRenderer(size).image(draw).value();
    }

    HeadlessPort port_{1};
};

TEST_F(DrawingTest, ASnapshotShowsTheTree) {
    const auto root = make<UIView>(CGRect{{500, 500}, {100, 60}});
    root->setBackgroundColor(red);
    const auto add = [](UIView& to, const std::shared_ptr<UIView>& view, UIColor color) -> UIView& {
        view->setBackgroundColor(color);
        to.addSubview(view);
        return *view;
    };
    add(*root, make<UIView>(CGRect{{20, 0}, {20, 20}}), blue).setCornerRadius(10);
    add(*root, make<UIView>(CGRect{{50, 0}, {30, 2}}), blue)
        .setTransform(CGAffineTransform::rotation(M_PI / 2));
    add(*root, make<UIView>(CGRect{{80, 0}, {10, 10}}), blue).setIsHidden(true);
    auto& group = add(*root, make<UIView>(CGRect{{80, 15}, {10, 10}}), blue);
    group.setAlpha(0.5);
    group.setClipsToBounds(true);
    add(group, make<UIView>(CGRect{{0, 0}, {20, 5}}), green);
    const auto fitted = make<UIImageView>(CGRect{{50, 30}, {20, 20}});
    fitted->setImage(UIImage::fromPixels(2, 1, 1, {0, 255, 0, 255, 0, 255, 0, 255}));
    fitted->setContentMode(UIViewContentMode::scaleAspectFit);
    add(*root, fitted, blue);
    CALayer::Properties halo;
    halo.bounds = {{}, {8, 8}};
    halo.position = {90, 40};
    halo.backgroundColor = green;
    root->layer()->addSublayer(CALayer::create());
    root->layer()->sublayers().front()->update(halo);

    const UIImage image = root->snapshot().value();
    EXPECT_EQ(image.size(), (CGSize{100, 60}));
    const Pixel half{128, 128, 0, 255};
    const std::tuple<const char*, int, int, Pixel> cases[] = {
        {"corner", 20, 0, redPixel},
        {"within the corner radius", 30, 10, bluePixel},
        {"turned about its centre", 65, 12, bluePixel},
        {"where it was before turning", 52, 1, redPixel},
        {"hidden", 85, 5, redPixel},
        {"a group fades as a whole", 85, 17, half},
        {"cut off at the bounds", 92, 17, redPixel},
        {"fitted picture", 51, 40, greenPixel},
        {"beside the fitted picture", 60, 32, bluePixel},
        {"sublayer", 87, 37, greenPixel}};
    for (const auto& [name, x, y, expected] : cases) {
        const auto found = pixelAt(image, x, y);
        EXPECT_TRUE(std::ranges::equal(found, expected, [](int a, int b) { return std::abs(a - b) <= 1; }))
            << name;
    }
}

TEST_F(DrawingTest, TextOfAnyLengthHasItsWidth) {
    for (const char* letter : {"W", "서", "א"}) {
        const auto widthOf = [letter](int count, double size) {
            std::ostringstream text;
            std::fill_n(std::ostream_iterator<std::string>(text), count, letter);
            return sizeOfText(text.str(), UIFont::systemFont(size)).width;
        };
        for (const auto& [count, size] : {std::pair{200'000, 15.0}, {4'000, 4000.0}}) {
            const double expected = widthOf(100, size) * count / 100;
            EXPECT_NEAR(widthOf(count, size), expected, expected * 1e-3) << letter << " at " << size;
        }
    }
}

TEST_F(DrawingTest, OfLongTextThePartInSightIsDrawn) {
    const auto inkOf = [](std::string_view text, NSTextAlignment alignment) {
        const UIImage image = picture({40, 20}, [&](GraphicsContext& c) {
            c.drawText(text, {{0, 0}, {40, 20}}, {UIFont{15}, red, alignment});
        });
        return std::ranges::count(image.pixels(), 255);
    };
    for (const auto alignment : {NSTextAlignment::left, NSTextAlignment::center, NSTextAlignment::right}) {
        const auto expected = inkOf(std::string(50, 'M'), alignment);
        EXPECT_GT(expected, 100);
        EXPECT_NEAR(static_cast<double>(inkOf(std::string(200'000, 'M'), alignment)),
                    static_cast<double>(expected), static_cast<double>(expected) * 0.2);
    }
}

TEST_F(DrawingTest, ShapesOfAnySizeCoverTheirPart) {
    struct Case {
        const char* name;
        CGRect rect;
        double radius, scale;
        bool isMiddleCovered, isCornerCovered;
    };
    const Case cases[] = {
        {"far larger than the picture", {{-5e29, -5e29}, {1e30, 1e30}}, 5e29, 1, true, true},
        {"as large as numbers go", {{-8e307, -8e307}, {1.6e308, 1.6e308}}, 8e307, 1, true, true},
        {"an edge in sight, right of the corner", {{10, -5e9 + 20}, {1e10, 1e10}}, 5e9, 1, true, false},
        {"an edge in sight, right of the middle", {{30, -5e9 + 20}, {1e10, 1e10}}, 5e9, 1, false, false},
        {"below everything", {{-5e9, 50}, {1e10, 1e10}}, 5e9, 1, false, false},
        {"corner of a long bar", {{-1e9, 18}, {1e9 + 22, 1e9}}, 12, 1, false, true},
        {"made large by a transform", {{-1, -1}, {2, 2}}, 1, 1e20, true, true},
        {"too small to be seen", {{20, 20}, {1e-200, 1e-200}}, 5e-201, 1, false, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto draw = [&c](const std::function<void(GraphicsContext&)>& fill) {
            const UIImage image = picture({40, 40}, [&](GraphicsContext& context) {
                context.concatenate({c.scale, 0, 0, c.scale, 0, 0});
                fill(context);
            });
            EXPECT_EQ(pixelAt(image, 20, 20)[3], c.isMiddleCovered ? 255 : 0);
            EXPECT_EQ(pixelAt(image, 2, 20)[3], c.isCornerCovered ? 255 : 0);
        };
        draw([&c](GraphicsContext& context) { context.fillRoundedRect(c.rect, c.radius, red); });
        if (c.radius == c.rect.size.width / 2) {
            draw([&c](GraphicsContext& context) { context.fillOval(c.rect, red); });
        }
    }
}

}  // namespace
}  // namespace pelta
