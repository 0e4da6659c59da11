#include <pelta/Engine/MLNFillStyleLayer.h>
#include <pelta/Engine/MLNSymbolStyleLayer.h>

#include "CaseFile.h"
#include "EngineFixture.h"
#include "RecordingRenderer.h"

namespace pelta {
namespace {

using testing::HasSubstr;

class StyleLoadingTest : public EngineTest {
 protected:
    /// Loads a text and answers the failure's message, empty when there is none.
    std::string failureOf(const std::string& document) {
        port.serveDocument("bad/style.json", document);
        const auto view = makeView("bad/style.json");
        log->failure.clear();
        EXPECT_TRUE(port.runUntilIdle());
        EXPECT_EQ(view->style() == nullptr, !log->failure.empty());
        return log->failure;
    }
};

TEST_F(StyleLoadingTest, RefusesBadDocumentsWithPlaceAndFix) {
    const std::string deep(10'000'000, '[');
    auto cases = casesOf("Engine/bad-styles.txt");
    cases.push_back({"", {"empty", "give a style document"}});
    cases.push_back({deep, {"line 1, column 1", "not an object", "begins with {"}});
    cases.push_back({R"({"metadata":)" + deep, {"line 1, column 140", "deeper than 128", "flatten"}});
    for (const auto& [document, parts] : cases) {
        const auto message = failureOf(document);
        EXPECT_THAT(message, testing::StartsWith("style document bad/style.json: "));
        for (const auto& part : parts) {
            EXPECT_THAT(message, HasSubstr(part)) << document.substr(0, 100);
        }
    }
}

TEST_F(StyleLoadingTest, ReadsWhatTheModelNeeds) {
    const auto view = makeView();
    view->setStyleJSON(
        "\xEF\xBB\xBF"
        R"({"layers":[{"id":"old","type":"background"}],"version":8.0,"name":"지도",
        "sources":{"s":{"type":"geojson","data":{"layers":[1]}}},"metadata":{"layers":[{"id":1}]},
        "layers":[{"id":"sea","type":"background","paint":{"layers":[7],"minzoom":"x"}},
                  {"id":"land","type":"fill","source":"s","maxzoom":9,"layout":{"visibility":"none"}},
                  {"id":"names","type":"symbol","source":"s","minzoom":4.5},
                  {"id":"dots","type":"circle","source":"s"}]})");
    EXPECT_EQ(view->style(), nullptr);
    EXPECT_TRUE(port.runUntilIdle());
    ASSERT_NE(view->style(), nullptr) << log->failure;
    EXPECT_EQ(view->style()->description(), "MLNStyle \"지도\" with 4 layers");
    const auto& land = dynamic_cast<const MLNFillStyleLayer&>(*view->style()->layerWithIdentifier("land"));
    EXPECT_TRUE(!land.isVisible() && land.isFromDocument());
    EXPECT_EQ(land.sourceIdentifier(), "s");
    EXPECT_EQ(land.maximumZoomLevel(), 9);
    EXPECT_EQ(view->style()->layers().front()->kind(), MLNStyleLayerKind::background);
    EXPECT_EQ(dynamic_cast<const MLNSymbolStyleLayer&>(*view->style()->layerWithIdentifier("names"))
                  .minimumZoomLevel(),
              4.5F);
}

TEST_F(StyleLoadingTest, TheNewestRequestWins) {
    port.serveDocument("other.json", R"({"version":8,"name":"other","sources":{},"layers":[]})");
    const auto view = makeView("style.json");
    view->setStyleURL("missing.json");
    view->setStyleJSON("[");
    view->setStyleURL("other.json");
    EXPECT_EQ(log->take(), "");
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(log->take(), "style other");
    const auto* present = view->style();
    for (const std::string address : {"missing.json", "", "with blank", "line\nbreak"}) {
        view->setStyleURL(address);
        EXPECT_TRUE(port.runUntilIdle());
        EXPECT_EQ(log->take(), "failed");
        EXPECT_THAT(log->failure, HasSubstr(address));
        EXPECT_EQ(view->style(), present);
    }
    for (const std::string address : {"", "with blank"}) {
        const auto empty = makeView(address);
        EXPECT_TRUE(port.runUntilIdle());
        EXPECT_EQ(log->take() + (empty->style() == nullptr ? "" : "style"), "");
    }
}

TEST_F(StyleLoadingTest, TheViewMayGoInTheLoadedCallbackOrBeforeIt) {
    for (const std::string address : {"style.json", "missing.json"}) {
        auto view = makeView(address);
        log->listener = [&view](MLNMapView&, const std::string&) { view.reset(); };
        EXPECT_TRUE(port.runUntilIdle());
        EXPECT_EQ(view, nullptr);
        log->listener = nullptr;
        static_cast<void>(log->take());
        view = makeView(address);
        view.reset();
        EXPECT_TRUE(port.runUntilIdle());
        EXPECT_EQ(log->take(), "");
    }
}

TEST_F(StyleLoadingTest, WhatTheRendererRefusesLeavesTheStyleThatThereIs) {
    RecordingEnginePort engine;
    auto& record = engine.record;
    const auto view = makeView("style.json");
    port.advance(0.1);
    ASSERT_EQ(record.documents.size(), 1U);
    EXPECT_EQ(record.documents[0].address, "style.json");
    EXPECT_EQ(record.documents[0].text, emptyStyle);
    record.host->rendererDidLoadStyle();
    EXPECT_EQ(log->take(), "style test");
    const auto* present = view->style();
    view->setStyleJSON(emptyStyle);
    port.advance(0.1);
    view->style()->addLayer(std::make_shared<MLNFillStyleLayer>("a", std::string("a")));
    port.advance(0.1);
    EXPECT_THAT(record.calls, testing::Not(testing::Contains("commit")));
    record.fault = "the colour is no colour";
    view->setStyleJSON(emptyStyle);
    port.advance(0.1);
    EXPECT_EQ(log->take() + ": " + log->failure, "failed: the colour is no colour");
    EXPECT_EQ(view->style(), present);
    record.host->rendererDidLoadStyle();
    EXPECT_EQ(log->take(), "style test") << "the one that was on its way";
}

}  // namespace
}  // namespace pelta
