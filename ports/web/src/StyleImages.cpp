#include "StyleImages.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <pelta/Platform/Log.h>

#include "Canvas.h"

using emscripten::val;

namespace pelta {

namespace {

void removeImage(const val& map, const std::string& name) {
    if (map.call<bool>("hasImage", name)) {
        map.call<void>("removeImage", name);
    }
}

/// Whether the map can draw a picture: as a texture, and with its corners within the reach of GL JS's
/// symbols.
bool isDrawable(const val& map, const UIImage& image) {
    constexpr double widestSymbol = 2046;  // Points.
    constexpr int textureSizeLimit = 0x0D33;
    constexpr int leastLimit = 2048;  // Pixels; every browser has it.
    constexpr int edges = 2;          // Pixels around a picture on its texture.
    const int side = std::max(image.pixelWidth(), image.pixelHeight()) + edges;
    const CGSize size = image.size();
    if (size.width > widestSymbol || size.height > widestSymbol) {
        return false;
    }
    if (side <= leastLimit) {
        return true;
    }
    const val context = map.call<val>("getCanvas").call<val>("getContext", std::string("webgl2"));
    return context.isNull() || side <= context.call<int>("getParameter", textureSizeLimit);
}

void addImage(const val& map, const std::string& name, const UIImage& image) {
    removeImage(map, name);
    if (!isDrawable(map, image)) {
        dPrint("The picture \"" + name + "\" of " + std::to_string(image.pixelWidth()) + " x " +
               std::to_string(image.pixelHeight()) +
               " pixels is more than the map can draw; make it smaller.");
        return;
    }
    val pixels = val::object();
    pixels.set("width", image.pixelWidth());
    pixels.set("height", image.pixelHeight());
    pixels.set("data", pixelArray(image, "Uint8Array"));
    val options = val::object();
    options.set("pixelRatio", image.scale());
    map.call<void>("addImage", name, pixels, options);
}

}  // namespace

std::function<void()> StyleImages::changes(const MLNStyle& style, const MLNStyleChanges& changes) {
    std::vector<std::pair<std::string, UIImage>> added;
    for (const std::string& name : changes.changedImages) {
        if (const UIImage* image = style.imageForName(name)) {
            added.emplace_back(name, *image);
        }
    }
    return [this, added = std::move(added), removed = changes.removedImages] {
        for (const auto& [name, image] : added) {
            retired_.erase(name);
            addImage(map_, name, image);
        }
        retired_.insert(removed.begin(), removed.end());
    };
}

void StyleImages::removeRetired() {
    for (const std::string& name : std::exchange(retired_, {})) {
        removeImage(map_, name);
    }
}

}  // namespace pelta
