#include <cmath>
#include <cstdio>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <pelta/Cluster/PgmClusterAlgorithm.h>

#include "Command.h"
#include "FaultMessages.h"
#include "InputName.h"
#include "InputText.h"
#include "OptionReader.h"
#include "OutputText.h"
#include "PointReader.h"
#include "Progress.h"

namespace pelta::command {

namespace {

struct Settings {
    double firstZoom = 0;
    double lastZoom = 0;
    bool isRange = false;  // every whole zoom from the first to the last
    std::uint64_t distance = 200;
    std::uint64_t count = 2;
    std::string file = "-";
};

/// A point of the input under its number.
class InputPoint final : public PgmClusterItem {
 public:
    InputPoint(const FeaturePoint& point, std::size_t index) : point_(point), index_(index) {}
    [[nodiscard]] CLLocationCoordinate2D position() const override { return point_.position; }
    /// Among the points.
    [[nodiscard]] std::size_t index() const noexcept { return index_; }
    /// Among all features of the file.
    [[nodiscard]] std::size_t feature() const noexcept { return point_.feature; }

 private:
    FeaturePoint point_;
    std::size_t index_;
};

/// "Z" or "A..B".
bool readZoom(std::string_view text, Settings& settings) {
    constexpr double limit = 1000;
    const auto dots = text.find("..");
    if (dots == std::string_view::npos) {
        const auto zoom = readNumber(text);
        settings.firstZoom = settings.lastZoom = zoom.value_or(0);
        settings.isRange = false;
        return zoom && std::abs(*zoom) <= limit;
    }
    const auto first = readWholeNumber(text.substr(0, dots));
    const auto last = readWholeNumber(text.substr(dots + 2));
    if (!first || !last || *first > *last) {
        return false;
    }
    settings.firstZoom = static_cast<double>(*first);
    settings.lastZoom = static_cast<double>(*last);
    settings.isRange = true;
    return settings.firstZoom >= -limit && settings.lastZoom <= limit;
}

bool readCount(std::string_view text, std::uint64_t& count) {
    const auto number = readWholeNumber(text);
    if (!number || *number < 0) {
        return false;
    }
    count = static_cast<std::uint64_t>(*number);
    return true;
}

/// @return what is wrong with the words; empty when nothing is.
std::string readSettings(Arguments arguments, Settings& settings) {
    OptionReader options(arguments);
    bool hasZoom = false;
    while (const auto option = options.next()) {
        const bool isZoom = *option == "--zoom";
        if (!isZoom && *option != "--max-distance" && *option != "--min-count") {
            return "there is no option '" + std::string(*option) + "'";
        }
        const auto value = options.value();
        if (!value) {
            return std::string(*option) + " needs a value";
        }
        if (isZoom && !readZoom(*value, settings)) {
            return "--zoom takes a number, or a range of whole numbers like 3..12; not '" +
                   std::string(*value) + "'";
        }
        if (!isZoom && !readCount(*value, *option == "--min-count" ? settings.count : settings.distance)) {
            return std::string(*option) + " takes a whole number from 0; not '" + std::string(*value) + "'";
        }
        hasZoom = hasZoom || isZoom;
    }
    if (!hasZoom) {
        return "--zoom is missing";
    }
    if (options.others().size() > 1) {
        return "there is more than one file";
    }
    if (!options.others().empty()) {
        settings.file = options.others().front();
    }
    return {};
}

void writeNumbers(const std::vector<std::size_t>& numbers, OutputText& output) {
    std::string_view separator;
    for (const std::size_t number : numbers) {
        output.write(separator);
        output.write(static_cast<std::uint64_t>(number));
        separator = ",";
    }
}

void writeCluster(const PgmCluster& cluster, std::optional<double> zoom, OutputText& output) {
    const CLLocationCoordinate2D position = cluster.position();
    output.write(R"({"type":"Feature","geometry":{"type":"Point","coordinates":[)");
    output.write(position.longitude);
    output.write(",");
    output.write(position.latitude);
    output.write(R"(]},"properties":{)");
    if (zoom) {
        output.write(R"("zoom":)");
        output.write(*zoom);
        output.write(",");
    }
    output.write(R"("count":)");
    output.write(cluster.count());
    std::vector<std::size_t> items;
    std::vector<std::size_t> features;
    items.reserve(cluster.items().size());
    features.reserve(cluster.items().size());
    for (const auto& item : cluster.items()) {
        const auto& point = static_cast<const InputPoint&>(*item);
        items.push_back(point.index());
        features.push_back(point.feature());
    }
    output.write(R"(,"items":[)");
    writeNumbers(items, output);
    output.write(R"(],"features":[)");
    writeNumbers(features, output);
    output.write("]}}");
}

/// Clusters the points at each zoom and writes what comes out.
class ClusterWriter {
 public:
    ClusterWriter(const Settings& settings, const std::vector<FeaturePoint>& points, Progress& progress)
        : settings_(settings), pointCount_(points.size()), progress_(progress) {
        algorithm_.setMaxDistanceBetweenItems(settings.distance);
        algorithm_.setMinClusteringCount(settings.count);
        const auto items = std::make_shared<std::vector<InputPoint>>();
        items->reserve(points.size());
        for (std::size_t i = 0; i < points.size(); ++i) {
            items->emplace_back(points[i], i);
            algorithm_.add(std::shared_ptr<PgmClusterItem>(items, &items->back()));
        }
    }

