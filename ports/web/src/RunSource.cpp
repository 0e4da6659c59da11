#include "RunSource.h"

#include <algorithm>
#include <utility>

#include "FeatureJson.h"
#include "RunLayerJson.h"

namespace pelta {

namespace {

void writeProperty(JsonWriter& json, std::string_view key, double value) {
    json.beginObject();
    json.member("key", key);
    json.member("value", value);
    json.endObject();
}

void writeAsList(JsonWriter& json, std::string_view name, const JsonWriter& entries) {
    if (!entries.text().empty()) {
        json.key(name);
        json.beginArray();
        json.raw(entries.text());
        json.endArray();
    }
}

/// The properties in a set that differ between the values and those that were sent.
PropertySet changedOnes(const ModelLayer& layer, PropertySet own) {
    return own & (~layer.sent.own | differences(layer.values.own, layer.sent.values));
}

/// The values of a layer that the engine's layer does not hold for it.
PropertySet ownOnes(const ModelLayer& layer) {
    return differences(layer.values.own, layer.run->base);
}

const MLNShape& shapeOf(const RunFeature& feature) {
    const auto layer = std::find_if(feature.layers.begin(), feature.layers.end(),
                                    [](const ModelLayer* each) { return each != nullptr; });
    return *(*layer)->place->drawableShape();
}

/// Whether sending a layer would tell the engine anything.
bool hasNews(const ModelLayer& layer) {
    const PropertySet own = ownOnes(layer);
    return layer.sent.run != layer.run->number || layer.sent.sortKey != layer.sortKey ||
           changedOnes(layer, own) != 0 || (layer.sent.own & ~own) != 0 ||
           layer.sent.feature->revision != layer.place->drawableShape()->revision();
}

void writeMembers(JsonWriter& json, const ModelLayer& layer) {
    const MLNStyleLayerKind kind = layer.layer->kind();
    json.member(runProperty(kind), layer.run->number);
    json.member(keyProperty(kind), layer.sortKey);
    visitPropertiesIn(*layer.drawn, ownOnes(layer), [&](const NamedProperty& property) {
        json.key(property.name);
        json.raw(*layer.values.own[property.number]);
    });
}

void writeNews(JsonWriter& set, JsonWriter& unset, const ModelLayer& layer) {
    const MLNStyleLayerKind kind = layer.layer->kind();
    const PropertySet own = ownOnes(layer);
    if (layer.sent.run != layer.run->number) {
        writeProperty(set, runProperty(kind), layer.run->number);
    }
    if (layer.sent.sortKey != layer.sortKey || layer.sent.run == 0) {
        writeProperty(set, keyProperty(kind), layer.sortKey);
    }
    visitPropertiesIn(*layer.drawn, changedOnes(layer, own), [&](const NamedProperty& property) {
        set.beginObject();
        set.member("key", property.name);
        set.key("value");
        set.raw(*layer.values.own[property.number]);
        set.endObject();
    });
    visitPropertiesIn(*layer.drawn, layer.sent.own & ~own,
                      [&](const NamedProperty& property) { unset.value(property.name); });
}

void noteSent(ModelLayer& layer) {
    layer.sent.run = layer.run->number;
    layer.sent.sortKey = layer.sortKey;
    layer.sent.own = ownOnes(layer);
    layer.sent.values = layer.values.own;
}

template <class Layers, class Visit>
void visitLayers(Layers& layers, Visit&& visit) {
    for (ModelLayer* layer : layers) {
        if (layer != nullptr) {
            visit(*layer);
        }
    }
}

}  // namespace

void beginSourceCall(JsonWriter& calls, std::string_view source, std::string_view method) {
    calls.beginArray();
    calls.value(source);
    calls.value(method);
}

void beginStyleCall(JsonWriter& calls, std::string_view method) {
    calls.beginArray();
    calls.null();
    calls.value(method);
}

void beginSource(JsonWriter& json) {
    // Far enough for every zoom that a map has; beyond it positions would be rounded to coarser steps.
    constexpr int deepestTiles = 22;
    // Points by which a line may be straightened; the engine's own 0.375 shows as corners in circles.
    constexpr double simplification = 0.05;
    json.beginObject();
    json.member("type", "geojson");
    json.member("maxzoom", deepestTiles);
    json.member("tolerance", simplification);
    json.key("data");
}

bool isStale(const ModelLayer& member) {
    return member.isTouched || member.isAnew || member.sent.run != member.run->number ||
           member.sent.sortKey != member.sortKey;
}

void RunSource::send(ModelLayer& layer) {
    if (layer.sent.feature != nullptr && (layer.isAnew || layer.sent.feature->source != this)) {
        layer.sent.feature->source->withdraw(layer);
    }
    if (layer.sent.feature == nullptr) {
        layer.sent.feature = &featureFor(layer);
        layer.sent.feature->layers[kindIndex(layer.layer->kind())] = &layer;
    }
    layer.isAnew = false;
    layer.isTouched = false;
    // In a band even what has no news counts as having arrived.
    if (hasNews(layer) || order_.isBanded(*layer.run)) {
        noteRun(layer, layer.run->number);
        list(*layer.sent.feature);
    }
}

RunFeature& RunSource::featureFor(const ModelLayer& layer) {
    RunFeature* shared = layer.place->feature;
    if (shared == nullptr || shared->source != this) {
        return *(layer.place->feature = &features_->make(*this));
    }
    const bool isTaken = shared->layers[kindIndex(layer.layer->kind())] != nullptr;
    return isTaken ? features_->make(*this) : *shared;
}

void RunSource::list(RunFeature& feature) {
    if (!std::exchange(feature.isListed, true)) {
        features_->noteArrival(feature);
        listed_.push_back(&feature);
    }
}

void RunSource::withdraw(ModelLayer& layer) {
    RunFeature& feature = *layer.sent.feature;
    const MLNStyleLayerKind kind = layer.layer->kind();
    feature.layers[kindIndex(kind)] = nullptr;
    noteRun(layer, 0);
    if (std::any_of(feature.layers.begin(), feature.layers.end(), [](ModelLayer* each) { return each; })) {
        feature.leaving.emplace_back(runProperty(kind));
        feature.leaving.emplace_back(keyProperty(kind));
        visitPropertiesIn(*layer.drawn, layer.sent.own, [&](const NamedProperty& property) {
            feature.leaving.emplace_back(property.name);
        });
        list(feature);
    } else {
        removed_.value(feature.id);
        std::erase(listed_, &feature);
        if (layer.place->feature == &feature) {
            layer.place->feature = nullptr;
        }
        features_->remove(feature);
    }
    layer.sent = {};
}

void RunSource::noteRun(const ModelLayer& layer, std::uint32_t run) {
    if (run != layer.sent.run) {
        if (run != 0) {
            order_.featureCameTo(run);
        }
        if (layer.sent.run != 0) {
            order_.featureLeft(layer.sent.run);
        }
    }
}

void RunSource::writeAddition(const RunFeature& feature) {
    added_.beginObject();
    added_.member("type", "Feature");
    added_.member("id", feature.id);
    added_.key("properties");
    added_.beginObject();
    visitLayers(feature.layers, [&](const ModelLayer& layer) { writeMembers(added_, layer); });
    added_.endObject();
    added_.key("geometry");
    writeGeometry(added_, shapeOf(feature));
    added_.endObject();
}

void RunSource::writeUpdate(RunFeature& feature) {
    JsonWriter set;
    JsonWriter unset;
    for (const std::string& name : std::exchange(feature.leaving, {})) {
        unset.value(name);
    }
    visitLayers(feature.layers, [&](const ModelLayer& layer) { writeNews(set, unset, layer); });
    const bool isShapeNew = feature.revision != shapeOf(feature).revision();
    if (!isShapeNew && set.text().empty() && unset.text().empty()) {
        visitLayers(feature.layers, [&](const ModelLayer& layer) {
            writeProperty(set, keyProperty(layer.layer->kind()), layer.sortKey);
        });
    }
    updated_.beginObject();
    updated_.member("id", feature.id);
    if (isShapeNew) {
        updated_.key("newGeometry");
        writeGeometry(updated_, shapeOf(feature));
    }
    writeAsList(updated_, "addOrUpdateProperties", set);
    writeAsList(updated_, "removeProperties", unset);
    updated_.endObject();
}

void RunSource::writeChanges(JsonWriter& calls) {
    for (RunFeature* feature : std::exchange(listed_, {})) {
        feature->isListed = false;
        if (feature->revision == 0) {
            writeAddition(*feature);
        } else {
            writeUpdate(*feature);
        }
        feature->revision = shapeOf(*feature).revision();
        visitLayers(feature->layers, [](ModelLayer& layer) { noteSent(layer); });
    }
    const bool hasChanges = !removed_.text().empty() || !added_.text().empty() || !updated_.text().empty();
    if (!exists_ && !added_.text().empty()) {
        exists_ = true;
        beginStyleCall(calls, "addSource");
        calls.value(identifier_);
        beginSource(calls);
        calls.beginObject();
        calls.member("type", "FeatureCollection");
        writeAsList(calls, "features", added_);
        calls.endObject();
        calls.endObject();
        calls.raw(R"({"validate":false})");
        calls.endArray();
    } else if (exists_ && hasChanges) {
        beginSourceCall(calls, identifier_, "updateData");
        calls.beginObject();
        writeAsList(calls, "remove", removed_);
        writeAsList(calls, "add", added_);
        writeAsList(calls, "update", updated_);
        calls.endObject();
        calls.endArray();
    }
    removed_ = {};
    added_ = {};
    updated_ = {};
}

}  // namespace pelta
