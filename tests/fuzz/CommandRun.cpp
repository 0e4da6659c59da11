#include "CommandRun.h"

#include <cstddef>
#include <cstdio>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

#include "Require.h"

namespace pelta::fuzz {

namespace {

/// A file in memory.
struct MemoryFile {
    int number = memfd_create("fuzz", 0);
    std::string path = "/proc/self/fd/" + std::to_string(number);

    void assign(std::string_view text) const {
        const bool isWritten = ftruncate(number, 0) == 0 && pwrite(number, text.data(), text.size(), 0) ==
                                                                static_cast<ssize_t>(text.size());
        require(isWritten && lseek(number, 0, SEEK_SET) == 0, "a file in memory can be written");
    }

    [[nodiscard]] std::string text() const {
        std::string result(static_cast<std::size_t>(lseek(number, 0, SEEK_END)), '\0');
        const ssize_t count = pread(number, result.data(), result.size(), 0);
        require(count == static_cast<ssize_t>(result.size()), "a file in memory can be read");
        return result;
    }
};

struct Files {
    MemoryFile input, output, messages;

    Files() {
        dup2(output.number, STDOUT_FILENO);
        dup2(messages.number, STDERR_FILENO);
    }
};

const Files& files() {
    static const Files files;
    return files;
}

}  // namespace

CommandResult runCommand(const command::Command& command, std::initializer_list<std::string_view> words,
                         std::string_view input) {
    files().input.assign(input);
    files().output.assign({});
    files().messages.assign({});
    std::vector<std::string_view> arguments(words);
    arguments.emplace_back(files().input.path);
    CommandResult result;
    result.code = command.run(arguments);
    std::fflush(stdout);
    result.output = files().output.text();
    result.messages = files().messages.text();
    return result;
}

void requireTidyMessages(std::string_view messages) {
    const std::string name = files().input.path + ":";
    require(messages.empty() || messages.back() == '\n', "messages are whole lines", messages);
    while (!messages.empty()) {
        const std::string_view line = messages.substr(0, messages.find('\n'));
        require(line.starts_with(name), "each message starts with the file's name", line);
        requireTidy(line);
        messages.remove_prefix(line.size() + 1);
    }
}

}  // namespace pelta::fuzz

/// The program's outputs are caught, so the fuzzer has to speak elsewhere. Runs before it reads its options.
extern "C" int LLVMFuzzerInitialize(int* count, char*** words) {
    pelta::fuzz::keepReports();
    static std::vector<char*> all(*words, *words + *count);
    static std::string closing = "-close_fd_mask=3";
    all.push_back(closing.data());
    *count = static_cast<int>(all.size());
    all.push_back(nullptr);
    *words = all.data();
    return 0;
}
