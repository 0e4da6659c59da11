#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <pelta/Platform/UITouch.h>

namespace pelta {

class UIView;

/// Stage of a recogniser; `ended` is also called recognised for gestures without duration.
enum class UIGestureRecognizerState : unsigned {
    possible = 0,
    began = 1,
    changed = 2,
    ended = 3,
    cancelled = 4,
    failed = 5
};

/// Watches the touches on one view and reports a gesture.
///
/// A recogniser that requires others to fail waits in `possible` until each of them has failed, and then
/// reports, or never reports when one of them succeeds; only those that watch a touch at the time count.
/// After `ended`, `cancelled` or `failed` it returns to `possible` once all touches are lifted and nobody
/// waits for it; touches that begin before that are kept and make the next gesture. Main thread only; the
/// view owns its recognisers, a recogniser refers to its view weakly.
class UIGestureRecognizer : public std::enable_shared_from_this<UIGestureRecognizer> {
 public:
    /// What a recognised gesture calls, with its recogniser.
    using Action = std::function<void(UIGestureRecognizer&)>;

    /// @param action  called on every change of state that a listener sees (began, changed, ended,
    ///                cancelled). It must not own the view.
    explicit UIGestureRecognizer(Action action) : action_(std::move(action)) {}
    virtual ~UIGestureRecognizer();
    UIGestureRecognizer(const UIGestureRecognizer&) = delete;
    UIGestureRecognizer& operator=(const UIGestureRecognizer&) = delete;

    /// Where the recogniser stands.
    [[nodiscard]] UIGestureRecognizerState state() const noexcept { return state_; }
    /// The view whose touches it hears; null when there is none.
    [[nodiscard]] std::shared_ptr<UIView> view() const { return view_.lock(); }
    /// Off: it hears no touches.
    [[nodiscard]] bool isEnabled() const noexcept { return isEnabled_; }
    /// Off cancels a gesture under way.
    void setIsEnabled(bool enabled);

    /// Makes this recogniser wait for the failure of another, which is held weakly. Nothing happens when the
    /// other one waits for this one, directly or through others.
    void requireGestureRecognizerToFail(const std::shared_ptr<UIGestureRecognizer>& other);
    /// Asks `condition` before a gesture is reported for the first time, or waits for others to fail; when it
    /// answers false, the gesture fails instead. Empty, as at first, allows every gesture.
    void setShouldBegin(std::function<bool(const UIGestureRecognizer&)> condition) {
        shouldBegin_ = std::move(condition);
    }
    /// Where the gesture is, in points of the given view, or of the window when the view is null.
    [[nodiscard]] CGPoint locationInView(const UIView* view) const;

    /// For the view tree: takes one touch event in window coordinates.
    /// @return true when the gesture has been reported and this touch belongs to it.
    bool handleTouch(const UITouch& touch);
    /// For the view tree: set when the recogniser is added to or taken from a view. Cancels a gesture under
    /// way.
    void attachToView(std::weak_ptr<UIView> view);

 protected:
    /// What a concrete recogniser makes of a touch; moves the state with `transitionTo`.
    virtual void touchDidChange(const UITouch& touch) = 0;
    /// False when a first touch that begins now cannot be part of the gesture begun by earlier ones, which
    /// then fails; the touch begins another.
    [[nodiscard]] virtual bool continuesGesture(const UITouch&) const { return true; }
    /// Forgets a gesture so that the next can begin.
    virtual void reset() {}
    /// Moves to a state; success waits for required failures.
    void transitionTo(UIGestureRecognizerState state);
    /// Calls `work` when it is `time`, seconds on the port's clock, and the touches made by then have been
    /// heard, unless the gesture has been reset, the timers cancelled or the recogniser released.
    void atTime(double time, std::function<void()> work);
    /// Work that `atTime` has put off does not run any more.
    void cancelTimers() noexcept { ++generation_; }
    /// Fingers of the present gesture that are down.
    [[nodiscard]] int touchesDown() const noexcept { return touchesDown_; }

    CGPoint location_;  ///< Window coordinates of the gesture.

 private:
    using State = UIGestureRecognizerState;

