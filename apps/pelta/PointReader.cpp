#include "PointReader.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "JsonCheck.h"

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

std::string signAt(const char* byte) {
    const auto code = static_cast<unsigned char>(*byte);
    return code > 0x20 && code < 0x7F ? inQuotes({byte, 1}) : "byte " + std::to_string(code);
}

/// Takes a line off the text.
std::string_view takeLine(std::string_view& text) {
    const auto end = std::min(text.find('\n'), text.size());
    const std::string_view line = trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

/// Takes a line that is not blank off the text; empty at the end.
std::string_view takeFilledLine(std::string_view& text) {
    std::string_view line;
    while (line.empty() && !text.empty()) {
        line = takeLine(text);
    }
    return line;
}

bool startsWithValue(std::string_view text) {
    return !JsonCursor(text).takeValue().empty();
}

bool isOneValue(std::string_view text) {
    JsonCursor cursor(text);
    return !cursor.takeValue().empty() && cursor.isAtEnd();
}

/// Features line by line: the first line is complete in itself and more follows; or it is a broken feature,
/// and the next starts afresh. A valid document that is laid out over several lines is never taken for it.
bool isLineByLine(std::string_view text) {
    std::string_view rest = text;
    const std::string_view first = takeFilledLine(rest);
    const std::string_view second = takeFilledLine(rest);
    if (second.empty() || startsWithValue(first)) {
        return !second.empty();
    }
    constexpr std::string_view beforeValues = "[,:";
    if (second.front() != '{') {
        return false;
    }
    if (beforeValues.find(first.back()) == std::string_view::npos) {
        return true;
    }
    const bool isCollection = first.find("\"features\"") != std::string_view::npos;
    return !isCollection && isOneValue(second) && !isOneValue(text);
}

}  // namespace

PointSet PointReader::read() {
    std::string_view text = input_.text();
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    if (trimmed(text).empty()) {
        refuse("it is empty; expected a FeatureCollection, or one Feature a line");
    } else if (isLineByLine(text)) {
        readLines(text);
    } else {
        readDocument(text);
    }
    faults_.endFile(input_.name(), "features cannot be used");
    return std::move(set_);
}

void PointReader::readLines(std::string_view text) {
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::string_view line = takeLine(text);
        if (!line.empty()) {
            take(reader_.read(padded(line)), input_.name() + ":" + std::to_string(number));
        }
    }
}

void PointReader::readDocument(std::string_view text) {
    JsonCursor cursor(text);
    std::string type;
    if (!readType(cursor, type)) {
        return;
    }
    const bool isCollection = type == "FeatureCollection";
    if (!isCollection && type != "Feature") {
        refuse(type.empty() ? "it is neither a FeatureCollection nor a Feature"
                            : "its type is " + inQuotes(type) +
                                  "; expected a FeatureCollection, or one Feature a line");
        return;
    }
    const bool isRead = isCollection ? readCollection(cursor) : readFeature(cursor);
    if (isRead && !cursor.isAtEnd()) {
        refuse("there is more behind the " + type + " at " + placeOf(cursor.place()));
    }
}

/// Calls `read(name)` for each member of the object at the cursor, which then stands before the member's
/// value, until it returns false.
template <class Read>
bool PointReader::forEachMember(JsonCursor& cursor, Read&& read) {
    if (!cursor.take('{')) {
        return refuseAt(cursor.place());
    }
    if (cursor.take('}')) {
        return true;
    }
    do {
        std::string_view key;
        std::string name;
        if (!takeValue(cursor, key) || !readText(key, name)) {
            return false;
        }
        if (!cursor.take(':')) {
            return refuseAt(cursor.place());
        }
        if (!read(name)) {
            return false;
        }
    } while (cursor.take(','));
    return cursor.take('}') || refuseAt(cursor.place());
}

/// The type may come behind everything else, so it is looked for by itself. Stays empty where the text is no
/// object, or has no type.
bool PointReader::readType(JsonCursor cursor, std::string& type) {
    if (cursor.isAtEnd() || *cursor.place() != '{') {
        return true;
    }
    bool isFound = false;
    const bool isAll = forEachMember(cursor, [&](const std::string& name) {
        std::string_view value;
        if (!takeValue(cursor, value)) {
            return false;
        }
        if (name != "type" || value.front() != '"') {
            return true;
        }
        isFound = readText(value, type);
        return false;
    });
    return isAll || isFound;
}

