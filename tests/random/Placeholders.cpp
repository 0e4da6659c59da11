#include "Placeholders.h"

#include <algorithm>
#include <array>

#include <pelta/Platform/Log.h>

#include "Values.h"

namespace pelta::random {

namespace {

template <std::uint32_t number>
std::uint32_t fixed() {
    return number;
}

template <auto& values>
std::uint32_t countOf() {
    return static_cast<std::uint32_t>(values().size());
}

template <auto& values>
std::string wordsOf(std::uint32_t argument) {
    return values()[argument].words;
}

std::string mapWords(std::uint32_t argument) {
    return argument == mapCount ? "no map" : "map " + std::to_string(argument);
}

std::string shapeWords(std::uint32_t argument) {
    return "shape " + std::to_string(argument);
}

std::string managerWords(std::uint32_t argument) {
    return "manager " + std::to_string(argument);
}

std::string kindWords(std::uint32_t argument) {
    constexpr std::array<const char*, shapeKindCount> names{"a marker",  "an info window", "a polyline",
                                                            "a polygon", "a circle",       "a bare shape"};
    const std::string name = names[argument % shapeKindCount];
    return argument < shapeKindCount ? name : name + " of the application's own class";
}

std::string eventWords(std::uint32_t argument) {
    constexpr std::array<const char*, mapEventCount> names{
        "a change to come", "a changing camera", "a change that ended", "rest", "a tap",
        "a long press",     "a location"};
    return names[argument];
}

std::string questionWords(std::uint32_t argument) {
    constexpr std::array<const char*, clusterQuestionCount> names{"a cluster to show", "an item to show",
                                                                  "a tapped cluster", "a tapped item"};
    return names[argument];
}

std::string fingerWords(std::uint32_t argument) {
    return "finger " + std::to_string(argument);
}

std::string phaseWords(std::uint32_t argument) {
    constexpr std::array<const char*, 4> names{"comes down", "moves", "lifts", "is cancelled"};
    return names[argument];
}

std::string animationWords(std::uint32_t argument) {
    constexpr std::array<const char*, 5> names{"at once", "linearly", "easing in", "easing out", "flying"};
    return names[argument];
}

std::string modeWords(std::uint32_t argument) {
    constexpr std::array<const char*, 4> names{"off", "none", "follow", "follow with heading"};
    return names[argument];
}

std::string variantWords(std::uint32_t argument) {
    return "variant " + std::to_string(argument);
}

std::string flagWords(std::uint32_t argument) {
    return argument == 0 ? "off" : "on";
}

constexpr std::array table{
    Placeholder{"map", fixed<mapCount>, mapWords},
    Placeholder{"map or none", fixed<mapCount + 1>, mapWords},
    Placeholder{"shape", fixed<shapeCount>, shapeWords},
    Placeholder{"manager", fixed<managerCount>, managerWords},
    Placeholder{"kind", fixed<2 * shapeKindCount>, kindWords},
    Placeholder{"event", fixed<mapEventCount>, eventWords},
    Placeholder{"question", fixed<clusterQuestionCount>, questionWords},
    Placeholder{"number", countOf<numbers>, wordsOf<numbers>},
    Placeholder{"coordinate", countOf<coordinates>, wordsOf<coordinates>},
    Placeholder{"path", countOf<paths>, wordsOf<paths>},
    Placeholder{"text", countOf<texts>, wordsOf<texts>},
    Placeholder{"colour", countOf<colours>, wordsOf<colours>},
    Placeholder{"size", countOf<sizes>, wordsOf<sizes>},
    Placeholder{"place", countOf<places>, wordsOf<places>},
    Placeholder{"seconds", countOf<seconds>, wordsOf<seconds>},
    Placeholder{"order", countOf<orders>, wordsOf<orders>},
    Placeholder{"count", countOf<counts>, wordsOf<counts>},
    Placeholder{"style", countOf<styles>, wordsOf<styles>},
    Placeholder{"picture", countOf<pictures>, wordsOf<pictures>},
    Placeholder{"flag", fixed<2>, flagWords},
    Placeholder{"finger", fixed<3>, fingerWords},
    Placeholder{"phase", fixed<4>, phaseWords},
    Placeholder{"animation", fixed<5>, animationWords},
    Placeholder{"mode", fixed<4>, modeWords},
    Placeholder{"variant", fixed<6>, variantWords},
};

}  // namespace

const Placeholder& placeholderNamed(std::string_view name) {
    const auto* const found =
        std::find_if(table.begin(), table.end(), [name](const Placeholder& one) { return one.name == name; });
    if (found == table.end()) {
        fatalError("there is no placeholder {" + std::string(name) + "}");
    }
    return *found;
}

}  // namespace pelta::random
