#include "data/LoadReport.h"

#include <string_view>

namespace pelta::viewer {

ShapeCounts countsOf(const MapData& data) {
    ShapeCounts counts;
    counts.nowhere = data.nowhereCount;
    for (const DataShape& shape : data.shapes) {
        switch (shape.kind) {
            case ShapeKind::marker:
                ++counts.markers;
                break;
            case ShapeKind::circle:
                ++counts.circles;
                break;
            case ShapeKind::line:
                ++counts.lines;
                break;
            case ShapeKind::area:
                ++counts.areas;
                break;
        }
    }
    return counts;
}

std::string inWords(const ShapeCounts& counts) {
    const struct {
        std::size_t count;
        std::string_view name;
    } kinds[] = {{counts.markers, "marker"},
                 {counts.lines, "line"},
                 {counts.areas, "area"},
                 {counts.circles, "circle"}};
    std::string words;
    for (const auto& kind : kinds) {
        if (kind.count > 0) {
            words += (words.empty() ? "" : ", ") + std::to_string(kind.count) + " " + std::string(kind.name) +
                     (kind.count > 1 ? "s" : "");
        }
    }
    words = words.empty() ? "nothing to draw" : words;
    if (counts.nowhere > 0) {
        words += ", " + std::to_string(counts.nowhere) +
                 (counts.nowhere > 1 ? " features without geometry" : " feature without geometry");
    }
    return words;
}

std::vector<std::string> completed(std::vector<std::string> messages, std::size_t count) {
    if (count > messages.size()) {
        messages.push_back("and " + std::to_string(count - messages.size()) + " more like these");
    }
    return messages;
}

}  // namespace pelta::viewer
