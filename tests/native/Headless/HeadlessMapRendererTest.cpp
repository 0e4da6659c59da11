#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <random>

#include <pelta/Engine/MLNFillStyleLayer.h>
#include <pelta/Engine/MLNLineStyleLayer.h>
#include <pelta/Platform/UIGraphics.h>
#include <pelta/headless/HeadlessPort.h>

#include "HeadlessMapRenderer.h"

namespace pelta {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CountingHost final : public MapRendererHost {
 public:
    void rendererDidLoadStyle() override { ++loadCount; }
    void rendererDidFailLoadingStyle(std::string_view) override {}
    void gestureWillBegin(MLNCameraChangeReason, bool) override {}
    void gestureDidMove(MLNCameraChangeReason) override {}
    void gestureDidEnd(MLNCameraChangeReason, bool) override {}
    [[nodiscard]] CameraState constrain(CameraState wanted) const override { return wanted; }
    void rendererDidSettle() override { ++settleCount; }

    int loadCount = 0;
    int settleCount = 0;
};

/// A renderer over a style of its own, 400 × 300 points at zoom 10 over (0, 0), with one source "features".
class HeadlessMapRendererTest : public testing::Test {
 protected:
    HeadlessMapRendererTest() { renderer_->setCamera({{0, 0}, 10, 0, 0}); }

    /// The coordinate a number of points right of and below the middle of the view.
    [[nodiscard]] CLLocationCoordinate2D beside(double right, double down) const {
        return renderer_->coordinateForPoint({200 + right, 150 + down});
    }

    std::shared_ptr<MLNPointFeature> point(std::string name, CLLocationCoordinate2D coordinate = {}) {
        auto feature = MLNPointFeature::create();
        feature->setCoordinate(coordinate);
        feature->attributes().set("name", std::move(name));
        return feature;
    }

    void setFeatures(std::vector<std::shared_ptr<MLNShape>> shapes) {
        source_->setShape(MLNShapeCollectionFeature::shapeCollectionWithShapes(std::move(shapes)));
    }

    template <class Layer>
    std::shared_ptr<Layer> addLayer(std::string identifier) {
        auto layer = std::make_shared<Layer>(std::move(identifier), *source_);
        style_->addLayer(layer);
        return layer;
    }

    /// A symbol layer whose icon is a square of `side` points.
    std::shared_ptr<MLNSymbolStyleLayer> addIconLayer(std::string identifier, int side) {
        setImage("square", side);
        auto layer = addLayer<MLNSymbolStyleLayer>(std::move(identifier));
        layer->setIconImageName(std::string("square"));
        return layer;
    }

    void setImage(std::string_view name, int side) {
        const auto bytes = static_cast<std::size_t>(side) * static_cast<std::size_t>(side) * 4;
        style_->setImage(*UIImage::fromPixels(side, side, 1, std::vector<std::uint8_t>(bytes, 255)), name);
    }

    void commit() {
        style_->takeChanges([this](const MLNStyleChanges& changes) { renderer_->commit(*style_, changes); });
    }

    /// The names of the features in a rectangle.
    [[nodiscard]] std::vector<std::string> namesIn(CGRect rect) const {
        std::vector<std::string> names;
        for (const auto& feature : renderer_->featuresInRect(rect, {})) {
            names.push_back(std::get<std::string>(*feature->attribute("name")));
        }
        return names;
    }
    [[nodiscard]] std::vector<std::string> namesBeside(double right, double down) const {
        return namesIn({{200 + right, 150 + down}, {0, 0}});
    }

