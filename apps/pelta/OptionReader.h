#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Command.h"

namespace pelta::command {

/// Takes a command's words apart: "--name value", "--name=value", and the others. After "--" all are others;
/// a lone "-" is one, too.
class OptionReader {
 public:
    explicit OptionReader(Arguments arguments) : rest_(arguments) {}

    /// Goes to the next option.
    /// @return its name with the dashes, or nothing when all words have been read.
    std::optional<std::string_view> next();

    /// The value of the option that `next` gave last, or nothing when it has none.
    std::optional<std::string_view> value();

    /// Words that are not options, among those read so far.
    [[nodiscard]] const std::vector<std::string_view>& others() const noexcept { return others_; }

 private:
    std::string_view take();

    Arguments rest_;
    std::optional<std::string_view> attached_;  // value behind "="
    std::vector<std::string_view> others_;
};

/// A number in all of the text, or nothing. Never looks at the locale.
[[nodiscard]] std::optional<double> readNumber(std::string_view text);
[[nodiscard]] std::optional<long long> readWholeNumber(std::string_view text);

}  // namespace pelta::command
