#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include <pelta/Engine/MapRenderer.h>
#include <pelta/Platform/CALayer.h>

#include "Engine/CameraLimits.h"
#include "Engine/CameraPath.h"
#include "Engine/MapViewEvents.h"

namespace pelta {

/// Moves the camera of one map view, within its limits, and reports each change.
///
/// Callbacks may give further commands: the newest command wins. A command that was overtaken while it had to
/// report something first leaves the camera alone, but its events still come in pairs and its completion
/// runs. A change of limits is no command: it overtakes none. Whoever calls a member keeps the object alive
/// until it returns.
class CameraController {
 public:
    using Completion = std::function<void()>;
    using Reason = MLNCameraChangeReason;

    CameraController(const MapViewEvents& events, std::function<void()> requestFrame)
        : events_(events), requestFrame_(std::move(requestFrame)) {}

    /// Shows the present camera in a renderer, which is used until `close`.
    void open(MapRenderer& renderer);
    /// Ends everything without events; the completion of a transition still runs, from the main queue.
    void close();

    [[nodiscard]] const CameraState& state() const noexcept { return state_; }
    /// Where the camera is, or will be at the end of the transition under way.
    [[nodiscard]] CameraState destination() const noexcept {
        return transition_ ? constrain(transition_->target) : state_;
    }
    /// No transition is under way and no limit is still to be applied.
    [[nodiscard]] bool isAtRest() const noexcept { return !transition_ && !needsLimitCheck_; }
    [[nodiscard]] const CameraLimits& limits() const noexcept { return limits_; }
    [[nodiscard]] CGSize viewSize() const noexcept { return viewSize_; }
    /// A wanted camera with what is not finite in it as it is now; the centre counts as one.
    [[nodiscard]] CameraState completed(CameraState wanted) const noexcept;
    /// The nearest camera that the limits allow; what is not finite stays as it is.
    [[nodiscard]] CameraState constrain(const CameraState& wanted) const noexcept;

    /// The view's size, points. A camera that it puts outside of the limits is moved at the next frame.
    void setViewSize(CGSize size);
    /// Changes limits; a camera outside of them is moved at once. A transition goes on within them and
    /// reports it with its next step, or as it ends.
    template <class Change>
    void changeLimits(Change&& change) {
        const auto present = limits_;
        change(limits_);
        if (limits_ != present) {
            limitsDidChange();
        }
    }

    /// Moves the camera before returning. Reports nothing when it is there already.
    void jumpTo(const CameraState& wanted, Reason reason, const Completion& completion = {});
    /// Moves the camera over time; without it (0, negative, non-finite seconds) as `jumpTo`.
    void easeTo(const CameraState& wanted, double duration, const CAMediaTimingFunction& timing,
                Reason reason, Completion completion = {});
    /// Moves the camera along an arc. A negative duration stands for one that suits the distance, 0 and
    /// non-finite ones for `jumpTo`.
    void flyTo(const CameraState& wanted, double duration, Reason reason, Completion completion);

    void gestureWillBegin(Reason reason, bool animated);
    void gestureDidMove(Reason reason);
    void gestureDidEnd(Reason reason, bool animated);

    /// Moves a transition to the time `now`, seconds on the port's clock.
    void advanceTo(double now);

 private:
    struct Transition {
        CameraPath path;
        CameraState target;
        CAMediaTimingFunction timing;
        double startTime;
        double duration;
        Reason reason;
        Completion completion;
        bool isReported = false;  // an is-changing event has carried the camera as it is
    };

    void begin(Transition transition);
    void endTransition();
    void apply(const CameraState& wanted);
    void limitsDidChange();
    void keepWithinLimits();
    void reportWillChange(Reason reason, bool animated) const;
    void reportIsChanging(Reason reason) const;
    void reportDidChange(Reason reason, bool animated) const;

    const MapViewEvents& events_;
    std::function<void()> requestFrame_;
    MapRenderer* renderer_ = nullptr;
    CameraLimits limits_;
    CameraState state_;
    CGSize viewSize_;
    std::optional<Transition> transition_;
    std::uint64_t latestCommand_ = 0;
    bool hasGestureReported_ = false;
    bool needsLimitCheck_ = false;
};

}  // namespace pelta
