#pragma once

#include <cstddef>
#include <map>
#include <simdjson.h>
#include <string>
#include <string_view>
#include <vector>

#include <pelta/Platform/CoreLocation.h>

#include "FaultMessages.h"
#include "FeatureReader.h"
#include "InputText.h"
#include "JsonCursor.h"
#include "Progress.h"

namespace pelta::command {

/// The position of a feature that is a Point.
struct FeaturePoint {
    CLLocationCoordinate2D position;
    std::size_t feature = 0;  ///< Its index among all features of the text, from 0.
};

/// The points of a GeoJSON text, in its order.
struct PointSet {
    std::vector<FeaturePoint> points;
    std::map<std::string, std::size_t> skipped;  ///< Number of features by their other geometry.
    bool isUsable = true;                        ///< False when the text could not be read to its end.
};

/// Reads a FeatureCollection, a single Feature, or one Feature a line. Each feature is a text of its own for
/// the parser, so that a broken one is left out alone. Faults are told with the file's name, the feature's
/// index counted from 0, and the reason.
class PointReader {
 public:
    /// @param input     must outlive the reader; its text must have been read.
    /// @param faults    are told features that cannot be used.
    /// @param progress  is told how far the reading has come.
    PointReader(const InputText& input, FaultMessages& faults, Progress& progress)
        : input_(input), faults_(faults), progress_(progress) {}

    /// Throws `std::bad_alloc` where memory ends.
    [[nodiscard]] PointSet read();

 private:
    void readLines(std::string_view text);
    void readDocument(std::string_view text);

    // They return false where reading has ended: the text is refused, or `read` wants no more of it.
    template <class Read>
    bool forEachMember(JsonCursor& cursor, Read&& read);
    bool readType(JsonCursor cursor, std::string& type);
    bool readFeature(JsonCursor& cursor);
    bool readCollection(JsonCursor& cursor);
    bool readFeatures(JsonCursor& cursor);
    bool checkMember(JsonCursor& cursor, std::string_view name);
    bool takeValue(JsonCursor& cursor, std::string_view& value);
    bool readText(std::string_view value, std::string& text);

    [[nodiscard]] simdjson::padded_string_view padded(std::string_view part) const;
    [[nodiscard]] std::string placeOf(const char* byte) const;
    void take(Feature feature, const std::string& place);
    bool refuse(const std::string& reason);
    bool refuseAt(const char* byte);

    const InputText& input_;
    FaultMessages& faults_;
    Progress& progress_;
    simdjson::ondemand::parser parser_;
    FeatureReader reader_;
    PointSet set_;
    std::size_t featureCount_ = 0;
};

}  // namespace pelta::command
