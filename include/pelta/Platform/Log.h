#pragma once

#include <string_view>

namespace pelta {

/// Switches diagnostic lines on and off for the whole process; false at start. Any thread.
void setIsLoggerEnabled(bool enabled) noexcept;
[[nodiscard]] bool isLoggerEnabled() noexcept;

/// Writes one diagnostic line to standard output while `isLoggerEnabled()`:
/// "📌 [" + last path component of `file` + ":" + line + "] " + text.
void dPrint(std::string_view text, std::string_view file = __builtin_FILE(), int line = __builtin_LINE());

/// Writes one line to standard error, which browsers show in their console, whether or not
/// `isLoggerEnabled()`: "Pelta: " + text, for what whoever runs the application has to hear. Line breaks and
/// other control characters within the text become blanks.
void printError(std::string_view text);

/// Stops the process on a programming error: prints `message` with its place to standard error and aborts.
[[noreturn]] void fatalError(std::string_view message, std::string_view file = __builtin_FILE(),
                             int line = __builtin_LINE());

}  // namespace pelta
