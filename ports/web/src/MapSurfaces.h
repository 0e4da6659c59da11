#pragma once

#include <emscripten/val.h>

namespace pelta {

/// The elements that maps draw into, by the view that shows them.
///
/// GL JS measures its element, so the element is part of the page from the start: until a view shows it, it
/// waits where nobody sees it.
class MapSurfaces {
 public:
    /// Makes the element of a map. `owner` is what its view's `SurfaceContent` names.
    [[nodiscard]] static emscripten::val add(const void* owner);
    /// The element, or null.
    [[nodiscard]] static emscripten::val find(const void* owner);
    /// Puts an element back to where it waits.
    static void park(const emscripten::val& surface);
    /// Takes the element from the page.
    static void remove(const void* owner);
};

}  // namespace pelta
