#include "CanvasContext.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include <pelta/Platform/ImageParts.h>

#include "Canvas.h"
#include "CssText.h"

using emscripten::val;

namespace pelta {

namespace {

bool isFinite(CGRect rect) {
    return std::isfinite(rect.origin.x) && std::isfinite(rect.origin.y) && std::isfinite(rect.size.width) &&
           std::isfinite(rect.size.height);
}

/// A rectangle that can be drawn: finite and with an area.
bool isDrawable(CGRect rect) {
    return isFinite(rect) && rect.size.width > 0 && rect.size.height > 0;
}

double number(const val& object, const char* property) {
    return object[property].as<double>();
}

/// A piece of a picture, repeated from the top left corner of an area.
void tilePart(val context, const val& picture, const ImagePart& part, double imageScale) {
    const CGRect& from = part.source;
    const CGRect& to = part.destination;
    const val tile = makeCanvas(static_cast<int>(from.size.width), static_cast<int>(from.size.height));
    context2d(tile).call<void>("drawImage", picture, -from.origin.x, -from.origin.y);
    context.call<void>("save");
    context.call<void>("translate", to.origin.x, to.origin.y);
    context.call<void>("scale", 1 / imageScale, 1 / imageScale);
    context.set("fillStyle", context.call<val>("createPattern", tile, std::string("repeat")));
    context.call<void>("fillRect", 0, 0, to.size.width * imageScale, to.size.height * imageScale);
    context.call<void>("restore");
}

void drawPart(const val& context, const val& picture, const ImagePart& part, double imageScale) {
    if (part.isTiled) {
        tilePart(context, picture, part, imageScale);
        return;
    }
    const CGRect& from = part.source;
    const CGRect& to = part.destination;
    context.call<void>("drawImage", picture, from.origin.x, from.origin.y, from.size.width, from.size.height,
                       to.origin.x, to.origin.y, to.size.width, to.size.height);
}

}  // namespace

CanvasContext::CanvasContext(int pixelWidth, int pixelHeight, double scale)
    : pixelWidth_(pixelWidth),
      pixelHeight_(pixelHeight),
      scale_(scale),
      canvas_(makeCanvas(pixelWidth, pixelHeight)),
      context_(context2d(canvas_)) {
    context_.call<void>("scale", scale, scale);
    context_.set("imageSmoothingQuality", std::string("high"));
}

void CanvasContext::fillPath(const UIColor& color) {
    context_.set("fillStyle", cssColor(color));
    context_.call<void>("fill");
}

void CanvasContext::fillRect(CGRect rect, UIColor color) {
    fillRoundedRect(rect, 0, color);
}

void CanvasContext::fillRoundedRect(CGRect rect, CGFloat radius, UIColor color) {
    if (!isDrawable(rect) || !std::isfinite(radius)) {
        return;
    }
    const double r = std::clamp(radius, 0.0, std::min(rect.size.width, rect.size.height) / 2);
    context_.call<void>("beginPath");
    context_.call<void>("moveTo", rect.minX() + r, rect.minY());
    context_.call<void>("arcTo", rect.maxX(), rect.minY(), rect.maxX(), rect.maxY(), r);
    context_.call<void>("arcTo", rect.maxX(), rect.maxY(), rect.minX(), rect.maxY(), r);
    context_.call<void>("arcTo", rect.minX(), rect.maxY(), rect.minX(), rect.minY(), r);
    context_.call<void>("arcTo", rect.minX(), rect.minY(), rect.maxX(), rect.minY(), r);
    context_.call<void>("closePath");
    fillPath(color);
}

void CanvasContext::fillOval(CGRect rect, UIColor color) {
    if (!isDrawable(rect)) {
        return;
    }
    constexpr double fullTurn = 6.283185307179586;
    context_.call<void>("beginPath");
    context_.call<void>("ellipse", rect.midX(), rect.midY(), rect.size.width / 2, rect.size.height / 2, 0.0,
                        0.0, fullTurn);
    fillPath(color);
}

void CanvasContext::drawImage(const UIImage& image, CGRect rect) {
    if (!isDrawable(rect)) {
        return;
    }
    const val picture = image.capInsets() ? stretched(image, rect.size) : canvasWithPicture(image);
    context_.call<void>("drawImage", picture, rect.origin.x, rect.origin.y, rect.size.width,
                        rect.size.height);
}

/// A stretchable picture laid out over an area on a canvas of its own. There the pieces meet on whole pixels,
/// and where two share one their shares add up, so that no seam shows wherever the whole is drawn.
val CanvasContext::stretched(const UIImage& image, CGSize size) const {
    constexpr double maximumSide = 16384;
    const double width = std::clamp(std::ceil(size.width * scale_ - 1e-6), 1.0, maximumSide);
    const double height = std::clamp(std::ceil(size.height * scale_ - 1e-6), 1.0, maximumSide);
    val sheet = makeCanvas(static_cast<int>(width), static_cast<int>(height));
    val context = context2d(sheet);
    context.call<void>("scale", scale_, scale_);
    context.set("imageSmoothingQuality", std::string("high"));
    context.set("globalCompositeOperation", std::string("lighter"));
    const val picture = canvasWithPicture(image);
    for (const ImagePart& part : partsOfImage(image, {{0, 0}, {width / scale_, height / scale_}})) {
        drawPart(context, picture, part, image.scale());
    }
    return sheet;
}

void CanvasContext::drawText(std::string_view text, CGRect rect, const NSTextAttributes& attributes) {
    if (!isFinite(rect)) {
        return;
    }
    const std::string characters(text);
    context_.set("font", cssFont(attributes.font));
    context_.set("fillStyle", cssColor(attributes.foregroundColor));
    const val metrics = context_.call<val>("measureText", characters);
    const double room = rect.size.width - number(metrics, "width");
    const double share = attributes.alignment == NSTextAlignment::left     ? 0
                         : attributes.alignment == NSTextAlignment::center ? 0.5
                                                                           : 1;
    context_.call<void>("fillText", characters, rect.origin.x + room * share,
                        rect.origin.y + number(metrics, "fontBoundingBoxAscent"));
}

void CanvasContext::saveState() {
    context_.call<void>("save");
}

void CanvasContext::restoreState() {
    context_.call<void>("restore");
}

void CanvasContext::concatenate(const CGAffineTransform& t) {
    context_.call<void>("transform", t.a, t.b, t.c, t.d, t.tx, t.ty);
}

void CanvasContext::clip(CGRect rect) {
    if (!isFinite(rect)) {
        return;
    }
    context_.call<void>("beginPath");
    context_.call<void>("rect", rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    context_.call<void>("clip");
}

void CanvasContext::multiplyAlpha(CGFloat alpha) {
    if (std::isfinite(alpha)) {
        context_.set("globalAlpha", number(context_, "globalAlpha") * std::clamp(alpha, 0.0, 1.0));
    }
}

void CanvasContext::beginTransparencyLayer(CGFloat alpha) {
    outer_.push_back({canvas_, context_, std::isfinite(alpha) ? std::clamp(alpha, 0.0, 1.0) : 0});
    canvas_ = makeCanvas(pixelWidth_, pixelHeight_);
    val inner = context2d(canvas_);
    inner.call<void>("setTransform", context_.call<val>("getTransform"));
    inner.set("imageSmoothingQuality", std::string("high"));
    context_ = inner;
}

void CanvasContext::endTransparencyLayer() {
    if (outer_.empty()) {
        return;
    }
    const val group = std::exchange(canvas_, outer_.back().canvas);
    context_ = outer_.back().context;
    saveState();
    multiplyAlpha(outer_.back().alpha);
    outer_.pop_back();
    context_.call<void>("resetTransform");
    context_.call<void>("drawImage", group, 0, 0);
    restoreState();
}

std::optional<UIImage> CanvasContext::makeImage() const {
    const val bytes = context_.call<val>("getImageData", 0, 0, pixelWidth_, pixelHeight_)["data"];
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(pixelWidth_) *
                                     static_cast<std::size_t>(pixelHeight_) * 4);
    val(emscripten::typed_memory_view(pixels.size(), pixels.data())).call<void>("set", bytes);
    return UIImage::fromPixels(pixelWidth_, pixelHeight_, scale_, std::move(pixels));
}

CGSize measureCanvasText(std::string_view text, const UIFont& font) {
    static val context = context2d(makeCanvas(1, 1));
    context.set("font", cssFont(font));
    const val metrics = context.call<val>("measureText", std::string(text));
    return {number(metrics, "width"),
            number(metrics, "fontBoundingBoxAscent") + number(metrics, "fontBoundingBoxDescent")};
}

}  // namespace pelta
