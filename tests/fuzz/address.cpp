/// The viewer's own address: what is read, shared and read again stays the same.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
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

void requireSame(const PageAddress& one, const PageAddress& other, std::string_view query) {
    require(one.data == other.data && one.style == other.style, "addresses of documents are kept", query);
    require(one.isSnapshot == other.isSnapshot, "the kind of page is kept", query);
}

void requireCamera(const std::optional<CameraRequest>& camera) {
    constexpr std::array lowest{-90., -180., 0., 0., -360.};
    constexpr std::array highest{90., 180., 24., 60., 360.};
    const auto parts = partsOf(camera);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        require(parts[i] >= lowest[i] && parts[i] <= highest[i], "a camera is within its limits");
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
    requireShared(query, address);
    return 0;
}