    void keepForNextGesture(const UITouch& touch);
    void trackTouch(const UITouch& touch);
    void recognize(State state);
    void report(State state);
    void fail();
    void abandon();
    void settle();
    void returnToPossible();
    void tellDependents();
    void requiredRecognizerDidSettle();
    [[nodiscard]] bool waitsFor(const UIGestureRecognizer& other) const;
    [[nodiscard]] bool isUnderWay() const noexcept;
    [[nodiscard]] bool isActive() const noexcept;

    Action action_;
    std::function<bool(const UIGestureRecognizer&)> shouldBegin_;
    std::weak_ptr<UIView> view_;
    State state_ = State::possible;
    State pendingState_ = State::possible;  ///< The success that waits for required failures, if any.
    std::vector<std::weak_ptr<UIGestureRecognizer>> requiredFailures_;
    std::vector<std::weak_ptr<UIGestureRecognizer>> dependents_;
    std::vector<UITouch> nextTouches_;  ///< Of the gesture after the present one.
    unsigned generation_ = 0;
    unsigned reports_ = 0;  ///< Calls of the action so far.
    int touchesDown_ = 0;
    bool hasGesture_ = false;   ///< A touch has begun since the last return to `possible`.
    bool isReporting_ = false;  ///< The action sees the state that it is called for.
    bool isEnabled_ = true;
};

/// Recognises taps: `numberOfTapsRequired` of them, each at most 0.3 s long and apart, within 10 points (45
/// between taps), made by `numberOfTouchesRequired` fingers. Reports `ended`; several fingers are in the
/// middle of where they pressed.
class UITapGestureRecognizer final : public UIGestureRecognizer {
 public:
    using UIGestureRecognizer::UIGestureRecognizer;

    /// Taps in a row that make the gesture, 1 at first.
    [[nodiscard]] int numberOfTapsRequired() const noexcept { return tapsRequired_; }
    /// Values below 1 count as 1.
    void setNumberOfTapsRequired(int taps) noexcept { tapsRequired_ = taps < 1 ? 1 : taps; }
    /// Fingers that make a tap, 1 at first.
    [[nodiscard]] int numberOfTouchesRequired() const noexcept { return fingersRequired_; }
    /// Values below 1 count as 1.
    void setNumberOfTouchesRequired(int fingers) noexcept { fingersRequired_ = fingers < 1 ? 1 : fingers; }

 protected:
    void touchDidChange(const UITouch& touch) override;
    [[nodiscard]] bool continuesGesture(const UITouch& touch) const override;
    void reset() override;

 private:
    struct Finger {
        int identifier;
        CGPoint start;  ///< Window coordinates.
    };

    void fingerDidPress(const UITouch& touch);
    void fingerDidLift(const UITouch& touch);
    [[nodiscard]] bool hasStayed(const UITouch& touch) const;
    [[nodiscard]] CGPoint start() const;

    int tapsRequired_ = 1;
    int fingersRequired_ = 1;
    int tapsSeen_ = 0;
    std::vector<Finger> fingers_;  ///< Of the present tap, also those that have lifted.
    double startTime_ = 0;         ///< When the present tap began.
    double liftTime_ = 0;          ///< When the last tap ended.
};

/// Recognises one finger held for `minimumPressDuration` within 10 points, by the times at which it was
/// pressed and lifted, however late they are told. Reports `began` when the time is up, then `changed` and
/// `ended`.
class UILongPressGestureRecognizer final : public UIGestureRecognizer {
 public:
    using UIGestureRecognizer::UIGestureRecognizer;

    /// Seconds, 0.5 at first.
    [[nodiscard]] double minimumPressDuration() const noexcept { return duration_; }
    /// Negative and non-finite values count as 0.
    void setMinimumPressDuration(double seconds) noexcept;

 protected:
    void touchDidChange(const UITouch& touch) override;

 private:
    void fingerDidPress(const UITouch& touch);
    void fingerDidLift(const UITouch& touch);
    [[nodiscard]] bool hasStayed(const UITouch& touch) const;

    double duration_ = 0.5;
    CGPoint start_;
    double startTime_ = 0;  ///< Seconds on the port's clock.
};

}  // namespace pelta
