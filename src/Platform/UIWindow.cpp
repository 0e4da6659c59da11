#include <algorithm>

#include <pelta/Platform/PlatformPort.h>
#include <pelta/Platform/UIWindow.h>

namespace pelta {

double UIScreen::scale() {
    return PlatformPort::current().screenScale();
}

bool UIWindow::deliverTouch(const UITouch& touch) {
    const auto self = shared_from_this();  // Callbacks may release the window.
    if (touch.phase == UITouchPhase::began) {
        cancelTouch(touch);
        const auto view = hitTest(touch.location);
        if (!view) {
            return false;
        }
        touches_[touch.identifier] = beginTouch(view);
    }
    const auto found = touches_.find(touch.identifier);
    if (found == touches_.end()) {
        return false;
    }
    const TouchInProgress progress = found->second;
    if (touch.phase == UITouchPhase::ended || touch.phase == UITouchPhase::cancelled) {
        touches_.erase(found);
    }
    deliver(touch, progress);
    return progress.isTaken;
}

UIPointerStyle UIWindow::pointerStyleAt(CGPoint location) {
    auto style = UIPointerStyle::automatic;
    for (auto view = hitTest(location); view && style == UIPointerStyle::automatic;
         view = view->superview()) {
        const CGPoint origin = view->convertPointToWindow({});
        style = view->pointerStyle({location.x - origin.x, location.y - origin.y});
    }
    return style;
}

/// Ends a touch whose end was never delivered, before its identifier is used again.
void UIWindow::cancelTouch(UITouch touch) {
    const auto found = touches_.find(touch.identifier);
    if (found != touches_.end()) {
        const TouchInProgress progress = std::move(found->second);
        touches_.erase(found);
        touch.phase = UITouchPhase::cancelled;
        deliver(touch, progress);
    }
}

UIWindow::TouchInProgress UIWindow::beginTouch(const std::shared_ptr<UIView>& view) {
    TouchInProgress progress;
    progress.view = view;
    progress.isTaken = !std::holds_alternative<SurfaceContent>(view->content());
    std::size_t level = 0;
    for (auto holder = view; holder; holder = holder->superview()) {
        for (const auto& recognizer : holder->gestureRecognizers()) {
            progress.listeners.push_back({recognizer, level});
        }
        if (holder->keepsTouchesFromSuperviews()) {
            break;
        }
        ++level;
    }
    return progress;
}

void UIWindow::deliver(const UITouch& touch, const TouchInProgress& progress) {
    if (const auto view = progress.view.lock()) {
        view->touchDidChange(touch);
    }
    std::optional<std::size_t> claimedLevel;
    for (const auto& [weak, level] : progress.listeners) {
        if (claimedLevel && level > *claimedLevel) {
            break;
        }
        const auto recognizer = weak.lock();
        if (recognizer && recognizer->handleTouch(touch) && !claimedLevel) {
            claimedLevel = level;
        }
    }
    if (claimedLevel) {
        silenceBeyond(*claimedLevel, touch, progress.listeners);
    }
}

void UIWindow::silenceBeyond(std::size_t level, const UITouch& touch,
                             const std::vector<Listener>& listeners) {
    const auto isBeyond = [level](const Listener& listener) { return listener.level > level; };
    const auto found = touches_.find(touch.identifier);
    if (found != touches_.end()) {
        std::erase_if(found->second.listeners, isBeyond);
    }
    UITouch cancelled = touch;
    cancelled.phase = UITouchPhase::cancelled;
    for (const Listener& listener : listeners) {
        const auto recognizer = listener.recognizer.lock();
        if (recognizer && isBeyond(listener)) {
            recognizer->handleTouch(cancelled);
        }
    }
}

}  // namespace pelta
