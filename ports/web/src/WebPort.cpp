#include "WebPort.h"

#include <algorithm>
#include <emscripten.h>
#include <emscripten/html5.h>
#include <utility>

#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/Frames.h>

#include "CanvasContext.h"
#include "CssText.h"
#include "LayerNode.h"
#include "PngDecoder.h"
#include "TextFetch.h"
#include "WebBundle.h"
#include "WebWindow.h"

using emscripten::val;

namespace pelta {

WebPort& WebPort::shared() {
    static WebPort* const port = [] {
        static WebPort instance;
        PlatformPort::install(&instance);
        EnginePort::install(&instance.enginePort_);
        instance.watchScreenScale();
        instance.watchReducedMotion();
        return &instance;
    }();
    return *port;
}

WebPort::WebPort() = default;

double WebPort::now() const {
    return emscripten_get_now() / 1000;
}

void WebPort::wakeMainQueueAt(double time) {
    const double due = std::max(time, now());
    wakeTimes_.insert(due);
    emscripten_set_timeout([](void* port) { static_cast<WebPort*>(port)->wake(); }, (due - now()) * 1000,
                           this);
}

void WebPort::wake() {
    // The browser may call a little early, and on a coarse clock; what the timer was set for is due anyway.
    const double due = wakeTimes_.extract(wakeTimes_.begin()).value();
    MainQueue::runDue(std::max(due, now()));
}

void WebPort::requestFrame() {
    isFrameRequested_ = true;
    stayAhead();
}

void WebPort::afterTouchesMadeBy(double time, std::function<void()> work) {
    // The browser does not tell whether touches wait. Those of a finger come from another process and, when
    // the thread has been busy, arrive some frames after it has become free.
    constexpr double busyDelay = 0.05;  // Seconds late at which the thread counts as having been busy.
    constexpr double catchUp = 0.1;     // Seconds of a free thread in which they arrive.
    if (now() - time > busyDelay) {
        MainQueue::asyncAfter(catchUp, [this, free = now() + catchUp, work = std::move(work)] {
            afterTouchesMadeBy(free, work);
        });
        return;
    }
    waitingForTouches_.push_back(std::move(work));
    if (waitingForTouches_.size() > 1) {
        return;
    }
    // Moves of the last moment come right before the next frame.
    const auto run = [](double, void* port) {
        for (const auto& each : std::exchange(static_cast<WebPort*>(port)->waitingForTouches_, {})) {
            each();
        }
        return EM_BOOL{EM_FALSE};
    };
    emscripten_request_animation_frame(run, this);
}

void WebPort::stayAhead() {
    if (animationFrame_ == 0) {
        const auto run = [](double, void* port) {
            static_cast<WebPort*>(port)->runFrame();
            return EM_BOOL{EM_FALSE};
        };
        animationFrame_ = emscripten_request_animation_frame(run, this);
    }
}

void WebPort::runFrame() {
    animationFrame_ = 0;
    if (!std::exchange(isFrameRequested_, false)) {
        return;
    }
    stayAhead();
    FrameLoop::run(now());
    present();
}

void WebPort::present() {
    const unsigned long revision = UIView::treeRevision();
    if (std::exchange(presentedRevision_, revision) != revision) {
        for (const auto& window : windows_) {
            window->present();
        }
    }
}

UIWindow& WebPort::openWindow(const val& element) {
    windows_.push_back(std::make_unique<WebWindow>(element));
    return windows_.back()->window();
}

void WebPort::readScreenScale() {
    const auto ratio = val::global("devicePixelRatio").as<double>();
    screenScale_ = ratio > 0 ? ratio : 1;
}

void WebPort::watchScreenScale() {
    readScreenScale();
    const val query =
        val::global("matchMedia")(std::string("(resolution: " + cssNumber(screenScale_) + "dppx)"));
    scaleListener_ = std::make_unique<EventListener>(query, "change", [this](const val&) {
        readScreenScale();
        for (const auto& window : windows_) {
            window->screenScaleDidChange();
        }
        watchScreenScale();
    });
}

void WebPort::watchReducedMotion() {
    motionListener_ = std::make_unique<EventListener>(reducedMotionQuery(), "change", [this](const val&) {
        for (const auto& window : windows_) {
            window->present();
        }
    });
}

std::optional<UIImage> WebPort::decodeImage(std::span<const std::uint8_t> bytes, double scale) const {
    return decodePng(bytes, scale);
}

std::unique_ptr<GraphicsContext> WebPort::makeGraphicsContext(int pixelWidth, int pixelHeight,
                                                              double scale) const {
    return std::make_unique<CanvasContext>(pixelWidth, pixelHeight, scale);
}

CGSize WebPort::measureText(std::string_view text, const UIFont& font) const {
    return measureCanvasText(text, font);
}

void WebPort::fetchText(const std::string& address, std::function<void(FetchResult)> completion) {
    pelta::fetchText(address, std::move(completion));
}

Bundle& WebPort::applicationBundle() {
    return WebBundle::shared();
}

}  // namespace pelta
