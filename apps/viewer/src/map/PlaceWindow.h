#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string_view>

#include <pelta/Annotations/PgmInfoWindow.h>
#include <pelta/Platform/UIControls.h>
#include <pelta/View/PgmMapView.h>

#include "map/PlaceBubble.h"

namespace pelta::viewer {

/// An info window with the coordinates of a place in all systems, and a button for each that copies it. The
/// window is a picture on the map; the buttons are views that stand over it and go along as the camera moves.
class PlaceWindow final : public PgmImageViewDataSource, public std::enable_shared_from_this<PlaceWindow> {
 public:
    using Copy = std::function<void(std::string_view text)>;

    /// @param map   held weakly.
    /// @param copy  is given the numbers of the row whose button was pressed.
    PlaceWindow(const std::shared_ptr<PgmMapView>& map, Copy copy);

    /// Opens the window at a place, away from where it was.
    void open(CLLocationCoordinate2D place);
    void close();
    [[nodiscard]] bool isOpen() const noexcept { return bubble_ != nullptr; }
    /// To be called when the camera has moved.
    void cameraDidMove();

    [[nodiscard]] std::shared_ptr<UIView> view(PgmShape& with) override;

 private:
    void addButtons(PgmMapView& map);
    void didPress(std::size_t row);

    std::weak_ptr<PgmMapView> map_;
    Copy copy_;
    CLLocationCoordinate2D place_;
    std::shared_ptr<PgmInfoWindow> window_;
    std::shared_ptr<PlaceBubble> bubble_;
    std::array<std::shared_ptr<UIButton>, 5> buttons_;
};

}  // namespace pelta::viewer
