#pragma once

#include <functional>
#include <optional>

#include <pelta/Engine/MapRenderer.h>

namespace pelta {

/// An inset as it counts in a view of the given size, points: none when it leaves no area.
[[nodiscard]] UIEdgeInsets insetLeavingArea(const UIEdgeInsets& inset, CGSize viewSize) noexcept;

/// The insets of the area in whose middle the camera's centre is drawn, and their change over time. Whoever
/// calls a member keeps the object alive until it returns.
class ContentInset {
 public:
    using Completion = std::function<void()>;

    explicit ContentInset(std::function<void()> requestFrame) : requestFrame_(std::move(requestFrame)) {}

    void open(MapRenderer& renderer, CGSize viewSize);
    /// Ends a change; its completion still runs, from the main queue.
    void close();

    /// What was set last, also while the view is still on its way there.
    [[nodiscard]] const UIEdgeInsets& value() const noexcept { return value_; }
    /// The same as it counts at the view's size.
    [[nodiscard]] UIEdgeInsets effective() const noexcept { return insetLeavingArea(value_, viewSize_); }
    [[nodiscard]] bool isMoving() const noexcept { return transition_.has_value(); }

    /// Insets that are not finite are ignored. The completion runs exactly once in any case.
    void set(const UIEdgeInsets& inset, bool animated, Completion completion);
    void setViewSize(CGSize viewSize);
    /// Moves a change to the time `now`, seconds on the port's clock.
    void advanceTo(double now);

 private:
    struct Transition {
        UIEdgeInsets start;
        double startTime;
        Completion completion;
    };

    void show(const UIEdgeInsets& inset);
    void endTransition();

    std::function<void()> requestFrame_;
    MapRenderer* renderer_ = nullptr;
    CGSize viewSize_;
    UIEdgeInsets value_;
    UIEdgeInsets shown_;
    std::optional<Transition> transition_;
};

}  // namespace pelta
