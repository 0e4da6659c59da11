#include "Attempt.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Checks.h"
#include "World.h"

namespace pelta::random {

namespace {

/// Of processor time, so that a busy machine makes no faults.
constexpr rlim_t longestSeconds = 20;

[[noreturn]] void runToTheEnd(const Operations& operations, std::uint32_t endOrder) {
    const rlimit limit{longestSeconds, longestSeconds + 5};
    setrlimit(RLIMIT_CPU, &limit);
    const rlimit noDumps{0, 0};
    setrlimit(RLIMIT_CORE, &noDumps);
    {
        World world;
        for (const Operation& operation : operations) {
            world.perform(operation);
        }
        world.settle();
        world.end(endOrder);
    }
    // The ordinary end, at which leaks are looked for.
    std::exit(0);
}

std::string contentOf(int file) {
    std::string text(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
    const ssize_t count = pread(file, text.data(), text.size(), 0);
    text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return text;
}

/// The line that holds the first of a text; empty when none does.
std::string lineWith(const std::string& report, std::string_view text) {
    const auto place = report.find(text);
    if (place == std::string::npos) {
        return {};
    }
    const auto before = report.rfind('\n', place);
    const std::size_t start = before == std::string::npos ? 0 : before + 1;
    return report.substr(start, report.find('\n', place) - start);
}

/// " in pelta::Class::member": where in the library a report's trace begins.
std::string placeInLibrary(const std::string& report) {
    constexpr std::string_view mark = " in pelta::";
    constexpr std::string_view ownMark = " in pelta::random::";
    for (auto place = report.find(mark); place != std::string::npos; place = report.find(mark, place + 1)) {
        if (report.compare(place, ownMark.size(), ownMark) != 0) {
            return report.substr(place, report.find_first_of("(\n", place) - place);
        }
    }
    return {};
}

/// The one line of a report that tells what went wrong, the same for the same fault.
std::string faultIn(const std::string& report, int status) {
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGXCPU) {
        return "takes longer than " + std::to_string(longestSeconds) + " s";
    }
    for (const char* mark : {"Broken rule: ", "Fatal error: ", "runtime error: "}) {
        if (std::string line = lineWith(report, mark); !line.empty()) {
            return line;
        }
    }
    if (report.find("detected memory leaks") != std::string::npos) {
        return "leak" + placeInLibrary(report);
    }
    constexpr std::string_view mark = "ERROR: AddressSanitizer: ";
    if (const auto place = report.find(mark); place != std::string::npos) {
        const std::size_t start = place + mark.size();
        return report.substr(start, report.find_first_of(" \n", start) - start) + placeInLibrary(report);
    }
    return WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status))
                               : "exit code " + std::to_string(WEXITSTATUS(status));
}

/// Enough for some hundred operations; a slow fault must not keep everybody waiting.
constexpr int mostAttempts = 250;

Operations without(const Operations& operations, std::size_t first, std::size_t count) {
    Operations rest(operations.begin(), operations.begin() + static_cast<std::ptrdiff_t>(first));
    const std::size_t end = std::min(first + count, operations.size());
    rest.insert(rest.end(), operations.begin() + static_cast<std::ptrdiff_t>(end), operations.end());
    return rest;
}

}  // namespace

Outcome attempt(const Operations& operations, std::uint32_t endOrder) {
    std::fflush(nullptr);
    const int file = memfd_create("report", 0);
    const pid_t child = fork();
    if (child == 0) {
        dup2(file, STDOUT_FILENO);
        dup2(file, STDERR_FILENO);
        runToTheEnd(operations, endOrder);
    }
    int status = 0;
    waitpid(child, &status, 0);
    Outcome outcome;
    outcome.report = contentOf(file);
    close(file);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        outcome.fault = faultIn(outcome.report, status);
    }
    return outcome;
}

Operations shrink(Operations operations, std::uint32_t endOrder, const std::string& fault) {
    int left = mostAttempts;
    const auto stillFails = [&](const Operations& fewer) {
        --left;
        return attempt(fewer, endOrder).fault == fault;
    };
    // Halves first, then ever smaller pieces, from the end, where what happened after the cause is left out
    // at once.
    for (std::size_t piece = std::max<std::size_t>(operations.size() / 2, 1);; piece /= 2) {
        bool hasShrunk = false;
        for (std::size_t end = operations.size(); end > 0 && left > 0;) {
            const std::size_t first = end > piece ? end - piece : 0;
            Operations fewer = without(operations, first, end - first);
            if (stillFails(fewer)) {
                operations = std::move(fewer);
                hasShrunk = true;
            }
            end = first;
        }
        if (piece == 1 && (!hasShrunk || left <= 0)) {
            return operations;
        }
        piece = hasShrunk && piece == 1 ? 2 : piece;
    }
}

void prepareAttempts() {
    HeadlessPort port;
    static_cast<void>(sizeOfText("가a", UIFont::systemFont(12)));
    static_cast<void>(PgmImage::markerImageRed());
}

}  // namespace pelta::random

/// What the leak checker must not report: the font library keeps its configuration for the whole process
/// behind pointers stored as offsets, which the checker cannot follow. The names are the checkers' own.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __asan_default_options();

extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}

/// Short traces make a run faster. Freed memory is overwritten, since the standard library's own code, such
/// as the step from one element of a map to the next, is not watched and would go on reading what was there.
extern "C" const char* __asan_default_options() {
    return "malloc_context_size=12:max_free_fill_size=1000:max_allocation_size_mb=2000:print_suppressions=0";
}
// NOLINTEND(bugprone-reserved-identifier)
