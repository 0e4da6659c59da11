#pragma once

#include <memory>
#include <string>

#include <pelta/Platform/UIView.h>

namespace pelta {

/// A speech bubble with one line of text, its tip at the lower middle; as wide as the text needs, at least as
/// wide as its three pictures and a margin. A text too long for any picture is cut off with an ellipsis.
[[nodiscard]] std::shared_ptr<UIView> makeInfoWindowView(const std::string& text);

}  // namespace pelta
