#include "Progress.h"

#include <cstdio>
#include <unistd.h>

namespace pelta::command {

namespace {

constexpr std::chrono::milliseconds patience{1000};
constexpr std::chrono::milliseconds interval{100};

}  // namespace

Progress::Progress()
    : isTerminal_(isatty(STDERR_FILENO) == 1 && isatty(STDOUT_FILENO) == 0), due_(Clock::now() + patience) {}

Progress::~Progress() {
    hide();
}

bool Progress::isDue() const {
    return isTerminal_ && Clock::now() >= due_;
}

void Progress::show(std::string_view text) {
    std::fprintf(stderr, "\r\033[K%.*s", static_cast<int>(text.size()), text.data());
    std::fflush(stderr);
    isShown_ = true;
    due_ = Clock::now() + interval;
}

void Progress::hide() {
    if (isShown_) {
        std::fputs("\r\033[K", stderr);
        isShown_ = false;
    }
}

}  // namespace pelta::command
