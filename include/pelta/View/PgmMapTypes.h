#pragma once

#include <optional>

#include <pelta/Platform/CoreGraphics.h>
#include <pelta/Platform/UIColor.h>

namespace pelta {

/// How a map view shows and follows the user's location.
enum class PgmUserTrackingMode : unsigned {
    off = 0,                ///< The location is not shown.
    none = 1,               ///< Shown; the camera does not follow.
    follow = 2,             ///< The camera follows the location.
    followWithHeading = 3,  ///< The camera follows the location and turns with the device.
};
/// The mode of that raw value; nothing for 4 and above.
[[nodiscard]] std::optional<PgmUserTrackingMode> PgmUserTrackingModeFromRaw(unsigned raw) noexcept;

/// Where an ornament stands inside a map view's safe area.
enum class PgmPosition : unsigned {
    topLeft = 0,
    topRight = 1,
    bottomLeft = 2,
    bottomRight = 3,
    centerRight = 4
};
/// The position of that raw value; nothing for 5 and above.
[[nodiscard]] std::optional<PgmPosition> PgmPositionFromRaw(unsigned raw) noexcept;

/// Kind of base map, for applications that offer a choice; the map view itself shows what its style says.
enum class PgmMapType : int { standard = 0, satellite = 1, hybrid = 2, terrain = 3, light = 4, dark = 5 };
/// The type of that raw value; nothing but for 0 to 5.
[[nodiscard]] std::optional<PgmMapType> PgmMapTypeFromRaw(int raw) noexcept;

/// A view's settings as an interface description keeps them.
struct PgmViewSettings {
    CGRect frame;                                ///< Place in the superview, points.
    bool isHidden = false;                       ///< Not drawn and not touched.
    CGFloat alpha = 1;                           ///< Opacity, 0 to 1.
    UIColor backgroundColor = UIColor::clear();  ///< Behind the view's content.
    bool isUserInteractionEnabled = true;        ///< Off: touches go to what lies behind.
    /// Off: constraints place the view, not `frame`.
    bool translatesAutoresizingMaskIntoConstraints = true;
};

}  // namespace pelta
