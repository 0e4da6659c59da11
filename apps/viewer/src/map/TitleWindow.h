#pragma once

#include <memory>
#include <optional>
#include <string>

#include <pelta/Annotations/PgmInfoWindow.h>
#include <pelta/Annotations/PgmMarker.h>
#include <pelta/View/PgmMapView.h>

namespace pelta::viewer {

/// A speech bubble with one line of text, at one place at a time.
class TitleWindow final : public PgmImageTextDataSource, public std::enable_shared_from_this<TitleWindow> {
 public:
    /// Opens on a marker with its title, or its position where it has none; closes when it is open there
    /// already.
    void toggle(const std::shared_ptr<PgmMarker>& marker);
    /// Opens above a place.
    /// @param height  points between the place and the bubble's tip.
    void open(const std::shared_ptr<PgmMapView>& map, CLLocationCoordinate2D place, std::string text,
              CGFloat height);
    void close();

    [[nodiscard]] std::optional<std::string> title(PgmShape& with) override;

 private:
    std::string text_;
    std::shared_ptr<PgmInfoWindow> window_ = PgmInfoWindow::create();
};

}  // namespace pelta::viewer
