#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include <pelta/Platform/Bundle.h>
#include <pelta/Platform/CoreLocation.h>
#include <pelta/Platform/UIGraphics.h>

namespace pelta {

/// A fetched document, or why there is none.
struct FetchResult {
    bool isOk = false;    ///< False: `text` is the reason.
    std::string text;     ///< UTF-8 document when `isOk`.
    std::string message;  ///< What went wrong otherwise, naming the address.
};

/// What a port supplies to the interface kit. One port is installed at a time; all calls come on the main
/// thread unless said otherwise.
///
/// A port also calls back: `FrameLoop::run` for each requested frame, `MainQueue::runDue` when a wake-up that
/// it was asked for is due, `UIWindow::deliverTouch` for pointer events, and it shows the view tree of its
/// windows, after `layoutIfNeeded`, whenever `UIView::treeRevision` has grown since it last did.
class PlatformPort {
 public:
    virtual ~PlatformPort() = default;

    /// Seconds since some fixed moment; never goes back. Any thread.
    [[nodiscard]] virtual double now() const = 0;
    /// Asks that `MainQueue::runDue` be called at `time` (seconds on the clock of `now`), or as soon as
    /// possible when that has passed. Earlier requests stay in force. Any thread; `MainQueue` may not be
    /// called from inside this call.
    virtual void wakeMainQueueAt(double time) = 0;
    /// Asks for one call of `FrameLoop::run` at the next frame, never from inside this call.
    virtual void requestFrame() = 0;
    /// Runs `work` on the main thread once every touch made by `time` (seconds on the clock of `now`), which
    /// has come, has been delivered; at once where none can be waiting. While the thread is busy touches
    /// wait, and a timer may run before them: what a timer decides about a gesture goes through here.
    virtual void afterTouchesMadeBy(double time, std::function<void()> work) = 0;

    /// Pixels a point of the main screen, above 0.
    [[nodiscard]] virtual double screenScale() const = 0;
    /// Decodes a PNG; nothing when it cannot be read.
    [[nodiscard]] virtual std::optional<UIImage> decodeImage(std::span<const std::uint8_t> bytes,
                                                             double scale) const = 0;
    /// An empty bitmap to draw on, at least 1 × 1 pixel and at most 16384 on a side.
    [[nodiscard]] virtual std::unique_ptr<GraphicsContext> makeGraphicsContext(int pixelWidth,
                                                                               int pixelHeight,
                                                                               double scale) const = 0;
    /// Extent of one line of UTF-8 text, points.
    [[nodiscard]] virtual CGSize measureText(std::string_view text, const UIFont& font) const = 0;

    /// Fetches a text document by address, absolute or relative to the application's place, and answers later
    /// on the main thread, exactly once.
    virtual void fetchText(const std::string& address, std::function<void(FetchResult)> completion) = 0;
    /// The application's own resources.
    [[nodiscard]] virtual Bundle& applicationBundle() = 0;
    /// The user's position.
    [[nodiscard]] virtual LocationSource& locationSource() = 0;

    /// The installed port. Calling it before one is installed is a programming error that stops the process.
    [[nodiscard]] static PlatformPort& current();
    /// True while a port is installed. Any thread.
    [[nodiscard]] static bool isInstalled() noexcept;
    /// Installs a port, or none, for the whole process; the caller keeps ownership and removes it (null)
    /// before it goes away. The calling thread becomes the main thread.
    static void install(PlatformPort* port);
};

}  // namespace pelta
