#include "TextSetter.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <span>

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

/// Glyphs of one font, in the order in which they stand on the line.
struct GlyphRow {
    PangoFont* font;
    std::span<PangoGlyphInfo> glyphs;
};

/// Pango adds up glyphs in whole numbers that a line of some 2 million points exceeds. Rows of this many
/// glyphs stay below that, at every size that text is set in.
constexpr std::size_t longestRow = 64;

/// Visits the line in rows from left to right.
template <class Visit>
void visitRows(PangoLayout& layout, Visit&& visit) {
    const PangoLayoutLine* line = pango_layout_get_line_readonly(&layout, 0);
    for (const GSList* each = line != nullptr ? line->runs : nullptr; each != nullptr; each = each->next) {
        const auto& run = *static_cast<const PangoLayoutRun*>(each->data);
        std::span rest(run.glyphs->glyphs, static_cast<std::size_t>(run.glyphs->num_glyphs));
        while (!rest.empty()) {
            const std::size_t count = std::min(rest.size(), longestRow);
            visit(GlyphRow{run.item->analysis.font, rest.first(count)});
            rest = rest.subspan(count);
        }
    }
}

/// Points to the right that a row takes.
double widthOf(const GlyphRow& row) {
    const auto add = [](std::int64_t sum, const PangoGlyphInfo& glyph) { return sum + glyph.geometry.width; };
    return static_cast<double>(std::accumulate(row.glyphs.begin(), row.glyphs.end(), std::int64_t{0}, add)) /
           PANGO_SCALE;
}

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
    int height = 0;
    pango_layout_get_size(&layout, nullptr, &height);
    double width = 0;
    visitRows(layout, [&width](const GlyphRow& row) { width += widthOf(row); });
    return {width, static_cast<double>(height) / PANGO_SCALE};
}

void drawLayout(cairo_t& context, PangoLayout& layout, CGPoint origin) {
    double left = 0;
    double right = 0;
    cairo_clip_extents(&context, &left, nullptr, &right, nullptr);
    // Letters may stand out from the room that they take, by no more than the line is high.
    const double overhang = sizeOfLayout(layout).height;
    const double baseline = origin.y + static_cast<double>(pango_layout_get_baseline(&layout)) / PANGO_SCALE;
    double x = origin.x;
    visitRows(layout, [&](const GlyphRow& row) {
        const double width = widthOf(row);
        if (x - overhang < right && x + width + overhang > left) {
            PangoGlyphString glyphs{static_cast<int>(row.glyphs.size()), row.glyphs.data(), nullptr, 0};
            cairo_move_to(&context, x, baseline);
            pango_cairo_show_glyph_string(&context, row.font, &glyphs);
        }
        x += width;
    });
    cairo_new_path(&context);
}

}  // namespace pelta::headless
