#include "RunSource.h"

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
    const PropertySet own = differences(layer.values.own, layer.run->base);
    if (layer.sent.id != 0 && layer.isAnew) {
        withdraw(layer);
    }
    if (layer.sent.id == 0) {
        add(layer, own);
    } else {
        update(layer, own);
    }
    layer.isAnew = false;
    layer.isTouched = false;
    noteRun(layer, layer.run->number);
    layer.sent.run = layer.run->number;
    layer.sent.sortKey = layer.sortKey;
    layer.sent.own = own;
    layer.sent.values = layer.values.own;
    layer.sent.revision = layer.place->drawableShape()->revision();
}

void RunSource::withdraw(ModelLayer& layer) {
    if (layer.sent.id != 0) {
        removed_.value(layer.sent.id);
        numbers_->leave(layer.sent.id);
        noteRun(layer, 0);
        layer.sent = {};
    }
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

void RunSource::add(ModelLayer& layer, PropertySet own) {
    layer.sent.id = numbers_->enter(layer);
    added_.beginObject();
    added_.member("type", "Feature");
    added_.member("id", layer.sent.id);
    added_.key("properties");
    added_.beginObject();
    added_.member("run", layer.run->number);
    added_.member("key", layer.sortKey);
    visitPropertiesIn(*layer.drawn, own, [&](const NamedProperty& property) {
        added_.key(property.name);
        added_.raw(*layer.values.own[property.number]);
    });
    added_.endObject();
    added_.key("geometry");
    writeGeometry(added_, *layer.place->drawableShape());
    added_.endObject();
}

void RunSource::update(ModelLayer& layer, PropertySet own) {
    const MLNShape& shape = *layer.place->drawableShape();
    const ModelLayer::Sent& sent = layer.sent;
    JsonWriter set;
    JsonWriter unset;
    if (sent.run != layer.run->number) {
        writeProperty(set, "run", layer.run->number);
    }
    if (sent.sortKey != layer.sortKey) {
        writeProperty(set, "key", layer.sortKey);
    }
    visitPropertiesIn(*layer.drawn, changedOnes(layer, own), [&](const NamedProperty& property) {
        set.beginObject();
        set.member("key", property.name);
        set.key("value");
        set.raw(*layer.values.own[property.number]);
        set.endObject();
    });
    visitPropertiesIn(*layer.drawn, sent.own & ~own,
                      [&](const NamedProperty& property) { unset.value(property.name); });
    const bool isShapeNew = sent.revision != shape.revision();
    if (!isShapeNew && set.text().empty() && unset.text().empty()) {
        if (!order_.isBanded(*layer.run)) {
            return;
        }
        writeProperty(set, "key", layer.sortKey);  // It counts as having arrived.
    }
    numbers_->noteUpdate(sent.id);
    updated_.beginObject();
    updated_.member("id", sent.id);
    if (isShapeNew) {
        updated_.key("newGeometry");
        writeGeometry(updated_, shape);
    }
    writeAsList(updated_, "addOrUpdateProperties", set);
    writeAsList(updated_, "removeProperties", unset);
    updated_.endObject();
}

bool RunSource::hasChanges() const {
    return !removed_.text().empty() || !added_.text().empty() || !updated_.text().empty();
}

void RunSource::writeChanges(JsonWriter& calls) {
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
    } else if (exists_ && hasChanges()) {
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
