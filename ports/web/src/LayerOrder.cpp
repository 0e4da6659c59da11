#include "LayerOrder.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "AscendingRun.h"
#include "LayerJson.h"
#include "RunSource.h"

namespace pelta {

namespace {

/// The layers that can stay where they are while the others are moved around them.
std::unordered_set<std::string_view> stayingLayers(const std::vector<std::string>& former,
                                                   const std::vector<std::string>& wanted) {
    std::unordered_map<std::string_view, std::size_t> formerRank;
    for (std::size_t i = 0; i < former.size(); ++i) {
        formerRank.emplace(former[i], i);
    }
    std::vector<std::size_t> ranks;
    std::vector<std::string_view> names;
    for (const std::string& identifier : wanted) {
        if (const auto found = formerRank.find(identifier); found != formerRank.end()) {
            ranks.push_back(found->second);
            names.emplace_back(identifier);
        }
    }
    const std::vector<bool> stays = longestAscendingRun(ranks);
    std::unordered_set<std::string_view> staying;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (stays[i]) {
            staying.insert(names[i]);
        }
    }
    return staying;
}

void writeNameOrNull(JsonWriter& json, std::string_view name) {
    if (name.empty()) {
        json.null();
    } else {
        json.value(name);
    }
}

}  // namespace

void LayerOrder::reset(const StyleDocument& document) {
    *this = {};
    for (const DocumentLayer& layer : document.layers) {
        order_.push_back(layer.identifier);
        layers_.insert(layer.identifier);
    }
}

void LayerOrder::remove(JsonWriter& calls, const std::vector<std::string>& identifiers) {
    const bool hasAny = std::any_of(identifiers.begin(), identifiers.end(),
                                    [this](const std::string& identifier) { return has(identifier); });
    if (!hasAny) {
        return;
    }
    const std::unordered_set<std::string_view> leaving(identifiers.begin(), identifiers.end());
    std::erase_if(order_, [&](const std::string& identifier) {
        if (leaving.count(identifier) == 0) {
            return false;
        }
        writeRemoval(calls, identifier);
        return true;
    });
}

void LayerOrder::removeOthers(JsonWriter& calls, const std::vector<std::string>& wanted,
                              const std::function<bool(const std::string&)>& isOfRun) {
    const std::unordered_set<std::string_view> staying(wanted.begin(), wanted.end());
    std::erase_if(order_, [&](const std::string& identifier) {
        if (staying.count(identifier) != 0) {
            return false;
        }
        if (isOfRun(identifier)) {
            retired_.push_back(identifier);
        } else {
            writeRemoval(calls, identifier);
        }
        return true;
    });
}

void LayerOrder::removeRetired(JsonWriter& calls) {
    for (const std::string& identifier : std::exchange(retired_, {})) {
        writeRemoval(calls, identifier);
    }
}

void LayerOrder::writeRemoval(JsonWriter& calls, const std::string& identifier) {
    beginStyleCall(calls, "removeLayer");
    calls.value(identifier);
    calls.endArray();
    layers_.erase(identifier);
}

void LayerOrder::arrange(JsonWriter& calls, const std::vector<std::string>& wanted,
                         const std::function<void(std::size_t)>& write) {
    const auto staying = stayingLayers(order_, wanted);
    std::string_view above;  // The layer that the next one comes directly below; none at the top.
    for (std::size_t i = wanted.size(); i-- > 0;) {
        const std::string& identifier = wanted[i];
        if (layers_.insert(identifier).second) {
            added_.insert(identifier);
            beginStyleCall(calls, "addLayer");
            write(i);
            writeNameOrNull(calls, above);
            writeUnchecked(calls);
            calls.endArray();
        } else if (staying.count(identifier) == 0) {
            beginStyleCall(calls, "moveLayer");
            calls.value(identifier);
            writeNameOrNull(calls, above);
            calls.endArray();
        }
        above = identifier;
    }
    order_ = wanted;
}

}  // namespace pelta
