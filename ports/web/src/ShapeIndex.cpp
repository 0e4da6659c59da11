#include "ShapeIndex.h"

#include <algorithm>
#include <utility>

#include "FeatureJson.h"

namespace pelta {

namespace {

const std::string* identifierOf(const MLNShape& shape) {
    const MLNAttributeValue* value = shape.attribute(ShapeIndex::identifierAttribute);
    return value ? std::get_if<std::string>(value) : nullptr;
}

}  // namespace

const MLNShape* ShapePlace::drawableShape() const {
    return shapes.size() == 1 && shapes.front()->drawnKind() ? shapes.front() : nullptr;
}

std::vector<ShapePlace*> ShapeIndex::update(std::shared_ptr<const MLNShape> contents) {
    const std::vector<const MLNShape*> features = featuresOf(contents.get());
    const auto isSame = [](const Record& record, const MLNShape* shape) { return record.shape == shape; };
    const auto differs =
        std::mismatch(records_.begin(), records_.end(), features.begin(), features.end(), isSame);
    const auto head = differs.first - records_.begin();
    const auto tail = std::mismatch(records_.rbegin(), records_.rend() - head, features.rbegin(),
                                    features.rend() - head, isSame)
                          .first -
                      records_.rbegin();
    std::for_each(records_.begin(), records_.begin() + head, [this](Record& each) { noteIfChanged(each); });
    std::for_each(records_.end() - tail, records_.end(), [this](Record& each) { noteIfChanged(each); });

    const std::vector<Record> gone(records_.begin() + head, records_.end() - tail);
    std::vector<Record> added;
    for (auto feature = features.begin() + head; feature != features.end() - tail; ++feature) {
        added.push_back(recordOf(**feature));
    }
    for (const Record& record : gone) {
        forget(record);
    }
    records_.erase(records_.begin() + head, records_.end() - tail);
    records_.insert(records_.begin() + head, added.begin(), added.end());

    contents_ = std::move(contents);
    return takeChanged();
}

std::vector<ShapePlace*> ShapeIndex::takeChanged() {
    std::vector<ShapePlace*> selected;
    for (ShapePlace* place : std::exchange(changed_, {})) {
        place->isChanged = false;
        if (!place->layers.empty()) {
            selected.push_back(place);
        } else if (place->shapes.empty()) {
            places_.erase(places_.find(place->identifier));
        }
    }
    return selected;
}

ShapePlace& ShapeIndex::place(std::string_view identifier) {
    if (const auto known = places_.find(identifier); known != places_.end()) {
        return *known->second;
    }
    auto added = std::make_unique<ShapePlace>();
    added->identifier = identifier;
    ShapePlace& result = *added;
    places_.emplace(result.identifier, std::move(added));
    return result;
}

ShapeIndex::Record ShapeIndex::recordOf(const MLNShape& shape) {
    Record record{&shape, shape.revision(), nullptr};
    if (const std::string* identifier = identifierOf(shape)) {
        record.place = &place(*identifier);
        record.place->shapes.push_back(&shape);
        noteChange(record.place);
    }
    return record;
}

void ShapeIndex::forget(const Record& record) {
    if (record.place != nullptr) {
        auto& shapes = record.place->shapes;
        shapes.erase(std::find(shapes.begin(), shapes.end(), record.shape));
        noteChange(record.place);
    }
}

void ShapeIndex::noteIfChanged(Record& record) {
    if (record.revision == record.shape->revision()) {
        return;
    }
    const std::string* identifier = identifierOf(*record.shape);
    if (record.place != nullptr && identifier != nullptr && record.place->identifier == *identifier) {
        record.revision = record.shape->revision();
        noteChange(record.place);
        return;
    }
    forget(record);
    record = recordOf(*record.shape);
}

void ShapeIndex::noteChange(ShapePlace* place) {
    if (!place->isChanged) {
        place->isChanged = true;
        changed_.push_back(place);
    }
}

ShapePlace& ShapeIndex::enter(std::string_view identifier, ModelLayer& layer) {
    ShapePlace& result = place(identifier);
    result.layers.push_back(&layer);
    return result;
}

void ShapeIndex::leave(ShapePlace& place, const ModelLayer& layer) {
    auto& layers = place.layers;
    layers.erase(std::find(layers.begin(), layers.end(), &layer));
    if (layers.empty() && place.shapes.empty()) {
        places_.erase(places_.find(place.identifier));
    }
}

}  // namespace pelta
