#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include <pelta/Platform/CoreGraphics.h>
#include <pelta/Platform/UIColor.h>
#include <pelta/Platform/UIImage.h>

namespace pelta {

/// A font of the interface: the platform's sans-serif family in any script.
struct UIFont {
    double pointSize = 17;  ///< Points.
    bool isBold = false;    ///< Of the heavier weight.

    /// The regular font in a size, points.
    [[nodiscard]] static constexpr UIFont systemFont(double size) noexcept { return {size, false}; }
    /// The heavier font in a size, points.
    [[nodiscard]] static constexpr UIFont boldSystemFont(double size) noexcept { return {size, true}; }
    friend bool operator==(const UIFont&, const UIFont&) = default;
};

/// Placement of a line of text within its rectangle.
enum class NSTextAlignment : unsigned { left = 0, center = 1, right = 2 };

/// How a text is drawn.
struct NSTextAttributes {
    UIFont font;                                        ///< Size and weight.
    UIColor foregroundColor = UIColor::black();         ///< Of the letters.
    NSTextAlignment alignment = NSTextAlignment::left;  ///< Of the lines among each other.
    friend bool operator==(const NSTextAttributes&, const NSTextAttributes&) = default;
};

/// Extent in points that one line of UTF-8 text takes. Invalid bytes count as replacement characters.
[[nodiscard]] CGSize sizeOfText(std::string_view text, const UIFont& font);

/// A bitmap that is being drawn. Coordinates are points in the current transform; the port draws with smooth
/// edges, later drawing covers earlier. Non-finite numbers draw nothing.
class GraphicsContext {
 public:
    virtual ~GraphicsContext() = default;

    /// Fills a rectangle.
    virtual void fillRect(CGRect rect, UIColor color) = 0;
    /// Fills a rectangle with circular corners of the given radius.
    virtual void fillRoundedRect(CGRect rect, CGFloat radius, UIColor color) = 0;
    /// Fills the ellipse inscribed in the rectangle.
    virtual void fillOval(CGRect rect, UIColor color) = 0;
    /// Draws a picture over the rectangle, stretched to it; a stretchable picture keeps its corners.
    virtual void drawImage(const UIImage& image, CGRect rect) = 0;
    /// Draws one line of text, placed horizontally by its alignment with its top at the rectangle's top; what
    /// goes beyond the rectangle is drawn too.
    virtual void drawText(std::string_view text, CGRect rect, const NSTextAttributes& attributes) = 0;

    /// Remembers transform, clip and opacity until the matching `restoreState`.
    virtual void saveState() = 0;
    /// Goes back to the state of the last `saveState`.
    virtual void restoreState() = 0;
    /// Applies a transform before the current one.
    virtual void concatenate(const CGAffineTransform& transform) = 0;
    /// Restricts drawing to a rectangle.
    virtual void clip(CGRect rect) = 0;
    /// Multiplies the opacity of what follows, 0 to 1.
    virtual void multiplyAlpha(CGFloat alpha) = 0;

    /// Begins a group: what is drawn until the matching `endTransparencyLayer` is put together first and then
    /// drawn as one, with an opacity of 0 to 1. States saved within a group are restored within it.
    virtual void beginTransparencyLayer(CGFloat alpha) = 0;
    /// Draws the group begun last; nothing when there is none.
    virtual void endTransparencyLayer() = 0;

    /// What has been drawn so far, groups that have not ended left out.
    [[nodiscard]] virtual std::optional<UIImage> makeImage() const = 0;
};

/// Draws pictures at the screen's scale.
class UIGraphicsImageRenderer {
 public:
    /// @param size  points; each side is rounded up to whole pixels.
    explicit UIGraphicsImageRenderer(CGSize size) : size_(size) {}

    /// Runs the drawing on an empty, transparent bitmap.
    /// @return the bitmap, or nothing when a side is not above 0, not finite, or over 16384 pixels.
    [[nodiscard]] std::optional<UIImage> image(const std::function<void(GraphicsContext&)>& draw) const;

 private:
    CGSize size_;
};

}  // namespace pelta