    void write(OutputText& output) {
        output.write("{\"type\":\"FeatureCollection\",\"features\":[");
        const char* separator = "\n";
        for (double zoom = settings_.firstZoom; zoom <= settings_.lastZoom && !output.hasFailed();
             zoom += 1) {
            if (progress_.isDue()) {
                progress_.show("clustering at zoom " + std::to_string(std::lround(zoom)));
            }
            std::size_t itemCount = 0;
            for (const auto& cluster : algorithm_.clustersAtZoom(static_cast<float>(zoom))) {
                output.write(separator);
                writeCluster(*cluster, settings_.isRange ? std::optional(zoom) : std::nullopt, output);
                separator = ",\n";
                itemCount += cluster->count();
            }
            outside_ = pointCount_ - itemCount;
        }
        output.write("\n]}\n");
    }

    /// Points that ended in no cluster.
    [[nodiscard]] std::size_t outside() const noexcept { return outside_; }

 private:
    const Settings& settings_;
    std::size_t pointCount_;
    Progress& progress_;
    PgmNonHierarchicalDistanceBasedAlgorithm algorithm_;
    std::size_t outside_ = 0;
};

void warnOfSkipped(const std::string& name, const PointSet& set) {
    std::size_t total = 0;
    std::string kinds;
    for (const auto& [kind, count] : set.skipped) {
        total += count;
        kinds += (kinds.empty() ? "" : ", ") + std::to_string(count) + " " + kind;
    }
    if (total > 0) {
        std::fprintf(stderr, "%s: warning: skipped %zu feature%s that %s no Point: %s\n", name.c_str(), total,
                     total == 1 ? "" : "s", total == 1 ? "is" : "are", kinds.c_str());
    }
}

void warnOfOutside(const std::string& name, std::size_t count) {
    if (count > 0) {
        std::fprintf(stderr, "%s: warning: %zu point%s beyond the map's edge ended in no cluster\n",
                     name.c_str(), count, count == 1 ? "" : "s");
    }
}

/// The file's text is given back before the points are grouped.
PointSet readPoints(const std::string& path, FaultMessages& faults, Progress& progress) {
    const InputText input(path);
    if (input.error().empty()) {
        return PointReader(input, faults, progress).read();
    }
    std::fprintf(stderr, "%s: cannot be read: %s\n", input.name().c_str(), input.error().c_str());
    PointSet none;
    none.isUsable = false;
    return none;
}

ExitCode clusterFile(const Settings& settings) {
    Progress progress;
    FaultMessages faults(progress);
    const PointSet set = readPoints(settings.file, faults, progress);
    if (!set.isUsable) {
        return ExitCode::failed;
    }
    OutputText output;
    ClusterWriter writer(settings, set.points, progress);
    writer.write(output);
    const bool isWritten = output.finish();
    progress.hide();
    const std::string name = inputName(settings.file);
    warnOfSkipped(name, set);
    warnOfOutside(name, writer.outside());
    return isWritten && faults.count() == 0 ? ExitCode::done : ExitCode::failed;
}

ExitCode runCluster(Arguments arguments) {
    Settings settings;
    if (const std::string problem = readSettings(arguments, settings); !problem.empty()) {
        return misuse(clusterCommand.name, problem);
    }
    try {
        return clusterFile(settings);
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "%s: memory ran out; cluster it in parts, or with more memory\n",
                     inputName(settings.file).c_str());
        return ExitCode::failed;
    }
}

}  // namespace

const Command clusterCommand{"cluster", "group the points of a GeoJSON file as a map would at a zoom level",
                             R"(usage: pelta cluster --zoom Z|A..B [--max-distance N] [--min-count N] [FILE]

Groups points that would come to lie close together on a map, and writes one Point a group.

Input is a GeoJSON FeatureCollection, or one Feature a line; no FILE, or -, is standard input. Points are taken in
their order; features of any other geometry are skipped, and their number is told.

  --zoom Z            the map's zoom level, any number; the world is 512 x 2^Z points wide
  --zoom A..B         every whole zoom level from A to B; each group then has a property "zoom"
  --max-distance N    how far points may be from a group's first one: N/2 points of the map, east, west, north
                      and south (200 if not given)
  --min-count N       fewest points that stay together; smaller groups are written as groups of one (2 if not given)

Output is a FeatureCollection on standard output with the properties "count", "items" and "features" for each Point.
"items" are the numbers of the input's points, counted from 0 without the features that are no Point or were left out;
"features" are the same points' indices among all features, as messages count them. A group lies where its first point
does. Points beyond the map's edge come to no group; their number is told.

A feature that cannot be used is named on standard error by its index, counted from 0 with all features, and left out;
the exit code is then 1. The first 100 are named and the others counted. A file that cannot be read to its end, or that
is not JSON outside of its features, gives no output.

Exit codes: 0 done, 1 failed in part or in whole, 2 wrong use.
)",
                             runCluster};

}  // namespace pelta::command
