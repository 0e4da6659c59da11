#include "CommandRun.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

#include "Require.h"

namespace pelta::fuzz {

namespace {

/// A file in memory.
class MemoryFile {
 public:
    explicit MemoryFile(const char* name) : file_(memfd_create(name, 0)) {}

    [[nodiscard]] int number() const { return file_; }
    [[nodiscard]] std::string path() const { return "/proc/self/fd/" + std::to_string(file_); }

    void assign(std::string_view text) const {
        require(ftruncate(file_, 0) == 0, "a file in memory can be emptied");
        lseek(file_, 0, SEEK_SET);
        while (!text.empty()) {
            const ssize_t count = write(file_, text.data(), text.size());
            require(count > 0, "a file in memory can be written");
            text.remove_prefix(static_cast<std::size_t>(count));
        }
    }

    [[nodiscard]] std::string text() const {
        std::string result(static_cast<std::size_t>(lseek(file_, 0, SEEK_END)), '\0');
        const ssize_t count = pread(file_, result.data(), result.size(), 0);
        require(count == static_cast<ssize_t>(result.size()), "a file in memory can be read");
        return result;
    }

 private:
    int file_;
};

struct Files {
    MemoryFile input{"input"};
    MemoryFile output{"output"};
    MemoryFile messages{"messages"};

    Files() {
        dup2(output.number(), STDOUT_FILENO);
        dup2(messages.number(), STDERR_FILENO);
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
    const std::string path = files().input.path();
    std::vector<std::string_view> arguments(words);
    arguments.push_back(path);
    CommandResult result;
    result.code = command.run(arguments);
    std::fflush(stdout);
    result.output = files().output.text();
    result.messages = files().messages.text();
    return result;
}

void requireTidyMessages(std::string_view messages) {
    const std::string name = files().input.path() + ":";
    require(messages.empty() || messages.back() == '\n', "messages are whole lines", messages);
    while (!messages.empty()) {
        const std::string_view line = messages.substr(0, messages.find('\n'));
        require(line.starts_with(name), "each message starts with the file's name", line);
        const bool isPrintable = std::none_of(line.begin(), line.end(), [](char byte) {
            return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
        });
        require(isPrintable, "messages hold no control characters", line);
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
