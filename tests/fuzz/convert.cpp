/// `pelta convert` over any text. The first byte chooses the systems.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "CommandRun.h"
#include "Require.h"

namespace {

using namespace pelta::fuzz;
using pelta::command::ExitCode;

constexpr std::array<std::string_view, 5> systems{"wgs84", "katec", "tm", "grs80", "utmk"};
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string_view takeLine(std::string_view& text) {
    const auto end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

bool startsWithTwoNumbers(std::string_view line) {
    const std::string text(line);
    char* end = nullptr;
    const double x = std::strtod(text.c_str(), &end);
    const char* second = end;
    const double y = std::strtod(second, &end);
    return second != text.c_str() && end != second && std::isfinite(x) && std::isfinite(y);
}

/// @return whether the line could not be converted.
bool requireLine(std::string_view line, std::string_view written) {
    if (line.empty() || line.starts_with('#')) {
        require(written == line, "empty lines and comments stay as they are", written);
        return false;
    }
    if (written.starts_with("* *")) {
        return true;
    }
    const bool isBlank = line.find_first_not_of(" \t\r") == std::string_view::npos;
    const bool isComment = written == line && line.find('#') == line.find_first_not_of(" \t\r");
    require(isBlank || isComment || startsWithTwoNumbers(written), "a line starts with two finite numbers",
            written);
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view from = systems[bytes[0] % systems.size()];
    const std::string_view to = systems[bytes[0] / systems.size() % systems.size()];
    std::string input(reinterpret_cast<const char*>(bytes) + 1, size - 1);
    const auto convert = [&](const std::string& text) {
        return runCommand(pelta::command::convertCommand, {"--from", from, "--to", to}, text);
    };
    const CommandResult result = convert(input);

    std::string_view lines = input;
    lines.remove_prefix(lines.starts_with(byteOrderMark) ? byteOrderMark.size() : 0);
    std::string_view written = result.output;
    bool hasFault = false;
    while (!lines.empty()) {
        require(!written.empty(), "each line of the input has one in the output", result.output);
        const std::string_view line = takeLine(lines);
        hasFault = requireLine(line, takeLine(written)) || hasFault;
    }
    require(written.empty() || input == byteOrderMark, "no line is written that was not read", written);
    require(result.code == (hasFault ? ExitCode::failed : ExitCode::done), "the exit code tells of faults");
    require(result.messages.empty() == !hasFault, "messages tell of faults", result.messages);
    requireTidyMessages(result.messages);

    if (!input.empty() && !input.starts_with(byteOrderMark)) {
        input += input.back() == '\n' ? "" : "\n";
        require(convert(input + input).output == result.output + result.output,
                "a line is converted alike wherever it stands");
    }
    return 0;
}
