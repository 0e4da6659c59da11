#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <pelta/Platform/CALayer.h>
#include <pelta/Platform/UIGestureRecognizer.h>
#include <pelta/Platform/UIGraphics.h>
#include <pelta/Platform/UILayout.h>

namespace pelta {

class UIWindow;

/// How a picture is fitted into its view.
enum class UIViewContentMode : unsigned { scaleToFill = 0, scaleAspectFit = 1, center = 4 };

/// A picture as the content of a view.
struct PictureContent {
    UIImage image;
    UIViewContentMode mode = UIViewContentMode::scaleToFill;
};

/// For ports: where a picture is drawn within the view's bounds; stretched, largest without distortion, or at
/// its own size in the middle.
[[nodiscard]] CGRect rectForPicture(const PictureContent& picture, CGRect bounds) noexcept;

/// A line of text as the content of a view, centred vertically.
struct TextContent {
    std::string text;
    NSTextAttributes attributes;
};

/// A surface that a port draws by its own means, such as the map; `owner` tells which.
struct SurfaceContent {
    const void* owner = nullptr;
};

/// Content that the view draws itself in `draw`; `revision` grows with each `setNeedsDisplay`.
struct DrawnContent {
    unsigned revision = 0;
};

/// What a port shows inside a view's rectangle, above its background and below its subviews.
using ViewContent = std::variant<std::monostate, PictureContent, TextContent, SurfaceContent, DrawnContent>;

/// A rectangle on the screen with content, subviews and gesture recognisers.
///
/// A model: writes store and ask for a frame, and the port shows the tree of a `UIWindow` as it stands then.
/// Made with `make<T>(frame)`. A view owns its subviews and refers to its superview weakly. Main thread only.
class UIView : public std::enable_shared_from_this<UIView> {
 public:
    explicit UIView(CGRect frame);
    virtual ~UIView();
    UIView(const UIView&) = delete;
    UIView& operator=(const UIView&) = delete;

    /// Runs once after construction, see `make`. Overrides call the base first.
    virtual void completeConstruction(std::string_view className);

    /// Place in the superview, points.
    [[nodiscard]] CGRect frame() const noexcept { return frame_; }
    /// Moves and sizes the view; non-finite values are ignored. Asks for layout when the size changes.
    void setFrame(CGRect frame);
    /// Own coordinates: origin (0, 0) and the frame's size.
    [[nodiscard]] CGRect bounds() const noexcept { return {{}, frame_.size}; }
    [[nodiscard]] CGPoint center() const noexcept { return {frame_.midX(), frame_.midY()}; }
    void setCenter(CGPoint center);

    [[nodiscard]] bool isHidden() const noexcept { return isHidden_; }
    void setIsHidden(bool hidden);
    /// Opacity of the view and all within, 0 to 1.
    [[nodiscard]] CGFloat alpha() const noexcept { return alpha_; }
    void setAlpha(CGFloat alpha);
    [[nodiscard]] UIColor backgroundColor() const noexcept { return backgroundColor_; }
    void setBackgroundColor(UIColor color);
    [[nodiscard]] CGFloat cornerRadius() const noexcept { return cornerRadius_; }
    void setCornerRadius(CGFloat radius);
    /// Rotation, scale or shift of the drawn view about its centre; layout and hit-testing do not see it.
    [[nodiscard]] CGAffineTransform transform() const noexcept { return transform_; }
    void setTransform(CGAffineTransform transform);
    /// Off: touches go to what lies behind the view.
    [[nodiscard]] bool isUserInteractionEnabled() const noexcept { return isUserInteractionEnabled_; }
    void setIsUserInteractionEnabled(bool enabled);
    /// What a screen reader says; empty means that the view is decoration.
    [[nodiscard]] const std::string& accessibilityLabel() const noexcept { return accessibilityLabel_; }
    void setAccessibilityLabel(std::string label);

    [[nodiscard]] const std::vector<std::shared_ptr<UIView>>& subviews() const noexcept { return subviews_; }
    [[nodiscard]] std::shared_ptr<UIView> superview() const { return superview_.lock(); }
    /// The window at the root of the tree, or null.
    [[nodiscard]] UIWindow* window();
    /// Adds a view in front of the other subviews, taking it from its former superview. Adding a view to
    /// itself or to one of its own subviews is ignored.
    void addSubview(const std::shared_ptr<UIView>& view);
    void removeFromSuperview();

