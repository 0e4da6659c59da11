#include "OutputText.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>

namespace pelta::command {

namespace {

constexpr std::size_t pieceSize = std::size_t{1} << 16U;

template <class Number>
void append(std::string& text, Number number) {
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text.append(digits.data(), end);
}

}  // namespace

void OutputText::write(std::string_view text) {
    pending_ += text;
    if (pending_.size() >= pieceSize) {
        flush();
    }
}

void OutputText::write(std::uint64_t number) {
    append(pending_, number);
}

void OutputText::write(double number) {
    append(pending_, number);
}

void OutputText::writeFixed(double number, int decimals) {
    // Large enough for the longest finite number with the most decimals that anybody asks for.
    std::array<char, 384> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                   std::chars_format::fixed, decimals)
                         .ptr;
    pending_.append(digits.data(), end);
}

void OutputText::flush() {
    if (error_ == 0 && (std::fwrite(pending_.data(), 1, pending_.size(), stdout) != pending_.size() ||
                        std::fflush(stdout) != 0)) {
        error_ = errno;
    }
    pending_.clear();
}

bool OutputText::finish() {
    flush();
    if (error_ != 0) {
        std::fprintf(stderr, "pelta: standard output: %s\n", std::strerror(error_));
    }
    return error_ == 0;
}

}  // namespace pelta::command
