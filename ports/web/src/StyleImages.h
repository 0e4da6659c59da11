#pragma once

#include <emscripten/val.h>
#include <functional>

#include <pelta/Engine/MLNStyle.h>

namespace pelta {

/// What brings the pictures of a GL JS map in line with a style, to be run once, now or later.
[[nodiscard]] std::function<void()> imageChanges(const emscripten::val& map, const MLNStyle& style,
                                                 const MLNStyleChanges& changes);

}  // namespace pelta
