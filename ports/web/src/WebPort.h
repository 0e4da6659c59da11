#pragma once

#include <memory>
#include <set>
#include <vector>

#include <pelta/Platform/PlatformPort.h>

#include "JsFunction.h"
#include "WebEnginePort.h"
#include "WebLocationSource.h"

namespace pelta {

class UIWindow;
class WebWindow;

/// The web port: the page's clock, frames, canvas, network and sensors behind `PlatformPort`, and the windows
/// that it shows. There is one, made on first use and never destroyed, as the page itself.
class WebPort final : public PlatformPort {
 public:
    [[nodiscard]] static WebPort& shared();

    [[nodiscard]] double now() const override;
    void wakeMainQueueAt(double time) override;
    void requestFrame() override;
    void afterTouchesMadeBy(double time, std::function<void()> work) override;
    [[nodiscard]] double screenScale() const override { return screenScale_; }
    [[nodiscard]] std::optional<UIImage> decodeImage(std::span<const std::uint8_t> bytes,
                                                     double scale) const override;
    [[nodiscard]] std::unique_ptr<GraphicsContext> makeGraphicsContext(int pixelWidth, int pixelHeight,
                                                                       double scale) const override;
    [[nodiscard]] CGSize measureText(std::string_view text, const UIFont& font) const override;
    void fetchText(const std::string& address, std::function<void(FetchResult)> completion) override;
    [[nodiscard]] Bundle& applicationBundle() override;
    [[nodiscard]] LocationSource& locationSource() override { return locationSource_; }

    /// Opens a window that fills an element of the page.
    [[nodiscard]] UIWindow& openWindow(const emscripten::val& element);
    /// Shows what has changed in the view trees of the windows now; maps call it when they draw outside of
    /// our own frames.
    void present();
    /// Keeps a place for our next frame in front of what others are about to ask for. Frames run in the order
    /// in which they were asked for, and what ours change is to be drawn in that very frame, and only once.
    void stayAhead();

 private:
    WebPort();
    void runFrame();
    void wake();
    void readScreenScale();
    void watchScreenScale();
    void watchReducedMotion();

    WebEnginePort enginePort_;
    WebLocationSource locationSource_;
    std::vector<std::unique_ptr<WebWindow>> windows_;
    std::vector<std::function<void()>> waitingForTouches_;
    std::multiset<double> wakeTimes_;  ///< One for each timer of the browser that is running.
    /// Pixels a point. Each shape asks for it, and looking at the browser's window takes long.
    double screenScale_ = 1;
    std::unique_ptr<EventListener> scaleListener_;
    std::unique_ptr<EventListener> motionListener_;
    unsigned long presentedRevision_ = 0;
    bool isFrameRequested_ = false;
    int animationFrame_ = 0;  ///< The browser's name for the next frame; 0 when none is to come.
};

}  // namespace pelta
