#include "StyleImages.h"

#include <utility>
#include <vector>

#include "Canvas.h"

using emscripten::val;

namespace pelta {

namespace {

void removeImage(const val& map, const std::string& name) {
    if (map.call<bool>("hasImage", name)) {
        map.call<void>("removeImage", name);
    }
}

void addImage(const val& map, const std::string& name, const UIImage& image) {
    removeImage(map, name);
    val pixels = val::object();
    pixels.set("width", image.pixelWidth());
    pixels.set("height", image.pixelHeight());
    pixels.set("data", pixelArray(image, "Uint8Array"));
    val options = val::object();
    options.set("pixelRatio", image.scale());
    map.call<void>("addImage", name, pixels, options);
}

}  // namespace

std::function<void()> imageChanges(const val& map, const MLNStyle& style, const MLNStyleChanges& changes) {
    std::vector<std::pair<std::string, UIImage>> added;
    for (const std::string& name : changes.changedImages) {
        if (const UIImage* image = style.imageForName(name)) {
            added.emplace_back(name, *image);
        }
    }
    return [map, added = std::move(added), removed = changes.removedImages] {
        for (const std::string& name : removed) {
            removeImage(map, name);
        }
        for (const auto& [name, image] : added) {
            addImage(map, name, image);
        }
    };
}

}  // namespace pelta
