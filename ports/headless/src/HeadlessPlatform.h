#pragma once

#include <atomic>
#include <memory>

#include <pelta/Platform/PlatformPort.h>

#include "DocumentFolder.h"
#include "FolderBundle.h"
#include "ReportedLocations.h"

namespace pelta::headless {

/// What the headless port supplies to the interface kit. Its clock stands still until it is set.
class HeadlessPlatform : public PlatformPort {
 public:
    explicit HeadlessPlatform(double screenScale) { setScreenScale(screenScale); }

    [[nodiscard]] double now() const override { return now_.load(); }
    /// Time never goes back: earlier moments leave the clock where it is.
    void setNow(double now);
    /// When the requested frame is due: at the first sixtieth of a second after the request.
    [[nodiscard]] double requestedFrameTime() const noexcept { return frameTime_; }
    /// Values that are not above 0 are ignored.
    void setScreenScale(double scale);
    [[nodiscard]] DocumentFolder& documents() noexcept { return documents_; }
    [[nodiscard]] ReportedLocations& locations() noexcept { return locations_; }

    /// Nothing to do: whoever lets the clock advance asks the queue when its next task is due.
    void wakeMainQueueAt(double) override {}
    void requestFrame() override;
    /// Touches are delivered as they are made.
    void afterTouchesMadeBy(double, std::function<void()> work) override { work(); }
    [[nodiscard]] double screenScale() const override { return screenScale_; }
    [[nodiscard]] std::optional<UIImage> decodeImage(std::span<const std::uint8_t> bytes,
                                                     double scale) const override;
    [[nodiscard]] std::unique_ptr<GraphicsContext> makeGraphicsContext(int pixelWidth, int pixelHeight,
                                                                       double scale) const override;
    [[nodiscard]] CGSize measureText(std::string_view text, const UIFont& font) const override;
    void fetchText(const std::string& address, std::function<void(FetchResult)> completion) override;
    [[nodiscard]] Bundle& applicationBundle() override { return bundle_; }
    [[nodiscard]] LocationSource& locationSource() override { return locations_; }

 private:
    std::atomic<double> now_{0};
    double frameTime_ = 0;
    double screenScale_ = 1;
    DocumentFolder documents_;
    FolderBundle bundle_{documents_};
    ReportedLocations locations_;
};

}  // namespace pelta::headless
