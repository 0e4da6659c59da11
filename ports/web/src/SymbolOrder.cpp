#include "SymbolOrder.h"

#include <algorithm>
#include <utility>

#include "LayerJson.h"
#include "RunLayerJson.h"
#include "RunSource.h"

namespace pelta {

namespace {

/// Symbols of one run with sort keys of their own, and bands of larger runs.
constexpr std::size_t keyLimit = 16;

/// The key that a feature has for its layer of a kind, as an expression.
std::string ownKey(MLNStyleLayerKind kind) {
    return R"(["get",")" + std::string(keyProperty(kind)) + "\"]";
}

}  // namespace

void SymbolOrder::featureLeft(std::uint32_t run) {
    const auto order = orders_.find(run);
    if (order != orders_.end() && --order->second.features == 0) {
        orders_.erase(order);
    }
}

void SymbolOrder::keep(Run& run, const RunFeatures& features) {
    const bool isSymbol = run.members.front()->layer->kind() == MLNStyleLayerKind::symbol;
    if (!isSymbol || (!isBanded(run) && run.members.size() <= keyLimit)) {
        return;
    }
    Order& order = orders_[run.number];
    std::vector<double> starts;
    bool isCovered = std::exchange(order.isBanded, true);
    std::uint32_t next = features.lastArrival();
    const auto arrivalOf = [&](const ModelLayer& member) {
        return isStale(member) ? Arrival{++next, member.sent.feature != nullptr && !member.isAnew}
                               : member.sent.feature->arrival;
    };
    Arrival below = arrivalOf(*run.members.front());
    for (std::size_t i = 1; i < run.members.size(); ++i) {
        const Arrival arrival = arrivalOf(*run.members[i]);
        if (!below.isBefore(arrival)) {
            starts.push_back(run.members[i]->sortKey);
            isCovered = isCovered && order.separates(*run.members[i - 1], *run.members[i]);
        }
        below = arrival;
    }
    if (starts.size() >= keyLimit) {
        std::for_each(run.members.begin(), run.members.end(), [](ModelLayer* each) { each->isAnew = true; });
        starts.clear();
        isCovered = false;
    }
    if (!isCovered) {
        order.starts = std::move(starts);
        unwritten_.emplace_back(run.number, runLayerIdentifier(run));
    }
}

bool SymbolOrder::isBanded(const Run& run) const {
    const auto order = orders_.find(run.number);
    return order != orders_.end() && order->second.isBanded;
}

bool SymbolOrder::staysInPlace(const ModelLayer& member) const {
    const auto& members = member.run->members;
    return member.position + 1 == members.size() || !isBanded(*member.run) ||
           orders_.at(member.run->number).separates(member, *members[member.position + 1]);
}

std::string SymbolOrder::sortKey(const Run& run) const {
    const auto order = orders_.find(run.number);
    return order == orders_.end() || !order->second.isBanded ? ownKey(run.kind) : order->second.sortKey();
}

void SymbolOrder::writeChanges(JsonWriter& calls) {
    for (const auto& [run, layer] : std::exchange(unwritten_, {})) {
        if (const auto order = orders_.find(run); order != orders_.end()) {
            beginStyleCall(calls, "setLayoutProperty");
            calls.value(layer);
            calls.value("symbol-sort-key");
            calls.raw(order->second.sortKey());
            writeUnchecked(calls);
            calls.endArray();
        }
    }
}

bool SymbolOrder::Order::separates(const ModelLayer& lower, const ModelLayer& upper) const {
    const auto start = std::upper_bound(starts.begin(), starts.end(), lower.sortKey);
    return start != starts.end() && *start <= upper.sortKey;
}

std::string SymbolOrder::Order::sortKey() const {
    if (starts.empty()) {
        return "0";
    }
    JsonWriter json;
    json.beginArray();
    json.value("step");
    json.raw(ownKey(MLNStyleLayerKind::symbol));
    json.value(0);
    for (std::size_t i = 0; i < starts.size(); ++i) {
        json.value(starts[i]);
        json.value(i + 1);
    }
    json.endArray();
    return json.take();
}

}  // namespace pelta
