#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <pelta/Platform/Log.h>

namespace pelta {

namespace {

std::atomic<bool> loggerEnabled{false};

/// "File.cpp:12" for a source path.
std::string placeOf(std::string_view file, int line) {
    const auto separator = file.find_last_of("/\\");
    if (separator != std::string_view::npos) {
        file.remove_prefix(separator + 1);
    }
    return std::string(file) + ":" + std::to_string(line);
}

void writeLine(std::FILE* stream, std::string line) {
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stream);
    std::fflush(stream);
}

}  // namespace

void setIsLoggerEnabled(bool enabled) noexcept {
    loggerEnabled.store(enabled);
}

bool isLoggerEnabled() noexcept {
    return loggerEnabled.load();
}

void dPrint(std::string_view text, std::string_view file, int line) {
    if (isLoggerEnabled()) {
        writeLine(stdout, "📌 [" + placeOf(file, line) + "] " + std::string(text));
    }
}

void printError(std::string_view text) {
    std::string line = "Pelta: " + std::string(text);
    std::replace_if(
        line.begin(), line.end(), [](unsigned char byte) { return byte < ' ' || byte == 0x7F; }, ' ');
    writeLine(stderr, std::move(line));
}

void fatalError(std::string_view message, std::string_view file, int line) {
    std::fflush(stdout);
    writeLine(stderr, "Fatal error: " + std::string(message) + " [" + placeOf(file, line) + "]");
    std::abort();
}

}  // namespace pelta
