#include "data/PageAddress.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>

#include "CameraNumbers.h"
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

/// At most as many decimals, without noughts at the end.
std::string decimal(double value, int decimals) {
    char text[48];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    std::string result = text;
    result.erase(result.find_last_not_of('0') + 1);
    result.erase(result.find_last_not_of('.') + 1);
    return result == "-0" ? "0" : result;
}

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
        problems.push_back(start + std::string(cameraForm) + " is needed");
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
        } else if (name == "cluster") {
            address.isClustered = text != "0";
        } else if (name == "snapshot") {
            address.isSnapshot = text != "0";
        }
    }
    return address;
}

std::string sharedQuery(std::string_view query, const CameraRequest& camera, bool isClustered) {
    constexpr int degreeDecimals = 6;  // a tenth of a metre
    constexpr int zoomDecimals = 3;
    constexpr int angleDecimals = 1;
    std::string shared = "?camera=" + decimal(camera.target.latitude, degreeDecimals) + "," +
                         decimal(camera.target.longitude, degreeDecimals) + "," +
                         decimal(camera.zoom, zoomDecimals);
    const std::string tilt = decimal(camera.tilt, angleDecimals);
    const std::string bearing = decimal(camera.bearing, angleDecimals);
    if (tilt != "0" || bearing != "0") {
        shared += "," + tilt + (bearing != "0" ? "," + bearing : "");
    }
    shared += isClustered ? "&cluster" : "";
    query.remove_prefix(query.starts_with('?') ? 1 : 0);
    while (!query.empty()) {
        const std::string_view part = takeUntil(query, '&');
        const std::string name = decoded(part.substr(0, part.find('=')));
        if (!part.empty() && name != "camera" && name != "fit" && name != "cluster") {
            shared.append("&").append(part);
        }
    }
    return shared;
}

}  // namespace pelta::viewer
