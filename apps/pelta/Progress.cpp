#include "Progress.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace pelta::command {

namespace {

constexpr std::chrono::milliseconds patience{1000};
constexpr std::chrono::milliseconds interval{100};

constexpr std::string_view clearing = "\r\033[K";
constexpr std::array endingSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE};

/// Takes the line away; then the signal, waiting until this returns, ends the process as it always does.
extern "C" void clearAndEnd(int signal) {
    const auto ignored = write(STDERR_FILENO, clearing.data(), clearing.size());
    static_cast<void>(ignored);
    static_cast<void>(raise(signal));
}

/// Replaces what the ending signals do, where it is still what they did before.
void exchangeAction(void (*before)(int), void (*action)(int)) {
    for (const int signal : endingSignals) {
        struct sigaction current {};
        if (sigaction(signal, nullptr, &current) == 0 && current.sa_handler == before) {
            struct sigaction replacement {};
            replacement.sa_handler = action;
            replacement.sa_flags = static_cast<int>(SA_RESETHAND);
            sigaction(signal, &replacement, nullptr);
        }
    }
}

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
    if (!isShown_) {
        exchangeAction(SIG_DFL, clearAndEnd);
    }
    isShown_ = true;
    std::fprintf(stderr, "%s%.*s", clearing.data(), static_cast<int>(text.size()), text.data());
    std::fflush(stderr);
    due_ = Clock::now() + interval;
}

void Progress::hide() {
    if (isShown_) {
        std::fputs(clearing.data(), stderr);
        exchangeAction(clearAndEnd, SIG_DFL);
        isShown_ = false;
    }
}

}  // namespace pelta::command
