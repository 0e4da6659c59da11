#include <pelta/Annotations/PgmIDManager.h>
#include <pelta/Annotations/PgmImage.h>

#include "Annotations/ResourceImage.h"

namespace pelta {

namespace {

/// An empty name would be that of a layer's icon which is not set.
bool hasName(const std::optional<std::string>& identifier) {
    return identifier && !identifier->empty();
}

std::string numberedIdentifier() {
    return "I:" + std::to_string(PgmImageIDHelper::atomicID().incrementAndGet());
}

}  // namespace

PgmImage::PgmImage(UIImage picture, std::string reuseIdentifier)
    : image_(std::move(picture)), reuseIdentifier_(std::move(reuseIdentifier)) {}

PgmImage::Ptr PgmImage::imageWith(UIImage picture, std::optional<std::string> reuseIdentifier) {
    return std::make_shared<PgmImage>(
        std::move(picture), hasName(reuseIdentifier) ? *std::move(reuseIdentifier) : numberedIdentifier());
}

PgmImage::Ptr PgmImage::imageNamed(std::string_view name, std::optional<std::string> reuseIdentifier) {
    return imageNamedInBundle(name, nullptr, std::move(reuseIdentifier));
}

PgmImage::Ptr PgmImage::imageNamedInBundle(std::string_view name, const Bundle* bundle,
                                           std::optional<std::string> reuseIdentifier) {
    auto picture = (bundle ? *bundle : Bundle::main()).imageNamed(name);
    if (!picture) {
        return nullptr;
    }
    return std::make_shared<PgmImage>(
        *std::move(picture), hasName(reuseIdentifier) ? *std::move(reuseIdentifier) : makeUUIDString());
}

PgmImage::Ptr PgmImage::builtInImage(std::string_view name) {
    return imageWith(requiredResourceImage(name));
}

const PgmImage::Ptr& PgmImage::markerImageBlue() {
    static const Ptr image = builtInImage("peltamap_default_marker_icon_blue");
    return image;
}

const PgmImage::Ptr& PgmImage::markerImageGray() {
    static const Ptr image = builtInImage("peltamap_default_marker_icon_gray");
    return image;
}

const PgmImage::Ptr& PgmImage::markerImageGreen() {
    static const Ptr image = builtInImage("peltamap_default_marker_icon_green");
    return image;
}

const PgmImage::Ptr& PgmImage::markerImageRed() {
    static const Ptr image = builtInImage("peltamap_default_marker_icon_red");
    return image;
}

const PgmImage::Ptr& PgmImage::markerImageYellow() {
    static const Ptr image = builtInImage("peltamap_default_marker_icon_yellow");
    return image;
}

const PgmImage::Ptr& PgmImage::locationIconNomal() {
    static const Ptr image = builtInImage("peltamap_default_location_icon");
    return image;
}

const PgmImage::Ptr& PgmImage::locationIconTracking() {
    static const Ptr image = builtInImage("peltamap_default_location_icon_tracking");
    return image;
}

const PgmImage::Ptr& PgmImage::locationIconTrackingCompass() {
    static const Ptr image = builtInImage("peltamap_default_location_icon_tracking_compass");
    return image;
}

void PgmImage::setStyleIconIdentifier(std::optional<std::string> identifier) {
    styleIconIdentifier_ = std::move(identifier);
}

void PgmImage::setIsEnabled(bool enabled) {
    isEnabled_ = enabled;
    if (const auto delegate = delegate_.lock()) {
        delegate->annotationImageNeedsRedisplay(*this);
    }
}

}  // namespace pelta
