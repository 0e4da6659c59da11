#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/Frames.h>
#include <pelta/Platform/Log.h>
#include <pelta/Platform/Make.h>
#include <pelta/headless/HeadlessPort.h>

#include "HeadlessPlatform.h"
#include "MapEnginePort.h"

namespace pelta {

namespace {

constexpr double clockTolerance = 1e-9;  // Seconds; sums of steps miss their target by less.
constexpr double tapDuration = 0.05;     // Seconds.
/// Turns of the main queue at one moment, after which the clock moves on a little: work that queues itself
/// again and again must not stop time.
constexpr int maximumTurnsAtOneMoment = 1000;
constexpr double pauseAfterManyTurns = 0.001;  // Seconds.

double secondsOrZero(double seconds) noexcept {
    return std::isfinite(seconds) ? std::max(seconds, 0.0) : 0;
}

}  // namespace

class HeadlessPort::Implementation {
 public:
    explicit Implementation(double screenScale) : platform(screenScale) {
        if (PlatformPort::isInstalled()) {
            fatalError("A port is installed already; destroy it before making another.");
        }
        PlatformPort::install(&platform);
        EnginePort::install(&enginePort_);
    }

    ~Implementation() {
        MainQueue::clear();
        FrameLoop::clear();
        EnginePort::install(nullptr);
        PlatformPort::install(nullptr);
    }

    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;

    [[nodiscard]] std::shared_ptr<UIWindow> makeWindow(CGSize size) {
        auto window = make<UIWindow>(CGRect{{}, size});
        windows_.push_back(window);
        return window;
    }

    void advance(double seconds) {
        const double end = platform.now() + seconds;
        runGuarded([this, end] {
            while (step(end)) {
            }
            platform.setNow(end);
        });
    }

    void runFrame() {
        runGuarded([this] { runFrameNow(); });
    }

    [[nodiscard]] bool runUntilIdle(double limit) {
        const double end = platform.now() + limit;
        runGuarded([this, end] {
            while (step(end)) {
            }
        });
        if (!isWaiting()) {
            return true;
        }
        platform.setNow(end);
        return false;
    }

    headless::HeadlessPlatform platform;

 private:
    /// Runs work that lets time pass; calls from within such work are ignored.
    template <class Work>
    void runGuarded(Work work) {
        if (!isRunning_) {
            isRunning_ = true;
            work();
            isRunning_ = false;
        }
    }

    [[nodiscard]] static bool isWaiting() { return FrameLoop::isRequested() || MainQueue::nextDue(); }

    /// Does what is due next and not after `end`, setting the clock to its time.
    /// @return false when there is nothing.
    bool step(double end) {
        const double frame = FrameLoop::isRequested() ? platform.requestedFrameTime()
                                                      : std::numeric_limits<double>::infinity();
        const double task = MainQueue::nextDue().value_or(std::numeric_limits<double>::infinity());
        const double next = std::min(frame, task);
        if (next > end + clockTolerance) {
            return false;
        }
        if (!moveClockTo(next, end)) {
            return false;
        }
        if (frame <= task) {
            runFrameNow();
        } else {
            MainQueue::runDue(platform.now());
        }
        return true;
    }

    /// @return false when the clock has to move on beyond `end`, which is left to whoever advances it next.
    bool moveClockTo(double time, double end) {
        const double before = platform.now();
        platform.setNow(time);
        turnsAtThisMoment_ = platform.now() > before ? 0 : turnsAtThisMoment_ + 1;
        if (turnsAtThisMoment_ <= maximumTurnsAtOneMoment) {
            return true;
        }
        turnsAtThisMoment_ = 0;
        if (before + pauseAfterManyTurns > end) {
            return false;
        }
        platform.setNow(before + pauseAfterManyTurns);
        return true;
    }

    void runFrameNow() {
        layoutWindows();
        FrameLoop::run(platform.now());
        layoutWindows();
    }

    void layoutWindows() {
        std::erase_if(windows_, [](const auto& window) { return window.expired(); });
        for (const auto& weak : std::vector(windows_)) {
            if (const auto window = weak.lock()) {
                window->layoutIfNeeded();
            }
        }
    }

    HeadlessEnginePort enginePort_;
    std::vector<std::weak_ptr<UIWindow>> windows_;
    int turnsAtThisMoment_ = 0;
    bool isRunning_ = false;
};

HeadlessPort::HeadlessPort(double screenScale)
    : implementation_(std::make_unique<Implementation>(screenScale)) {}

HeadlessPort::~HeadlessPort() = default;

double HeadlessPort::now() const noexcept {
    return implementation_->platform.now();
}

void HeadlessPort::advance(double seconds) {
    implementation_->advance(secondsOrZero(seconds));
}

void HeadlessPort::runFrame() {
    implementation_->runFrame();
}

bool HeadlessPort::runUntilIdle(double limit) {
    return implementation_->runUntilIdle(secondsOrZero(limit));
}

std::shared_ptr<UIWindow> HeadlessPort::makeWindow(CGSize size) {
    return implementation_->makeWindow(size);
}

void HeadlessPort::setScreenScale(double scale) {
    implementation_->platform.setScreenScale(scale);
}

void HeadlessPort::serveDocument(std::string address, std::string text) {
    implementation_->platform.documents().serve(std::move(address), std::move(text));
}

void HeadlessPort::setResourceFolder(std::filesystem::path folder) {
    implementation_->platform.documents().setFolder(std::move(folder));
}

// NOLINTNEXTLINE(readability-make-member-function-const): it sets off whatever the touched views do.
void HeadlessPort::touch(UIWindow& window, int identifier, UITouchPhase phase, CGPoint location) {
    window.deliverTouch({identifier, phase, location, now()});
}

void HeadlessPort::tap(UIWindow& window, CGPoint location) {
    const auto held = window.shared_from_this();  // The touch may release the window.
    touch(window, 0, UITouchPhase::began, location);
    advance(tapDuration);
    touch(window, 0, UITouchPhase::ended, location);
}

void HeadlessPort::reportLocation(const CLLocation& location) {
    implementation_->platform.locations().report(location);
}

void HeadlessPort::reportHeading(const CLHeading& heading) {
    implementation_->platform.locations().report(heading);
}

void HeadlessPort::reportLocationFailure(CLLocationFailure failure, std::string_view reason) {
    implementation_->platform.locations().report(failure, reason);
}

bool HeadlessPort::isLocationObserved() const {
    return implementation_->platform.locations().isObserved();
}

}  // namespace pelta
