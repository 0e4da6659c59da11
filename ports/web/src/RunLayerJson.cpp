#include "RunLayerJson.h"

#include <array>
#include <vector>

#include "LayerJson.h"
#include "PropertyJson.h"
#include "RunSource.h"

namespace pelta {

namespace {

constexpr std::array<std::string_view, drawnKinds> layerPrefixes{"pelta-symbol-", "pelta-line-",
                                                                 "pelta-fill-"};

std::vector<NamedProperty> namedProperties(const MLNVectorStyleLayer& layer) {
    std::vector<NamedProperty> names;
    visitLayerProperties(layer,
                         [&](unsigned number, MLNPropertyGroup group, std::string_view name, const auto&) {
                             if (name != "text-rotation-alignment" && name != "text-pitch-alignment") {
                                 names.push_back({number, name, group});
                             }
                         });
    return names;
}

/// What the engine's layer holds for a property: the base value, or where features carry their own, those.
std::string valueJson(const Run& run, const NamedProperty& property) {
    std::string base = literalExpression(property.name, *run.base[property.number]);
    if ((run.varying & (PropertySet{1} << property.number)) == 0) {
        return base;
    }
    const std::string name = "\"" + std::string(property.name) + "\"";
    return R"(["case",["has",)" + name + R"(],["get",)" + name + "]," + base + "]";
}

void writeOrder(JsonWriter& json, MLNStyleLayerKind kind, std::string_view sortKey) {
    json.key(std::string(typeName(kind)) + "-sort-key");
    json.raw(sortKey);
    if (kind == MLNStyleLayerKind::symbol) {
        json.member("symbol-z-order", "source");  // Not by latitude, where all have one key.
    }
}

void writeMembers(JsonWriter& json, const Run& run, MLNPropertyGroup wanted) {
    const ModelLayer& first = *run.members.front();
    visitLayerProperties(
        *first.drawn, [&](unsigned number, MLNPropertyGroup group, std::string_view name, const auto& value) {
            if (group != wanted || !value) {
                return;
            }
            if (isOwnProperty(name)) {
                if (run.base[number]) {
                    json.key(name);
                    json.raw(valueJson(run, {number, name, group}));
                }
            } else if (value->isConstant()) {
                json.key(name);
                json.raw(propertyJson(name, value));
            }
        });
}

}  // namespace

std::span<const NamedProperty> propertiesOf(const MLNVectorStyleLayer& layer) {
    static std::array<std::vector<NamedProperty>, 5> tables;
    auto& table = tables[static_cast<std::size_t>(layer.kind())];
    if (table.empty()) {
        table = namedProperties(layer);
    }
    return table;
}

std::string runLayerIdentifier(const Run& run) {
    return std::string(layerPrefixes[kindIndex(run.kind)]) + std::to_string(run.number);
}

std::optional<MLNStyleLayerKind> runLayerKind(std::string_view identifier) {
    for (const auto kind : {MLNStyleLayerKind::symbol, MLNStyleLayerKind::line, MLNStyleLayerKind::fill}) {
        if (identifier.starts_with(layerPrefixes[kindIndex(kind)])) {
            return kind;
        }
    }
    return std::nullopt;
}

std::string_view runProperty(MLNStyleLayerKind kind) {
    static constexpr std::array<std::string_view, drawnKinds> names{"symbol-run", "line-run", "fill-run"};
    return names[kindIndex(kind)];
}

std::string_view keyProperty(MLNStyleLayerKind kind) {
    static constexpr std::array<std::string_view, drawnKinds> names{"symbol-key", "line-key", "fill-key"};
    return names[kindIndex(kind)];
}

void writeRunLayer(JsonWriter& json, const Run& run, std::string_view source, std::string_view sortKey) {
    const MLNVectorStyleLayer& first = *run.members.front()->drawn;
    json.beginObject();
    json.member("id", runLayerIdentifier(run));
    json.member("type", typeName(first.kind()));
    json.member("minzoom", static_cast<double>(first.minimumZoomLevel()));
    json.member("maxzoom", static_cast<double>(first.maximumZoomLevel()));
    json.member("source", source);
    json.key("filter");
    json.raw(R"(["==",["get",")" + std::string(runProperty(run.kind)) + "\"]," + std::to_string(run.number) +
             "]");
    json.key("layout");
    json.beginObject();
    writeOrder(json, first.kind(), sortKey);
    writeMembers(json, run, MLNPropertyGroup::layout);
    json.endObject();
    json.key("paint");
    json.beginObject();
    writeMembers(json, run, MLNPropertyGroup::paint);
    json.endObject();
    json.endObject();
}

void writeRunLayerChanges(JsonWriter& calls, const Run& run) {
    visitPropertiesIn(*run.members.front()->drawn, run.unwritten, [&](const NamedProperty& property) {
        beginStyleCall(calls,
                       property.group == MLNPropertyGroup::layout ? "setLayoutProperty" : "setPaintProperty");
        calls.value(runLayerIdentifier(run));
        calls.value(property.name);
        calls.raw(valueJson(run, property));
        writeUnchecked(calls);
        calls.endArray();
    });
}

}  // namespace pelta
