#pragma once

#include <cstddef>
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
    UIImage image;                                            ///< What is shown.
    UIViewContentMode mode = UIViewContentMode::scaleToFill;  ///< How it fills the view.
};

/// For ports: where a picture is drawn within the view's bounds; stretched, largest without distortion, or at
/// its own size in the middle.
[[nodiscard]] CGRect rectForPicture(const PictureContent& picture, CGRect bounds) noexcept;

/// A line of text as the content of a view, centred vertically.
struct TextContent {
    std::string text;             ///< UTF-8.
    NSTextAttributes attributes;  ///< How it looks.
};

/// A surface that a port draws by its own means, such as the map; `owner` tells which.
struct SurfaceContent {
    const void* owner = nullptr;  ///< Never followed.
};

/// Content that the view draws itself in `draw`; `revision` grows with each `setNeedsDisplay`.
struct DrawnContent {
    unsigned revision = 0;  ///< A new number asks for a new drawing.
};

/// What a mouse's pointer looks like.
enum class UIPointerStyle : unsigned {
    automatic = 0,  ///< As the port likes it.
    hand = 1        ///< A hand, which says that a press does something.
};

/// What a port shows inside a view's rectangle, above its background and below its subviews.
using ViewContent = std::variant<std::monostate, PictureContent, TextContent, SurfaceContent, DrawnContent>;

/// A rectangle on the screen with content, subviews and gesture recognisers.
///
/// A model: writes store and ask for a frame, and the port shows the tree of a `UIWindow` as it stands then.
/// Made with `make<T>(frame)`. A view owns its subviews and refers to its superview weakly. Main thread only.
class UIView : public std::enable_shared_from_this<UIView> {
 public:
    /// For `make`: a view at a place in its future superview, points.
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
    /// Middle of the frame in the superview, points; setting it moves the view.
    [[nodiscard]] CGPoint center() const noexcept { return {frame_.midX(), frame_.midY()}; }
    void setCenter(CGPoint center);

    /// Hidden views and all within are neither drawn nor touched.
    [[nodiscard]] bool isHidden() const noexcept { return isHidden_; }
    void setIsHidden(bool hidden);
    /// Opacity of the view and all within, 0 to 1.
    [[nodiscard]] CGFloat alpha() const noexcept { return alpha_; }
    void setAlpha(CGFloat alpha);
    /// Fills the bounds; clear at first.
    [[nodiscard]] UIColor backgroundColor() const noexcept { return backgroundColor_; }
    void setBackgroundColor(UIColor color);
    /// Radius of the background's corners, points; 0 at first.
    [[nodiscard]] CGFloat cornerRadius() const noexcept { return cornerRadius_; }
    void setCornerRadius(CGFloat radius);
    /// Rotation, scale or shift of the drawn view about its centre; layout and hit-testing do not see it.
    [[nodiscard]] CGAffineTransform transform() const noexcept { return transform_; }
    void setTransform(CGAffineTransform transform);
    /// Off: touches go to what lies behind the view.
    [[nodiscard]] bool isUserInteractionEnabled() const noexcept { return isUserInteractionEnabled_; }
    void setIsUserInteractionEnabled(bool enabled);
    /// On: what lies within is cut off at the bounds. Off at first.
    [[nodiscard]] bool clipsToBounds() const noexcept { return clipsToBounds_; }
    void setClipsToBounds(bool clips);
    /// What a screen reader says; empty means that the view is decoration.
    [[nodiscard]] const std::string& accessibilityLabel() const noexcept { return accessibilityLabel_; }
    void setAccessibilityLabel(std::string label);

    /// The views within, rearmost first.
    [[nodiscard]] const std::vector<std::shared_ptr<UIView>>& subviews() const noexcept { return subviews_; }
    /// The view that holds this one, or null.
    [[nodiscard]] std::shared_ptr<UIView> superview() const { return superview_.lock(); }
    /// The window at the root of the tree, or null.
    [[nodiscard]] UIWindow* window();
    /// Adds a view in front of the other subviews, taking it from its former superview. Adding a view to
    /// itself or to one of its own subviews is ignored.
    void addSubview(const std::shared_ptr<UIView>& view);
    /// As `addSubview`, but behind the subview that has the place `index` (0 is rearmost); beyond the last
    /// place in front of all. A view that is here already keeps its place.
    void insertSubview(const std::shared_ptr<UIView>& view, std::size_t index);
    /// Takes the view out of the one that holds it; nothing when there is none.
    void removeFromSuperview();

    /// On (at first): the frame is set by hand. Off: the constraints place the view.
    [[nodiscard]] bool translatesAutoresizingMaskIntoConstraints() const noexcept {
        return usesAutoresizingMask_;
    }
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates);
    /// An edge, centre or extent of the view, to be constrained.
    [[nodiscard]] NSLayoutAnchor anchor(NSLayoutAttribute attribute) const;
    /// The part of the view that nothing of the device covers.
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

    /// Has the next frame lay out the view anew.
    void setNeedsLayout();
    /// Solves the layout of this view's whole tree now if any of it is outstanding.
    void layoutIfNeeded();
    /// Places the subviews once this view's own frame is final; the base solves their constraints. Overrides
    /// call the base.
    virtual void layoutSubviews();

    /// Has a recogniser hear the touches in this view; takes it from its former view.
    void addGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer);
    /// Takes a recogniser away; nothing when it is not of this view.
    void removeGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer);
    /// The recognisers of this view, first added first.
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
    /// What a mouse's pointer looks like over a point of this view; `automatic` leaves it to the superview.
    [[nodiscard]] virtual UIPointerStyle pointerStyle(CGPoint point) const;

    /// The view's own layer, for sublayers and animations behind the content.
    [[nodiscard]] const std::shared_ptr<CALayer>& layer();
    /// True once `layer()` has made the layer.
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
    void adopt(const std::shared_ptr<UIView>& view, std::size_t index);
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
    bool clipsToBounds_ = false;
    bool usesAutoresizingMask_ = true;
    bool needsLayout_ = true;
    bool descendantNeedsLayout_ = false;
    bool placesSubviews_ = false;  ///< True once a subview has been placed by constraints.
};

}  // namespace pelta
