#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace pelta::command {

/// Standard output in large pieces. Numbers never depend on the locale.
class OutputText {
 public:
    void write(std::string_view text);
    void write(std::uint64_t number);
    /// The shortest text that reads back as the same number.
    void write(double number);

    /// With as many digits behind the point, rounded to nearest.
    void writeFixed(double number, int decimals);

    /// Hands over what is pending, for readers that wait for it.
    void flush();

    /// Writes what is left.
    /// @return false when something could not be written, now or before; standard error says why.
    [[nodiscard]] bool finish();

    /// True when something could not be written, so that going on is useless.
    [[nodiscard]] bool hasFailed() const noexcept { return error_ != 0; }

 private:
    std::string pending_;
    int error_ = 0;
};

}  // namespace pelta::command
