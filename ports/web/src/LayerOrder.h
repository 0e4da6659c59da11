#pragma once

#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

#include <pelta/Engine/MapRenderer.h>

#include "JsonWriter.h"

namespace pelta {

/// The layers that the engine has, and the calls that change them.
class LayerOrder {
 public:
    /// A document is in place, with its own layers and nothing else.
    void reset(const StyleDocument& document);

    [[nodiscard]] bool has(const std::string& identifier) const { return layers_.count(identifier) != 0; }
    /// True for layers that the last `arrange` has added.
    [[nodiscard]] bool isNew(const std::string& identifier) const { return added_.count(identifier) != 0; }
    void clearNew() { added_.clear(); }

    /// Takes out layers, those that the engine has.
    void remove(JsonWriter& calls, const std::vector<std::string>& identifiers);
    /// Takes out the layers that are not among those wanted. Those of runs are only noted and stay until
    /// `removeRetired`: the engine draws from tiles that are made beside it, and those on the screen have
    /// what was theirs in no other layer yet.
    void removeOthers(JsonWriter& calls, const std::vector<std::string>& wanted,
                      const std::function<bool(const std::string&)>& isOfRun);
    [[nodiscard]] bool hasRetired() const noexcept { return !retired_.empty(); }
    /// Takes out the layers noted, once the engine has brought its tiles up to date.
    void removeRetired(JsonWriter& calls);
    /// Adds and moves layers until they are those wanted, bottom first. `write` writes the layer with an
    /// index.
    void arrange(JsonWriter& calls, const std::vector<std::string>& wanted,
                 const std::function<void(std::size_t)>& write);

 private:
    void writeRemoval(JsonWriter& calls, const std::string& identifier);

    std::vector<std::string> order_;          ///< Bottom first.
    std::unordered_set<std::string> layers_;  ///< The same ones.
    std::unordered_set<std::string> added_;
    std::vector<std::string> retired_;  ///< No longer in the order.
};

}  // namespace pelta
