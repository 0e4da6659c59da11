#pragma once

#include <emscripten/val.h>
#include <vector>

#include <pelta/Platform/UIGraphics.h>

namespace pelta {

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
    void beginTransparencyLayer(CGFloat alpha) override;
    void endTransparencyLayer() override;
    [[nodiscard]] std::optional<UIImage> makeImage() const override;

    /// The element drawn on.
    [[nodiscard]] const emscripten::val& canvas() const noexcept { return canvas_; }

 private:
    /// What a group under way is drawn into when it ends.
    struct Outer {
        emscripten::val canvas;
        emscripten::val context;
        double alpha;  ///< Of the group.
    };

    [[nodiscard]] emscripten::val stretched(const UIImage& image, CGSize size) const;
    void fillPath(const UIColor& color);

    int pixelWidth_;
    int pixelHeight_;
    double scale_;
    emscripten::val canvas_;
    emscripten::val context_;
    std::vector<Outer> outer_;
};

/// Extent of one line of text as the browser draws it, points.
[[nodiscard]] CGSize measureCanvasText(std::string_view text, const UIFont& font);

}  // namespace pelta
