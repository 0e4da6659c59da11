#pragma once

#include <span>
#include <string_view>

/// @file
/// What the commands have in common.

namespace pelta::command {

/// What the process ends with.
enum class ExitCode {
    done = 0,
    failed = 1,  ///< Input or output was at fault, wholly or in part; standard error says where.
    misused = 2  ///< The command line was at fault; nothing was done.
};

/// The words behind the command's name.
using Arguments = std::span<const std::string_view>;

/// One command of the program.
struct Command {
    std::string_view name;
    std::string_view summary;  ///< One line of the program's help.
    std::string_view help;     ///< All of the command's help, with a line break at the end.
    ExitCode (*run)(Arguments arguments);
};

extern const Command clusterCommand;
extern const Command convertCommand;

/// Tells on standard error what is wrong with the command line and where to read more.
ExitCode misuse(std::string_view command, std::string_view problem);

}  // namespace pelta::command
