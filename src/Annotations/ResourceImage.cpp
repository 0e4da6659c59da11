#include "Annotations/ResourceImage.h"

#include <string>

#include <pelta/Platform/Bundle.h>
#include <pelta/Platform/Log.h>

namespace pelta {

std::optional<UIImage> resourceImage(std::string_view name) {
    auto picture = Bundle::library().imageNamed(name);
    if (!picture) {
        dPrint("Failed to load resource image: " + std::string(name));
    }
    return picture;
}

UIImage requiredResourceImage(std::string_view name) {
    auto picture = resourceImage(name);
    if (!picture) {
        fatalError("Failed to load resource image: " + std::string(name));
    }
    return *std::move(picture);
}

}  // namespace pelta
