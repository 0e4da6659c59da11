#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>

#include <pelta/Platform/Make.h>
#include <pelta/Platform/UIControls.h>
#include <pelta/Platform/UIWindow.h>
#include <pelta/headless/HeadlessPort.h>

namespace pelta {
namespace {

constexpr UIColor red{1, 0, 0, 1};
constexpr UIColor green{0, 1, 0, 1};
constexpr UIColor blue{0, 0, 1, 1};

struct Pixel {
    int red;
    int green;
    int blue;
    int alpha;
    friend bool operator==(const Pixel&, const Pixel&) = default;
};

void PrintTo(const Pixel& p, std::ostream* stream) {
    *stream << "(" << p.red << ", " << p.green << ", " << p.blue << ", " << p.alpha << ")";
}

Pixel pixelAt(const UIImage& image, int x, int y) {
    const auto index = static_cast<std::size_t>(y * image.pixelWidth() + x) * 4;
    const auto bytes = image.pixels().subspan(index, 4);
    return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

const Pixel clearPixel{0, 0, 0, 0};
const Pixel redPixel{255, 0, 0, 255};
const Pixel greenPixel{0, 255, 0, 255};
const Pixel bluePixel{0, 0, 255, 255};

/// How many pixels are covered at least half, and the box around them.
struct Coverage {
    int count = 0;
    int left = std::numeric_limits<int>::max();
    int right = -1;
    int top = std::numeric_limits<int>::max();
    int bottom = -1;
};

Coverage coverageOf(const UIImage& image) {
    Coverage coverage;
    for (int y = 0; y < image.pixelHeight(); ++y) {
        for (int x = 0; x < image.pixelWidth(); ++x) {
            if (pixelAt(image, x, y).alpha >= 128) {
                ++coverage.count;
                coverage.left = std::min(coverage.left, x);
                coverage.right = std::max(coverage.right, x);
                coverage.top = std::min(coverage.top, y);
                coverage.bottom = std::max(coverage.bottom, y);
            }
        }
    }
    return coverage;
}

class DrawingTest : public ::testing::Test {
 protected:
    static UIImage drawn(CGSize size, const std::function<void(GraphicsContext&)>& draw) {
        return UIGraphicsImageRenderer(size).image(draw).value();
    }

    HeadlessPort port_{2};
};

TEST_F(DrawingTest, ShapesCoverTheirArea) {
    const UIImage rect = drawn({10, 6}, [](GraphicsContext& c) { c.fillRect({{1, 2}, {3, 1}}, red); });
    EXPECT_EQ(rect.pixelWidth(), 20);
    EXPECT_EQ(rect.pixelHeight(), 12);
    EXPECT_EQ(rect.size(), (CGSize{10, 6}));
    EXPECT_EQ(coverageOf(rect).count, 6 * 2);
    EXPECT_EQ(pixelAt(rect, 2, 4), redPixel);
    EXPECT_EQ(pixelAt(rect, 1, 4), clearPixel);

    const UIImage oval = drawn({40, 20}, [](GraphicsContext& c) { c.fillOval({{0, 0}, {40, 20}}, blue); });
    EXPECT_NEAR(coverageOf(oval).count, M_PI * 40 * 20, 30);  // Half axes of 40 and 20 pixels.
    EXPECT_EQ(pixelAt(oval, 40, 20), bluePixel);
    EXPECT_EQ(pixelAt(oval, 3, 3), clearPixel);

    const UIImage rounded = drawn({40, 20}, [](GraphicsContext& c) {
        c.fillRoundedRect({{0, 0}, {40, 20}}, 5, green);
    });
    EXPECT_NEAR(coverageOf(rounded).count, 80 * 40 - (4 - M_PI) * 10 * 10, 10);
    const UIImage pill = drawn({40, 20}, [](GraphicsContext& c) {
        c.fillRoundedRect({{0, 0}, {40, 20}}, 99, green);
    });
    EXPECT_NEAR(coverageOf(pill).count, 80 * 40 - (4 - M_PI) * 20 * 20, 10);
}

TEST_F(DrawingTest, ColoursAreStraightAndLaterDrawingCoversEarlier) {
    const UIImage image = drawn({2, 1}, [](GraphicsContext& c) {
        c.fillRect({{0, 0}, {1, 1}}, UIColor{1, 0.5, 0, 0.5});
        c.fillRect({{1, 0}, {1, 1}}, red);
        c.fillRect({{1, 0}, {1, 1}}, UIColor{0, 0, 5, 1});  // Components are clamped.
    });
    const Pixel half = pixelAt(image, 0, 0);
    EXPECT_NEAR(half.red, 255, 1);
    EXPECT_NEAR(half.green, 128, 2);
    EXPECT_NEAR(half.alpha, 128, 1);
    EXPECT_EQ(pixelAt(image, 2, 0), bluePixel);
}

TEST_F(DrawingTest, StatesNestAndEnd) {
    const UIImage image = drawn({20, 10}, [](GraphicsContext& c) {
        c.saveState();
        c.concatenate({1, 0, 0, 1, 10, 0});
        c.clip({{0, 0}, {5, 5}});
        c.multiplyAlpha(0.5);
        c.multiplyAlpha(0.5);
        c.fillRect({{-100, -100}, {1e300, 200}}, red);
        c.saveState();
        c.concatenate({0, 0, 0, 0, 0, 0});  // Nothing can be drawn in no area.
        c.fillRect({{0, 0}, {1, 1}}, blue);
        c.restoreState();
        c.restoreState();
        c.restoreState();  // One too many is harmless.
        c.fillRect({{0, 8}, {20, 2}}, green);
    });
    EXPECT_EQ(pixelAt(image, 19, 0), clearPixel);
    EXPECT_EQ(pixelAt(image, 20, 0).red, 255);
    EXPECT_NEAR(pixelAt(image, 20, 0).alpha, 64, 1);
    EXPECT_EQ(pixelAt(image, 30, 0), clearPixel);
    EXPECT_EQ(pixelAt(image, 0, 16), greenPixel);
}

TEST_F(DrawingTest, NumbersThatMakeNoSenseDrawNothing) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const UIImage dot = UIImage::fromPixels(1, 1, 1, {255, 0, 0, 255}).value();
    const UIImage image = drawn({4, 4}, [&](GraphicsContext& c) {
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
    });
    EXPECT_EQ(coverageOf(image).count, 0);
    for (const CGSize bad :
         {CGSize{0, 1}, CGSize{1, -1}, CGSize{nan, 1}, CGSize{infinite, 1}, CGSize{1, 8193}}) {
        EXPECT_FALSE(UIGraphicsImageRenderer(bad).image([](GraphicsContext&) { FAIL(); }));
    }
}

/// 4 × 4 pixels at one pixel a point: green corners, edges that alternate between red and blue, a red and
/// blue chequered middle.
UIImage patternedPicture() {
    std::vector<std::uint8_t> rgba;
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x) {
            const bool isCorner = (x == 0 || x == 3) && (y == 0 || y == 3);
            const UIColor color = isCorner ? green : (x + y) % 2 == 0 ? red : blue;
            for (const double component : {color.red, color.green, color.blue, color.alpha}) {
                rgba.push_back(static_cast<std::uint8_t>(component * 255));
            }
        }
    }
    return UIImage::fromPixels(4, 4, 1, std::move(rgba)).value();
}

