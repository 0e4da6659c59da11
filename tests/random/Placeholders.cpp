#include "Placeholders.h"

#include <algorithm>
#include <array>

#include <pelta/Platform/Log.h>

#include "Values.h"

namespace pelta::random {

namespace {

std::string mapWords(std::uint32_t argument) {
    return argument == mapCount ? "no map" : "map " + std::to_string(argument);
}

std::string kindWords(std::uint32_t argument) {
    constexpr std::array<const char*, shapeKindCount> names{"a marker",  "an info window", "a polyline",
                                                            "a polygon", "a circle",       "a bare shape"};
    const std::string name = names[argument % shapeKindCount];
    return argument < shapeKindCount ? name : name + " of the application's own class";
}

/// Objects of which there are some: "shape 3".
Placeholder numbered(std::string_view name, std::uint32_t count) {
    return {name, count, [name](std::uint32_t argument) {
                return std::string(name).append(" ").append(std::to_string(argument));
            }};
}

Placeholder oneOf(std::string_view name, std::vector<const char*> words) {
    const auto count = static_cast<std::uint32_t>(words.size());
    return {name, count, [words = std::move(words)](std::uint32_t argument) { return words[argument]; }};
}

template <class T>
Placeholder oneOf(std::string_view name, const std::vector<Named<T>>& values) {
    return {name, static_cast<std::uint32_t>(values.size()),
            [&values](std::uint32_t argument) { return values[argument].words; }};
}

const std::vector<Placeholder>& table() {
    static const std::vector<Placeholder> placeholders{
        {"map", mapCount, mapWords},
        {"map or none", mapCount + 1, mapWords},
        numbered("shape", shapeCount),
        numbered("manager", managerCount),
        {"kind", 2 * shapeKindCount, kindWords},
        oneOf("event", {"a change to come", "a changing camera", "a change that ended", "rest", "a tap",
                        "a long press", "a location"}),
        oneOf("question", {"a cluster to show", "an item to show", "a tapped cluster", "a tapped item"}),
        oneOf("number", numbers()),
        oneOf("coordinate", coordinates()),
        oneOf("path", paths()),
        oneOf("text", texts()),
        oneOf("colour", colours()),
        oneOf("size", sizes()),
        oneOf("place", places()),
        oneOf("seconds", seconds()),
        oneOf("order", orders()),
        oneOf("count", counts()),
        oneOf("style", styles()),
        oneOf("picture", pictures()),
        oneOf("flag", {"off", "on"}),
        numbered("finger", 3),
        oneOf("phase", {"comes down", "moves", "lifts", "is cancelled"}),
        oneOf("animation", {"at once", "linearly", "easing in", "easing out", "flying"}),
        oneOf("mode", {"off", "none", "follow", "follow with heading"}),
        numbered("variant", 6),
    };
    return placeholders;
}

}  // namespace

const Placeholder& placeholderNamed(std::string_view name) {
    const auto found = std::find_if(table().begin(), table().end(),
                                    [name](const Placeholder& one) { return one.name == name; });
    if (found == table().end()) {
        fatalError("there is no placeholder {" + std::string(name) + "}");
    }
    return *found;
}

}  // namespace pelta::random
