#include "map/PinPictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace pelta::viewer {

namespace {

using Rgb = std::array<double, 3>;  ///< 0 to 255.

constexpr double rimShade = 0.72;
constexpr double lightBody = 200;  ///< Bodies lighter than this, of 255, get a dark dot.
constexpr Rgb white{255, 255, 255};
constexpr Rgb darkDot{64, 68, 76};

double lightness(const Rgb& color) {
    return 0.299 * color[0] + 0.587 * color[1] + 0.114 * color[2];
}

std::uint32_t byteOf(double component) {
    return static_cast<std::uint32_t>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
}

std::uint32_t packed(UIColor color) {
    return byteOf(color.red) << 16 | byteOf(color.green) << 8 | byteOf(color.blue);
}

Rgb unpacked(std::uint32_t color) {
    return {static_cast<double>(color >> 16 & 0xFF), static_cast<double>(color >> 8 & 0xFF),
            static_cast<double>(color & 0xFF)};
}

std::uint32_t packedPixel(std::span<const std::uint8_t> pixel) {
    return static_cast<std::uint32_t>(pixel[0]) << 16 | static_cast<std::uint32_t>(pixel[1]) << 8 | pixel[2];
}

/// Lightness of the three tones of a pin.
struct PinTones {
    double rim = 255;
    double body = 0;
    double dot = 0;
};

/// The body is the commonest opaque colour, the rim the darkest one and the dot the lightest.
PinTones tonesOf(const UIImage& pin) {
    std::unordered_map<std::uint32_t, int> counts;
    PinTones tones;
    const auto pixels = pin.pixels();
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        if (pixels[i + 3] == 255) {
            const std::uint32_t color = packedPixel(pixels.subspan(i, 4));
            ++counts[color];
            tones.rim = std::min(tones.rim, lightness(unpacked(color)));
            tones.dot = std::max(tones.dot, lightness(unpacked(color)));
        }
    }
    const auto commonest = std::max_element(counts.begin(), counts.end(), [](const auto& a, const auto& b) {
        return std::pair(a.second, a.first) < std::pair(b.second, b.first);
    });
    if (commonest != counts.end()) {
        tones.body = lightness(unpacked(commonest->first));
    }
    return tones;
}

Rgb mixed(const Rgb& from, const Rgb& to, double share) {
    Rgb result{};
    for (std::size_t i = 0; i < result.size(); ++i) {
        result[i] = from[i] + (to[i] - from[i]) * std::clamp(share, 0.0, 1.0);
    }
    return result;
}

double shareBetween(double value, double from, double to) {
    return to > from ? (value - from) / (to - from) : 1;
}

}  // namespace

UIImage recoloredPin(const UIImage& pin, UIColor body) {
    const PinTones tones = tonesOf(pin);
    const Rgb newBody = unpacked(packed(body));
    const Rgb newRim = mixed({}, newBody, rimShade);
    const Rgb& newDot = lightness(newBody) > lightBody ? darkDot : white;

    std::vector<std::uint8_t> pixels(pin.pixels().begin(), pin.pixels().end());
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        // Smooth edges lie between two neighbouring tones and keep their place between the new ones.
        const double light = lightness(unpacked(packedPixel(std::span(pixels).subspan(i, 4))));
        const Rgb color = light <= tones.body
                              ? mixed(newRim, newBody, shareBetween(light, tones.rim, tones.body))
                              : mixed(newBody, newDot, shareBetween(light, tones.body, tones.dot));
        for (std::size_t channel = 0; channel < color.size(); ++channel) {
            pixels[i + channel] = static_cast<std::uint8_t>(std::lround(color[channel]));
        }
    }
    return UIImage::fromPixels(pin.pixelWidth(), pin.pixelHeight(), pin.scale(), std::move(pixels))
        .value_or(pin);
}

std::shared_ptr<PgmImage> PinPictures::pin(UIColor color) {
    const std::uint32_t key = packed(color);
    auto& picture = pins_[key];
    if (!picture) {
        char name[16];
        std::snprintf(name, sizeof name, "pin #%06x", static_cast<unsigned>(key));
        picture =
            PgmImage::imageWith(recoloredPin(PgmImage::markerImageRed()->image(), color), std::string(name));
    }
    return picture;
}

}  // namespace pelta::viewer
