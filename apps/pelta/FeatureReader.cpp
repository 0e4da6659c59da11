#include "FeatureReader.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "FaultMessages.h"
#include "JsonCheck.h"

namespace pelta::command {

namespace {

namespace od = simdjson::ondemand;

constexpr std::array<std::string_view, 6> otherGeometries{"MultiPoint", "LineString",   "MultiLineString",
                                                          "Polygon",    "MultiPolygon", "GeometryCollection"};

}  // namespace

Feature FeatureReader::read(simdjson::padded_string_view text) {
    feature_ = {};
    type_.clear();
    geometry_ = {};
    if (readDocument(text)) {
        judge();
    }
    return std::move(feature_);
}

bool FeatureReader::readDocument(simdjson::padded_string_view text) {
    od::document document;
    if (const auto error = parser_.iterate(text).get(document)) {
        return failFor(error);
    }
    od::object members;
    if (const auto error = document.get_object().get(members)) {
        return error == simdjson::INCORRECT_TYPE ? fail("it is not an object") : failFor(error);
    }
    const bool isRead = forEachMember(members, [this](std::string_view key, Value value) {
        return key == "type"       ? readText(value, "its type", type_)
               : key == "geometry" ? readGeometry(value)
                                   : check(value, 1);
    });
    return isRead && (document.current_location().error() == simdjson::OUT_OF_BOUNDS ||
                      fail("there is more on the line behind it"));
}

/// Calls `read(key, value)` for each member until it returns false.
template <class Read>
bool FeatureReader::forEachMember(od::object& object, Read&& read) {
    for (auto member : object) {
        std::string_view key;
        Value value;
        if (const auto error = member.unescaped_key().get(key)) {
            return failFor(error);
        }
        if (const auto error = member.value().get(value)) {
            return failFor(error);
        }
        if (!read(key, value)) {
            return false;
        }
    }
    return true;
}

bool FeatureReader::readText(Value value, const char* what, std::string& text) {
    std::string_view found;
    if (value.get_string().get(found) != simdjson::SUCCESS) {
        return fail(std::string(what) + " is not a text");
    }
    text = found;
    return true;
}

bool FeatureReader::readGeometry(Value value) {
    geometry_ = {};
    geometry_.isGiven = true;
    od::json_type type{};
    if (const auto error = value.type().get(type)) {
        return failFor(error);
    }
    if (type == od::json_type::null) {
        geometry_.isNull = true;
        return check(value, 1);
    }
    od::object members;
    if (value.get_object().get(members) != simdjson::SUCCESS) {
        return fail("its geometry is neither an object nor null");
    }
    return forEachMember(members, [this](std::string_view key, Value part) {
        return key == "type"          ? readText(part, "its geometry's type", geometry_.type)
               : key == "coordinates" ? readCoordinates(part)
                                      : check(part, 2);
    });
}

/// Whether these are to be a Point's may stand behind them; so what would be wrong with them is only noted.
bool FeatureReader::readCoordinates(Value value) {
    Coordinates& coordinates = geometry_.coordinates;
    coordinates = {};
    coordinates.areGiven = true;
    od::array elements;
    if (value.get_array().get(elements) != simdjson::SUCCESS) {
        coordinates.fault = "its coordinates are not an array";
        return check(value, 2);
    }
    std::size_t count = 0;
    for (auto element : elements) {
        Value part;
        if (const auto error = element.get(part)) {
            return failFor(error);
        }
        if (!readNumber(part, count)) {
            return false;
        }
        ++count;
    }
    if (count < 2 && coordinates.fault == nullptr) {
        coordinates.fault = "its coordinates are fewer than a longitude and a latitude";
    }
    return true;
}

bool FeatureReader::readNumber(Value value, std::size_t index) {
    Coordinates& coordinates = geometry_.coordinates;
    od::json_type type{};
    if (const auto error = value.type().get(type)) {
        return failFor(error);
    }
    if (type != od::json_type::number) {
        coordinates.fault = "one of its coordinates is not a number";
        return check(value, 3);
    }
    double number = 0;
    if (value.get_double().get(number) != simdjson::SUCCESS) {
        coordinates.fault = "one of its coordinates is not a number that can be held";
        return check(value, 3);
    }
    if (index < 2) {
        (index == 0 ? coordinates.position.longitude : coordinates.position.latitude) = number;
    }
    return true;
}

bool FeatureReader::check(Value value, int depth) {
    return fail(faultIn(value, depth));
}

/// @return true when the fault is empty.
bool FeatureReader::fail(std::string fault) {
    feature_.fault = std::move(fault);
    return feature_.fault.empty();
}

bool FeatureReader::failFor(simdjson::error_code error) {
    return fail(described(error));
}

void FeatureReader::judge() {
    if (type_.empty()) {
        fail("it has no type");
    } else if (type_ != "Feature") {
        fail("its type is " + inQuotes(type_) + ", not 'Feature'");
    } else if (!geometry_.isGiven) {
        fail("it has no geometry");
    } else if (geometry_.isNull) {
        feature_.otherGeometry = "no geometry";
    } else {
        judgeGeometry();
    }
}

void FeatureReader::judgeGeometry() {
    const bool isOther =
        std::find(otherGeometries.begin(), otherGeometries.end(), geometry_.type) != otherGeometries.end();
    if (isOther) {
        feature_.otherGeometry = geometry_.type;
    } else if (geometry_.type.empty()) {
        fail("its geometry has no type");
    } else if (geometry_.type != "Point") {
        fail("its geometry's type " + inQuotes(geometry_.type) + " is unknown");
    } else if (!geometry_.coordinates.areGiven) {
        fail("its Point has no coordinates");
    } else if (geometry_.coordinates.fault != nullptr) {
        fail(geometry_.coordinates.fault);
    } else {
        feature_.point = geometry_.coordinates.position;
    }
}

}  // namespace pelta::command
