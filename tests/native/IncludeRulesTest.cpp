#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path sourceTree = PELTA_SOURCE_TREE;

/// Files, and what they may include as it is spelled, with its brackets or quotes; regular expressions that
/// match from the start. The first rule that fits a file counts.
struct Rule {
    std::string files;
    std::string mayInclude;
};

/// The standard library's headers, and the compiler's own for the processor's wide instructions.
const std::string standard = "<[a-z_]+>|<immintrin[.]h>";
/// Plain values, which every room may include.
const std::string values = "|<pelta/Platform/CoreLocation[.]h>";
const std::string foreign = "<(?!pelta/)";
const std::string library = "(View|Geometry|Annotations|Cluster|Engine|Platform)";
/// What shows clusters on a map needs the whole library; clustering itself must not come to need it too.
const std::string ofTheMap = "(Map/|.*PgmClusterManager|.*PgmClusterIcon|.*PgmDefaultClusterIcon)";

const Rule rules[] = {
    {"include/pelta/Pelta[.]h", "<pelta/(Coordinate|" + library.substr(1) + "/"},
    {"include/pelta/Platform/", standard + "|<pelta/Platform/"},
    {"include/pelta/Engine/", standard + "|<pelta/(Engine|Platform)/"},
    {"include/pelta/Coordinate/", standard + values + "|<pelta/Coordinate/"},
    {"include/pelta/Cluster/(?!" + ofTheMap + ")",
     standard + values + "|<pelta/Cluster/(?!" + ofTheMap + ")"},
    {"include/pelta/(View|Geometry|Annotations|Cluster)/", standard + "|<pelta/" + library + "/"},
    {"src/Platform/", foreign + "|<pelta/Platform/|\"(Platform/)?[^/]+\""},
    {"src/Engine/", foreign + "|<pelta/(Engine|Platform)/|\"((Engine|Platform)/)?[^/]+\""},
    {"src/Coordinate/", standard + values + "|<pelta/Coordinate/|\"(Coordinate/)?[^/]+\""},
    {"src/Cluster/(?!" + ofTheMap + ")",
     standard + values + "|<pelta/Cluster/(?!" + ofTheMap + ")|\"(Cluster/)?(?!Map/)[^/]+\""},
    {"src/(View|Geometry|Annotations|Cluster)/",
     standard + "|<pelta/" + library + "/|\"(" + library + "/(Map/)?)?[^/]+\""},
    {"ports/headless/include/", standard + "|<pelta/(headless|Engine|Platform)/"},
    {"ports/headless/src/", foreign + "|<pelta/(headless|Engine|Platform)/|\"((Engine|Platform)/)?[^/]+\""},
    {"ports/web/include/", standard + "|<pelta/(web|Engine|Platform)/"},
    {"ports/web/src/", foreign + "|<pelta/(web|Engine|Platform)/|\"((Engine|Platform)/)?[^/]+\""},
    // An application picks a port when it is linked.
    {"apps/", foreign + "|<pelta/(Pelta[.]h|(Coordinate|" + library.substr(1) + "/)|\"(?!" + library + "/)"},
};

std::vector<std::string> sourcesIn(const std::string& folder) {
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(sourceTree / folder)) {
        if (const auto extension = entry.path().extension(); extension == ".h" || extension == ".cpp") {
            files.push_back(entry.path().lexically_relative(sourceTree));
        }
    }
    return files;
}

/// Headers as they are spelled, with brackets or quotes.
std::vector<std::string> includesOf(const std::string& file) {
    static const std::regex directive(R"(^\s*#\s*include\s*([<"][^>"]+[>"]).*)");
    std::vector<std::string> includes;
    std::ifstream text(sourceTree / file);
    std::smatch match;
    for (std::string line; std::getline(text, line);) {
        if (std::regex_match(line, match, directive)) {
            includes.push_back(match[1]);
        }
    }
    return includes;
}

bool startsAs(const std::string& text, const std::string& expression) {
    return std::regex_search(text, std::regex(expression), std::regex_constants::match_continuous);
}

TEST(IncludeRules, RoomsSeeOnlyTheRoomsBelowThem) {
    for (const char* const folder : {"include", "src", "ports", "apps"}) {
        for (const auto& file : sourcesIn(folder)) {
            const auto* const rule = std::find_if(std::begin(rules), std::end(rules), [&](const Rule& each) {
                return startsAs(file, each.files);
            });
            ASSERT_NE(rule, std::end(rules)) << "no rule for " << file;
            for (const auto& header : includesOf(file)) {
                EXPECT_TRUE(startsAs(header, rule->mayInclude)) << file << " includes " << header;
            }
        }
    }
}

TEST(IncludeRules, TheUmbrellaHeaderHasAllThatApplicationsUse) {
    std::set<std::string> known{"<pelta/Pelta.h>", "<pelta/Engine/MapRenderer.h>",
                                "<pelta/Platform/Frames.h>", "<pelta/Platform/ImageParts.h>"};
    known.merge([] {
        const auto included = includesOf("include/pelta/Pelta.h");
        return std::set<std::string>(included.begin(), included.end());
    }());
    for (const auto& file : sourcesIn("include")) {
        EXPECT_TRUE(known.contains("<" + file.substr(std::string("include/").size()) + ">")) << file;
    }
}

}  // namespace
