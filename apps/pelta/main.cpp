#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "Command.h"

namespace {

using namespace pelta::command;

constexpr std::array<const Command*, 2> commands{&convertCommand, &clusterCommand};

void print(std::string_view text, std::FILE* to = stdout) {
    std::fwrite(text.data(), 1, text.size(), to);
}

std::string usage() {
    std::string text = "usage: pelta COMMAND [OPTION…] [FILE…]\n\n";
    for (const Command* command : commands) {
        text += "  " + std::string(command->name) + std::string(12 - command->name.size(), ' ') +
                std::string(command->summary) + "\n";
    }
    return text +
           "\n"
           "  pelta COMMAND --help   tell all about a command\n"
           "  pelta --version        print the version\n"
           "\n"
           "Exit codes: 0 done, 1 failed in part or in whole, 2 wrong use.\n";
}

bool asksForHelp(std::string_view word) {
    return word == "--help" || word == "-h";
}

ExitCode flushed(ExitCode code) {
    if (std::fflush(stdout) != 0) {
        std::perror("pelta: standard output");
        return ExitCode::failed;
    }
    return code;
}

ExitCode run(const std::vector<std::string_view>& words) {
    if (words.empty()) {
        print(usage(), stderr);
        return ExitCode::misused;
    }
    if (asksForHelp(words[0]) || words[0] == "help") {
        print(usage());
        return flushed(ExitCode::done);
    }
    if (words[0] == "--version") {
        print("pelta " PELTA_VERSION "\n");
        return flushed(ExitCode::done);
    }
    const auto command = std::find_if(commands.begin(), commands.end(),
                                      [&](const Command* known) { return known->name == words[0]; });
    if (command == commands.end()) {
        return misuse("", "there is no command '" + std::string(words[0]) + "'");
    }
    const Arguments arguments = Arguments(words).subspan(1);
    const auto end = std::find(arguments.begin(), arguments.end(), "--");
    if (std::any_of(arguments.begin(), end, asksForHelp)) {
        print((*command)->help);
        return flushed(ExitCode::done);
    }
    return (*command)->run(arguments);
}

}  // namespace

int main(int count, char** words) {
    return static_cast<int>(run({words + std::min(count, 1), words + count}));
}
