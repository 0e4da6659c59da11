#pragma once

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include <pelta/Engine/MLNMapView.h>
#include <pelta/Engine/MapRenderer.h>
#include <pelta/Platform/Make.h>
#include <pelta/headless/HeadlessPort.h>

namespace pelta {

inline const std::string emptyStyle = R"({"version":8,"name":"test","sources":{},"layers":[]})";

/// Writes down events as one text each, such as "will 1 animated", and lets a test answer them.
class EventLog final : public MLNMapViewDelegate {
 public:
    std::vector<std::string> events;
    /// Called after each event has been written down.
    std::function<void(MLNMapView&, const std::string&)> listener;

    [[nodiscard]] std::string take() {
        std::string all;
        for (const auto& event : std::exchange(events, {})) {
            all += (all.empty() ? "" : ", ") + event;
        }
        return all;
    }

    using Reason = MLNCameraChangeReason;
    void didFinishLoadingStyle(MLNMapView& view, MLNStyle& style) override {
        note(view, "style " + style.name());
    }
    void mapViewDidFailLoadingMap(MLNMapView& view, std::string_view message) override {
        failure = message;
        note(view, "failed");
    }
    void regionWillChange(MLNMapView& view, Reason reason, bool animated) override {
        note(view, "will " + describe(reason, animated));
    }
    void regionIsChanging(MLNMapView& view, Reason reason) override {
        const auto event = "is " + describe(reason, false);
        if (!events.empty() && events.back() == event) {
            events.pop_back();
        }
        note(view, event);
    }
    void regionDidChange(MLNMapView& view, Reason reason, bool animated) override {
        note(view, "did " + describe(reason, animated));
    }
    void mapViewWillStartRenderingFrame(MLNMapView& view) override { noteOfFrames(view, "frame"); }
    void mapViewDidBecomeIdle(MLNMapView& view) override { noteOfFrames(view, "idle"); }
    void didUpdateUserLocation(MLNMapView& view, const MLNUserLocation&) override { note(view, "location"); }
    void didChangeUserTrackingMode(MLNMapView& view, MLNUserTrackingMode mode, bool) override {
        note(view, "mode " + std::to_string(static_cast<unsigned>(mode)));
    }

    std::string failure;
    bool notesFrames = false;

 private:
    static std::string describe(MLNCameraChangeReason reason, bool animated) {
        return std::to_string(static_cast<std::uint64_t>(reason)) + (animated ? " animated" : "");
    }
    void noteOfFrames(MLNMapView& view, const std::string& event) {
        if (notesFrames) {
            note(view, event);
        }
    }
    void note(MLNMapView& view, const std::string& event) {
        events.push_back(event);
        if (const auto call = listener) {
            call(view, event);
        }
    }
};

/// A map view of 400 × 300 points over an empty style on the headless port.
class EngineTest : public testing::Test {
 protected:
    static constexpr CGRect viewFrame{{0, 0}, {400, 300}};

    EngineTest() { port.serveDocument("style.json", emptyStyle); }

    std::shared_ptr<MLNMapView> makeView(std::optional<std::string> style = std::nullopt) {
        auto view = MLNMapView::initWithFrameStyleURL(viewFrame, std::move(style));
        view->setDelegate(log);
        return view;
    }

    /// The camera at a view point, as `view` describes it.
    static MLNMapCamera cameraAt(const MLNMapView& view, CLLocationCoordinate2D center, double zoom,
                                 double pitch = 0, double heading = 0) {
        return MLNMapCamera::cameraLookingAtCenterCoordinate(
            center, MLNAltitudeForZoomLevel(zoom, pitch, center.latitude, view.bounds().size), pitch,
            heading);
    }

    static void expectView(const MLNMapView& view, CLLocationCoordinate2D center, double zoom,
                           double pitch = 0, double heading = 0, double tolerance = 1e-9) {
        const auto camera = view.camera();
        EXPECT_NEAR(camera.centerCoordinate.latitude, center.latitude, tolerance);
        EXPECT_NEAR(camera.centerCoordinate.longitude, center.longitude, tolerance);
        EXPECT_NEAR(view.zoomLevel(), zoom, tolerance);
        EXPECT_NEAR(camera.pitch, pitch, tolerance);
        EXPECT_NEAR(camera.heading, heading, tolerance);
    }

    HeadlessPort port{1};
    std::shared_ptr<EventLog> log = std::make_shared<EventLog>();
};

}  // namespace pelta
