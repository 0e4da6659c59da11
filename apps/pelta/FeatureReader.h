#pragma once

#include <optional>
#include <simdjson.h>
#include <string>

#include <pelta/Platform/CoreLocation.h>

namespace pelta::command {

/// What one feature of a GeoJSON document turned out to be: exactly one of point, other geometry and fault.
struct Feature {
    std::optional<CLLocationCoordinate2D> point;
    std::string otherGeometry;  ///< Its type, or "no geometry".
    std::string fault;          ///< What is wrong with it.
};

/// Reads features one by one, each as a JSON text of its own: what is wrong with one is no other's concern.
/// Everything in a feature is checked to be valid JSON, also what is not used.
class FeatureReader {
 public:
    /// Throws `std::bad_alloc` where memory ends.
    [[nodiscard]] Feature read(simdjson::padded_string_view text);

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
    bool readDocument(simdjson::padded_string_view text);
    template <class Read>
    bool forEachMember(simdjson::ondemand::object& object, Read&& read);
    bool readText(Value value, const char* what, std::string& text);
    bool readGeometry(Value value);
    bool readCoordinates(Value value);
    bool readNumber(Value value, std::size_t index);
    bool check(Value value, int depth);

    bool fail(std::string fault);
    bool failFor(simdjson::error_code error);
    void judge();
    void judgeGeometry();

    simdjson::ondemand::parser parser_;
    Feature feature_;
    std::string type_;
    Geometry geometry_;
};

}  // namespace pelta::command
