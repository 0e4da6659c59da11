/// Performs random operations on maps and checks what must hold. `--help` tells how to use it.

#include <charconv>
#include <cstdio>
#include <cstring>
#include <map>
#include <optional>
#include <string_view>

#include "Attempt.h"

namespace {

using namespace pelta::random;

constexpr const char* help = R"(usage: pelta_random [--seeds N] [--from S] [--seed S] [--whole]

Performs random operations on maps without a window and checks, whenever everything is at rest, what must hold then.
Each seed is a run of its own, the same on every machine.

  --seeds N   how many seeds, 300 if not given
  --from S    the first of them, 1 if not given
  --seed S    this seed alone
  --whole     do not make failing runs smaller

Of each fault the first run is made smaller and listed. Exit codes: 0 no fault, 1 faults, 2 wrong use.
)";

struct Settings {
    std::uint64_t first = 1;
    std::uint64_t count = 300;
    bool isShrinking = true;
};

std::optional<Settings> readSettings(int count, char** words) {
    Settings settings;
    for (int i = 1; i < count; ++i) {
        const std::string_view word = words[i];
        if (word == "--whole") {
            settings.isShrinking = false;
            continue;
        }
        std::uint64_t number = 0;
        const char* value = i + 1 < count ? words[++i] : "";
        const char* const end = value + std::strlen(value);
        if (std::from_chars(value, end, number).ptr != end || value == end) {
            return std::nullopt;
        }
        if (word != "--seeds" && word != "--from" && word != "--seed") {
            return std::nullopt;
        }
        (word == "--seeds" ? settings.count : settings.first) = number;
        settings.count = word == "--seed" ? 1 : settings.count;
    }
    return settings;
}

std::uint32_t endOrderOf(std::uint64_t seed) {
    constexpr std::uint64_t orders = 6;
    return static_cast<std::uint32_t>(seed % orders);
}

void tellFault(std::uint64_t seed, const Outcome& outcome, bool isShrinking) {
    const Operations all = drawOperations(seed);
    const Operations operations = isShrinking ? shrink(all, endOrderOf(seed), outcome.fault) : all;
    std::printf("%zu of its %zu operations do it; again: pelta_random --seed %llu\n", operations.size(),
                all.size(), static_cast<unsigned long long>(seed));
    for (std::size_t i = 0; i < operations.size(); ++i) {
        std::printf("  %3zu  %s\n", i + 1, describe(operations[i]).c_str());
    }
    const Outcome small = attempt(operations, endOrderOf(seed));
    std::printf("%s\n", (small.fault.empty() ? outcome : small).report.c_str());
}

}  // namespace

int main(int count, char** words) {
    const auto settings = readSettings(count, words);
    if (!settings) {
        std::fputs(help, stderr);
        return 2;
    }
    prepareAttempts();
    std::map<std::string, std::uint64_t> seedsOfFaults;
    for (std::uint64_t seed = settings->first; seed < settings->first + settings->count; ++seed) {
        const Outcome outcome = attempt(drawOperations(seed), endOrderOf(seed));
        if (outcome.fault.empty()) {
            continue;
        }
        std::printf("seed %llu: %s\n", static_cast<unsigned long long>(seed), outcome.fault.c_str());
        if (++seedsOfFaults[outcome.fault] == 1) {
            tellFault(seed, outcome, settings->isShrinking);
        }
        std::fflush(stdout);
    }
    for (const auto& [fault, seeds] : seedsOfFaults) {
        std::printf("%llu of %llu seeds: %s\n", static_cast<unsigned long long>(seeds),
                    static_cast<unsigned long long>(settings->count), fault.c_str());
    }
    return seedsOfFaults.empty() ? 0 : 1;
}
