#include "data/GeoJsonEvents.h"

#include <cmath>
#include <utility>

#include "data/Text.h"

namespace pelta::viewer {

namespace {

constexpr std::size_t deepestLevel = 128;

}  // namespace

bool GeoJsonEvents::refuseDocument(const std::string& reason) {
    data_.addProblem(std::nullopt, "not GeoJSON: " + reason);
    return false;
}

bool GeoJsonEvents::push(Role role) {
    frames_.push_back({});
    frames_.back().role = role;
    if (role == Role::document || role == Role::feature) {
        beginFeature();
    }
    return true;
}

bool GeoJsonEvents::startObject() {
    if (frames_.empty()) {
        return push(Role::document);
    }
    if (frames_.size() == deepestLevel) {
        feature_.fail(tooDeep);
        ++levelsBeyond_;
        return true;
    }
    return push(objectRole(frames_.back()));
}

GeoJsonEvents::Role GeoJsonEvents::objectRole(Frame& parent) {
    switch (parent.role) {
        case Role::features:
            return Role::feature;
        case Role::geometries:
            return Role::geometry;
        case Role::coordinates:
            feature_.coordinates().addOther();
            return Role::skipped;
        case Role::properties:
            feature_.setNestedProperty(key_);
            return Role::skipped;
        case Role::document:
        case Role::feature:
            if (key_ == "geometry") {
                parent.hasGeometry = true;
                feature_.beginGeometry(false);
                return Role::geometry;
            }
            return key_ == "properties" ? Role::properties : Role::skipped;
        default:
            return Role::skipped;
    }
}

bool GeoJsonEvents::startArray() {
    if (frames_.empty()) {
        return refuseDocument("an object is needed, an array was found");
    }
    if (frames_.size() == deepestLevel) {
        feature_.fail(tooDeep);
        ++levelsBeyond_;
        return true;
    }
    return push(arrayRole(frames_.back()));
}

GeoJsonEvents::Role GeoJsonEvents::arrayRole(Frame& parent) {
    const bool holdsGeometry = parent.role == Role::document || parent.role == Role::geometry;
    if (parent.role == Role::document && key_ == "features") {
        parent.hasFeatures = true;
        return Role::features;
    }
    if (holdsGeometry && key_ == "geometries") {
        parent.hasGeometries = true;
        return Role::geometries;
    }
    if (holdsGeometry && key_ == "coordinates") {
        parent.hasCoordinates = true;
        feature_.coordinates().clear();
        feature_.coordinates().beginArray();
        return Role::coordinates;
    }
    if (parent.role == Role::coordinates) {
        feature_.coordinates().beginArray();
        return Role::coordinates;
    }
    if (parent.role == Role::features) {
        data_.addProblem(featureIndex_++, "it is an array, not a feature");
    } else if (parent.role == Role::properties) {
        feature_.setNestedProperty(key_);
    } else if (parent.role == Role::geometries) {
        feature_.fail("one of its geometries is not an object");
    }
    return Role::skipped;
}

bool GeoJsonEvents::key(std::string_view name) {
    if (levelsBeyond_ == 0) {
        key_ = name;
    }
    return true;
}

void GeoJsonEvents::textIsNotUtf8(std::size_t position) {
    feature_.fail("one of its texts is not UTF-8");
    const bool isAmongFeatures = frames_.size() > 1 && frames_[1].role == Role::features;
    if (!isAmongFeatures && !textFault_) {
        textFault_ = position;
    }
}

bool GeoJsonEvents::scalar(const ScalarValue& value) {
    if (frames_.empty()) {
        return refuseDocument("an object is needed, a plain value was found");
    }
    if (levelsBeyond_ > 0) {
        return true;
    }
    Frame& frame = frames_.back();
    switch (frame.role) {
        case Role::document:
        case Role::feature:
        case Role::geometry:
            member(frame, value);
            break;
        case Role::features:
            data_.addProblem(featureIndex_++, "it is a plain value, not a feature");
            break;
        case Role::geometries:
            feature_.fail("one of its geometries is not an object");
            break;
        case Role::coordinates:
            if (value.kind == ScalarValue::Kind::number && std::isfinite(value.number)) {
                feature_.coordinates().addNumber(value.number);
            } else {
                feature_.coordinates().addOther();
            }
            break;
        case Role::properties:
            feature_.setProperty(key_, value);
            break;
        case Role::skipped:
            break;
    }
    return true;
}

void GeoJsonEvents::member(Frame& frame, const ScalarValue& value) {
    if (key_ == "type" && value.kind == ScalarValue::Kind::text) {
        frame.type = value.text;
    } else if (key_ == "type") {
        feature_.fail("its \"type\" is not a text");
    } else if (key_ == "geometry" && frame.role != Role::geometry) {
        frame.hasGeometry = true;
        feature_.beginGeometry(value.kind == ScalarValue::Kind::null);
        if (value.kind != ScalarValue::Kind::null) {
            feature_.fail("its geometry is not an object");
        }
    } else if (key_ == "coordinates" && frame.role != Role::feature) {
        feature_.fail("its coordinates are not an array");
    } else if (key_ == "properties" && value.kind != ScalarValue::Kind::null &&
               frame.role != Role::geometry) {
        feature_.fail("its properties are not an object");
    }
}

bool GeoJsonEvents::endArray() {
    if (levelsBeyond_ > 0) {
        --levelsBeyond_;
        return true;
    }
    if (frames_.back().role == Role::coordinates) {
        feature_.coordinates().endArray();
    }
    frames_.pop_back();
    return true;
}

bool GeoJsonEvents::endObject() {
    if (levelsBeyond_ > 0) {
        --levelsBeyond_;
        return true;
    }
    const Frame frame = std::move(frames_.back());
    frames_.pop_back();
    switch (frame.role) {
        case Role::geometry:
            finishGeometry(frame);
            break;
        case Role::feature:
            finishFeature(frame);
            break;
        case Role::document:
            finishDocument(frame);
            break;
        default:
            break;
    }
    return true;
}

void GeoJsonEvents::beginFeature() {
    feature_.begin(featureIndex_);
}

void GeoJsonEvents::finishGeometry(const Frame& frame) {
    if (frame.type.empty()) {
        feature_.fail("its geometry has no \"type\"");
    } else if (frame.type == "GeometryCollection") {
        if (!frame.hasGeometries) {
            feature_.fail("its GeometryCollection has no \"geometries\"");
        }
    } else if (!frame.hasCoordinates && GeometryBuilder::isKnownType(frame.type)) {
        feature_.fail("its " + frame.type + " has no \"coordinates\"");
    } else {
        feature_.addGeometry(frame.type);
    }
}

void GeoJsonEvents::finishFeature(const Frame& frame) {
    if (frame.type.empty()) {
        feature_.fail("it has no \"type\"; \"Feature\" is needed");
    } else if (frame.type != "Feature") {
        feature_.fail("its type is " + inQuotes(frame.type) + "; \"Feature\" is needed");
    } else if (!frame.hasGeometry) {
        feature_.fail("it has no geometry");
    }
    feature_.finish();
    ++featureIndex_;
}

void GeoJsonEvents::finishDocument(const Frame& frame) {
    if (frame.type == "FeatureCollection" || frame.hasFeatures) {
        if (frame.type != "FeatureCollection") {
            data_.addProblem(std::nullopt,
                             "not quite GeoJSON: the document's type is not \"FeatureCollection\"");
        } else if (!frame.hasFeatures) {
            refuseDocument("\"features\" is missing or not an array");
        }
        return;
    }
    textFault_.reset();
    if (frame.type == "Feature") {
        finishFeature(frame);
    } else if (frame.type == "GeometryCollection" || GeometryBuilder::isKnownType(frame.type)) {
        finishGeometry(frame);
        feature_.finish();
    } else if (frame.type.empty()) {
        refuseDocument("the document has no \"type\"");
    } else {
        refuseDocument("unknown type " + inQuotes(frame.type));
    }
}

std::optional<std::size_t> GeoJsonEvents::openFeature() const {
    // Below the document there is its list of features, below that the feature.
    const bool isInFeature = frames_.size() > 2 && frames_[1].role == Role::features;
    const bool isFeature = !frames_.empty() && frames_.front().type == "Feature";
    return isInFeature || isFeature ? std::optional(featureIndex_) : std::nullopt;
}

}  // namespace pelta::viewer
