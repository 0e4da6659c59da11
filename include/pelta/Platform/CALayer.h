#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <pelta/Platform/CoreGraphics.h>
#include <pelta/Platform/UIColor.h>

namespace pelta {

/// How time maps to progress: a cubic Bézier curve from (0, 0) to (1, 1).
class CAMediaTimingFunction {
 public:
    /// The curve with control points (x1, y1) and (x2, y2); x values are clamped to 0…1.
    CAMediaTimingFunction(double x1, double y1, double x2, double y2) noexcept;

    /// Constant speed.
    [[nodiscard]] static CAMediaTimingFunction linear() noexcept { return {0, 0, 1, 1}; }
    /// Slow at first.
    [[nodiscard]] static CAMediaTimingFunction easeIn() noexcept { return {0.42, 0, 1, 1}; }
    /// Slow at the end.
    [[nodiscard]] static CAMediaTimingFunction easeOut() noexcept { return {0, 0, 0.58, 1}; }
    /// Slow at both ends.
    [[nodiscard]] static CAMediaTimingFunction easeInEaseOut() noexcept { return {0.42, 0, 0.58, 1}; }
    /// The platform's default curve.
    [[nodiscard]] static CAMediaTimingFunction standard() noexcept { return {0.25, 0.1, 0.25, 1}; }

    /// Progress at a fraction of the time. `time` is clamped to 0…1; the ends map exactly to 0 and 1.
    [[nodiscard]] double progressAt(double time) const noexcept;

    /// The control points x1, y1, x2, y2.
    [[nodiscard]] std::array<double, 4> controlPoints() const noexcept { return {x1_, y1_, x2_, y2_}; }

    friend bool operator==(const CAMediaTimingFunction&, const CAMediaTimingFunction&) = default;

 private:
    double x1_;
    double y1_;
    double x2_;
    double y2_;
};

/// Values of one property over time.
struct CAKeyframeAnimation {
    std::string keyPath;           ///< Such as "opacity" or "transform.scale.xy".
    std::vector<double> values;    ///< One for each key time.
    std::vector<double> keyTimes;  ///< 0 to 1, ascending.
    friend bool operator==(const CAKeyframeAnimation&, const CAKeyframeAnimation&) = default;
};

/// Several animations that run together.
struct CAAnimationGroup {
    double duration = 0.25;             ///< Seconds.
    bool repeatsForever = false;        ///< Starts anew at its end, until it is removed.
    bool isRemovedOnCompletion = true;  ///< Off: its last values stay.
    CAMediaTimingFunction timingFunction = CAMediaTimingFunction::standard();  ///< Pace of the whole.
    std::vector<CAKeyframeAnimation> animations;                               ///< What changes.
    friend bool operator==(const CAAnimationGroup&, const CAAnimationGroup&) = default;
};

/// A drawn rectangle of a view: colour, corners, shadow, transform, and layers within. A model: the port
/// draws it at the next frame after a change. Main thread only.
class CALayer : public std::enable_shared_from_this<CALayer> {
 public:
    /// Plain fields of a layer; write them with `CALayer::update` so that the port sees the change.
    struct Properties {
        CGRect bounds;                               ///< Own coordinates, points.
        CGPoint position;                            ///< Of the layer's centre, in the superlayer.
        CGFloat cornerRadius = 0;                    ///< Points.
        CGFloat zPosition = 0;                       ///< Higher lies in front of its siblings.
        CGFloat opacity = 1;                         ///< 0 to 1.
        bool allowsGroupOpacity = true;              ///< Sublayers fade with it.
        bool shouldRasterize = false;                ///< May be drawn by way of a bitmap.
        CGFloat rasterizationScale = 1;              ///< Pixels a point of that bitmap.
        bool drawsAsynchronously = false;            ///< May be drawn on another thread.
        UIColor backgroundColor = UIColor::clear();  ///< Fills the bounds.
        CGSize shadowOffset;                         ///< Points.
        CGFloat shadowRadius = 3;                    ///< Points.
        CGAffineTransform affineTransform;           ///< Of the layer about its anchor.
        CATransform3D sublayerTransform;             ///< Of what lies within.
        friend bool operator==(const Properties&, const Properties&) = default;
    };

    /// A layer with the defaults above and nothing in it.
    [[nodiscard]] static std::shared_ptr<CALayer> create() { return std::make_shared<CALayer>(); }

    /// The values as last set.
    [[nodiscard]] const Properties& properties() const noexcept { return properties_; }
    /// Replaces the fields; nothing happens when they are equal.
    void update(const Properties& properties);

    /// The layers within, first added first.
    [[nodiscard]] const std::vector<std::shared_ptr<CALayer>>& sublayers() const noexcept {
        return sublayers_;
    }
    /// Adds a layer on top of the others, taking it from its former superlayer.
    void addSublayer(const std::shared_ptr<CALayer>& layer);
    /// Takes the layer out of the one that holds it; nothing when there is none.
    void removeFromSuperlayer();
    /// The layer that holds this one, or null.
    [[nodiscard]] std::shared_ptr<CALayer> superlayer() const { return superlayer_.lock(); }

    /// Starts an animation under a key, replacing one that runs under it.
    void addAnimation(CAAnimationGroup animation, const std::string& key);
    /// Ends the animation under a key; unknown keys are ignored.
    void removeAnimationForKey(const std::string& key);
    /// The running animations in ascending key order.
    [[nodiscard]] const std::map<std::string, CAAnimationGroup>& animations() const noexcept {
        return animations_;
    }

 private:
    Properties properties_;
    std::vector<std::shared_ptr<CALayer>> sublayers_;
    std::weak_ptr<CALayer> superlayer_;
    std::map<std::string, CAAnimationGroup> animations_;
};

/// Groups writes to layers; there are no implicit animations, so nothing else than the grouping is needed.
/// `withoutActions` documents at the place of the write that it takes effect at once.
class CATransaction {
 public:
    template <class Work>
    /// Runs `work`; the changes within show at once, not animated.
    static void withoutActions(Work&& work) {
        std::forward<Work>(work)();
    }
};

}  // namespace pelta
