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
        if (view.clipsToBounds()) {
            context_.clip(bounds);
        }
        // What is half transparent fades as a whole: the views within do not shine through each other.
        const bool isGroup = view.alpha() < 1;
        if (isGroup) {
            context_.beginTransparencyLayer(view.alpha());
        }
        drawInside(view, bounds);
        if (isGroup) {
            context_.endTransparencyLayer();
        }
        context_.restoreState();
    }

 private:
    void drawInside(UIView& view, CGRect bounds) {
        fill(bounds, view.cornerRadius(), view.backgroundColor());
        if (view.hasLayer()) {
            drawSublayers(*view.layer(), bounds);
        }
        drawContent(view, bounds);
        const auto tilt =
            view.hasLayer() ? flat(view.layer()->properties().sublayerTransform) : CGAffineTransform{};
        for (const auto& subview : std::vector(view.subviews())) {
            context_.saveState();
            applyAboutCenter(tilt, bounds);
            shift(subview->frame().origin);
            drawView(*subview);
            context_.restoreState();
        }
    }

    /// How a transform of space shows on the screen, which has no depth.
    static CGAffineTransform flat(const CATransform3D& transform) {
        const auto& m = transform.m;
        return {m[0], m[1], m[4], m[5], m[12], m[13]};
    }

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

    void drawSublayers(const CALayer& layer, CGRect bounds) {
        context_.saveState();
        applyAboutCenter(flat(layer.properties().sublayerTransform), bounds);
        auto sublayers = layer.sublayers();
        std::stable_sort(sublayers.begin(), sublayers.end(), [](const auto& one, const auto& other) {
            return one->properties().zPosition < other->properties().zPosition;
        });
        for (const auto& sublayer : sublayers) {
            drawLayer(*sublayer);
        }
        context_.restoreState();
    }

    void drawLayer(const CALayer& layer) {
        const CALayer::Properties& properties = layer.properties();
        const CGRect rect{{}, properties.bounds.size};
        context_.saveState();
        shift({properties.position.x - rect.midX(), properties.position.y - rect.midY()});
        applyAboutCenter(properties.affineTransform, rect);
        context_.multiplyAlpha(properties.opacity);
        fill(rect, properties.cornerRadius, properties.backgroundColor);
        drawSublayers(layer, rect);
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
