#include <algorithm>
#include <csignal>
#include <fstream>
#include <gmock/gmock.h>
#include <string>
#include <string_view>

#include "CaseFile.h"
#include "Command/CommandRun.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class ClusterCommandTest : public CommandRun {};

std::string point(const std::string& coordinates) {
    return R"({"type":"Feature","geometry":{"type":"Point","coordinates":)" + coordinates +
           R"(},"properties":{}})";
}

std::string collection(const std::string& features) {
    return R"({"type":"FeatureCollection","features":[)" + features + "]}";
}

TEST_F(ClusterCommandTest, WritesAPointForEachCluster) {
    const std::string none = R"({"type":"Feature","geometry":null})";
    const std::string two =
        point("[127,37]") + ",\n" + none + "," + point("[0.5,-1.25]") + "," + point("[127.001,37,9]");
    const std::string pair = R"({"type":"Feature","geometry":{"type":"Point","coordinates":[127,37]},)";
    const std::string one = R"({"type":"Feature","geometry":{"type":"Point","coordinates":[0.5,-1.25]},)";
    const std::string expected =
        collection("\n" + pair + R"("properties":{"count":2,"items":[0,2],"features":[0,3]}})" + ",\n" + one +
                   R"("properties":{"count":1,"items":[1],"features":[2]}})" + "\n") +
        "\n";
    const auto whole = run("cluster --zoom 5", collection(two));
    EXPECT_EQ(whole.code, 0);
    EXPECT_EQ(whole.output, expected);
    EXPECT_EQ(whole.errors, "standard input: warning: skipped 1 feature that is no Point: 1 no geometry\n");

    const std::string lines =
        point("[127,37]") + "\r\n" + none + "\n\n" + point("[0.5,-1.25]") + "\n" + point("[127.001,37]");
    EXPECT_EQ(run("cluster --zoom=5 -", lines).output, expected) << "one feature a line";
    std::ofstream(path("-odd name.json")) << "\xEF\xBB\xBF \n" << collection(two);
    EXPECT_EQ(run("cluster --zoom 5 -- '-odd name.json'").output, expected) << "a byte order mark before it";
    EXPECT_THAT(run("cluster --zoom 5 --min-count 3", collection(two)).output, Not(HasSubstr("\"count\":2")));
    EXPECT_THAT(run("cluster --zoom 5 --max-distance 0", collection(two)).output,
                Not(HasSubstr("\"count\":2")));
    EXPECT_EQ(
        run("cluster --zoom 5", point("[127,37]")).output,
        collection("\n" + pair + R"("properties":{"count":1,"items":[0],"features":[0]}})" + "\n") + "\n");
    EXPECT_EQ(run("cluster --zoom 5", collection("")).output, collection("\n") + "\n");
}

TEST_F(ClusterCommandTest, WritesEveryWholeZoomOfARange) {
    const auto outcome = run("cluster --zoom -1..1", collection(point("[10,0]") + "," + point("[80,0]")));
    EXPECT_EQ(outcome.code, 0);
    for (const char* group : {R"("zoom":-1,"count":2,)", R"("zoom":0,"count":2,)",
                              R"("zoom":1,"count":1,"items":[0],"features":[0])",
                              R"("zoom":1,"count":1,"items":[1],"features":[1])"}) {
        EXPECT_THAT(outcome.output, HasSubstr(group));
    }
}

