#include <algorithm>

#include <pelta/Platform/UIView.h>

namespace pelta {

namespace {

/// Draws a view tree or layer tree into a bitmap, back to front.
class SnapshotPainter {
 public:
    explicit SnapshotPainter(GraphicsContext& context) : context_(context) {}

    void drawView(UIView& view) {
        if (view.isHidden() || view.alpha() <= 0) {
            return;
        }
        const CGRect bounds = view.bounds();
        context_.saveState();
        applyAboutCenter(view.transform(), bounds);
        context_.multiplyAlpha(view.alpha());
        fill(bounds, view.cornerRadius(), view.backgroundColor());
        if (view.hasLayer()) {
            drawSublayers(*view.layer());
        }
        drawContent(view, bounds);
        for (const auto& subview : std::vector(view.subviews())) {
            context_.saveState();
            shift(subview->frame().origin);
            drawView(*subview);
            context_.restoreState();
        }
        context_.restoreState();
    }

 private:
    void shift(CGPoint offset) { context_.concatenate({1, 0, 0, 1, offset.x, offset.y}); }

    void applyAboutCenter(const CGAffineTransform& transform, CGRect bounds) {
        if (transform == CGAffineTransform{}) {
            return;
        }
        shift({bounds.midX(), bounds.midY()});
        context_.concatenate(transform);
        shift({-bounds.midX(), -bounds.midY()});
    }

    void fill(CGRect rect, CGFloat cornerRadius, UIColor color) {
        if (!(color.alpha > 0)) {
            return;
        }
        if (cornerRadius > 0) {
            context_.fillRoundedRect(rect, cornerRadius, color);
        } else {
            context_.fillRect(rect, color);
        }
    }

    void drawSublayers(const CALayer& layer) {
        auto sublayers = layer.sublayers();
        std::stable_sort(sublayers.begin(), sublayers.end(), [](const auto& one, const auto& other) {
            return one->properties().zPosition < other->properties().zPosition;
        });
        for (const auto& sublayer : sublayers) {
            drawLayer(*sublayer);
        }
    }

    void drawLayer(const CALayer& layer) {
        const CALayer::Properties& properties = layer.properties();
        const CGRect rect{{}, properties.bounds.size};
        context_.saveState();
        shift({properties.position.x - rect.midX(), properties.position.y - rect.midY()});
        applyAboutCenter(properties.affineTransform, rect);
        context_.multiplyAlpha(properties.opacity);
        fill(rect, properties.cornerRadius, properties.backgroundColor);
        drawSublayers(layer);
        context_.restoreState();
    }

    void drawContent(UIView& view, CGRect bounds) {
        const ViewContent content = view.content();
        if (const auto* picture = std::get_if<PictureContent>(&content)) {
            context_.drawImage(picture->image, rectForPicture(*picture, bounds));
        } else if (const auto* line = std::get_if<TextContent>(&content)) {
            const CGFloat height = sizeOfText(line->text, line->attributes.font).height;
            const CGRect rect{{0, (bounds.size.height - height) / 2}, {bounds.size.width, height}};
            context_.drawText(line->text, rect, line->attributes);
        } else if (std::holds_alternative<DrawnContent>(content)) {
            context_.saveState();
            context_.clip(bounds);
            view.draw(context_, bounds);
            context_.restoreState();
        }
    }

    GraphicsContext& context_;
};

}  // namespace

CGRect rectForPicture(const PictureContent& picture, CGRect bounds) noexcept {
    if (picture.mode == UIViewContentMode::scaleToFill) {
        return bounds;
    }
    CGSize size = picture.image.size();
    if (picture.mode == UIViewContentMode::scaleAspectFit) {
        const CGFloat scale = std::min(bounds.size.width / size.width, bounds.size.height / size.height);
        size = {size.width * scale, size.height * scale};
    }
    return {{bounds.midX() - size.width / 2, bounds.midY() - size.height / 2}, size};
}

std::optional<UIImage> UIView::snapshot() {
    const auto self = shared_from_this();
    layoutIfNeeded();
    return UIGraphicsImageRenderer(frame_.size).image([this](GraphicsContext& context) {
        SnapshotPainter(context).drawView(*this);
    });
}

}  // namespace pelta
