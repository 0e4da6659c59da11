#include "View/RetiredPictures.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace pelta {

namespace {

/// Whether the style still has this picture, and not another under its name.
bool isIn(const MLNStyle& style, const PgmImage& picture) {
    const auto* present = style.imageForName(picture.reuseIdentifier());
    return present != nullptr && present->isIdenticalTo(picture.image());
}

}  // namespace

void RetiredPictures::add(std::shared_ptr<PgmImage> picture, const MLNStyle& style) {
    const bool isNoted = std::any_of(pictures_.begin(), pictures_.end(),
                                     [&](const Picture& each) { return each.image == picture; });
    if (!isNoted && isIn(style, *picture)) {
        pictures_.push_back({std::move(picture)});
    }
}

bool RetiredPictures::update(const std::vector<std::shared_ptr<PgmImage>>& needed, MLNStyle& style) {
    if (pictures_.empty()) {
        return false;
    }
    std::unordered_set<std::string_view> names;
    for (const auto& image : needed) {
        names.insert(image->reuseIdentifier());
    }
    bool hasUnneeded = false;
    std::erase_if(pictures_, [&](Picture& picture) {
        if (!isIn(style, *picture.image)) {
            return true;
        }
        const std::string& name = picture.image->reuseIdentifier();
        const bool wasUnneeded = std::exchange(picture.isUnneeded, names.count(name) == 0);
        if (wasUnneeded && picture.isUnneeded) {
            style.removeImageForName(name);
            return true;
        }
        hasUnneeded = hasUnneeded || picture.isUnneeded;
        return false;
    });
    return hasUnneeded;
}

}  // namespace pelta
