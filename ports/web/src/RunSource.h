#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "JsonWriter.h"
#include "Run.h"

namespace pelta {

/// Begins a call of a frame: `[source or null, method, arguments…]`.
void beginSourceCall(JsonWriter& calls, std::string_view source, std::string_view method);
void beginStyleCall(JsonWriter& calls, std::string_view method);

/// Writes the description of a source of features. `data` is GeoJSON.
void writeSource(JsonWriter& json, std::string_view data);

/// The numbers of the features that the engine has for layers of the model. None is used twice.
class FeatureNumbers {
 public:
    [[nodiscard]] std::uint32_t enter(const ModelLayer& layer) {
        layers_.emplace(++last_, &layer);
        return last_;
    }
    void leave(std::uint32_t number) { layers_.erase(number); }
    /// The layer that a feature stands for, or null.
    [[nodiscard]] const ModelLayer* find(std::uint32_t number) const {
        const auto found = layers_.find(number);
        return found == layers_.end() ? nullptr : found->second;
    }

 private:
    std::unordered_map<std::uint32_t, const ModelLayer*> layers_;
    std::uint32_t last_ = 0;
};

/// A source of the engine that holds one feature for each layer of the model that is drawn in a run. What
/// changes crosses as differences.
class RunSource {
 public:
    RunSource(std::string identifier, FeatureNumbers& numbers)
        : identifier_(std::move(identifier)), numbers_(&numbers) {}

    /// Brings a layer's feature in line with it.
    void send(ModelLayer& layer);
    /// Takes a layer's feature out.
    void withdraw(ModelLayer& layer);

    /// Writes the call that tells the engine what was sent and withdrawn since the last time, if anything
    /// was.
    void writeChanges(JsonWriter& calls);

 private:
    void add(ModelLayer& layer, PropertySet own);
    void update(ModelLayer& layer, PropertySet own);
    [[nodiscard]] bool hasChanges() const;

    std::string identifier_;
    FeatureNumbers* numbers_;
    JsonWriter removed_;
    JsonWriter added_;
    JsonWriter updated_;
    bool exists_ = false;
};

}  // namespace pelta
