#include "CairoContext.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "PixelFormat.h"
#include "TextSetter.h"

namespace pelta::headless {

namespace {

/// Cairo's coordinates end at 2^23 pixels; what lies so far outside is cut off.
constexpr double farOutside = 1e6;  // Points.

double component(double value) noexcept {
    return std::isfinite(value) ? std::clamp(value, 0.0, 1.0) : 0;
}

CGRect cutToDrawable(CGRect rect) noexcept {
    const double left = std::clamp(rect.minX(), -farOutside, farOutside);
    const double top = std::clamp(rect.minY(), -farOutside, farOutside);
    const double right = std::clamp(rect.maxX(), -farOutside, farOutside);
    const double bottom = std::clamp(rect.maxY(), -farOutside, farOutside);
    return {{left, top}, {right - left, bottom - top}};
}

/// The pixels of one piece of a picture as a surface of their own, so that filters do not mix in neighbours.
cairo_surface_t* makeSurface(const UIImage& image, const ImagePart& part) {
    const auto left = static_cast<std::size_t>(part.source.origin.x);
    const auto top = static_cast<std::size_t>(part.source.origin.y);
    const int width = static_cast<int>(part.source.size.width);
    const int height = static_cast<int>(part.source.size.height);
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    unsigned char* target = cairo_image_surface_get_data(surface);
    if (target == nullptr) {
        return surface;  // Out of memory: the surface carries the error, and nothing is drawn.
    }
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
    const std::span<const std::uint8_t> pixels = image.pixels();
    for (std::size_t y = 0; y < static_cast<std::size_t>(height); ++y) {
        auto* row = reinterpret_cast<std::uint32_t*>(target + y * stride);
        const std::size_t first = ((top + y) * static_cast<std::size_t>(image.pixelWidth()) + left) * 4;
        for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x) {
            row[x] = premultiplied(pixels.subspan(first + x * 4).first<4>());
        }
    }
    cairo_surface_mark_dirty(surface);
    return surface;
}

/// The map from points to the pixels of a piece's surface.
cairo_matrix_t matrixOf(const UIImage& image, const ImagePart& part) {
    const CGRect& to = part.destination;
    double x = part.source.size.width / to.size.width;
    double y = part.source.size.height / to.size.height;
    if (part.isTiled) {
        x = image.scale();
        y = image.scale();
    }
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, x, 0, 0, y, -to.origin.x * x, -to.origin.y * y);
    return matrix;
}

}  // namespace

CairoContext::CairoContext(int pixelWidth, int pixelHeight, double scale)
    : scale_(scale),
      surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pixelWidth, pixelHeight)),
      context_(cairo_create(surface_.get())) {
    cairo_scale(context_.get(), scale, scale);
}

bool CairoContext::canDraw(CGRect rect) const {
    return !states_.back().drawsNothing && std::isfinite(rect.origin.x) && std::isfinite(rect.origin.y) &&
           std::isfinite(rect.size.width) && std::isfinite(rect.size.height) && rect.size.width > 0 &&
           rect.size.height > 0;
}

void CairoContext::setColor(UIColor color) {
    cairo_set_source_rgba(context_.get(), component(color.red), component(color.green), component(color.blue),
                          component(color.alpha) * states_.back().alpha);
}

void CairoContext::fillRect(CGRect rect, UIColor color) {
    if (!canDraw(rect)) {
        return;
    }
    const CGRect visible = cutToDrawable(rect);
    setColor(color);
    cairo_rectangle(context_.get(), visible.origin.x, visible.origin.y, visible.size.width,
                    visible.size.height);
    cairo_fill(context_.get());
}

void CairoContext::fillRoundedRect(CGRect rect, CGFloat radius, UIColor color) {
    const double largest = std::min(rect.size.width, rect.size.height) / 2;
    const double r = std::isfinite(radius) ? std::min(radius, largest) : 0;
    if (!(r > 0)) {
        fillRect(rect, color);
        return;
    }
    if (!canDraw(rect)) {
        return;
    }
    constexpr double quarter = std::numbers::pi / 2;
    cairo_t* context = context_.get();
    setColor(color);
    cairo_new_sub_path(context);
    cairo_arc(context, rect.maxX() - r, rect.minY() + r, r, -quarter, 0);
    cairo_arc(context, rect.maxX() - r, rect.maxY() - r, r, 0, quarter);
    cairo_arc(context, rect.minX() + r, rect.maxY() - r, r, quarter, 2 * quarter);
    cairo_arc(context, rect.minX() + r, rect.minY() + r, r, 2 * quarter, 3 * quarter);
    cairo_close_path(context);
    cairo_fill(context);
}

void CairoContext::fillOval(CGRect rect, UIColor color) {
    if (!canDraw(rect)) {
        return;
    }
    cairo_t* context = context_.get();
    setColor(color);
    cairo_save(context);
    cairo_translate(context, rect.midX(), rect.midY());
    cairo_scale(context, rect.size.width / 2, rect.size.height / 2);
    cairo_new_sub_path(context);
    cairo_arc(context, 0, 0, 1, 0, 2 * std::numbers::pi);
    cairo_restore(context);
    cairo_fill(context);
}