TEST_F(ClusterCommandTest, NamesAndLeavesOutFeaturesThatCannotBeUsed) {
    for (const auto& [feature, reasons] : casesOf("Command/bad-features.txt")) {
        const auto whole =
            run("cluster --zoom 3", collection(point("[1,2]") + "," + feature + "," + point("[5,6]")));
        EXPECT_THAT(whole.errors, StartsWith("standard input: feature 1: " + reasons[0]));
        const auto lines =
            run("cluster --zoom 3", point("[1,2]") + "\n\n" + feature + "\n" + point("[5,6]") + "\n");
        EXPECT_THAT(lines.errors, StartsWith("standard input:3: feature 1: " + reasons[0]));
        for (const auto& outcome : {whole, lines}) {
            EXPECT_EQ(outcome.code, 1) << feature;
            EXPECT_THAT(outcome.output, HasSubstr("\"items\":[0,1],\"features\":[0,2]")) << feature;
        }
    }
    for (std::size_t length = 1; length < point("[1,2]").size(); length += 3) {
        const auto cut =
            run("cluster --zoom 3", point("[1,2]").substr(0, length) + "\n" + point("[5,6]") + "\n");
        EXPECT_EQ(cut.code, 1);
        EXPECT_THAT(cut.errors, StartsWith("standard input:1: feature 0: it is not valid JSON")) << length;
        EXPECT_THAT(cut.output, HasSubstr("\"items\":[0],\"features\":[1]")) << length;
    }
    EXPECT_THAT(run("cluster --zoom 3", point("[1,2]") + "\n" + point("[5,6]") + " {}\n").errors,
                StartsWith("standard input:2: feature 1: there is more on the line behind it"));
}

TEST_F(ClusterCommandTest, ReadsADocumentHoweverItIsLaidOut) {
    const std::string feature =
        R"({"type":"Feature","properties":{"text":"\""},"geometry":{"type":"Point","coordinates":[1,2]}})";
    const std::string late =
        R"({"features":[)" + feature + R"(],"x":[1e999,"\u00e9"],"type":"FeatureCollection"})";
    for (const std::string& document : {feature, collection(feature), late}) {
        const auto plain = run("cluster --zoom 3", document);
        EXPECT_EQ(plain.code, 0) << plain.errors;
        EXPECT_THAT(plain.output, HasSubstr("\"items\":[0]"));
        for (std::size_t i = 1; i < document.size(); ++i) {
            if (std::string_view("{}[],:").find(document[i]) != std::string_view::npos) {
                std::string broken = document;
                broken.insert(i, "\n").insert(i + 2, "\n");
                const auto outcome = run("cluster --zoom 3", broken);
                EXPECT_EQ(outcome.output, plain.output) << broken << outcome.errors;
            }
        }
    }
}

TEST_F(ClusterCommandTest, NamesAHundredBadFeaturesAndCountsTheOthers) {
    const auto outcome = shell("yes bad | head -n 100000 | '" PELTA_COMMAND "' cluster --zoom 3 2>err >out");
    EXPECT_TRUE(
        outcome.errors.ends_with("\nstandard input:100: feature 99: it is not an object\n"
                                 "standard input: 99900 more features cannot be used\n"))
        << outcome.errors;
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 101);
    EXPECT_EQ(outcome.code, 1);
}

#if !defined(__SANITIZE_ADDRESS__)
TEST_F(ClusterCommandTest, SaysWhereMemoryEnds) {
    const std::string start = R"({"type":"Feature","geometry":{"type":"LineString","coordinates":[)";
    const struct {
        std::string input;
        const char* kibibytes;
    } cases[] = {
        {std::string(40'000'000, ' '), "60000"},
        {start + std::string(20'000'000, '1') + "]}}", "120000"},
    };
    for (const auto& [input, kibibytes] : cases) {
        std::ofstream(path("large")) << input;
        const auto outcome = shell(std::string("ulimit -v ") + kibibytes +
                                   "; '" PELTA_COMMAND "' cluster --zoom 3 large 2>err >out");
        EXPECT_EQ(outcome.code, 1) << kibibytes;
        EXPECT_EQ(outcome.errors, "large: memory ran out; cluster it in parts, or with more memory\n");
    }
}
#endif