    /// On (at first): the frame is set by hand. Off: the constraints place the view.
    [[nodiscard]] bool translatesAutoresizingMaskIntoConstraints() const noexcept {
        return usesAutoresizingMask_;
    }
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates);
    [[nodiscard]] NSLayoutAnchor anchor(NSLayoutAttribute attribute) const;
    [[nodiscard]] UILayoutGuide safeAreaLayoutGuide() const;
    /// The active constraints that place this view, in the order of their activation.
    [[nodiscard]] const std::vector<std::shared_ptr<NSLayoutConstraint>>& constraints() const noexcept {
        return constraints_;
    }
    /// Distances from this view's edges to its safe area, points: what was set here, or what of the
    /// superview's uncovered margins reaches into this view where that is more.
    [[nodiscard]] UIEdgeInsets safeAreaInsets() const noexcept { return safeAreaInsets_; }
    /// For windows and ports: sets the insets; `safeAreaInsetsDidChange` is called wherever the effective
    /// ones change, in this view and within. Negative and non-finite values count as 0.
    void setSafeAreaInsets(UIEdgeInsets insets);
    /// Called after the safe area has changed. Overrides call the base.
    virtual void safeAreaInsetsDidChange() {}

    void setNeedsLayout();
    /// Solves the layout of this view's whole tree now if any of it is outstanding.
    void layoutIfNeeded();
    /// Places the subviews once this view's own frame is final; the base solves their constraints. Overrides
    /// call the base.
    virtual void layoutSubviews();

    void addGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer);
    void removeGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer);
    [[nodiscard]] const std::vector<std::shared_ptr<UIGestureRecognizer>>& gestureRecognizers()
        const noexcept {
        return gestureRecognizers_;
    }
    /// The frontmost visible view with interaction enabled at a point of this view, this view included; null
    /// when there is none.
    [[nodiscard]] std::shared_ptr<UIView> hitTest(CGPoint point);
    /// A point of this view in the window's coordinates.
    [[nodiscard]] CGPoint convertPointToWindow(CGPoint point) const;
    /// On: the recognisers of superviews do not see touches that begin here, as is right for controls.
    [[nodiscard]] virtual bool keepsTouchesFromSuperviews() const { return false; }
    /// Called for every touch that began on this view, recognisers or not.
    virtual void touchDidChange(const UITouch& touch);

    /// The view's own layer, for sublayers and animations behind the content.
    [[nodiscard]] const std::shared_ptr<CALayer>& layer();
    [[nodiscard]] bool hasLayer() const noexcept { return layer_ != nullptr; }

    /// What the port shows in the view; the base has none.
    [[nodiscard]] virtual ViewContent content() const { return {}; }
    /// Draws the content of a view that answers `DrawnContent`.
    virtual void draw(GraphicsContext& context, CGRect rect);
    /// Asks that `draw` be run again.
    virtual void setNeedsDisplay();

    /// Draws the view and all within into a picture at the screen's scale; nothing when the view has no area.
    [[nodiscard]] std::optional<UIImage> snapshot();

    /// Grows with every change that a port must show, anywhere in the process.
    [[nodiscard]] static unsigned long treeRevision() noexcept;

 protected:
    /// Notes a visible change and asks for a frame.
    static void didChangeAppearance();

 private:
    friend class NSLayoutConstraint;
    void constraintDidActivate(std::shared_ptr<NSLayoutConstraint> constraint);
    void constraintDidDeactivate(const NSLayoutConstraint& constraint);
    void constraintsDidChange();
    bool applyFrame(CGRect frame);
    void placeSubviewsByConstraints();
    void layoutTree();
    void updateSafeArea();

    CGRect frame_;
    std::vector<std::shared_ptr<UIView>> subviews_;
    std::weak_ptr<UIView> superview_;
    std::vector<std::shared_ptr<NSLayoutConstraint>> constraints_;
    std::vector<std::shared_ptr<UIGestureRecognizer>> gestureRecognizers_;
    std::shared_ptr<CALayer> layer_;
    std::string accessibilityLabel_;
    UIEdgeInsets ownSafeAreaInsets_;
    UIEdgeInsets safeAreaInsets_;
    UIColor backgroundColor_ = UIColor::clear();
    CGAffineTransform transform_;
    CGFloat alpha_ = 1;
    CGFloat cornerRadius_ = 0;
    bool isHidden_ = false;
    bool isUserInteractionEnabled_ = true;
    bool usesAutoresizingMask_ = true;
    bool needsLayout_ = true;
    bool descendantNeedsLayout_ = false;
    bool placesSubviews_ = false;  ///< True once a subview has been placed by constraints.
};

}  // namespace pelta
