#pragma once

#include <cstddef>
#include <map>
#include <simdjson.h>
#include <string>
#include <string_view>
#include <vector>

#include <pelta/Platform/CoreLocation.h>

#include "FeatureReader.h"
#include "InputText.h"
#include "Progress.h"

namespace pelta::command {

/// The points of a GeoJSON text, in its order.
struct PointSet {
    std::vector<CLLocationCoordinate2D> points;
    std::map<std::string, std::size_t> skipped;  ///< Number of features by their other geometry.
    std::size_t faults = 0;                      ///< Features that were left out.
    bool isUsable = true;                        ///< False when the text could not be read to its end.
};

/// Reads a FeatureCollection, a single Feature, or one Feature a line. Faults go to standard error with the
/// file's name, the feature's index counted from 0, and the reason.
class PointReader {
 public:
    /// @param input     must outlive the reader; its text must have been read.
    /// @param progress  is told how far the reading has come.
    PointReader(const InputText& input, Progress& progress) : input_(input), progress_(progress) {}

    [[nodiscard]] PointSet read();

 private:
    void readLines(std::string_view text);
    void readLine(std::string_view line, std::size_t number);
    void readDocument(std::string_view text);
    void readCollection(simdjson::ondemand::document& document);
    void readFeatures(simdjson::simdjson_result<simdjson::ondemand::array> features);

    [[nodiscard]] simdjson::padded_string_view padded(std::string_view part) const;
    void take(Feature feature, const std::string& place);
    void refuse(const std::string& reason);

    const InputText& input_;
    Progress& progress_;
    simdjson::ondemand::parser parser_;
    FeatureReader reader_;
    PointSet set_;
    std::size_t featureCount_ = 0;
};

}  // namespace pelta::command
