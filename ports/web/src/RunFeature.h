#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "Run.h"

namespace pelta {

class RunSource;

/// When a feature was last sent. The engine keeps features in the order of their arrival; an update takes one
/// to the end. Differences that wait for the engine's worker are put together, additions before updates.
struct Arrival {
    std::uint32_t number = 0;
    bool isUpdate = false;

    /// Whether a feature arrives before another, put together or not.
    [[nodiscard]] bool isBefore(const Arrival& other) const {
        return number < other.number && (!isUpdate || other.isUpdate);
    }
};

/// A feature of the engine: a shape, and what the layers that draw it show of it, at most one of each kind.
/// So an area and its outline are one feature, as a page written by hand would have it.
struct RunFeature {
    std::uint32_t id = 0;  ///< No other feature of a map has had it.
    RunSource* source = nullptr;
    std::array<ModelLayer*, drawnKinds> layers{};  ///< By kind; null for none.
    Arrival arrival;
    std::uint64_t revision = 0;        ///< Of the shape that the engine has; 0 before the feature is sent.
    std::vector<std::string> leaving;  ///< Properties of layers that have left since.
    bool isListed = false;             ///< To be written with the source's next changes.
};

/// The features of all sources of a map.
class RunFeatures {
 public:
    [[nodiscard]] RunFeature& make(RunSource& source) {
        auto& feature = features_[++lastId_];
        feature = std::make_unique<RunFeature>();
        feature->id = lastId_;
        feature->source = &source;
        return *feature;
    }
    void remove(const RunFeature& feature) { features_.erase(feature.id); }

    /// The feature with an identifier, or null.
    [[nodiscard]] const RunFeature* find(std::uint32_t id) const {
        const auto found = features_.find(id);
        return found == features_.end() ? nullptr : found->second.get();
    }

    /// The feature is going to be sent after all others.
    void noteArrival(RunFeature& feature) { feature.arrival = {++lastArrival_, feature.revision != 0}; }
    [[nodiscard]] std::uint32_t lastArrival() const noexcept { return lastArrival_; }

 private:
    std::unordered_map<std::uint32_t, std::unique_ptr<RunFeature>> features_;
    std::uint32_t lastId_ = 0;
    std::uint32_t lastArrival_ = 0;
};

}  // namespace pelta
