#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "Command.h"

namespace pelta::fuzz {

/// What a command of the command line did with an input.
struct CommandResult {
    command::ExitCode code = command::ExitCode::done;
    std::string output;    ///< On standard output.
    std::string messages;  ///< On standard error.
};

/// Runs a command on an input, as a file in memory, and catches both of its outputs.
///
/// @param words  what stands before the file's name.
[[nodiscard]] CommandResult runCommand(const command::Command& command,
                                       std::initializer_list<std::string_view> words, std::string_view input);

/// Stops the process unless each message is one line of printable text that starts with the file's name.
void requireTidyMessages(std::string_view messages);

}  // namespace pelta::fuzz
