#include "data/GeoJsonReader.h"

#include <algorithm>
#include <utility>

#include "data/GeoJsonEvents.h"

namespace pelta::viewer {

namespace {

constexpr std::string_view blanks = " \t\r\n";

/// Lines and columns, in bytes, count from 1.
std::string placeOf(std::string_view text, std::size_t position) {
    const std::string_view before = text.substr(0, std::min(position, text.size()));
    const auto lines = std::count(before.begin(), before.end(), '\n');
    const auto lineStart = before.rfind('\n');
    const std::size_t column = before.size() - (lineStart == std::string_view::npos ? 0 : lineStart + 1);
    return "line " + std::to_string(lines + 1) + ", column " + std::to_string(column + 1);
}

}  // namespace

MapData readGeoJson(std::string_view text, std::string name) {
    MapData data;
    data.name = std::move(name);
    if (text.find_first_not_of(blanks) == std::string_view::npos) {
        data.addProblem(std::nullopt, "the file is empty");
        return data;
    }
    GeoJsonEvents events(data);
    const auto fault = JsonReader(text, events).read();
    if (const auto position = events.textFault()) {
        data.addProblem(std::nullopt,
                        "a text outside of its features is not UTF-8 at " + placeOf(text, *position));
    }
    if (fault) {
        data.addProblem(events.openFeature(),
                        "not JSON at " + placeOf(text, fault->position) + ": " +
                            (events.isTooDeep() ? GeoJsonEvents::tooDeep : fault->reason) +
                            (data.featureCount > 0 ? "; the features before it are kept" : ""));
    }
    return data;
}

}  // namespace pelta::viewer
