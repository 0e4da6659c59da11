#pragma once

#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <pelta/Engine/MLNStyle.h>
#include <pelta/Engine/MapRenderer.h>

#include "EngineHit.h"
#include "JsonWriter.h"
#include "LayerOrder.h"
#include "Run.h"
#include "RunPlanner.h"
#include "RunSource.h"
#include "SourceNames.h"

namespace pelta {

/// Turns what changed in a style into calls on the browser's engine, and knows what the engine has.
///
/// Runs of layers that can be drawn as one are one layer of the engine, see `RunPlanner`; the others are
/// layers of the engine as they are. All calls of a frame cross to JavaScript as one text, an array of
/// `[source or null, method, arguments…]`.
class StyleCompiler {
 public:
    /// @param drawsLiterally  each layer of the model is to be one of the engine, for comparison.
    explicit StyleCompiler(bool drawsLiterally) : drawsLiterally_(drawsLiterally) {}

    /// A document is in place, with its own layers and nothing else.
    void reset(const StyleDocument& document);

    /// The calls that bring the engine in line with `style`, which is as it was at the last call but for
    /// `changes`, for a camera at `zoom`.
    [[nodiscard]] std::string compile(const MLNStyle& style, const MLNStyleChanges& changes, double zoom);
    /// Whether the camera has come to a zoom for which `recompile` has something to do.
    [[nodiscard]] bool needsRecompiling(double zoom) const { return !planner_.holdsAt(zoom); }
    /// The calls that bring the engine in line with the style as it was compiled last, for a camera at
    /// `zoom`.
    [[nodiscard]] std::string recompile(double zoom);
    /// The calls that take out layers which draw nothing since everything has arrived; empty if there are
    /// none.
    [[nodiscard]] std::string removeRetiredLayers();

    /// The layers of the engine that draw any of the model's layers; for none given, of all of them.
    [[nodiscard]] std::vector<std::string> engineLayers(std::span<const std::string> candidates) const;
    /// What was found in the layers that `engineLayers` names, topmost first, each feature once for each of
    /// the model's layers.
    [[nodiscard]] std::vector<std::shared_ptr<const MLNFeature>> features(
        std::span<const std::string> candidates, std::span<const std::string> engineLayers,
        std::span<const EngineHit> hits) const;

 private:
    struct Source {
        ShapeIndex shapes;
        bool exists = false;                       ///< In the model.
        std::size_t literalLayers = 0;             ///< That draw it as it is.
        bool isSentWhole = false;                  ///< The engine has it under its own name.
        bool isChanged = false;                    ///< Since it was sent whole.
        std::vector<const MLNShape*> features;     ///< As sent whole.
        std::map<MLNShapeKind, RunSource> byKind;  ///< What its runs draw.
    };
    struct Found;

    void takeRemovedLayers(const std::vector<std::string>& identifiers);
    void takeSources(const MLNStyle& style, const MLNStyleChanges& changes);
    void takeLayers(const MLNStyleChanges& changes);
    ModelLayer& entered(const std::shared_ptr<MLNStyleLayer>& layer);
    void bindPlace(ModelLayer& layer);
    void leavePlace(ModelLayer& layer);
    void readLayer(ModelLayer& layer);
    /// Takes over what the shape of a line or an area spans; true if that is new.
    [[nodiscard]] static bool takeExtent(ModelLayer& layer, const MLNShape& shape);
    [[nodiscard]] bool isDrawnLiterally(const ModelLayer& layer) const;
    void setLiteral(ModelLayer& layer, bool isLiteral);

    void takeStack(const MLNStyle& style);
    void replan(double zoom);
    void updateRuns();
    void updateRun(Run& run);
    void updateTouched();
    void noteVarying(ModelLayer& layer);
    [[nodiscard]] RunSource& runSource(const ModelLayer& layer);
    /// Takes a layer out of the feature that the engine has for its shape, if it has one.
    static void withdraw(ModelLayer& layer);

    void writeSources();
    void writeWholeSource(const std::string& identifier, Source& source);
    [[nodiscard]] std::vector<std::string> wantedLayers() const;
    void arrangeLayers(const std::vector<std::string>& wanted);
    void writeRunProperties();
    void writeLiteralProperties(const MLNStyleChanges& changes);

    [[nodiscard]] Found found(const EngineHit& hit, const std::string& engineLayer) const;

    bool drawsLiterally_;
    JsonWriter calls_;
    SourceNames sourceNames_;
    LayerReader reader_;
    LayerOrder order_;
    RunPlanner planner_;
    RunFeatures features_;
    std::map<std::string, Source, std::less<>> sources_;
    std::unordered_map<const MLNStyleLayer*, std::unique_ptr<ModelLayer>> layers_;
    std::unordered_map<std::string_view, ModelLayer*> layersByName_;  ///< Keys lie in the layers.
    std::vector<std::unique_ptr<ModelLayer>> removed_;                ///< Until no run refers to them.
    std::vector<ModelLayer*> stack_;                                  ///< Bottom first.
    std::vector<ModelLayer*> touched_;
    bool needsPlan_ = false;
};

}  // namespace pelta
