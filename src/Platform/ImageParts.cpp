#include <array>
#include <cmath>

#include <pelta/Platform/ImageParts.h>

namespace pelta {

namespace {

/// A stretch along one axis, in the picture and in the rectangle.
struct Span {
    double sourceStart;
    double sourceLength;
    double start;
    double length;
};

/// Cuts one axis at the caps.
std::array<Span, 3> cut(int pixels, double scale, double startCap, double endCap, double start,
                        double length) {
    const double startPixels = std::round(startCap * scale);
    const double endPixels = std::round(endCap * scale);
    const double middlePixels = pixels - startPixels - endPixels;
    const double caps = startCap + endCap;
    const double shrink = caps > length ? length / caps : 1;
    const double first = startCap * shrink;
    const double last = endCap * shrink;
    return {Span{0, startPixels, start, first},
            Span{startPixels, middlePixels, start + first, caps > length ? 0 : length - first - last},
            Span{startPixels + middlePixels, endPixels, start + length - last, last}};
}

bool isEmpty(const Span& span) {
    return !(span.sourceLength > 0 && span.length > 0);
}

bool isDrawable(CGRect rect) {
    return std::isfinite(rect.origin.x) && std::isfinite(rect.origin.y) && std::isfinite(rect.size.width) &&
           std::isfinite(rect.size.height) && rect.size.width > 0 && rect.size.height > 0;
}

}  // namespace

std::vector<ImagePart> partsOfImage(const UIImage& image, CGRect rect) {
    if (!isDrawable(rect)) {
        return {};
    }
    const double width = image.pixelWidth();
    const double height = image.pixelHeight();
    if (!image.capInsets()) {
        return {{{{0, 0}, {width, height}}, rect, false}};
    }
    const UIEdgeInsets& caps = *image.capInsets();
    const auto columns =
        cut(image.pixelWidth(), image.scale(), caps.left, caps.right, rect.origin.x, rect.size.width);
    const auto rows =
        cut(image.pixelHeight(), image.scale(), caps.top, caps.bottom, rect.origin.y, rect.size.height);
    std::vector<ImagePart> parts;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < columns.size(); ++column) {
            const Span& x = columns[column];
            const Span& y = rows[row];
            if (isEmpty(x) || isEmpty(y)) {
                continue;
            }
            const bool isCorner = row != 1 && column != 1;
            parts.push_back({{{x.sourceStart, y.sourceStart}, {x.sourceLength, y.sourceLength}},
                             {{x.start, y.start}, {x.length, y.length}},
                             !isCorner && image.resizingMode() == UIImageResizingMode::tile});
        }
    }
    return parts;
}

}  // namespace pelta
