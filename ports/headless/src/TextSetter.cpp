#include "TextSetter.h"

#include <algorithm>
#include <cmath>

namespace pelta::headless {

namespace {

constexpr double maximumFontSize = 4096;  // Points; what is larger is set at this size.

struct FontDescriptionDeleter {
    void operator()(PangoFontDescription* description) const noexcept {
        pango_font_description_free(description);
    }
};

struct FontOptionsDeleter {
    void operator()(cairo_font_options_t* options) const noexcept { cairo_font_options_destroy(options); }
};

struct TextDeleter {
    void operator()(gchar* text) const noexcept { g_free(text); }
};

}  // namespace

const TextSetter& TextSetter::shared() {
    static const TextSetter setter;
    return setter;
}

TextSetter::TextSetter()
    : fontMap_(pango_cairo_font_map_new()), context_(pango_font_map_create_context(fontMap_.get())) {
    const std::unique_ptr<cairo_font_options_t, FontOptionsDeleter> options(cairo_font_options_create());
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    pango_cairo_context_set_font_options(context_.get(), options.get());
    pango_context_set_round_glyph_positions(context_.get(), FALSE);
}

LayoutPointer TextSetter::layoutOf(std::string_view text, const UIFont& font) const {
    if (!std::isfinite(font.pointSize) || font.pointSize <= 0) {
        return nullptr;
    }
    const std::unique_ptr<PangoFontDescription, FontDescriptionDeleter> description(
        pango_font_description_new());
    pango_font_description_set_family_static(description.get(), "sans-serif");
    pango_font_description_set_weight(description.get(),
                                      font.isBold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_absolute_size(description.get(),
                                             std::min(font.pointSize, maximumFontSize) * PANGO_SCALE);

    LayoutPointer layout(pango_layout_new(context_.get()));
    pango_layout_set_font_description(layout.get(), description.get());
    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
    const std::unique_ptr<gchar, TextDeleter> valid(
        g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    pango_layout_set_text(layout.get(), valid.get(), -1);
    return layout;
}

CGSize TextSetter::measure(std::string_view text, const UIFont& font) const {
    const LayoutPointer layout = layoutOf(text, font);
    return layout ? sizeOfLayout(*layout) : CGSize{};
}

CGSize sizeOfLayout(PangoLayout& layout) {
    int width = 0;
    int height = 0;
    pango_layout_get_size(&layout, &width, &height);
    return {static_cast<double>(width) / PANGO_SCALE, static_cast<double>(height) / PANGO_SCALE};
}

}  // namespace pelta::headless
