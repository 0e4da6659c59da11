#pragma once

#include <optional>
#include <string_view>

#include <pelta/Platform/UIImage.h>

namespace pelta {

/// A picture that ships inside the library, for the screen's scale; nothing, with a log line, when it is
/// missing.
[[nodiscard]] std::optional<UIImage> resourceImage(std::string_view name);

/// The same for one that the library cannot do without: a missing one stops the process.
[[nodiscard]] UIImage requiredResourceImage(std::string_view name);

}  // namespace pelta