void CairoContext::drawImage(const UIImage& image, CGRect rect) {
    if (!canDraw(rect)) {
        return;
    }
    // Where two pieces share a pixel, their shares add up in a group of their own: no seam shows.
    cairo_t* context = context_.get();
    cairo_push_group(context);
    cairo_set_operator(context, CAIRO_OPERATOR_ADD);
    for (const ImagePart& part : partsOfImage(image, rect)) {
        drawPart(image, part);
    }
    cairo_pop_group_to_source(context);
    cairo_paint_with_alpha(context, states_.back().alpha);
}

void CairoContext::drawPart(const UIImage& image, const ImagePart& part) {
    const std::unique_ptr<cairo_surface_t, SurfaceDeleter> source(makeSurface(image, part));
    const cairo_matrix_t matrix = matrixOf(image, part);
    cairo_t* context = context_.get();
    cairo_save(context);
    cairo_rectangle(context, part.destination.origin.x, part.destination.origin.y,
                    part.destination.size.width, part.destination.size.height);
    cairo_clip(context);
    cairo_set_source_surface(context, source.get(), 0, 0);
    cairo_pattern_t* pattern = cairo_get_source(context);
    cairo_pattern_set_matrix(pattern, &matrix);
    cairo_pattern_set_extend(pattern, part.isTiled ? CAIRO_EXTEND_REPEAT : CAIRO_EXTEND_PAD);
    cairo_paint(context);
    cairo_restore(context);
}

void CairoContext::drawText(std::string_view text, CGRect rect, const NSTextAttributes& attributes) {
    const bool isPlaced = std::isfinite(rect.origin.x) && std::isfinite(rect.origin.y) &&
                          std::isfinite(rect.size.width) && !states_.back().drawsNothing;
    const LayoutPointer layout = isPlaced ? TextSetter::shared().layoutOf(text, attributes.font) : nullptr;
    if (!layout) {
        return;
    }
    double x = rect.origin.x;
    const double slack = rect.size.width - sizeOfLayout(*layout).width;
    if (attributes.alignment == NSTextAlignment::center) {
        x += slack / 2;
    } else if (attributes.alignment == NSTextAlignment::right) {
        x += slack;
    }
    setColor(attributes.foregroundColor);
    cairo_move_to(context_.get(), x, rect.origin.y);
    pango_cairo_show_layout(context_.get(), layout.get());
    cairo_new_path(context_.get());
}

void CairoContext::saveState() {
    cairo_save(context_.get());
    states_.push_back(states_.back());
}

void CairoContext::restoreState() {
    const std::size_t outerStates = groups_.empty() ? 0 : groups_.back().outerStates;
    if (states_.size() > outerStates + 1) {
        cairo_restore(context_.get());
        states_.pop_back();
    }
}

void CairoContext::concatenate(const CGAffineTransform& transform) {
    cairo_matrix_t present;
    cairo_get_matrix(context_.get(), &present);
    cairo_matrix_t combined;
    cairo_matrix_init(&combined, transform.a, transform.b, transform.c, transform.d, transform.tx,
                      transform.ty);
    cairo_matrix_multiply(&combined, &combined, &present);
    const double area = combined.xx * combined.yy - combined.xy * combined.yx;
    const bool isUsable = std::isfinite(area) && std::abs(area) > 1e-12 && std::isfinite(combined.x0) &&
                          std::isfinite(combined.y0);
    if (isUsable) {
        cairo_set_matrix(context_.get(), &combined);
    } else {
        states_.back().drawsNothing = true;
    }
}

void CairoContext::clip(CGRect rect) {
    if (!canDraw(rect)) {
        states_.back().drawsNothing = true;
        return;
    }
    const CGRect visible = cutToDrawable(rect);
    cairo_rectangle(context_.get(), visible.origin.x, visible.origin.y, visible.size.width,
                    visible.size.height);
    cairo_clip(context_.get());
}

void CairoContext::multiplyAlpha(CGFloat alpha) {
    states_.back().alpha *= component(alpha);
}

void CairoContext::beginTransparencyLayer(CGFloat alpha) {
    groups_.push_back({component(alpha), states_.size()});
    states_.push_back({1, states_.back().drawsNothing});
    cairo_push_group(context_.get());
}

void CairoContext::endTransparencyLayer() {
    if (groups_.empty()) {
        return;
    }
    const Group group = groups_.back();
    while (states_.size() > group.outerStates + 1) {
        restoreState();
    }
    groups_.pop_back();
    states_.pop_back();
    cairo_pop_group_to_source(context_.get());
    cairo_paint_with_alpha(context_.get(), group.alpha * states_.back().alpha);
}

std::optional<UIImage> CairoContext::makeImage() const {
    cairo_surface_flush(surface_.get());
    const unsigned char* data = cairo_image_surface_get_data(surface_.get());
    if (data == nullptr || cairo_status(context_.get()) != CAIRO_STATUS_SUCCESS) {
        return std::nullopt;
    }
    const int width = cairo_image_surface_get_width(surface_.get());
    const int height = cairo_image_surface_get_height(surface_.get());
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface_.get()));
    std::vector<std::uint8_t> rgba;
    rgba.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    for (std::size_t y = 0; y < static_cast<std::size_t>(height); ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(data + y * stride);
        for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x) {
            appendStraight(row[x], rgba);
        }
    }
    return UIImage::fromPixels(width, height, scale_, std::move(rgba));
}

}  // namespace pelta::headless
