#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

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
    HeadlessPort port_{1};
};

TEST_F(DrawingTest, NumbersThatMakeNoSenseDrawNothing) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const UIImage dot = UIImage::fromPixels(1, 1, 1, {255, 0, 0, 255}).value();
    const auto draw = [&](GraphicsContext& c) {
        for (const CGRect bad : {CGRect{{nan, 0}, {1, 1}}, CGRect{{0, 0}, {infinite, 1}},
                                 CGRect{{0, 0}, {-1, 2}}, CGRect{{0, 0}, {0, 0}}}) {
            c.fillRect(bad, red);
            c.fillOval(bad, red);
            c.fillRoundedRect(bad, 1, red);
            c.drawImage(dot, bad);
        }
        c.drawText("x", {{nan, 0}, {1, 1}}, {});
        c.drawText("x", {{0, 0}, {1, 1}}, {UIFont{nan}, red});
        c.saveState();
        c.concatenate({nan, 0, 0, 1, 0, 0});
        c.fillRect({{0, 0}, {4, 4}}, red);
        c.restoreState();
    };
    const UIImage image = UIGraphicsImageRenderer({4, 4}).image(draw).value();
    EXPECT_EQ(std::ranges::count(image.pixels(), 0), 4 * 4 * 4);
    for (const CGSize bad :
         {CGSize{0, 1}, CGSize{1, -1}, CGSize{nan, 1}, CGSize{infinite, 1}, CGSize{1, 16385}}) {
        EXPECT_FALSE(UIGraphicsImageRenderer(bad).image([](GraphicsContext&) { FAIL(); }));
    }
}

struct Drawing : UIView {
    using UIView::UIView;
    ViewContent content() const override { return DrawnContent{}; }
    void draw(GraphicsContext& context, CGRect rect) override {
        context.fillRect(rect.insetBy(-50, -50), green);  // Cut off at the view's edges.
    }
};

TEST_F(DrawingTest, ASnapshotShowsTheTree) {
    const auto root = make<UIView>(CGRect{{500, 500}, {100, 60}});
    root->setBackgroundColor(red);
    const auto add = [&root](const std::shared_ptr<UIView>& view, UIColor color) {
        view->setBackgroundColor(color);
        root->addSubview(view);
        return view;
    };
    add(make<UIView>(CGRect{{0, 0}, {10, 10}}), blue)->setAlpha(0.5);
    add(make<UIView>(CGRect{{20, 0}, {20, 20}}), blue)->setCornerRadius(10);
    add(make<UIView>(CGRect{{50, 0}, {30, 2}}), blue)->setTransform(CGAffineTransform::rotation(M_PI / 2));
    add(make<UIView>(CGRect{{80, 0}, {10, 10}}), blue)->setIsHidden(true);
    add(make<Drawing>(CGRect{{0, 30}, {10, 10}}), UIColor::clear());
    const auto group = add(make<UIView>(CGRect{{80, 15}, {10, 10}}), blue);
    group->setAlpha(0.5);
    group->addSubview(make<UIView>(CGRect{{0, 0}, {20, 5}}));
    group->subviews().front()->setBackgroundColor(green);
    group->setClipsToBounds(true);
    const auto outer = add(make<UIView>(CGRect{{20, 30}, {10, 10}}), UIColor::clear());
    outer->addSubview(make<UIView>(CGRect{{5, 5}, {10, 10}}));
    outer->subviews().front()->setBackgroundColor(green);
    const auto picture = make<UIImageView>(CGRect{{50, 30}, {20, 20}});
    picture->setImage(UIImage::fromPixels(2, 1, 1, {0, 255, 0, 255, 0, 255, 0, 255}));
    picture->setContentMode(UIViewContentMode::scaleAspectFit);
    add(picture, blue);
    CALayer::Properties halo;
    halo.bounds = {{}, {8, 8}};
    halo.position = {90, 40};
    halo.backgroundColor = green;
    root->layer()->addSublayer(CALayer::create());
    root->layer()->sublayers().front()->update(halo);

    const UIImage image = root->snapshot().value();
    EXPECT_EQ(image.size(), (CGSize{100, 60}));
    struct Case {
        const char* name;
        int x, y;
        Pixel expected;
    };
    for (const Case& c : {Case{"background", 15, 15, redPixel},
                          {"corner", 20, 0, redPixel},
                          {"within the corner radius", 30, 10, bluePixel},
                          {"turned about its centre", 65, 12, bluePixel},
                          {"where it was before turning", 52, 1, redPixel},
                          {"hidden", 85, 5, redPixel},
                          {"cut off at the bounds", 92, 17, redPixel},
                          {"drawn content", 9, 39, greenPixel},
                          {"cut-off drawn content", 11, 41, redPixel},
                          {"subview of a subview, beyond its edge", 34, 44, greenPixel},
                          {"fitted picture", 51, 40, greenPixel},
                          {"beside the fitted picture", 60, 32, bluePixel},
                          {"sublayer", 87, 37, greenPixel}}) {
        EXPECT_EQ(pixelAt(image, c.x, c.y), c.expected) << c.name;
    }
    EXPECT_NEAR(pixelAt(image, 5, 5)[2], 128, 1);
    EXPECT_NEAR(pixelAt(image, 85, 17)[1], 128, 1);
    EXPECT_EQ(pixelAt(image, 85, 17)[2], 0) << "a group fades as a whole";
    EXPECT_FALSE(make<UIView>(CGRect{})->snapshot());
}

TEST_F(DrawingTest, TextOfAnyLengthHasItsWidth) {
    for (const char* letter : {"W", "서", "א"}) {
        const auto widthOf = [letter](int count, double size) {
            std::string text;
            for (int i = 0; i < count; ++i) {
                text += letter;
            }
            return sizeOfText(text, UIFont::systemFont(size)).width;
        };
        for (const auto& [count, size] : {std::pair{200'000, 15.0}, {4'000, 4000.0}}) {
            const double expected = widthOf(100, size) * count / 100;
            EXPECT_NEAR(widthOf(count, size), expected, expected * 1e-3) << letter << " at " << size;
        }
    }
}

TEST_F(DrawingTest, OfLongTextThePartInSightIsDrawn) {
    const auto inkOf = [](std::string_view text, NSTextAlignment alignment) {
        const UIImage image = UIGraphicsImageRenderer({40, 20})
                                  .image([&](GraphicsContext& c) {
                                      c.drawText(text, {{0, 0}, {40, 20}}, {UIFont{15}, red, alignment});
                                  })
                                  .value();
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
            const UIImage image = UIGraphicsImageRenderer({40, 40})
                                      .image([&](GraphicsContext& context) {
                                          context.concatenate({c.scale, 0, 0, c.scale, 0, 0});
                                          fill(context);
                                      })
                                      .value();
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
