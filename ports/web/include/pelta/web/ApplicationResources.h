#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace pelta {

/// The application's own pictures on the web port, where there is no folder to read them from: what is added
/// here is found by `Bundle::main().imageNamed(name)`. Main thread only.
class ApplicationResources {
 public:
    /// Adds one version of a picture, replacing one of the same name and scale.
    ///
    /// @param name   without scale or extension.
    /// @param png    the encoded file, which is copied. It is decoded when the picture is asked for; one that
    ///               cannot be decoded counts as missing.
    /// @param scale  pixels a point: 1, 2 or 3 as a rule. Values that are not finite and above 0 are ignored.
    static void addPicture(std::string name, std::span<const std::uint8_t> png, double scale);
};

}  // namespace pelta
