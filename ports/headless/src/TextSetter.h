#pragma once

#include <memory>
#include <pango/pangocairo.h>
#include <string_view>

#include <pelta/Platform/UIGraphics.h>

namespace pelta::headless {

/// Gives an object of the GLib family back.
struct ObjectDeleter {
    void operator()(void* object) const noexcept { g_object_unref(object); }
};

using LayoutPointer = std::unique_ptr<PangoLayout, ObjectDeleter>;

/// Sets single lines of text in the system's sans-serif fonts. Glyphs are not fitted to pixels, so that a
/// text has the same extent at every scale.
class TextSetter {
 public:
    /// The one of the process, made at its first use: looking up the system's fonts takes a while.
    [[nodiscard]] static const TextSetter& shared();

    /// A line ready to be drawn; null when the font has no usable size.
    [[nodiscard]] LayoutPointer layoutOf(std::string_view text, const UIFont& font) const;
    /// Extent of a line, points.
    [[nodiscard]] CGSize measure(std::string_view text, const UIFont& font) const;

 private:
    TextSetter();

    std::unique_ptr<PangoFontMap, ObjectDeleter> fontMap_;
    std::unique_ptr<PangoContext, ObjectDeleter> context_;
};

/// Extent of a line that has been set, points.
[[nodiscard]] CGSize sizeOfLayout(PangoLayout& layout);

/// Draws what can be seen of a line that has been set, its upper left corner at a point.
void drawLayout(cairo_t& context, PangoLayout& layout, CGPoint origin);

}  // namespace pelta::headless
