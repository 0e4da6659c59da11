#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <pelta/Engine/MLNShape.h>
#include <pelta/Engine/MLNStyleLayer.h>
#include <pelta/Platform/UIColor.h>

#include "SharedText.h"

namespace pelta {

/// More than any kind of layer has properties.
constexpr std::size_t propertyLimit = 28;
/// A set of properties by their number, see `MLNStyleLayer::changes`.
using PropertySet = std::uint32_t;

/// Kinds of layers that runs are made of: symbols, lines, fills.
constexpr std::size_t drawnKinds = 3;
/// The place of a kind among them.
[[nodiscard]] constexpr std::size_t kindIndex(MLNStyleLayerKind kind) {
    if (kind == MLNStyleLayerKind::symbol) {
        return 0;
    }
    return kind == MLNStyleLayerKind::line ? 1 : 2;
}

/// How much of a layer there is to see.
enum class LayerSight {
    nothing,      ///< Nothing is drawn, nothing is found.
    transparent,  ///< Nothing to see; found where it would be.
    visible,
};

/// What a layer shows of the one shape that it selects.
struct LayerValues {
    LayerSight sight = LayerSight::nothing;
    /// What layers that are drawn as one have in common, as a text to compare. Null for nothing to be drawn.
    SharedText key;
    /// The values that each of them can have for itself, as JSON data by number; null where not set.
    std::array<SharedText, propertyLimit> own;
    double reach = 0;  ///< Points that lines and areas are drawn beyond their shape, at most.
};

/// Whether each of the layers that are drawn as one can have a value of its own for a property.
[[nodiscard]] bool isOwnProperty(std::string_view name);

/// The properties in which two layers differ.
[[nodiscard]] PropertySet differences(const std::array<SharedText, propertyLimit>& a,
                                      const std::array<SharedText, propertyLimit>& b);

/// Reads the values of layers. Neighbours mostly have equal ones, so it remembers the last value of each
/// property and spares writing it anew.
class LayerReader {
 public:
    /// @param layer  neither a document's layer nor of another kind than fill, line and symbol.
    /// @param shape  one that has something to draw.
    [[nodiscard]] LayerValues read(const MLNVectorStyleLayer& layer, const MLNShape& shape);

 private:
    using Value = std::variant<std::monostate, bool, double, std::string, UIColor, CGVector,
                               std::vector<std::string>, std::vector<double>>;
    struct Last {
        Value value;
        SharedText text;
    };

    /// What the layers of a run have in common.
    struct Common {
        std::string source;
        MLNShapeKind shape = MLNShapeKind::point;
        float minimumZoom = 0;
        float maximumZoom = 0;
        std::array<SharedText, propertyLimit + 2> values;
        PropertySet own = 0;  ///< Properties that each has a value of its own for.
        bool isSmoothed = false;
        std::string loner;  ///< The layer, where it stays by itself.

        friend bool operator==(const Common&, const Common&) = default;
    };
    struct LastKey {
        Common common;
        SharedText key;
    };

    template <class T>
    [[nodiscard]] SharedText textOf(Last& last, std::string_view name, const T& value);
    [[nodiscard]] SharedText keyOf(const MLNVectorStyleLayer& layer, const LayerValues& values);
    [[nodiscard]] static std::string keyText(MLNStyleLayerKind kind, const Common& common);

    TextPool pool_;
    std::array<std::array<Last, propertyLimit + 2>, drawnKinds> last_;  ///< By kind and property.
    std::array<LastKey, drawnKinds> lastKeys_;
    Common common_;  ///< Of the layer being read.
};

}  // namespace pelta
