#pragma once

#include <string>
#include <vector>

#include <pelta/Engine/MapRenderer.h>

namespace pelta {

/// What a `RecordingRenderer` has been told and what it answers; outlives it.
struct RendererRecord {
    MapRendererHost* host = nullptr;
    std::vector<std::string> calls;
    std::vector<StyleDocument> documents;
    std::optional<std::string> fault;  ///< Of every document.
    MLNStyleChanges changes;           ///< Of the last commit.
    CameraState camera;
    CLLocationCoordinate2D pointed;  ///< What is drawn at every point.
    bool isSettled = true;
};

/// A renderer that only writes down, for what a real one on the headless port never does: gestures, slow or
/// broken styles.
class RecordingRenderer final : public MapRenderer {
 public:
    explicit RecordingRenderer(RendererRecord& record) : record_(record) {}

    void setSize(CGSize, double) override {}
    void setContentInset(UIEdgeInsets) override {}
    void setGestures(const GestureSettings&) override {}
    void setLimits(double, double, double, double) override {}
    void setCamera(const CameraState& camera) override { record_.camera = camera; }
    [[nodiscard]] CameraState camera() const override { return record_.camera; }
    [[nodiscard]] CGPoint pointForCoordinate(CLLocationCoordinate2D) const override { return {}; }
    [[nodiscard]] CLLocationCoordinate2D coordinateForPoint(CGPoint) const override {
        return record_.pointed;
    }
    std::optional<std::string> applyStyle(const StyleDocument& document) override {
        record_.documents.push_back(document);
        return record_.fault;
    }
    void commit(const MLNStyle&, const MLNStyleChanges& changes) override {
        record_.calls.emplace_back("commit");
        record_.changes = changes;
    }
    void drawFrame() override { record_.calls.emplace_back("draw"); }
    [[nodiscard]] bool isSettled() const override { return record_.isSettled; }
    [[nodiscard]] std::vector<std::shared_ptr<const MLNFeature>> featuresInRect(
        CGRect, std::span<const std::string>) const override {
        return {};
    }

 private:
    RendererRecord& record_;
};

/// Makes recording renderers in place of the headless port's while it lives.
class RecordingEnginePort final : public EnginePort {
 public:
    RecordingEnginePort() : replaced_(&EnginePort::current()) { EnginePort::install(this); }
    ~RecordingEnginePort() override { EnginePort::install(replaced_); }

    std::unique_ptr<MapRenderer> makeMapRenderer(MapRendererHost& host, UIView&, CGSize, double) override {
        record.host = &host;
        return std::make_unique<RecordingRenderer>(record);
    }

    RendererRecord record;

 private:
    EnginePort* replaced_;
};

}  // namespace pelta
