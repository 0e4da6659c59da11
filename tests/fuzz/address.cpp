/// The viewer's own address: what is read, written and read again stays the same.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "Require.h"
#include "data/PageAddress.h"

namespace {

using namespace pelta;
using namespace pelta::viewer;
using pelta::fuzz::require;

std::string percentEncoded(std::string_view text) {
    std::string result;
    for (const char byte : text) {
        char escape[4];
        std::snprintf(escape, sizeof escape, "%%%02X",
                      static_cast<unsigned>(static_cast<unsigned char>(byte)));
        result += escape;
    }
    return result;
}

std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

/// The shortest query with the same meaning.
std::string written(const PageAddress& address) {
    std::string query = "?";
    if (address.data) {
        query += "data=" + percentEncoded(*address.data) + "&";
    }
    if (address.style) {
        query += "style=" + percentEncoded(*address.style) + "&";
    }
    if (const auto& camera = address.camera) {
        query += "camera=" + number(camera->target.latitude) + "," + number(camera->target.longitude) + "," +
                 number(camera->zoom) + "," + number(camera->tilt) + "," + number(camera->bearing) + "&";
    }
    query += address.isFit ? "fit&" : "";
    query += address.isClustered ? "cluster&" : "";
    query += address.isSnapshot ? "snapshot" : "";
    return query;
}

bool isNear(double one, double other, double tolerance) {
    return std::abs(one - other) <= tolerance;
}

void requireSame(const PageAddress& one, const PageAddress& other, std::string_view query) {
    require(one.data == other.data && one.style == other.style, "addresses of documents are kept", query);
    require(one.isSnapshot == other.isSnapshot, "the kind of page is kept", query);
}

void requireCamera(const std::optional<CameraRequest>& camera) {
    if (camera) {
        const bool isAllowed = std::abs(camera->target.latitude) <= 90 &&
                               std::abs(camera->target.longitude) <= 180 && camera->zoom >= 0 &&
                               camera->zoom <= 24 && camera->tilt >= 0 && camera->tilt <= 60 &&
                               std::abs(camera->bearing) <= 360;
        require(isAllowed, "a camera is within its limits");
    }
}

void requireShared(std::string_view query, const PageAddress& address) {
    const CameraRequest camera = address.camera.value_or(CameraRequest{});
    const std::string shared = sharedQuery(query, camera, address.isClustered);
    const PageAddress again = parsePageAddress(shared);
    requireSame(address, again, shared);
    require(!again.isFit && again.isClustered == address.isClustered,
            "a shared page looks where this one does", shared);
    require(again.camera && isNear(again.camera->target.latitude, camera.target.latitude, 6e-7) &&
                isNear(again.camera->target.longitude, camera.target.longitude, 6e-7) &&
                isNear(again.camera->zoom, camera.zoom, 6e-4) &&
                isNear(again.camera->tilt, camera.tilt, 0.06) &&
                isNear(again.camera->bearing, camera.bearing, 0.06),
            "a shared page has the camera", shared);
    require(sharedQuery(shared, camera, address.isClustered) == shared,
            "sharing what was shared changes nothing", shared);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view query(reinterpret_cast<const char*>(bytes), size);
    const PageAddress address = parsePageAddress(query);
    requireCamera(address.camera);
    for (const std::string& problem : address.problems) {
        const bool isPrintable = std::none_of(problem.begin(), problem.end(), [](char byte) {
            return static_cast<unsigned char>(byte) < 0x20;
        });
        require(!problem.empty() && isPrintable, "problems are one line of text", problem);
    }

    const std::string plain = written(address);
    const PageAddress again = parsePageAddress(plain);
    requireSame(address, again, plain);
    require(again.problems.empty(), "what was read has no problems when written", plain);
    require(address.isFit == again.isFit && address.isClustered == again.isClustered, "flags are kept",
            plain);
    require(address.camera.has_value() == again.camera.has_value() &&
                (!address.camera ||
                 (address.camera->target == again.camera->target &&
                  address.camera->zoom == again.camera->zoom && address.camera->tilt == again.camera->tilt &&
                  address.camera->bearing == again.camera->bearing)),
            "the camera is kept", plain);
    requireShared(query, address);
    return 0;
}
