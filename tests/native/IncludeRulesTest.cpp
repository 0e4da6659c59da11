#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

using Rooms = std::set<std::string>;

const fs::path sourceTree = PELTA_SOURCE_TREE;
const Rooms library{"View", "Geometry", "Annotations", "Cluster", "Engine", "Platform"};

/// Rooms of which each room may include headers. The umbrella header stands in no room: "".
const std::map<std::string, Rooms> mayInclude{
    {"Platform", {"Platform"}},
    {"Engine", {"Engine", "Platform"}},
    {"View", library},
    {"Geometry", library},
    {"Annotations", library},
    {"Cluster", library},
    {"Coordinate", {"Coordinate"}},
    {"", {"View", "Geometry", "Annotations", "Cluster", "Coordinate", "Engine", "Platform"}},
    {"headless", {"headless", "Engine", "Platform"}},
    {"web", {"web", "Engine", "Platform"}},
};

/// Public headers that applications have no use for.
const std::set<std::string> portHeaders{"pelta/Engine/MapRenderer.h", "pelta/Platform/Frames.h",
                                        "pelta/Platform/ImageParts.h"};

/// Headers of plain values, which every room may include.
const std::set<std::string> valueHeaders{"pelta/Platform/CoreLocation.h"};

/// Rooms whose sources get by with the standard library.
const Rooms standardLibraryOnly{"View", "Geometry", "Annotations", "Cluster", "Coordinate", ""};

struct Include {
    std::string where;
    std::string header;
    bool isQuoted;
};

std::vector<Include> includesOf(const fs::path& file) {
    static const std::regex directive(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"].*)");
    std::vector<Include> includes;
    std::ifstream text(file);
    std::string line;
    for (int number = 1; std::getline(text, line); ++number) {
        if (std::smatch match; std::regex_match(line, match, directive)) {
            const auto where = fs::relative(file, sourceTree).string() + ":" + std::to_string(number);
            includes.push_back({where, match[2], match[1] == "\""});
        }
    }
    return includes;
}

std::vector<fs::path> sourcesIn(const fs::path& folder) {
    std::vector<fs::path> files;
    if (!fs::exists(sourceTree / folder)) {
        return files;
    }
    for (const auto& entry : fs::recursive_directory_iterator(sourceTree / folder)) {
        if (const auto extension = entry.path().extension(); extension == ".h" || extension == ".cpp") {
            files.push_back(entry.path());
        }
    }
    return files;
}

/// The room of a header as it is spelled: `<pelta/Engine/X.h>` and "Engine/X.h" belong to Engine, a quoted
/// header without a folder to the room of the includer.
std::string roomOf(const Include& include, const std::string& includer) {
    const fs::path header = include.header;
    const auto folder = (include.isQuoted ? header : header.lexically_relative("pelta")).parent_path();
    const std::string room = folder.empty() ? "" : folder.begin()->string();
    return include.isQuoted && room.empty() ? includer : room;
}

bool isOurs(const Include& include) {
    return include.isQuoted || include.header.starts_with("pelta/");
}

/// The standard library's, and the compiler's own for the processor's wide instructions.
bool isStandard(const Include& include) {
    return include.header.find_first_of("./") == std::string::npos || include.header == "immintrin.h";
}

std::vector<std::string> faultsOf(const std::string& room, const std::vector<fs::path>& files,
                                  bool isPublic) {
    const auto allowed = mayInclude.find(room);
    if (allowed == mayInclude.end()) {
        return {"the room " + room + " has no row in mayInclude"};
    }
    std::vector<std::string> faults;
    for (const auto& file : files) {
        for (const auto& include : includesOf(file)) {
            const bool isFine =
                isOurs(include) ? (allowed->second.contains(roomOf(include, room)) ||
                                   valueHeaders.contains(include.header)) &&
                                      !(isPublic && include.isQuoted)
                                : isStandard(include) || !(isPublic || standardLibraryOnly.contains(room));
            if (!isFine) {
                faults.push_back(include.where + " includes " + include.header);
            }
        }
    }
    return faults;
}

std::vector<fs::path> foldersIn(const fs::path& folder) {
    std::vector<fs::path> folders;
    for (const auto& entry : fs::directory_iterator(sourceTree / folder)) {
        if (entry.is_directory()) {
            folders.push_back(entry.path().lexically_relative(sourceTree));
        }
    }
    return folders;
}

TEST(IncludeRules, RoomsSeeOnlyTheRoomsBelowThem) {
    for (const bool isPublic : {true, false}) {
        for (const auto& folder : foldersIn(isPublic ? "include/pelta" : "src")) {
            EXPECT_THAT(faultsOf(folder.filename(), sourcesIn(folder), isPublic), testing::IsEmpty())
                << folder;
        }
    }
    EXPECT_THAT(faultsOf("", {sourceTree / "include/pelta/Pelta.h"}, true), testing::IsEmpty());
}

TEST(IncludeRules, TheUmbrellaHeaderHasAllThatApplicationsUse) {
    std::set<std::string> included = portHeaders;
    for (const auto& include : includesOf(sourceTree / "include/pelta/Pelta.h")) {
        included.insert(include.header);
    }
    for (const auto& file : sourcesIn("include/pelta")) {
        const std::string header = fs::relative(file, sourceTree / "include");
        EXPECT_TRUE(header == "pelta/Pelta.h" || included.contains(header)) << header;
    }
}

/// What shows clusters on a map needs the whole library; clustering itself must not come to need it too.
TEST(IncludeRules, ClusteringStandsByItself) {
    static const std::regex ofTheMap("Cluster/Map/|PgmClusterManager|PgmClusterIcon");
    for (const char* folder : {"include/pelta/Cluster", "src/Cluster"}) {
        for (const auto& file : sourcesIn(folder)) {
            if (std::regex_search(file.string(), ofTheMap)) {
                continue;
            }
            for (const auto& include : includesOf(file)) {
                const bool isFine =
                    !isOurs(include) || valueHeaders.contains(include.header) ||
                    (roomOf(include, "Cluster") == "Cluster" && !std::regex_search(include.header, ofTheMap));
                EXPECT_TRUE(isFine) << include.where << " includes " << include.header;
            }
        }
    }
}

TEST(IncludeRules, PortsSeeOnlyEngineAndPlatform) {
    for (const auto& port : foldersIn("ports")) {
        EXPECT_THAT(faultsOf(port.filename(), sourcesIn(port / "include"), true), testing::IsEmpty()) << port;
        const auto sources = sourcesIn(port / "src");
        EXPECT_FALSE(sources.empty()) << port;
        EXPECT_THAT(faultsOf(port.filename(), sources, false), testing::IsEmpty()) << port;
    }
}

TEST(IncludeRules, ApplicationsSeePublicHeadersAndPickAPortAtLinkTime) {
    for (const auto& file : sourcesIn("apps")) {
        for (const auto& include : includesOf(file)) {
            const bool isPrivate = include.isQuoted && fs::exists(sourceTree / "src" / include.header);
            const bool isPort = isOurs(include) && !include.isQuoted &&
                                !mayInclude.at("").contains(roomOf(include, "")) &&
                                !roomOf(include, "").empty();
            EXPECT_FALSE(isPrivate || isPort) << include.where << " includes " << include.header;
        }
    }
}

}  // namespace
