#include "PointReader.h"

#include <algorithm>
#include <cstdio>

namespace pelta::command {

namespace {

namespace od = simdjson::ondemand;

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// True when every bracket that the text opens outside of strings is closed again.
bool isBalanced(std::string_view text) {
    int depth = 0;
    bool isInString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (isInString) {
            i += c == '\\' ? 1 : 0;
            isInString = c != '"';
        } else if (c == '"') {
            isInString = true;
        } else if (c == '{' || c == '[') {
            ++depth;
        } else if (c == '}' || c == ']') {
            --depth;
        }
    }
    return depth == 0 && !isInString;
}

/// Features line by line: the first line is complete in itself and more follows; or it is a broken feature,
/// and the next starts afresh.
bool isLineByLine(std::string_view text) {
    const auto end = text.find('\n');
    if (end == std::string_view::npos) {
        return false;
    }
    const std::string_view first = trimmed(text.substr(0, end));
    const std::string_view rest = trimmed(text.substr(end));
    if (rest.empty()) {
        return false;
    }
    return isBalanced(first) ||
           (rest.front() == '{' && first.find("\"FeatureCollection\"") == std::string_view::npos);
}

std::string described(simdjson::error_code error) {
    if (error == simdjson::CAPACITY) {
        return "it is larger than 4 GiB; write one Feature a line instead";
    }
    return std::string("it is not valid JSON: ") + simdjson::error_message(error);
}

}  // namespace

PointSet PointReader::read() {
    std::string_view text = input_.text();
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    if (text.empty()) {
        refuse("it is empty; expected a FeatureCollection, or one Feature a line");
    } else if (isLineByLine(text)) {
        readLines(text);
    } else {
        readDocument(text);
    }
    return std::move(set_);
}

simdjson::padded_string_view PointReader::padded(std::string_view part) const {
    const std::size_t start = static_cast<std::size_t>(part.data() - input_.text().data());
    return simdjson::padded_string_view(part.data(), part.size(), input_.capacity() - start);
}

void PointReader::readLines(std::string_view text) {
    const std::string_view before =
        input_.text().substr(0, static_cast<std::size_t>(text.data() - input_.text().data()));
    auto number = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        ++number;
        if (!line.empty()) {
            readLine(line, number);
        }
    }
}

void PointReader::readLine(std::string_view line, std::size_t number) {
    const std::string place = input_.name() + ":" + std::to_string(number);
    od::document document;
    if (const auto error = parser_.iterate(padded(line)).get(document)) {
        Feature unread;
        unread.fault = described(error);
        take(std::move(unread), place);
        return;
    }
    Feature feature = reader_.read(document.get_object());
    if (feature.fault.empty() && document.current_location().error() != simdjson::OUT_OF_BOUNDS) {
        feature = {};
        feature.fault = "there is more on the line behind it";
    }
    take(std::move(feature), place);
}

void PointReader::readDocument(std::string_view text) {
    od::document document;
    if (const auto error = parser_.iterate(padded(text)).get(document)) {
        refuse(described(error));
        return;
    }
    std::string_view type;
    const auto error = document.find_field_unordered("type").get_string().get(type);
    if (error == simdjson::NO_SUCH_FIELD || error == simdjson::INCORRECT_TYPE) {
        refuse("it is neither a FeatureCollection nor a Feature");
        return;
    }
    if (error != simdjson::SUCCESS) {
        refuse(described(error));
        return;
    }
    const bool isCollection = type == "FeatureCollection";
    if (!isCollection && type != "Feature") {
        refuse("its type is '" + std::string(type) +
               "'; expected a FeatureCollection, or one Feature a line");
        return;
    }
    document.rewind();
    if (isCollection) {
        readCollection(document);
    } else {
        take(reader_.read(document.get_object()), input_.name());
    }
    if (set_.isUsable && document.current_location().error() != simdjson::OUT_OF_BOUNDS) {
        refuse("there is more behind the " + std::string(isCollection ? "FeatureCollection" : "Feature"));
    }
}

void PointReader::readCollection(od::document& document) {
    od::object members;
    if (const auto error = document.get_object().get(members)) {
        refuse(described(error));
        return;
    }
    bool hasFeatures = false;
    for (auto member : members) {
        std::string_view key;
        if (const auto error = member.unescaped_key().get(key)) {
            refuse(described(error));
            return;
        }
        if (key != "features") {
            continue;
        }
        if (hasFeatures) {
            refuse("it has two members 'features'");
            return;
        }
        hasFeatures = true;
        readFeatures(member.value().get_array());
        if (!set_.isUsable) {
            return;
        }
    }
    if (!hasFeatures) {
        refuse("the FeatureCollection has no features");
    }
}

void PointReader::readFeatures(simdjson::simdjson_result<od::array> features) {
    if (features.error() != simdjson::SUCCESS) {
        refuse("the features of the FeatureCollection are not an array");
        return;
    }
    for (auto element : features) {
        Feature feature = reader_.read(element.get_object());
        const bool isEnd = feature.isDocumentUnusable;
        take(std::move(feature), input_.name());
        if (isEnd) {
            refuse("nothing behind that can be read");
            return;
        }
    }
}

void PointReader::take(Feature feature, const std::string& place) {
    const std::size_t index = featureCount_++;
    if (feature.point) {
        set_.points.push_back(*feature.point);
    } else if (!feature.otherGeometry.empty()) {
        ++set_.skipped[feature.otherGeometry];
    } else {
        ++set_.faults;
        progress_.hide();
        std::fprintf(stderr, "%s: feature %zu: %s\n", place.c_str(), index, feature.fault.c_str());
    }
    constexpr std::size_t featuresALook = 4096;
    if (featureCount_ % featuresALook == 0 && progress_.isDue()) {
        progress_.show("reading " + input_.name() + ": " + std::to_string(featureCount_) + " features");
    }
}

void PointReader::refuse(const std::string& reason) {
    set_.isUsable = false;
    progress_.hide();
    std::fprintf(stderr, "%s: %s\n", input_.name().c_str(), reason.c_str());
}

}  // namespace pelta::command
