#include "Require.h"

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace pelta::fuzz {

namespace {

int reports = STDERR_FILENO;

}  // namespace

void keepReports() {
    reports = dup(STDERR_FILENO);
}

void require(bool holds, std::string_view property, std::string_view detail) {
    if (holds) {
        return;
    }
    dprintf(reports, "Does not hold: %.*s\n%.*s%s", static_cast<int>(property.size()), property.data(),
            static_cast<int>(detail.size()), detail.data(), detail.empty() ? "" : "\n");
    std::abort();
}

}  // namespace pelta::fuzz