TEST_F(DrawingTest, StretchablePicturesKeepTheirCorners) {
    port_.setScreenScale(1);
    const UIEdgeInsets caps{1, 1, 1, 1};
    const auto shown = [&](UIImageResizingMode mode) {
        const UIImage picture = patternedPicture().resizableImage(caps, mode);
        return drawn({10, 8}, [&picture](GraphicsContext& c) { c.drawImage(picture, {{0, 0}, {10, 8}}); });
    };
    const UIImage tiled = shown(UIImageResizingMode::tile);
    const UIImage stretched = shown(UIImageResizingMode::stretch);
    for (const UIImage* image : {&tiled, &stretched}) {
        for (const auto& [x, y] : {std::pair{0, 0}, {9, 0}, {0, 7}, {9, 7}}) {
            EXPECT_EQ(pixelAt(*image, x, y), greenPixel) << x << ", " << y;
        }
    }
    // Tiles repeat pixel for pixel; a stretched edge has one half of each colour.
    EXPECT_EQ(pixelAt(tiled, 1, 0), bluePixel);
    EXPECT_EQ(pixelAt(tiled, 2, 0), redPixel);
    EXPECT_EQ(pixelAt(tiled, 7, 0), bluePixel);
    EXPECT_EQ(pixelAt(tiled, 8, 0), redPixel);
    EXPECT_EQ(pixelAt(tiled, 5, 5), redPixel);
    EXPECT_EQ(pixelAt(tiled, 5, 4), bluePixel);
    EXPECT_EQ(pixelAt(stretched, 1, 0), bluePixel);
    EXPECT_EQ(pixelAt(stretched, 2, 0), bluePixel);
    EXPECT_EQ(pixelAt(stretched, 7, 0), redPixel);
    EXPECT_EQ(pixelAt(stretched, 8, 0), redPixel);
    EXPECT_EQ(pixelAt(stretched, 1, 1), redPixel);

    const UIImage plain = drawn({8, 8}, [](GraphicsContext& c) {
        c.drawImage(patternedPicture(), {{0, 0}, {4, 4}});
        c.drawImage(patternedPicture().resizableImage({2, 2, 2, 2}, UIImageResizingMode::stretch),
                    {{4, 4}, {2, 2}});  // Too small for its caps.
    });
    EXPECT_EQ(pixelAt(plain, 1, 0), bluePixel);
    EXPECT_EQ(pixelAt(plain, 2, 0), redPixel);
    EXPECT_EQ(pixelAt(plain, 6, 6), clearPixel);
    EXPECT_GE(pixelAt(plain, 5, 5).alpha, 254);  // No seam where the caps meet.
}

