#include <pelta/View/DefaultStyle.h>

namespace pelta {

std::string_view defaultStyleURL() noexcept {
    return PELTA_DEFAULT_STYLE_URL;
}

}  // namespace pelta
