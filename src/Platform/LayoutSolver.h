#pragma once

#include <pelta/Platform/UIView.h>

namespace pelta::detail {

/// The frame that a view's active constraints give it within its superview.
CGRect frameByConstraints(const UIView& superview, const UIView& view);

}  // namespace pelta::detail