TEST_F(DrawingTest, TextIsPlacedByItsAlignmentAndMeasuredAsDrawn) {
    const UIFont font = UIFont::systemFont(20);
    const std::string text = "HHHH";
    const CGSize size = sizeOfText(text, font);
    EXPECT_GT(size.width, 40);
    EXPECT_NEAR(size.height, 26, 6);
    struct Case {
        NSTextAlignment alignment;
        double left;
    };
    for (const Case& c : {Case{NSTextAlignment::left, 10}, Case{NSTextAlignment::center, 60 - size.width / 2},
                          Case{NSTextAlignment::right, 110 - size.width}}) {
        const UIImage image = drawn({120, 40}, [&](GraphicsContext& context) {
            context.drawText(text, {{10, 5}, {100, 30}}, {font, red, c.alignment});
        });
        const Coverage ink = coverageOf(image);
        EXPECT_NEAR(ink.left, 2 * c.left, 8) << "side bearings are small";
        EXPECT_NEAR(ink.right, 2 * (c.left + size.width), 8);
        EXPECT_GE(ink.top, 2 * 5);
        EXPECT_LE(ink.bottom, 2 * (5 + size.height));
    }
    EXPECT_GT(sizeOfText(text, UIFont::boldSystemFont(20)).width, size.width);
    EXPECT_NEAR(sizeOfText(text, UIFont::systemFont(40)).width, 2 * size.width, 0.1);
}

TEST_F(DrawingTest, AnyTextCanBeMeasured) {
    const UIFont font = UIFont::systemFont(16);
    EXPECT_EQ(sizeOfText("", font).width, 0);
    EXPECT_GT(sizeOfText("서울", font).width, 24);  // Two full-width syllables.
    EXPECT_EQ(sizeOfText("\xFF", font), sizeOfText("\xEF\xBF\xBD", font));
    EXPECT_EQ(sizeOfText("a\nb", font).height, sizeOfText("a", font).height);
    EXPECT_GT(sizeOfText(std::string_view("a\0b", 3), font).width, sizeOfText("ab", font).width);
    EXPECT_EQ(sizeOfText("text", UIFont::systemFont(-1)), CGSize{});
}

struct Drawing : UIView {
    using UIView::UIView;
    ViewContent content() const override { return DrawnContent{}; }
    void draw(GraphicsContext& context, CGRect rect) override {
        context.fillRect(rect.insetBy(-50, -50), green);  // Cut off at the view's edges.
    }
};

TEST_F(DrawingTest, ASnapshotShowsTheTree) {
    port_.setScreenScale(1);
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
        int x;
        int y;
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
    EXPECT_NEAR(pixelAt(image, 5, 5).blue, 128, 1);
    EXPECT_NEAR(pixelAt(image, 85, 17).green, 128, 1);
    EXPECT_EQ(pixelAt(image, 85, 17).blue, 0) << "a group fades as a whole";
    EXPECT_FALSE(make<UIView>(CGRect{})->snapshot());
}

TEST_F(DrawingTest, ALabelFitsAndCentresItsText) {
    const auto label = make<UILabel>(CGRect{{3, 4}, {0, 0}});
    label->setText("서울 Seoul");
    label->setAttributes({UIFont::systemFont(15), UIColor::black(), NSTextAlignment::center});
    label->sizeToFit();
    const CGSize size = sizeOfText(label->text(), label->attributes().font);
    EXPECT_EQ(label->frame().origin, (CGPoint{3, 4}));
    EXPECT_GE(label->frame().size.width, size.width);
    EXPECT_LT(label->frame().size.width, size.width + 0.5);
    const int inkWhenFitted = coverageOf(label->snapshot().value()).count;
    EXPECT_GT(inkWhenFitted, 100);

    label->setFrame({{0, 0}, {200, 100}});
    const Coverage ink = coverageOf(label->snapshot().value());
    EXPECT_NEAR((ink.left + ink.right) / 2.0, 200, 8);
    EXPECT_NEAR((ink.top + ink.bottom) / 2.0, 100, 14);
    EXPECT_NEAR(ink.count, inkWhenFitted, inkWhenFitted / 10.0);
}

}  // namespace
}  // namespace pelta
