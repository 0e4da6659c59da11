#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include <pelta/Platform/PlatformPort.h>
#include <pelta/web/ApplicationResources.h>

#include "PngDecoder.h"
#include "WebBundle.h"

namespace pelta {

void ApplicationResources::addPicture(std::string name, std::span<const std::uint8_t> png, double scale) {
    if (std::isfinite(scale) && scale > 0) {
        WebBundle::shared().add(std::move(name), scale, {png.begin(), png.end()});
    }
}

WebBundle& WebBundle::shared() {
    static WebBundle bundle;
    return bundle;
}

void WebBundle::add(std::string name, double scale, std::vector<std::uint8_t> png) {
    pictures_[std::move(name)][scale] = std::move(png);
}

std::optional<UIImage> WebBundle::imageNamed(std::string_view name) const {
    const auto found = pictures_.find(name);
    if (found == pictures_.end()) {
        return std::nullopt;
    }
    std::vector<double> scales;
    for (const auto& [scale, png] : found->second) {
        scales.push_back(scale);
    }
    const auto version = versionForScale(scales, PlatformPort::current().screenScale());
    const double scale = scales[version.value_or(0)];
    return decodePng(found->second.at(scale), scale);
}

}  // namespace pelta
