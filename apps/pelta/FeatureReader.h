#pragma once

#include <optional>
#include <simdjson.h>
#include <string>

#include <pelta/Platform/CoreLocation.h>

namespace pelta::command {

/// What one feature of a GeoJSON document turned out to be: exactly one of point, other geometry and fault.
struct Feature {
    std::optional<CLLocationCoordinate2D> point;
    std::string otherGeometry;        ///< Its type, or "no geometry".
    std::string fault;                ///< What is wrong with it.
    bool isDocumentUnusable = false;  ///< With a fault: nothing behind it can be read either.
};

/// Reads features out of JSON text that is parsed on the way. Everything in a feature is checked to be valid
/// JSON, also what is not used.
class FeatureReader {
 public:
    [[nodiscard]] Feature read(simdjson::simdjson_result<simdjson::ondemand::object> object);

 private:
    struct Coordinates {
        bool areGiven = false;
        const char* fault = nullptr;  // as coordinates of a Point
        CLLocationCoordinate2D position;
    };
    struct Geometry {
        bool isGiven = false;
        bool isNull = false;
        std::string type;
        Coordinates coordinates;
    };

    using Value = simdjson::ondemand::value;

    // They return false after setting the feature's fault.
    template <class Read>
    bool forEachMember(simdjson::ondemand::object& object, Read&& read);
    bool readMembers(simdjson::ondemand::object& object);
    bool readText(Value value, const char* what, std::string& text);
    bool readGeometry(Value value);
    bool readCoordinates(Value value);
    bool readNumber(Value value, std::size_t index);
    bool check(Value value, int depth);
    bool checkScalar(Value value, simdjson::ondemand::json_type type);

    bool fail(std::string fault);
    bool failFor(simdjson::error_code error);
    void judge();
    void judgeGeometry();

    Feature feature_;
    std::string type_;
    Geometry geometry_;
};

}  // namespace pelta::command
