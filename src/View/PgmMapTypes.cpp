#include <pelta/View/PgmMapTypes.h>

namespace pelta {

std::optional<PgmUserTrackingMode> PgmUserTrackingModeFromRaw(unsigned raw) noexcept {
    return raw <= 3 ? std::optional(static_cast<PgmUserTrackingMode>(raw)) : std::nullopt;
}

std::optional<PgmPosition> PgmPositionFromRaw(unsigned raw) noexcept {
    return raw <= 4 ? std::optional(static_cast<PgmPosition>(raw)) : std::nullopt;
}

std::optional<PgmMapType> PgmMapTypeFromRaw(int raw) noexcept {
    return raw >= 0 && raw <= 5 ? std::optional(static_cast<PgmMapType>(raw)) : std::nullopt;
}

}  // namespace pelta
