#pragma once

#include <emscripten/val.h>

#include <pelta/Platform/UIGraphics.h>

namespace pelta {

struct ImagePart;

/// Draws on the Canvas of the browser.
class CanvasContext final : public GraphicsContext {
 public:
    CanvasContext(int pixelWidth, int pixelHeight, double scale);

    void fillRect(CGRect rect, UIColor color) override;
    void fillRoundedRect(CGRect rect, CGFloat radius, UIColor color) override;
    void fillOval(CGRect rect, UIColor color) override;
    void drawImage(const UIImage& image, CGRect rect) override;
    void drawText(std::string_view text, CGRect rect, const NSTextAttributes& attributes) override;
    void saveState() override;
    void restoreState() override;
    void concatenate(const CGAffineTransform& transform) override;
    void clip(CGRect rect) override;
    void multiplyAlpha(CGFloat alpha) override;
    [[nodiscard]] std::optional<UIImage> makeImage() const override;

    /// The element drawn on.
    [[nodiscard]] const emscripten::val& canvas() const noexcept { return canvas_; }

 private:
    void drawPart(const emscripten::val& picture, const ImagePart& part, double imageScale);
    void fillPath(const UIColor& color);

    int pixelWidth_;
    int pixelHeight_;
    double scale_;
    emscripten::val canvas_;
    emscripten::val context_;
};

/// Extent of one line of text as the browser draws it, points.
[[nodiscard]] CGSize measureCanvasText(std::string_view text, const UIFont& font);

}  // namespace pelta