    HeadlessPort port_;
    CountingHost host_;
    std::unique_ptr<HeadlessMapRenderer> renderer_ =
        std::make_unique<HeadlessMapRenderer>(host_, CGSize{400, 300});
    std::unique_ptr<MLNStyle> style_ = std::make_unique<MLNStyle>("test", [] {});
    std::shared_ptr<MLNShapeSource> source_ = [this] {
        auto source = std::make_shared<MLNShapeSource>("features");
        style_->addSource(source);
        return source;
    }();
};

TEST_F(HeadlessMapRendererTest, DrawsIconsWhileTheirImageIsSet) {
    setFeatures({point("a")});
    addIconLayer("icons", 20);
    commit();
    EXPECT_THAT(namesBeside(8, 0), ElementsAre("a"));
    setImage("square", 40);
    commit();
    EXPECT_THAT(namesBeside(18, 0), ElementsAre("a"));
    style_->removeImageForName("square");
    commit();
    EXPECT_THAT(namesBeside(0, 0), IsEmpty());
}

TEST_F(HeadlessMapRendererTest, MeasuresAndBreaksTexts) {
    struct Row {
        std::string text;
        double maximumWidth;
        int lineCount;
        std::string widestLine;
    };
    for (const Row& row : {Row{"one two three", 0, 1, "one two three"}, Row{"one\ntwo", 0, 2, "two"},
                           Row{"wide wide wide wide", 6, 2, "wide wide "}, Row{"한글이름", 1, 1, "한글이름"},
                           Row{"東京都心", 2.5, 2, "東京"}}) {
        setFeatures({point("a")});
        const auto layer = addLayer<MLNSymbolStyleLayer>("texts");
        layer->setText(row.text);
        layer->setTextFontSize(20.0);
        layer->setMaximumTextWidth(row.maximumWidth);
        layer->setTextAnchor(std::string("top-left"));
        layer->setTextOffset(CGVector{1, 2});
        commit();
        const double width = sizeOfText(row.widestLine, UIFont::systemFont(20)).width;
        const double height = 24 * row.lineCount;
        EXPECT_THAT(namesBeside(21, 41), ElementsAre("a")) << row.text;
        EXPECT_THAT(namesBeside(20 + width - 1, 40 + height - 1), ElementsAre("a")) << row.text;
        EXPECT_THAT(namesBeside(20 + width + 1, 50), IsEmpty()) << row.text;
        EXPECT_THAT(namesBeside(25, 40 + height + 1), IsEmpty()) << row.text;
        style_->removeLayer(*layer);
    }
}

TEST_F(HeadlessMapRendererTest, KeepsTrackOfLayersThatComeAndGo) {
    const auto expectOrder = [this](const std::vector<std::string>& order) {
        commit();
        EXPECT_EQ(namesBeside(0, 0), order);
    };
    setFeatures({point("a"), point("b"), point("c"), point("d")});
    std::map<std::string, std::shared_ptr<MLNSymbolStyleLayer>> layers;
    for (const std::string name : {"a", "b", "c"}) {
        layers[name] = addIconLayer(name, 20);
        layers[name]->setPredicate(MLNPredicate::equal("name", name));
    }
    expectOrder({"c", "b", "a"});
    style_->removeLayer(*layers["b"]);
    style_->removeLayer(*layers["a"]);
    style_->addLayer(layers["a"]);
    expectOrder({"a", "c"});
    layers["b"]->setPredicate(MLNPredicate::equal("name", "d"));
    style_->insertLayerBelow(layers["b"], *layers["c"]);
    expectOrder({"a", "c", "d"});
    style_->removeLayer(*layers["c"]);
    layers.erase("c");
    addIconLayer("all", 20);
    expectOrder({"d", "c", "b", "a", "a", "d"});
    style_->removeSource(*source_);
    expectOrder({});
}

TEST_F(HeadlessMapRendererTest, FindsCopiesOfTheWorldOnce) {
    renderer_->setSize({2000, 300}, 1);
    renderer_->setCamera({{0, -170}, 0, 0, 0});
    auto line = MLNPolylineFeature::polylineWithCoordinates({{40, 170}, {40, 190}});
    line->attributes().set("name", std::string("line"));
    setFeatures({point("marker", {0, 170}), line});
    addIconLayer("icons", 10);
    addLayer<MLNLineStyleLayer>("lines");
    commit();
    const double marker = 1000 - 512 * 20.0 / 360;
    for (const double copy : {-1.0, 0.0, 1.0}) {
        EXPECT_THAT(namesIn({{marker + copy * 512 - 4, 146}, {8, 8}}), ElementsAre("marker"));
    }
    EXPECT_THAT(namesIn({{marker + 256, 146}, {8, 8}}), IsEmpty());
    EXPECT_THAT(namesIn({{0, 0}, {2000, 300}}), ElementsAre("line", "marker"));
}

TEST_F(HeadlessMapRendererTest, FindsNothingWhereNothingIsDrawn) {
    auto empty = MLNPolygonFeature::polygonWithCoordinates({});
    setFeatures({point("a"), MLNShapeCollectionFeature::shapeCollectionWithShapes({point("b")}), empty,
                 point("nowhere", {std::nan(""), 0})});
    addIconLayer("icons", 20);
    addLayer<MLNFillStyleLayer>("fills");
    addLayer<MLNLineStyleLayer>("lines")->setLineWidth(0.0);
    style_->addDocumentLayer(std::make_shared<MLNSymbolStyleLayer>("labels", "features"));
    commit();
    EXPECT_THAT(namesIn({{0, 0}, {400, 300}}), ElementsAre("a"));
    EXPECT_THAT(namesIn({{210, 160}, {-20, -20}}), ElementsAre("a"));
    const double infinity = std::numeric_limits<double>::infinity();
    for (const CGRect rect : {CGRect{{0, 0}, {100, 100}}, CGRect{{-500, 0}, {50, 300}},
                              CGRect{{std::nan(""), 0}, {400, 300}}, CGRect{{infinity, 0}, {400, 300}}}) {
        EXPECT_THAT(namesIn(rect), IsEmpty());
    }
    renderer_->setCamera({{0, 0}, 10, 85, 0});
    EXPECT_THAT(namesIn({{0, 0}, {400, 50}}), IsEmpty());
}

/// Even-odd rule, on the screen.
bool isInside(const std::vector<CGPoint>& corners, CGPoint point) {
    bool inside = false;
    for (std::size_t i = 0, j = corners.size() - 1; i < corners.size(); j = i++) {
        const CGPoint a = corners[i];
        const CGPoint b = corners[j];
        if ((a.y > point.y) != (b.y > point.y)) {
            inside ^= point.x < a.x + (point.y - a.y) * (b.x - a.x) / (b.y - a.y);
        }
    }
    return inside;
}

/// True when one of 40 × 40 points of a rectangle is inside.
bool isAnyInside(const std::vector<CGPoint>& corners, CGRect rect) {
    for (int row = 0; row < 40; ++row) {
        for (int column = 0; column < 40; ++column) {
            if (isInside(corners, {rect.minX() + rect.size.width * column / 39,
                                   rect.minY() + rect.size.height * row / 39})) {
                return true;
            }
        }
    }
    return false;
}

/// Areas on a tilted, turned map, whose straight edges are straight on the screen too.
TEST_F(HeadlessMapRendererTest, FindsAreasAsAGridOfPointsDoes) {
    std::mt19937 random(5);
    const auto between = [&random](double low, double high) {
        return low + (high - low) * static_cast<double>(random()) / 4294967296.0;
    };
    renderer_->setCamera({{37.5, 127}, 12, 50, 130});
    addLayer<MLNFillStyleLayer>("area");
    int hitCount = 0;
    for (int round = 0; round < 150; ++round) {
        std::vector<CGPoint> corners(3 + random() % 4);
        std::vector<CLLocationCoordinate2D> ring;
        for (CGPoint& corner : corners) {
            corner = {between(0, 400), between(0, 300)};
            ring.push_back(renderer_->coordinateForPoint(corner));
        }
        auto area = MLNPolygonFeature::polygonWithCoordinates(ring);
        area->attributes().set("name", std::string("area"));
        source_->setShape(area);
        commit();
        const CGRect rect{{between(0, 320), between(0, 220)}, {between(5, 80), between(5, 80)}};
        const bool isFound = !namesIn(rect).empty();
        hitCount += isFound ? 1 : 0;
        EXPECT_TRUE(isFound || !isAnyInside(corners, rect)) << "round " << round;
        EXPECT_TRUE(!isFound || isAnyInside(corners, rect.insetBy(-1.5, -1.5))) << "round " << round;
    }
    EXPECT_GT(hitCount, 40);
    EXPECT_LT(hitCount, 130);
}

}  // namespace
}  // namespace pelta
