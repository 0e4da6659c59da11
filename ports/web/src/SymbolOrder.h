#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "JsonWriter.h"
#include "Run.h"
#include "RunFeature.h"

namespace pelta {

/// Keeps the symbols of runs in order with few sort keys.
///
/// Each distinct sort key costs the engine drawing calls in every tile, and symbols with equal ones are drawn
/// in the order of their arrival. So the engine's layer of a large run turns ranges of its features' keys,
/// *bands*, into one sort key each: a band ends where the next member up has arrived earlier. That is a
/// property of the layer, so what moves or is put between others crosses as a single feature.
class SymbolOrder {
 public:
    /// The features that the engine has of a run have become more or fewer.
    void featureCameTo(std::uint32_t run) { ++orders_[run].features; }
    void featureLeft(std::uint32_t run);

    /// Lays out the bands of a run whose stale members are going to be sent in order. Where there would be
    /// too many, all members are marked to be sent anew.
    void keep(Run& run, const RunFeatures& features);
    /// Whether members are drawn in the order of their arrival.
    [[nodiscard]] bool isBanded(const Run& run) const;
    /// Whether a member that is updated by itself stays where it is drawn.
    [[nodiscard]] bool staysInPlace(const ModelLayer& member) const;

    /// The sort key of the engine's layer for a run, as JSON.
    [[nodiscard]] std::string sortKey(const Run& run) const;
    /// Writes the calls that bring the layers in line with bands that have changed.
    void writeChanges(JsonWriter& calls);

 private:
    struct Order {
        std::size_t features = 0;
        bool isBanded = false;
        std::vector<double> starts;  ///< Keys at which bands begin, ascending, but for the lowest band.

        [[nodiscard]] bool separates(const ModelLayer& lower, const ModelLayer& upper) const;
        [[nodiscard]] std::string sortKey() const;  ///< While banded.
    };

    std::unordered_map<std::uint32_t, Order> orders_;               ///< By run.
    std::vector<std::pair<std::uint32_t, std::string>> unwritten_;  ///< Runs and their layers.
};

}  // namespace pelta
