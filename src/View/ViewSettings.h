#pragma once

#include <pelta/View/PgmMapTypes.h>

namespace pelta {

class UIView;

/// Gives a view all settings but its frame, which it is made with.
void applyViewSettings(UIView& view, const PgmViewSettings& settings);

}  // namespace pelta
