#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "JsonWriter.h"
#include "Run.h"
#include "RunFeature.h"
#include "SymbolOrder.h"

namespace pelta {

/// Begins a call of a frame: `[source or null, method, arguments…]`.
void beginSourceCall(JsonWriter& calls, std::string_view source, std::string_view method);
void beginStyleCall(JsonWriter& calls, std::string_view method);

/// Begins the description of a source of features: an object whose last member, GeoJSON, comes next.
void beginSource(JsonWriter& json);

/// Whether the engine has a member of a run otherwise than it is now.
[[nodiscard]] bool isStale(const ModelLayer& member);

/// A source of the engine that holds the shapes of one kind which runs draw. What changes crosses as
/// differences.
class RunSource {
 public:
    RunSource(std::string identifier, RunFeatures& features)
        : identifier_(std::move(identifier)), features_(&features) {}

    /// The engine's name of the source.
    [[nodiscard]] const std::string& identifier() const noexcept { return identifier_; }

    /// To be called before members of a run are sent in order.
    void keepOrder(Run& run) { order_.keep(run, *features_); }
    [[nodiscard]] const SymbolOrder& order() const noexcept { return order_; }

    /// Brings the feature of a layer's shape in line with the layer; once a frame.
    void send(ModelLayer& layer);
    /// Takes a layer, which is in this source, out of the feature of its shape.
    void withdraw(ModelLayer& layer);

    /// Writes the call that tells the engine what was sent and withdrawn since the last time, if anything
    /// was.
    void writeChanges(JsonWriter& calls);
    /// Writes the calls for the engine's layers, which must be there, that keep the order of what was sent.
    void writeOrderChanges(JsonWriter& calls) { order_.writeChanges(calls); }

 private:
    [[nodiscard]] RunFeature& featureFor(const ModelLayer& layer);
    void list(RunFeature& feature);
    void noteRun(const ModelLayer& layer, std::uint32_t run);
    void writeAddition(const RunFeature& feature);
    void writeUpdate(RunFeature& feature);

    std::string identifier_;
    RunFeatures* features_;
    SymbolOrder order_;
    std::vector<RunFeature*> listed_;  ///< In the order in which they are to arrive.
    JsonWriter removed_;
    JsonWriter added_;
    JsonWriter updated_;
    bool exists_ = false;
};

}  // namespace pelta
