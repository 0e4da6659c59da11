#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <pelta/Platform/CoreGraphics.h>

namespace pelta {

/// How the middle of a stretchable picture fills a larger area.
enum class UIImageResizingMode : unsigned { tile = 0, stretch = 1 };

/// An immutable bitmap. Copies share the pixels, so passing it by value is cheap.
///
/// Pixels are 8-bit RGBA, straight alpha, rows from the top, no padding. `scale` pixels make one point.
class UIImage {
 public:
    /// A picture from pixels.
    ///
    /// @param width   pixels, 1 to 16384.
    /// @param height  pixels, 1 to 16384.
    /// @param scale   pixels a point, above 0.
    /// @param rgba    exactly width × height × 4 bytes.
    /// @return nothing when a value is out of range or the byte count differs.
    [[nodiscard]] static std::optional<UIImage> fromPixels(int width, int height, double scale,
                                                           std::vector<std::uint8_t> rgba);

    /// A picture from an encoded file (PNG), decoded by the port.
    /// @return nothing when the bytes are not a picture that the port can read or the scale is not above 0.
    [[nodiscard]] static std::optional<UIImage> fromEncoded(std::span<const std::uint8_t> bytes,
                                                            double scale);

    /// Extent in points: pixels divided by the scale.
    [[nodiscard]] CGSize size() const noexcept;
    /// Pixels a point.
    [[nodiscard]] double scale() const noexcept { return scale_; }
    /// Pixels in a row.
    [[nodiscard]] int pixelWidth() const noexcept { return width_; }
    /// Rows of pixels.
    [[nodiscard]] int pixelHeight() const noexcept { return height_; }
    /// RGBA bytes, valid as long as any copy of this picture lives.
    [[nodiscard]] std::span<const std::uint8_t> pixels() const noexcept { return *pixels_; }

    /// This picture as a stretchable one: the four corners given by the cap insets (points) keep their size,
    /// the edges and the middle fill the rest. Insets that leave no middle keep one pixel of it.
    [[nodiscard]] UIImage resizableImage(UIEdgeInsets capInsets, UIImageResizingMode mode) const;
    /// The cap insets of a stretchable picture; nothing for an ordinary one.
    [[nodiscard]] const std::optional<UIEdgeInsets>& capInsets() const noexcept { return capInsets_; }
    /// How the middle of a stretchable picture fills a larger area.
    [[nodiscard]] UIImageResizingMode resizingMode() const noexcept { return resizingMode_; }

    /// True for two copies of one picture; pixels are not compared.
    [[nodiscard]] bool isIdenticalTo(const UIImage& other) const noexcept { return pixels_ == other.pixels_; }

 private:
    UIImage() = default;

    int width_ = 0;
    int height_ = 0;
    double scale_ = 1;
    std::shared_ptr<const std::vector<std::uint8_t>> pixels_;
    std::optional<UIEdgeInsets> capInsets_;
    UIImageResizingMode resizingMode_ = UIImageResizingMode::tile;
};

}  // namespace pelta
