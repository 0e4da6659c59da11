#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include <pelta/Platform/UIImage.h>

namespace pelta {

/// A set of named resources. Pictures come in up to three versions (1, 2 and 3 pixels a point); the one that
/// suits the screen best is taken.
class Bundle {
 public:
    virtual ~Bundle() = default;

    /// The application's own resources: where the port finds them is the port's (a folder on the headless
    /// port, the pictures added with `ApplicationResources` on the web port).
    [[nodiscard]] static Bundle& main();
    /// The pictures that ship inside the library.
    [[nodiscard]] static Bundle& library();

    /// The named picture, version by the screen's scale: the smallest that is not below it, else the largest.
    /// @return nothing when there is none of that name or it cannot be decoded.
    [[nodiscard]] virtual std::optional<UIImage> imageNamed(std::string_view name) const = 0;
};

/// For ports: which of a picture's versions suits a screen.
///
/// @param ascendingScales  pixels a point of the versions there are, smallest first.
/// @return the index of the smallest that is not below the screen's scale, else of the largest; nothing when
///         there are none.
[[nodiscard]] std::optional<std::size_t> versionForScale(std::span<const double> ascendingScales,
                                                         double screenScale);

/// A random (version 4) UUID in its usual 36-character upper-case form.
[[nodiscard]] std::string makeUUIDString();

}  // namespace pelta
