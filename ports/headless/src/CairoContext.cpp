#include "CairoContext.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "PixelFormat.h"
#include "TextSetter.h"

namespace pelta::headless {

namespace {

/// Pixels up to which shapes are drawn as Cairo's curves. Its coordinates end at 2^23, and its curves have
/// more corners the larger they are.
constexpr double furthestCurve = 1e6;
/// Points below which a corner looks square, and Cairo would take its scale for none at all.
constexpr double leastRadius = 1e-6;
/// Rows of pixels that a turned picture crosses at most, and some.
constexpr double mostRows = 32768;

double component(double value) noexcept {
    return std::isfinite(value) ? std::clamp(value, 0.0, 1.0) : 0;
}

CGRect intersection(CGRect a, CGRect b) noexcept {
    const double left = std::max(a.minX(), b.minX());
    const double top = std::max(a.minY(), b.minY());
    return {{left, top},
            {std::max(std::min(a.maxX(), b.maxX()) - left, 0.0),
             std::max(std::min(a.maxY(), b.maxY()) - top, 0.0)}};
}

void addRectangle(cairo_t& context, CGRect rect) {
    cairo_rectangle(&context, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}

/// What can be seen of the present coordinates, and a rectangle around it where they are turned.
CGRect visibleArea(cairo_t& context) {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    cairo_clip_extents(&context, &left, &top, &right, &bottom);
    return {{left, top}, {right - left, bottom - top}};
}

/// How far from the picture's corner a rectangle reaches, pixels.
double furthestPixel(cairo_t& context, CGRect rect) {
    double furthest = 0;
    for (const CGPoint corner : {rect.origin, CGPoint{rect.maxX(), rect.minY()},
                                 CGPoint{rect.maxX(), rect.maxY()}, CGPoint{rect.minX(), rect.maxY()}}) {
        double x = corner.x;
        double y = corner.y;
        cairo_user_to_device(&context, &x, &y);
        furthest = std::max({furthest, std::abs(x), std::abs(y)});
    }
    return furthest;
}

/// A rectangle whose corners are quarters of ellipses.
struct RoundedRect {
    CGRect rect;
    CGSize radius;  ///< At most half of the rectangle's sides.

    /// How far the edges at a height stand back from the rectangle's sides.
    [[nodiscard]] double inset(double y) const noexcept {
        const double beyond =
            std::max(rect.minY() + radius.height - y, y - (rect.maxY() - radius.height)) / radius.height;
        const double share = std::clamp(beyond, 0.0, 1.0);
        return radius.width * (1 - std::sqrt(1 - share * share));
    }
};

void addCurves(cairo_t& context, const RoundedRect& shape) {
    constexpr double quarter = std::numbers::pi / 2;
    const CGRect& rect = shape.rect;
    const CGSize radius = shape.radius;
    const auto corner = [&](double x, double y, int turn) {
        cairo_save(&context);
        cairo_translate(&context, x, y);
        cairo_scale(&context, radius.width, radius.height);
        cairo_arc(&context, 0, 0, 1, turn * quarter, (turn + 1) * quarter);
        cairo_restore(&context);
    };
    cairo_new_sub_path(&context);
    corner(rect.maxX() - radius.width, rect.minY() + radius.height, -1);
    corner(rect.maxX() - radius.width, rect.maxY() - radius.height, 0);
    corner(rect.minX() + radius.width, rect.maxY() - radius.height, 1);
    corner(rect.minX() + radius.width, rect.minY() + radius.height, 2);
    cairo_close_path(&context);
}

/// What can be seen of a shape, with a corner for each row of pixels on both sides.
void addRows(cairo_t& context, const RoundedRect& shape, CGRect visible) {
    double width = 0;
    double height = visible.size.height;
    cairo_user_to_device_distance(&context, &width, &height);
    const int rows = static_cast<int>(std::min(std::ceil(std::hypot(width, height)) + 1, mostRows));
    const auto addCorner = [&](int row, bool isLeft) {
        const double y = visible.minY() + visible.size.height * row / rows;
        const double inset = shape.inset(y);
        const double x = isLeft ? shape.rect.minX() + inset : shape.rect.maxX() - inset;
        cairo_line_to(&context, std::clamp(x, visible.minX(), visible.maxX()), y);
    };
    cairo_new_sub_path(&context);
    for (int row = 0; row <= rows; ++row) {
        addCorner(row, true);
    }
    for (int row = rows; row >= 0; --row) {
        addCorner(row, false);
    }
    cairo_close_path(&context);
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
    setColor(color);
    addRectangle(*context_, intersection(rect, visibleArea(*context_)));
    cairo_fill(context_.get());
}

void CairoContext::fillRoundedRect(CGRect rect, CGFloat radius, UIColor color) {
    const double largest = std::min(rect.size.width, rect.size.height) / 2;
    const double r = std::isfinite(radius) ? std::min(radius, largest) : 0;
    if (r > 0) {
        fillRounded(rect, {r, r}, color);
    } else {
        fillRect(rect, color);
    }
}

void CairoContext::fillOval(CGRect rect, UIColor color) {
    fillRounded(rect, {rect.size.width / 2, rect.size.height / 2}, color);
}

void CairoContext::fillRounded(CGRect rect, CGSize radius, UIColor color) {
    if (!canDraw(rect)) {
        return;
    }
    if (std::min(radius.width, radius.height) < leastRadius) {
        fillRect(rect, color);
        return;
    }
    setColor(color);
    if (furthestPixel(*context_, rect) < furthestCurve) {
        addCurves(*context_, {rect, radius});
    } else if (const CGRect visible = intersection(rect, visibleArea(*context_)); visible.size.height > 0) {
        addRows(*context_, {rect, radius}, visible);
    }
    cairo_fill(context_.get());
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
    drawLayout(*context_, *layout, {x, rect.origin.y});
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
    addRectangle(*context_, intersection(rect, visibleArea(*context_)));
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