TEST_F(ClusterCommandTest, CountsWhatItSkipsAndWhatEndsInNoCluster) {
    const std::string others = R"({"type":"Feature","geometry":{"type":"MultiPoint","coordinates":[[1,2]]}},)"
                               R"({"type":"Feature","geometry":{"type":"Polygon","coordinates":[]}},)"
                               R"({"type":"Feature","geometry":null},)";
    const auto outcome =
        run("cluster --zoom 3", collection(others + point("[181,0]") + "," + point("[1,2]")));
    EXPECT_EQ(outcome.code, 0);
    EXPECT_THAT(outcome.errors,
                HasSubstr("skipped 3 features that are no Point: 1 MultiPoint, 1 Polygon, 1 no geometry"));
    EXPECT_THAT(outcome.errors, HasSubstr("1 point beyond the map's edge ended in no cluster"));
    EXPECT_THAT(outcome.output, HasSubstr("\"items\":[1]"));
}

TEST_F(ClusterCommandTest, RefusesTextsThatCannotBeReadToTheirEnd) {
    auto cases = casesOf("Command/bad-documents.txt");
    cases.push_back({"", {"it is empty"}});
    for (const auto& [text, reasons] : cases) {
        const auto outcome = run("cluster --zoom 3", text);
        EXPECT_EQ(outcome.code, 1) << text;
        EXPECT_THAT(outcome.errors, HasSubstr("standard input: " + reasons[0])) << text;
        EXPECT_THAT(outcome.output, IsEmpty()) << text;
    }
    EXPECT_THAT(run("cluster --zoom 3 missing.json").errors,
                HasSubstr("missing.json: cannot be read: No such file"));
    EXPECT_EQ(run("cluster --zoom 3 missing.json").code, 1);
    EXPECT_THAT(run("cluster --zoom 3 .").errors, HasSubstr(".: cannot be read: Is a directory"));
}

TEST_F(ClusterCommandTest, TellsWrongUseFromWrongInput) {
    auto cases = casesOf("Command/wrong-use.txt");
    cases.push_back({"", {"usage: pelta COMMAND"}});
    for (const auto& [words, reasons] : cases) {
        const auto outcome = run(words);
        EXPECT_EQ(outcome.code, 2) << words;
        EXPECT_THAT(outcome.errors, HasSubstr(reasons[0])) << words;
        EXPECT_THAT(outcome.output, IsEmpty()) << words;
    }
    EXPECT_THAT(run("--help").output, testing::AllOf(HasSubstr("  cluster "), HasSubstr("  convert ")));
    EXPECT_THAT(run("convert --help").output, StartsWith("usage: pelta convert"));
    EXPECT_THAT(run("cluster --zoom x --help").output, StartsWith("usage: pelta cluster"));
    EXPECT_THAT(run("--version").output, testing::MatchesRegex("pelta [0-9.]+\n"));
}

TEST_F(ClusterCommandTest, BehavesInPipes) {
    std::ofstream(path("many.json")) << collection([] {
        std::string features;
        for (int i = 0; i < 20'000; ++i) {
            features += (i == 0 ? "" : ",") + point("[" + std::to_string(i * 0.01 - 100) + ",0]");
        }
        return features;
    }());
    const std::string command = "'" PELTA_COMMAND "' cluster --zoom 15..18 many.json";
    const auto piped = shell("bash -c \"" + command + " 2>err | head -c 10 >out; exit \\${PIPESTATUS[0]}\"");
    EXPECT_EQ(piped.code, 128 + SIGPIPE);
    EXPECT_THAT(piped.errors, IsEmpty()) << "a reader that has enough is no failure to talk about";
    const auto full = shell(command + " 2>err >/dev/full");
    EXPECT_EQ(full.code, 1);
    EXPECT_THAT(full.errors, HasSubstr("standard output: No space left"));
    const auto german = shell("LC_ALL=de_DE.UTF-8 " + command + " >out");
    EXPECT_EQ(german.code, 0);
    EXPECT_THAT(german.output, HasSubstr("[-99.99,0]"));
}

}  // namespace
