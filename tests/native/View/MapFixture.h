#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include <pelta/Pelta.h>
#include <pelta/headless/HeadlessPort.h>

/// A map view of 800 × 600 points on the headless port, two pixels a point. The default style is served as an
/// empty document unless a test says otherwise, and loads when time passes.
class MapFixture : public ::testing::Test {
 protected:
    static constexpr pelta::CGSize windowSize{800, 600};

    MapFixture() { serveStyle(emptyStyle()); }

    static std::string emptyStyle() { return R"({"version":8,"name":"empty","sources":{},"layers":[]})"; }

    /// A ground layer, the labels "places" above it, and roads above those.
    static std::string labelledStyle() {
        return R"({"version":8,"name":"labelled",
            "sources":{"base":{"type":"geojson","data":{"type":"FeatureCollection","features":[]}}},
            "layers":[{"id":"ground","type":"background"},
                      {"id":"places","type":"symbol","source":"base"},
                      {"id":"roads","type":"line","source":"base"}]})";
    }

    void serveStyle(const std::string& text) {
        port.serveDocument(std::string(pelta::defaultStyleURL()), text);
    }

    std::shared_ptr<pelta::PgmMapView> makeMap(std::shared_ptr<pelta::PgmMapOptions> options = nullptr) {
        auto map = pelta::PgmMapView::create(window->bounds(), std::move(options));
        window->addSubview(map);
        return map;
    }

    /// A map view whose style has loaded and whose frames have been drawn.
    std::shared_ptr<pelta::PgmMapView> makeLoadedMap() {
        auto map = makeMap();
        EXPECT_TRUE(port.runUntilIdle());
        EXPECT_TRUE(map->didFinishLoadingMap());
        return map;
    }

    static pelta::MLNMapView& engineOf(const std::shared_ptr<pelta::PgmMapView>& map) {
        return *map->mapView();
    }

    /// Identifiers of all layers of the style, lowest first.
    static std::vector<std::string> layersOf(const std::shared_ptr<pelta::PgmMapView>& map) {
        std::vector<std::string> identifiers;
        for (const auto& layer : engineOf(map).style()->layers()) {
            identifiers.push_back(layer->identifier());
        }
        return identifiers;
    }

    /// The "identifier" attributes of the shape source's features, in its order.
    static std::vector<std::string> featuresOf(const std::shared_ptr<pelta::PgmMapView>& map) {
        std::vector<std::string> identifiers;
        const auto source = engineOf(map).style()->sourceWithIdentifier("pel-shapes");
        const auto* collection = dynamic_cast<const pelta::MLNShapeCollectionFeature*>(source->shape().get());
        for (const auto& feature :
             collection ? collection->shapes() : std::vector<std::shared_ptr<pelta::MLNShape>>{}) {
            identifiers.push_back(std::get<std::string>(*feature->attribute("identifier")));
        }
        return identifiers;
    }

    /// What `work` writes to standard output with the logger on.
    template <class Work>
    static std::string logOf(Work&& work) {
        ::testing::internal::CaptureStdout();
        pelta::setIsLoggerEnabled(true);
        work();
        pelta::setIsLoggerEnabled(false);
        return ::testing::internal::GetCapturedStdout();
    }

    pelta::HeadlessPort port;
    std::shared_ptr<pelta::UIWindow> window = port.makeWindow(windowSize);
};
