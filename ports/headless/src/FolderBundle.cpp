#include "FolderBundle.h"

#include <system_error>
#include <vector>

#include <pelta/Platform/UIWindow.h>

namespace pelta::headless {

namespace {

struct Version {
    double scale;
    std::string_view suffix;
};

constexpr Version versions[] = {{1, ".png"}, {2, "@2x.png"}, {3, "@3x.png"}};

}  // namespace

std::optional<UIImage> FolderBundle::imageNamed(std::string_view name) const {
    std::vector<double> scales;
    std::vector<std::filesystem::path> files;
    for (const Version& version : versions) {
        auto file = documents_.folder() / (std::string(name) + std::string(version.suffix));
        std::error_code error;
        if (std::filesystem::is_regular_file(file, error)) {
            scales.push_back(version.scale);
            files.push_back(std::move(file));
        }
    }
    const std::optional<std::size_t> chosen = versionForScale(scales, UIScreen::scale());
    if (!chosen) {
        return std::nullopt;
    }
    const FetchResult file = readFile(files[*chosen]);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(file.text.data());
    return UIImage::fromEncoded({bytes, file.text.size()}, scales[*chosen]);
}

}  // namespace pelta::headless
