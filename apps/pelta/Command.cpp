#include "Command.h"

#include <cstdio>
#include <string>

namespace pelta::command {

ExitCode misuse(std::string_view command, std::string_view problem) {
    const std::string name = command.empty() ? "pelta" : "pelta " + std::string(command);
    const std::string text = name + ": " + std::string(problem) + "\nTry '" + name + " --help'.\n";
    std::fputs(text.c_str(), stderr);
    return ExitCode::misused;
}

}  // namespace pelta::command
