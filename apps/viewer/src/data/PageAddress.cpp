#include "data/PageAddress.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "data/Text.h"

namespace pelta::viewer {

namespace {

/// Text of a query: as in other parts of an address, and "+" stands for a blank.
std::string decoded(std::string_view text) {
    std::string blanked(text);
    std::replace(blanked.begin(), blanked.end(), '+', ' ');
    return percentDecoded(blanked);
}

/// Takes the text up to the separator off the front.
std::string_view takeUntil(std::string_view& text, char separator) {
    const auto end = text.find(separator);
    const std::string_view taken = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    return taken;
}

struct CameraNumber {
    std::string_view name;
    double minimum;
    double maximum;
};

constexpr std::array<CameraNumber, 5> cameraNumbers{{
    {"latitude", -90, 90},
    {"longitude", -180, 180},
    {"zoom", 0, 24},
    {"tilt", 0, 60},
    {"bearing", -360, 360},
}};
constexpr std::size_t neededCameraNumbers = 3;

std::optional<CameraRequest> parseCamera(const std::string& text, std::vector<std::string>& problems) {
    const std::string start = "camera " + inQuotes(text) + ": ";
    std::array<double, cameraNumbers.size()> values{};
    std::string_view rest = text;
    std::size_t count = 0;
    bool hasMore = true;
    for (; hasMore && count < values.size(); ++count) {
        hasMore = rest.find(',') != std::string_view::npos;
        const auto value = parseNumber(takeUntil(rest, ','));
        const CameraNumber& number = cameraNumbers[count];
        if (!value || *value < number.minimum || *value > number.maximum) {
            problems.push_back(start + std::string(number.name) + " must be a number from " +
                               numberText(number.minimum) + " to " + numberText(number.maximum));
            return std::nullopt;
        }
        values[count] = *value;
    }
    if (hasMore || count < neededCameraNumbers) {
        problems.push_back(start + "LAT,LNG,ZOOM[,TILT[,BEARING]] is needed");
        return std::nullopt;
    }
    return CameraRequest{{values[0], values[1]}, values[2], values[3], values[4]};
}

std::optional<std::string> parseDocumentAddress(std::string_view name, const std::string& value,
                                                std::vector<std::string>& problems) {
    if (value.empty()) {
        problems.push_back(std::string(name) + ": an address is needed, as in ?" + std::string(name) +
                           "=file.json");
        return std::nullopt;
    }
    return value;
}

}  // namespace

PageAddress parsePageAddress(std::string_view query) {
    PageAddress address;
    if (!query.empty() && query.front() == '?') {
        query.remove_prefix(1);
    }
    while (!query.empty()) {
        std::string_view value = takeUntil(query, '&');
        const std::string name = decoded(takeUntil(value, '='));
        const std::string text = decoded(value);
        if (name == "data") {
            address.data = parseDocumentAddress(name, text, address.problems);
        } else if (name == "style") {
            address.style = parseDocumentAddress(name, text, address.problems);
        } else if (name == "camera") {
            address.camera = parseCamera(text, address.problems);
        } else if (name == "fit") {
            address.isFit = text != "0";
        } else if (name == "snapshot") {
            address.isSnapshot = text != "0";
        }
    }
    return address;
}

}  // namespace pelta::viewer
