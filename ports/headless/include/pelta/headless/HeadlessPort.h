#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include <pelta/Platform/CoreGraphics.h>
#include <pelta/Platform/CoreLocation.h>
#include <pelta/Platform/UITouch.h>
#include <pelta/Platform/UIWindow.h>

namespace pelta {

/// The headless port: maps without a window, on a clock that the caller advances.
///
/// Making one installs it for the process and makes the calling thread the main thread; destroying it
/// uninstalls it, and with it go waiting tasks. Views and maps must be released before it. One at a time.
/// Nothing happens by itself: frames, timers, transitions and fetched documents take place inside `advance`,
/// `runFrame` and `runUntilIdle`. Callbacks that run inside one of these must not call them; such calls are
/// ignored.
///
/// The map has no pixels but knows what is drawn where: the perspective is exact, and feature queries see
/// icons and titles by their boxes, lines by their width and areas by their inside, as the last frame left
/// them. Three things differ from a map that is painted. Symbols never give way to each other, whatever their
/// overlap flags say. What is transparent is still found. And the style document's own layers have no data:
/// they are in the style, so that shapes find their place among them, but queries do not find their features.
class HeadlessPort {
 public:
    /// @param screenScale  pixels a point, 0.01 to 100; other values count as 1.
    explicit HeadlessPort(double screenScale = 2);
    ~HeadlessPort();
    HeadlessPort(const HeadlessPort&) = delete;
    HeadlessPort& operator=(const HeadlessPort&) = delete;

    /// @name Clock
    /// @{
    /// Seconds since the port was made.
    [[nodiscard]] double now() const noexcept;
    /// Lets time pass: main-queue tasks run at their due time and requested frames at the first sixtieth of a
    /// second after the request, in order, until `seconds` are over. The views of this port's windows are
    /// laid out at every frame. Negative and non-finite values count as 0, which still runs what is due.
    void advance(double seconds);
    /// Runs one frame at the present moment, requested or not, and what is due on the main queue.
    void runFrame();
    /// Lets time pass until nothing is requested, waiting or under way.
    /// @return false when that takes longer than `limit` seconds of the clock.
    bool runUntilIdle(double limit = 30);
    /// @}

    /// @name Surroundings
    /// @{
    /// A window of the given size in points; keep it as long as its views should live.
    [[nodiscard]] std::shared_ptr<UIWindow> makeWindow(CGSize size);
    /// Changes the screen's scale for everything drawn from now on; values beyond 0.01 to 100 are ignored.
    void setScreenScale(double scale);
    /// Answers fetches of an address with a document, from now on.
    void serveDocument(std::string address, std::string text);
    /// Folder against which other addresses without a scheme (and `file:` ones) are read, and application
    /// pictures NAME.png, NAME@2x.png, NAME@3x.png are found; the current folder at first.
    void setResourceFolder(std::filesystem::path folder);
    /// @}

    /// @name Input
    /// @{
    /// Delivers one touch event to a window at the present moment.
    void touch(UIWindow& window, int identifier, UITouchPhase phase, CGPoint location);
    /// Presses and lifts one finger at a point, 50 ms apart on the clock.
    void tap(UIWindow& window, CGPoint location);
    /// Reports a position or a heading as the device would; nobody hears it while no map shows the user's
    /// location. Coordinates that are not valid, and headings that are not finite, are dropped with a log
    /// line.
    void reportLocation(const CLLocation& location);
    /// Reports where the device points.
    void reportHeading(const CLHeading& heading);
    /// Reports that the position cannot be had.
    /// @param reason  for the log.
    void reportLocationFailure(CLLocationFailure failure, std::string_view reason = "as the test says");
    /// True while a map listens.
    [[nodiscard]] bool isLocationObserved() const;
    /// @}

 private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace pelta
