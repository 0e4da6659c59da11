/// `pelta cluster` over any text. The first two bytes choose the zoom, the distance and the smallest group.

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <set>

#include "CommandRun.h"
#include "Require.h"

namespace {

using namespace pelta::fuzz;
using nlohmann::ordered_json;
using pelta::command::ExitCode;

struct Options {
    std::string zoom, distance, count;
};

CommandResult cluster(const Options& options, std::string_view input) {
    return runCommand(
        pelta::command::clusterCommand,
        {"--zoom", options.zoom, "--max-distance", options.distance, "--min-count", options.count}, input);
}

/// True for JSON, and for lines of it; bytes that are no UTF-8 and numbers that are too large count as any
/// others.
bool isJson(std::string_view text) {
    std::string readable;
    for (const char byte : text) {
        readable += static_cast<unsigned char>(byte) < 0x80 ? byte : '?';
    }
    const auto isOne = [](std::string_view part) {
        // Numbers that are too large count as any others.
        constexpr int numberOutOfRange = 406;
        try {
            static_cast<void>(nlohmann::json::parse(part));
        } catch (const nlohmann::json::exception& error) {
            return error.id == numberOutOfRange;
        }
        return true;
    };
    if (isOne(readable)) {
        return true;
    }
    std::string_view rest = readable;
    while (!rest.empty()) {
        const auto end = rest.find('\n');
        const std::string_view line = rest.substr(0, end);
        if (line.find_first_not_of(" \t\r") != std::string_view::npos && !isOne(line)) {
            return false;
        }
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return true;
}

/// @return the number of groups.
std::size_t requireGroups(std::string_view output) {
    const auto collection = ordered_json::parse(output, nullptr, false);
    require(!collection.is_discarded() && collection.value("type", "") == "FeatureCollection",
            "the output is a GeoJSON collection", output);
    std::set<std::uint64_t> seen;
    for (const auto& group : collection["features"]) {
        const auto& properties = group["properties"];
        require(properties["count"] == properties["items"].size(), "a group counts its points", group.dump());
        require(!properties["items"].empty(), "no group is empty", group.dump());
        for (const auto& item : properties["items"]) {
            require(seen.insert(item.get<std::uint64_t>()).second, "a point is in one group", group.dump());
        }
        for (const auto& number : group["geometry"]["coordinates"]) {
            require(number.is_number(), "a group lies at finite numbers", group.dump());
        }
    }
    return collection["features"].size();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const Options options{std::to_string(bytes[0] % 25), std::to_string(bytes[0] * 4),
                          std::to_string(bytes[1] % 5)};
    const std::string_view input(reinterpret_cast<const char*>(bytes) + 2, size - 2);
    const CommandResult result = cluster(options, input);
    requireTidyMessages(result.messages);
    require(result.code == ExitCode::done || !result.messages.empty(), "a failure is told");
    // A line that is none is left out with a message, and the others are grouped.
    require(result.code != ExitCode::done || isJson(input), "what is no JSON is told", input);
    if (!result.output.empty()) {
        const std::size_t groups = requireGroups(result.output);
        const CommandResult again = cluster(options, result.output);
        require(again.code == ExitCode::done && again.messages.empty(), "the output can be read again",
                again.messages);
        require(requireGroups(again.output) <= groups, "groups of groups are not more");
    }
    const auto document = ordered_json::parse(input, nullptr, false);
    if (document.is_object()) {
        const CommandResult compact = cluster(options, document.dump());
        const CommandResult pretty = cluster(options, document.dump(1));
        require(compact.output == pretty.output && compact.code == pretty.code,
                "blanks and line breaks between values change nothing", document.dump(1));
    }
    return 0;
}
