/// The viewer's own address: what is read, written and read again stays the same.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "Require.h"
#include "data/PageAddress.h"

namespace {

using namespace pelta;
using namespace pelta::viewer;
using pelta::fuzz::require;

/// Latitude, longitude, zoom, tilt and bearing; nothing without a camera.
std::vector<double> partsOf(const std::optional<CameraRequest>& camera) {
    return camera ? std::vector{camera->target.latitude, camera->target.longitude, camera->zoom, camera->tilt,
                                camera->bearing}
                  : std::vector<double>();
}

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
    for (const double part : partsOf(address.camera)) {
        query += (query.find("camera") == std::string::npos ? "camera=" : ",") + number(part);
    }
    query += "&";
    query += address.isFit ? "fit&" : "";
    query += address.isClustered ? "cluster&" : "";
    query += address.isSnapshot ? "snapshot" : "";
    return query;
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
    const auto wanted = partsOf(camera);
    const auto found = partsOf(again.camera);
    constexpr std::array tolerances{6e-7, 6e-7, 6e-4, 0.06, 0.06};
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        require(std::abs(found.at(i) - wanted[i]) <= tolerances[i], "a shared page has the camera", shared);
    }
    require(sharedQuery(shared, camera, address.isClustered) == shared,
            "sharing what was shared changes nothing", shared);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view query(reinterpret_cast<const char*>(bytes), size);
    const PageAddress address = parsePageAddress(query);
    requireCamera(address.camera);
    for (const std::string& problem : address.problems) {
        fuzz::requireTidy(problem);
    }

    const std::string plain = written(address);
    const PageAddress again = parsePageAddress(plain);
    requireSame(address, again, plain);
    require(again.problems.empty(), "what was read has no problems when written", plain);
    require(address.isFit == again.isFit && address.isClustered == again.isClustered, "flags are kept",
            plain);
    require(partsOf(address.camera) == partsOf(again.camera), "the camera is kept", plain);
    requireShared(query, address);
    return 0;
}
