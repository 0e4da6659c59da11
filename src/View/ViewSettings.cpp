#include "View/ViewSettings.h"

#include <pelta/Platform/UIView.h>

namespace pelta {

void applyViewSettings(UIView& view, const PgmViewSettings& settings) {
    view.setIsHidden(settings.isHidden);
    view.setAlpha(settings.alpha);
    view.setBackgroundColor(settings.backgroundColor);
    view.setIsUserInteractionEnabled(settings.isUserInteractionEnabled);
    view.setTranslatesAutoresizingMaskIntoConstraints(settings.translatesAutoresizingMaskIntoConstraints);
}

}  // namespace pelta
