#include "LayerValues.h"

#include <cstdlib>
#include <type_traits>

#include "LayerJson.h"
#include "LayerSpec.h"
#include "PropertyJson.h"

namespace pelta {

namespace {

// Numbers of properties, see `visitProperties` of the layers.
namespace symbol {
constexpr std::size_t text = 0;
constexpr std::size_t icon = 9;
constexpr std::size_t iconScale = 10;
constexpr std::size_t iconRotation = 11;
constexpr std::size_t textOpacity = 21;
constexpr std::size_t iconOpacity = 22;
}  // namespace symbol
namespace line {
constexpr std::size_t cap = 0;
constexpr std::size_t join = 1;
constexpr std::size_t width = 2;
constexpr std::size_t color = 3;
constexpr std::size_t opacity = 5;
}  // namespace line
namespace fill {
constexpr std::size_t color = 0;
constexpr std::size_t opacity = 1;
}  // namespace fill

/// The two properties that follow from others come after the layer's own.
std::size_t slotOf(std::size_t number, std::string_view name) {
    if (name == "text-rotation-alignment") {
        return propertyLimit;
    }
    return name == "text-pitch-alignment" ? propertyLimit + 1 : number;
}

using PropertyFlags = std::array<bool, propertyLimit + 2>;

/// Which properties of a kind of layer are common: a look-up for each of thousands of layers.
const PropertyFlags& commonPropertiesOf(const MLNVectorStyleLayer& layer) {
    static std::array<std::optional<PropertyFlags>, 3> tables;
    auto& table = tables[kindIndex(layer.kind())];
    if (!table) {
        table.emplace();
        visitLayerProperties(layer,
                             [&](unsigned number, MLNPropertyGroup, std::string_view name, const auto&) {
                                 (*table)[slotOf(number, name)] = !isOwnProperty(name);
                             });
    }
    return *table;
}

/// An attribute's value as a property's; nothing where it is of another type.
template <class T>
std::optional<T> attributeAs(const MLNAttributeValue& attribute) {
    if constexpr (std::is_same_v<T, CGVector>) {
        const auto* numbers = std::get_if<std::vector<double>>(&attribute);
        return numbers && numbers->size() == 2 ? std::optional(CGVector{(*numbers)[0], (*numbers)[1]})
                                               : std::nullopt;
    } else if constexpr (std::is_same_v<T, double>) {
        if (const auto* whole = std::get_if<std::int64_t>(&attribute)) {
            return static_cast<double>(*whole);
        }
        if (const auto* count = std::get_if<std::uint64_t>(&attribute)) {
            return static_cast<double>(*count);
        }
    }
    if constexpr (std::is_constructible_v<MLNAttributeValue, T> && !std::is_same_v<T, UIColor>) {
        if (const auto* same = std::get_if<T>(&attribute)) {
            return *same;
        }
    }
    return std::nullopt;
}

bool isText(const SharedText& value, std::string_view wanted) {
    return value && *value == wanted;
}

bool isClear(const SharedText& color) {
    constexpr std::string_view end = ",0)\"";
    return color && color->size() > end.size() &&
           color->compare(color->size() - end.size(), end.size(), end) == 0;
}

/// The engine draws the pictures of a layer unsmoothed if none of them is scaled or turned: that must not
/// depend on the neighbours.
bool isSmoothed(const std::array<SharedText, propertyLimit>& own) {
    return (own[symbol::iconScale] && !isText(own[symbol::iconScale], "1")) ||
           (own[symbol::iconRotation] && !isText(own[symbol::iconRotation], "0"));
}

LayerSight sightOf(const MLNVectorStyleLayer& layer, const std::array<SharedText, propertyLimit>& own) {
    const auto when = [](bool isTransparent) {
        return isTransparent ? LayerSight::transparent : LayerSight::visible;
    };
    switch (layer.kind()) {
        case MLNStyleLayerKind::symbol: {
            const bool hasText = own[symbol::text] && !isText(own[symbol::text], "\"\"");
            const bool hasIcon = own[symbol::icon] != nullptr;
            if (!hasText && !hasIcon) {
                return LayerSight::nothing;
            }
            return when((!hasText || isText(own[symbol::textOpacity], "0")) &&
                        (!hasIcon || isText(own[symbol::iconOpacity], "0")));
        }
        case MLNStyleLayerKind::line:
            return isText(own[line::width], "0")
                       ? LayerSight::nothing
                       : when(isText(own[line::opacity], "0") || isClear(own[line::color]));
        default:
            return when(isText(own[fill::opacity], "0") || isClear(own[fill::color]));
    }
}

bool isTrue(const std::optional<MLNExpression<bool>>& flag) {
    return flag && flag->isConstant() && flag->constant();
}

/// Whether a layer's symbols are left out where they would lie over others, or push others aside.
bool avoidsOthers(const MLNVectorStyleLayer& layer) {
    if (layer.kind() != MLNStyleLayerKind::symbol) {
        return false;
    }
    const auto& symbols = static_cast<const MLNSymbolStyleLayer&>(layer);
    return !isTrue(symbols.iconAllowsOverlap()) || !isTrue(symbols.textAllowsOverlap());
}

/// Points that a layer is drawn beyond its shape: half the width of a line, more where corners and ends stand
/// out, and what smoothing takes. @param get  answers the value of a property by its number.
template <class Get>
double reachOf(const MLNVectorStyleLayer& layer, const Get& get) {
    constexpr double rounding = 1.0 / 16;  // The engine's tiles have 8192 steps for 512 points.
    if (layer.kind() != MLNStyleLayerKind::line) {
        constexpr double edge = 1;
        return edge + rounding;
    }
    constexpr double edge = 0.5;
    constexpr double defaultWidth = 1;
    constexpr double miterLimit = 2;
    constexpr double squareDiagonal = 1.4142135623730951;
    const SharedText& width = get(line::width);
    const SharedText& join = get(line::join);
    const double half = (width ? std::strtod(width->c_str(), nullptr) : defaultWidth) / 2;
    if (!join || isText(join, "\"miter\"")) {
        return half * miterLimit + edge + rounding;
    }
    return half * (isText(get(line::cap), "\"square\"") ? squareDiagonal : 1) + edge + rounding;
}

}  // namespace

bool isOwnProperty(std::string_view name) {
    // The engine turns the icons of a layer all alike.
    return isDataDriven(name) && name != "icon-rotation-alignment";
}

PropertySet differences(const std::array<SharedText, propertyLimit>& a,
                        const std::array<SharedText, propertyLimit>& b) {
    PropertySet different = 0;
    for (std::size_t i = 0; i < propertyLimit; ++i) {
        different |= static_cast<PropertySet>(a[i] != b[i]) << i;
    }
    return different;
}

template <class T>
SharedText LayerReader::textOf(Last& last, std::string_view name, const T& value) {
    if (const T* same = std::get_if<T>(&last.value); same == nullptr || !(*same == value)) {
        JsonWriter json;
        writeValue(json, name, value);
        const std::string text = json.take();
        last.text = text == "null" ? nullptr : pool_.take(text);
        last.value = value;
    }
    return last.text;
}

LayerValues LayerReader::read(const MLNVectorStyleLayer& layer, const MLNShape& shape) {
    LayerValues values;
    const MLNShapeKind kind = *shape.drawnKind();
    const bool hasInside = kind == MLNShapeKind::polygon;
    if (!layer.isVisible() || (layer.kind() == MLNStyleLayerKind::fill && !hasInside)) {
        return values;
    }
    const auto& isCommonSlot = commonPropertiesOf(layer);
    auto& last = last_[kindIndex(layer.kind())];
    common_.values = {};
    common_.shape = kind;
    visitLayerProperties(
        layer, [&](unsigned number, MLNPropertyGroup, std::string_view name, const auto& property) {
            if (!property) {
                return;
            }
            using T = std::decay_t<decltype(property->constant())>;
            const std::size_t slot = slotOf(number, name);
            SharedText text;
            if (property->isConstant()) {
                text = textOf(last[slot], name, property->constant());
            } else if (const MLNAttributeValue* attribute = shape.attribute(property->attribute())) {
                if (const auto value = attributeAs<T>(*attribute)) {
                    text = textOf(last[slot], name, *value);
                }
            }
            (isCommonSlot[slot] ? common_.values[slot] : values.own[number]) = std::move(text);
        });
    values.sight = sightOf(layer, values.own);
    values.reach = reachOf(layer, [&](std::size_t number) -> const SharedText& {
        return isCommonSlot[number] ? common_.values[number] : values.own[number];
    });
    if (values.sight == LayerSight::transparent && avoidsOthers(layer)) {
        values.sight = LayerSight::visible;  // It keeps others from being drawn.
    }
    if (values.sight != LayerSight::nothing) {
        values.key = keyOf(layer, values);
    }
    return values;
}

SharedText LayerReader::keyOf(const MLNVectorStyleLayer& layer, const LayerValues& values) {
    common_.source = layer.sourceIdentifier();
    common_.minimumZoom = layer.minimumZoomLevel();
    common_.maximumZoom = layer.maximumZoomLevel();
    common_.own = differences(values.own, {});
    common_.isSmoothed = layer.kind() == MLNStyleLayerKind::symbol && isSmoothed(values.own);
    common_.loner = avoidsOthers(layer) ? layer.identifier() : std::string();
    LastKey& last = lastKeys_[kindIndex(layer.kind())];
    if (last.key == nullptr || !(last.common == common_)) {
        last.key = pool_.take(keyText(layer.kind(), common_));
        last.common = common_;
    }
    return last.key;
}

std::string LayerReader::keyText(MLNStyleLayerKind kind, const Common& common) {
    std::string text(typeName(kind));
    text += std::to_string(static_cast<unsigned>(common.shape)) + '\n' + common.source + '\n' +
            std::to_string(common.minimumZoom) + '\n' + std::to_string(common.maximumZoom) + '\n';
    for (const SharedText& value : common.values) {
        text += value ? *value : std::string();
        text += '\n';
    }
    text += std::to_string(common.own) + (common.isSmoothed ? " smoothed " : " ") + common.loner;
    return text;
}

}  // namespace pelta
