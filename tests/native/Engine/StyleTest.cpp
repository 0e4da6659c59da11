#include <pelta/Engine/MLNFillStyleLayer.h>

#include "EngineFixture.h"

namespace pelta {
namespace {

using testing::ElementsAre;

class StyleTest : public testing::Test {
 protected:
    using LayerPtr = std::shared_ptr<MLNFillStyleLayer>;

    static LayerPtr layer(const std::string& identifier) {
        return std::make_shared<MLNFillStyleLayer>(identifier, std::string("source"));
    }
    static std::vector<std::string> namesOf(const MLNStyle& style) {
        std::vector<std::string> names;
        for (const auto& each : style.layers()) {
            names.push_back(each->identifier());
        }
        return names;
    }

    /// The changes as one text, such as "order -a b+ c[4] source s image i".
    std::string take() {
        std::string text;
        const auto list = [&text](const std::string& prefix, const auto& names) {
            for (const auto& name : names) {
                text += prefix + name;
            }
        };
        style.takeChanges([&](const MLNStyleChanges& changes) {
            text = changes.isLayerOrderChanged ? "order" : "";
            list(" -", changes.removedLayers);
            for (const auto& each : changes.changedLayers) {
                const bool isNew = each->changes() == MLNStyleLayer::everythingChanged;
                text +=
                    " " + each->identifier() + (isNew ? "+" : "[" + std::to_string(each->changes()) + "]");
            }
            for (const auto& source : changes.changedSources) {
                text += " source " + source->identifier();
            }
            list(" -source ", changes.removedSources);
            list(" image ", changes.changedImages);
            list(" -image ", changes.removedImages);
        });
        return text;
    }

    int requests = 0;
    MLNStyle style{"test", [this] { ++requests; }};
};

TEST_F(StyleTest, RefusesWhatDoesNotBelong) {
    MLNStyle other("other", [] {});
    const auto a = layer("a");
    const auto elsewhere = layer("elsewhere");
    style.addLayer(a);
    other.addLayer(elsewhere);
    style.addLayer(a);
    style.addLayer(layer("a"));
    style.addLayer(elsewhere);
    style.addLayer(nullptr);
    style.insertLayerBelow(layer("b"), *elsewhere);
    style.insertLayerBelow(a, *a);
    style.removeLayer(*elsewhere);
    EXPECT_THAT(namesOf(style), ElementsAre("a"));
    EXPECT_EQ(elsewhere->style(), &other);

    const auto source = std::make_shared<MLNShapeSource>("cities");
    other.addSource(source);
    style.addSource(source);
    EXPECT_EQ(style.sourceWithIdentifier("cities"), nullptr);
    other.addSource(std::make_shared<MLNShapeSource>("cities"));
    EXPECT_EQ(other.sourceWithIdentifier("cities"), source);
    style.removeSource(*source);
    EXPECT_EQ(other.sourceWithIdentifier("cities"), source);
}

TEST_F(StyleTest, ListsWhatChangedSinceTheLastFrame) {
    const auto a = layer("a");
    const auto b = layer("b");
    style.addDocumentLayer(layer("land"));
    EXPECT_FALSE(style.hasChanges());
    struct Case {
        const char* what;
        std::function<void()> change;
        std::string changes;
    };
    const std::vector<Case> cases{
        {"added", [&] { style.addLayer(a), style.addLayer(b), a->setFillOpacity(0.5); }, "order a+ b+"},
        {"nothing", [] {}, ""},
        {"a property", [&] { a->setFillOpacity(0.5), b->setFillOpacity(0.25), b->setIsVisible(false); },
         " b[2147483650]"},
        {"restacked as before",
         [&] { style.removeLayer(*a), style.addLayer(a), style.removeLayer(*b), style.addLayer(b); }, ""},
        {"restacked", [&] { style.removeLayer(*a), style.addLayer(a); }, "order"},
        {"changed while out", [&] { style.removeLayer(*a), a->setFillOpacity(1.0), style.addLayer(a); },
         " a[2]"},
        {"added and removed",
         [&] {
             const auto c = layer("c");
             style.addLayer(c), style.removeLayer(*c);
         },
         ""},
        {"changed and removed", [&] { a->setFillOpacity(0.1), style.removeLayer(*a); }, "order -a"},
        {"back after a frame", [&] { style.addLayer(a); }, "order a+"},
        {"another of the name", [&] { style.removeLayer(*b), style.addLayer(layer("b")); }, "order -b b+"},
        {"out twice", [&] { style.removeLayer(*a), style.addLayer(a), style.removeLayer(*a); }, "order -a"},
        {"a document's layer", [&] { style.layerWithIdentifier("land")->setMaximumZoomLevel(9); },
         " land[1073741824]"}};
    for (const auto& each : cases) {
        each.change();
        EXPECT_EQ(style.hasChanges(), requests == 1) << each.what;
        EXPECT_EQ(take(), each.changes) << each.what;
        EXPECT_FALSE(style.hasChanges());
        requests = 0;
    }
    const auto land = style.layerWithIdentifier("land");
    style.removeLayer(*land);
    EXPECT_EQ(take(), "order -land");
    style.addLayer(land);
    EXPECT_EQ(land->style(), nullptr);
}

TEST_F(StyleTest, ListsSourcesAndImages) {
    const auto image = *UIImage::fromPixels(1, 1, 1, {1, 2, 3, 4});
    const auto source = std::make_shared<MLNShapeSource>("b");
    style.addSource(source);
    style.addSource(std::make_shared<MLNShapeSource>("a"));
    style.setImage(image, "z");
    style.setImage(image, "y");
    EXPECT_EQ(take(), " source a source b image z image y");
    source->setShape(MLNPointFeature::create());
    style.removeImageForName("z");
    style.setImage(image, "z");
    style.setImage(image, "fleeting");
    style.removeImageForName("fleeting");
    style.removeImageForName("unknown");
    EXPECT_EQ(take(), " source b image z");
    style.removeSource(*source);
    source->setShape(nullptr);
    style.removeImageForName("y");
    EXPECT_EQ(style.imageForName("y"), nullptr);
    EXPECT_EQ(take(), " -source b -image y");
}

}  // namespace
}  // namespace pelta
