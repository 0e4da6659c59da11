#include <algorithm>
#include <cmath>

#include <pelta/Platform/Bundle.h>
#include <pelta/Platform/PlatformPort.h>
#include <pelta/Platform/UIWindow.h>

#include "Platform/EmbeddedPictures.h"

namespace pelta {

namespace {

/// The pictures that are compiled into the library.
class LibraryBundle final : public Bundle {
 public:
    std::optional<UIImage> imageNamed(std::string_view name) const override {
        const auto pictures = detail::embeddedPictures();
        const auto isBefore = [](const detail::EmbeddedPicture& picture, std::string_view wanted) {
            return picture.name < wanted;
        };
        const auto first = std::lower_bound(pictures.begin(), pictures.end(), name, isBefore);
        std::vector<double> scales;
        for (auto picture = first; picture != pictures.end() && picture->name == name; ++picture) {
            scales.push_back(picture->scale);
        }
        const std::optional<std::size_t> version = versionForScale(scales, UIScreen::scale());
        if (!version) {
            return std::nullopt;
        }
        return UIImage::fromEncoded((first + static_cast<std::ptrdiff_t>(*version))->png, scales[*version]);
    }
};

}  // namespace

Bundle& Bundle::main() {
    return PlatformPort::current().applicationBundle();
}

Bundle& Bundle::library() {
    static LibraryBundle bundle;
    return bundle;
}

std::optional<std::size_t> versionForScale(std::span<const double> ascendingScales, double screenScale) {
    if (ascendingScales.empty()) {
        return std::nullopt;
    }
    const auto suitable = std::lower_bound(ascendingScales.begin(), ascendingScales.end(), screenScale);
    return suitable == ascendingScales.end() ? ascendingScales.size() - 1
                                             : static_cast<std::size_t>(suitable - ascendingScales.begin());
}

}  // namespace pelta
