#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include <pelta/Engine/MLNStyle.h>
#include <pelta/Engine/MapRenderer.h>

#include "JsonWriter.h"

namespace pelta {

/// Turns what changed in a style into calls on the browser's engine, and knows what the engine has.
///
/// Each layer of the model is one layer of the engine. All calls of a frame cross to JavaScript as one text,
/// an array of `[source or null, method, arguments…]`.
class StyleCompiler {
 public:
    /// A document is in place, with its own layers and nothing else.
    void reset(const StyleDocument& document);

    /// The calls that bring the engine in line with `style`, which is as it was at the last call but for
    /// `changes`.
    [[nodiscard]] std::string compile(const MLNStyle& style, const MLNStyleChanges& changes);

    [[nodiscard]] bool hasLayer(const std::string& identifier) const {
        return layers_.count(identifier) != 0;
    }
    /// The feature with an index in a source as it was last compiled; null for another's source or index.
    [[nodiscard]] std::shared_ptr<const MLNFeature> feature(const std::string& source,
                                                            std::size_t index) const;

 private:
    struct CompiledSource {
        std::shared_ptr<const MLNShape> shape;
        std::vector<const MLNShape*> features;
    };

    void removeLayers(const MLNStyleChanges& changes);
    void removeSources(const MLNStyle& style, const MLNStyleChanges& changes);
    void compileSources(const MLNStyleChanges& changes);
    void compileOrder(const MLNStyle& style);
    void compileProperties(const MLNStyleChanges& changes);
    void beginCall(std::optional<std::string_view> source, std::string_view method);

    JsonWriter calls_;
    std::vector<std::string> order_;             ///< Layers of the engine, bottom first.
    std::unordered_set<std::string> layers_;     ///< The same ones.
    std::unordered_set<std::string> newLayers_;  ///< Those that this compilation has added.
    std::map<std::string, CompiledSource> sources_;
};

}  // namespace pelta
