#include "data/MapData.h"

namespace pelta::viewer {

void MapData::addProblem(std::optional<std::size_t> feature, const std::string& reason) {
    if (problemCount++ < listedMessages) {
        problems.push_back(message(feature, reason));
    }
}

void MapData::addLeftOut(std::size_t feature, const std::string& reason) {
    if (leftOutCount++ < listedMessages) {
        leftOuts.push_back(message(feature, reason));
    }
}

std::string MapData::message(std::optional<std::size_t> feature, const std::string& reason) const {
    return name + (feature ? ": feature " + std::to_string(*feature) : "") + ": " + reason;
}

}  // namespace pelta::viewer
