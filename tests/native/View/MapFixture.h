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

    static void expectCamera(const pelta::PgmMapView& map, pelta::CLLocationCoordinate2D target, double zoom,
                             double tilt, double bearing) {
        const auto camera = map.cameraPosition();
        EXPECT_NEAR(camera->target().latitude, target.latitude, 1e-9);
        EXPECT_NEAR(camera->target().longitude, target.longitude, 1e-9);
        EXPECT_NEAR(camera->zoom(), zoom, 1e-9);
        EXPECT_NEAR(camera->tilt(), tilt, 1e-9);
        EXPECT_NEAR(camera->bearing(), bearing, 1e-9);
    }

    static pelta::MLNMapView& engineOf(const std::shared_ptr<pelta::PgmMapView>& map) {
        return *map->mapView();
    }

    /// Identifiers of all layers of the style, lowest first, in one line.
    static std::string layersOf(const std::shared_ptr<pelta::PgmMapView>& map) {
        std::string line;
        for (const auto& layer : engineOf(map).style()->layers()) {
            line += (line.empty() ? "" : " ") + layer->identifier();
        }
        return line;
    }

    /// The "identifier" attributes of the shape source's features, in its order, in one line.
    static std::string featuresOf(const std::shared_ptr<pelta::PgmMapView>& map) {
        std::string line;
        const auto source = engineOf(map).style()->sourceWithIdentifier("pel-shapes");
        if (const auto all =
                std::dynamic_pointer_cast<const pelta::MLNShapeCollectionFeature>(source->shape())) {
            for (const auto& feature : all->shapes()) {
                const auto& name = std::get<std::string>(*feature->attribute("identifier"));
                line += (line.empty() ? "" : " ") + name;
            }
        }
        return line;
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
