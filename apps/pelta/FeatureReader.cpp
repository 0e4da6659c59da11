#include "FeatureReader.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace pelta::command {

namespace {

namespace od = simdjson::ondemand;

constexpr int depthLimit = 128;

constexpr std::array<std::string_view, 6> otherGeometries{"MultiPoint", "LineString",   "MultiLineString",
                                                          "Polygon",    "MultiPolygon", "GeometryCollection"};

}  // namespace

Feature FeatureReader::read(simdjson::simdjson_result<od::object> object) {
    feature_ = {};
    type_.clear();
    geometry_ = {};
    od::object members;
    // `get` is only for values that are given away, also where giving away is copying.
    if (const auto error = std::move(object).get(members)) {  // NOLINT(performance-move-const-arg)
        if (error == simdjson::INCORRECT_TYPE) {
            fail("it is not an object");
        } else {
            failFor(error);
        }
    } else if (readMembers(members)) {
        judge();
    }
    return std::move(feature_);
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

bool FeatureReader::readMembers(od::object& object) {
    return forEachMember(object, [this](std::string_view key, Value value) {
        return key == "type"       ? readText(value, "its type", type_)
               : key == "geometry" ? readGeometry(value)
                                   : check(value, 1);
    });
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
        return checkScalar(value, type);
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
    } else if (index < 2) {
        (index == 0 ? coordinates.position.longitude : coordinates.position.latitude) = number;
    }
    return true;
}

bool FeatureReader::check(Value value, int depth) {
    if (depth > depthLimit) {
        return fail("it is nested deeper than " + std::to_string(depthLimit) + " levels");
    }
    od::json_type type{};
    if (const auto error = value.type().get(type)) {
        return failFor(error);
    }
    if (type == od::json_type::array) {
        for (auto element : value.get_array()) {
            Value part;
            if (const auto error = element.get(part)) {
                return failFor(error);
            }
            if (!check(part, depth + 1)) {
                return false;
            }
        }
        return true;
    }
    if (type != od::json_type::object) {
        return checkScalar(value, type);
    }
    for (auto member : value.get_object()) {
        std::string_view key;
        Value part;
        if (const auto error = member.unescaped_key().get(key)) {
            return failFor(error);
        }
        if (const auto error = member.value().get(part)) {
            return failFor(error);
        }
        if (!check(part, depth + 1)) {
            return false;
        }
    }
    return true;
}

bool FeatureReader::checkScalar(Value value, od::json_type type) {
    switch (type) {
        case od::json_type::string:
            return value.get_string().error() == simdjson::SUCCESS || fail("one of its texts is not valid");
        case od::json_type::number:
            return value.get_number().error() == simdjson::SUCCESS || fail("one of its numbers is not valid");
        case od::json_type::boolean:
            return value.get_bool().error() == simdjson::SUCCESS || fail("one of its words is not valid");
        default: {
            bool isNull = false;
            const bool isRead = value.is_null().get(isNull) == simdjson::SUCCESS && isNull;
            return isRead || fail("one of its words is not valid");
        }
    }
}

bool FeatureReader::fail(std::string fault) {
    feature_.fault = std::move(fault);
    return false;
}

/// The parser has lost its way: it does not find the feature's end.
bool FeatureReader::failFor(simdjson::error_code error) {
    feature_.isDocumentUnusable = true;
    return fail(std::string("it is not valid JSON: ") + simdjson::error_message(error));
}

void FeatureReader::judge() {
    if (type_.empty()) {
        fail("it has no type");
    } else if (type_ != "Feature") {
        fail("its type is '" + type_ + "', not 'Feature'");
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
        fail("its geometry's type '" + geometry_.type + "' is unknown");
    } else if (!geometry_.coordinates.areGiven) {
        fail("its Point has no coordinates");
    } else if (geometry_.coordinates.fault != nullptr) {
        fail(geometry_.coordinates.fault);
    } else {
        feature_.point = geometry_.coordinates.position;
    }
}

}  // namespace pelta::command
