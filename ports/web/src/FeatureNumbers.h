#pragma once

#include <cstdint>
#include <unordered_map>

#include "Run.h"

namespace pelta {

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

/// The numbers of the features that the engine has for layers of the model. None is used twice.
class FeatureNumbers {
 public:
    [[nodiscard]] std::uint32_t enter(const ModelLayer& layer) {
        features_.emplace(++last_, Feature{&layer, {++lastArrival_, false}});
        return last_;
    }
    void leave(std::uint32_t number) { features_.erase(number); }
    void noteUpdate(std::uint32_t number) { features_.at(number).arrival = {++lastArrival_, true}; }

    /// The layer that a feature stands for, or null.
    [[nodiscard]] const ModelLayer* find(std::uint32_t number) const {
        const auto found = features_.find(number);
        return found == features_.end() ? nullptr : found->second.layer;
    }
    [[nodiscard]] Arrival arrival(std::uint32_t number) const { return features_.at(number).arrival; }
    [[nodiscard]] std::uint32_t lastArrival() const noexcept { return lastArrival_; }

 private:
    struct Feature {
        const ModelLayer* layer;
        Arrival arrival;
    };

    std::unordered_map<std::uint32_t, Feature> features_;
    std::uint32_t last_ = 0;
    std::uint32_t lastArrival_ = 0;
};

}  // namespace pelta
