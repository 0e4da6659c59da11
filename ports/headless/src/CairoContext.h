#pragma once

#include <cairo.h>
#include <cstddef>
#include <memory>
#include <vector>

#include <pelta/Platform/ImageParts.h>
#include <pelta/Platform/UIGraphics.h>

namespace pelta::headless {

/// A bitmap drawn with Cairo, its text with Pango.
class CairoContext final : public GraphicsContext {
 public:
    CairoContext(int pixelWidth, int pixelHeight, double scale);

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

 private:
    struct SurfaceDeleter {
        void operator()(cairo_surface_t* surface) const noexcept { cairo_surface_destroy(surface); }
    };
    struct ContextDeleter {
        void operator()(cairo_t* context) const noexcept { cairo_destroy(context); }
    };
    /// What Cairo does not keep itself.
    struct State {
        double alpha = 1;
        bool drawsNothing = false;  ///< The transform has no area or is not finite.
    };

    /// A group under way.
    struct Group {
        double alpha;
        std::size_t outerStates;  ///< How many states were saved when it began.
    };

    [[nodiscard]] bool canDraw(CGRect rect) const;
    void setColor(UIColor color);
    /// @param radius  of the corners' quarters of ellipses, at most half of the rectangle's sides.
    void fillRounded(CGRect rect, CGSize radius, UIColor color);
    void drawPart(const UIImage& image, const ImagePart& part);

    double scale_;
    std::unique_ptr<cairo_surface_t, SurfaceDeleter> surface_;
    std::unique_ptr<cairo_t, ContextDeleter> context_;
    std::vector<State> states_{State{}};
    std::vector<Group> groups_;
};

}  // namespace pelta::headless