bool PointReader::readFeature(JsonCursor& cursor) {
    std::string_view feature;
    if (!takeValue(cursor, feature)) {
        return false;
    }
    take(reader_.read(padded(feature)), input_.name());
    return true;
}

bool PointReader::readCollection(JsonCursor& cursor) {
    bool hasFeatures = false;
    const bool isRead = forEachMember(cursor, [&](const std::string& name) {
        if (name != "features") {
            return checkMember(cursor, name);
        }
        if (std::exchange(hasFeatures, true)) {
            return refuse("it has two members 'features'");
        }
        return readFeatures(cursor);
    });
    return isRead && (hasFeatures || refuse("the FeatureCollection has no features"));
}

bool PointReader::readFeatures(JsonCursor& cursor) {
    if (!cursor.take('[')) {
        return refuse("the features of the FeatureCollection are not an array");
    }
    if (cursor.take(']')) {
        return true;
    }
    do {
        if (!readFeature(cursor)) {
            return false;
        }
    } while (cursor.take(','));
    return cursor.take(']') || refuseAt(cursor.place());
}

bool PointReader::checkMember(JsonCursor& cursor, std::string_view name) {
    std::string_view value;
    if (!takeValue(cursor, value)) {
        return false;
    }
    od::document document;
    const auto error = parser_.iterate(padded(value)).get(document);
    const std::string fault = error ? described(error) : faultIn(document);
    return fault.empty() ||
           refuse("the value of " + inQuotes(name) + " at " + placeOf(value.data()) + ": " + fault);
}

bool PointReader::takeValue(JsonCursor& cursor, std::string_view& value) {
    value = cursor.takeValue();
    return !value.empty() || refuseAt(cursor.place());
}

bool PointReader::readText(std::string_view value, std::string& text) {
    if (value.front() != '"') {
        return refuseAt(value.data());
    }
    od::document document;
    std::string_view found;
    auto error = parser_.iterate(padded(value)).get(document);
    error = error ? error : document.get_string().get(found);
    text = found;
    return error == simdjson::SUCCESS ||
           refuse("the text at " + placeOf(value.data()) + " cannot be read: " + described(error));
}

simdjson::padded_string_view PointReader::padded(std::string_view part) const {
    const std::size_t start = static_cast<std::size_t>(part.data() - input_.text().data());
    return simdjson::padded_string_view(part.data(), part.size(), input_.capacity() - start);
}

std::string PointReader::placeOf(const char* byte) const {
    const std::string_view before =
        input_.text().substr(0, static_cast<std::size_t>(byte - input_.text().data()));
    const auto lineStart = before.rfind('\n');
    const std::size_t column = before.size() - (lineStart == std::string_view::npos ? 0 : lineStart + 1);
    return "line " + std::to_string(std::count(before.begin(), before.end(), '\n') + 1) + ", column " +
           std::to_string(column + 1);
}

void PointReader::take(Feature feature, const std::string& place) {
    const std::size_t index = featureCount_++;
    if (feature.point) {
        set_.points.push_back({*feature.point, index});
    } else if (!feature.otherGeometry.empty()) {
        ++set_.skipped[feature.otherGeometry];
    } else {
        faults_.tell(place + ": feature " + std::to_string(index), feature.fault);
    }
    constexpr std::size_t featuresALook = 4096;
    if (featureCount_ % featuresALook == 0 && progress_.isDue()) {
        progress_.show("reading " + input_.name() + ": " + std::to_string(featureCount_) + " features");
    }
}

/// @return false, for those that end with it.
bool PointReader::refuse(const std::string& reason) {
    set_.isUsable = false;
    progress_.hide();
    std::fprintf(stderr, "%s: %s\n", input_.name().c_str(), reason.c_str());
    return false;
}

bool PointReader::refuseAt(const char* byte) {
    const bool isEnd = byte == input_.text().data() + input_.text().size();
    return refuse("it is not valid JSON at " + placeOf(byte) + ": " +
                  (isEnd ? "the text ends too early" : "unexpected " + signAt(byte)));
}

}  // namespace pelta::command
