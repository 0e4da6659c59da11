#include "Require.h"

#include <algorithm>
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

void requireTidy(std::string_view message) {
    const bool isPrintable = std::none_of(message.begin(), message.end(), [](char byte) {
        return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
    });
    require(!message.empty() && isPrintable, "a message is one line of text", message);
}

}  // namespace pelta::fuzz
