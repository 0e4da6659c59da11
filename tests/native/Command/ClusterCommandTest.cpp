#include <algorithm>
#include <csignal>
#include <fstream>
#include <gmock/gmock.h>
#include <string>
#include <string_view>

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

/// A collection with a member of its own.
std::string member(const std::string& value) {
    return R"({"x":)" + value + R"(,"type":"FeatureCollection","features":[]})";
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
    EXPECT_THAT(outcome.output, HasSubstr(R"("zoom":-1,"count":2,)"));
    EXPECT_THAT(outcome.output, HasSubstr(R"("zoom":0,"count":2,)"));
    EXPECT_THAT(outcome.output, HasSubstr(R"("zoom":1,"count":1,"items":[0],"features":[0])"));
    EXPECT_THAT(outcome.output, HasSubstr(R"("zoom":1,"count":1,"items":[1],"features":[1])"));
}

TEST_F(ClusterCommandTest, NamesAndLeavesOutFeaturesThatCannotBeUsed) {
    const std::string start = R"({"type":"Feature","geometry":)";
    const std::string deep(200, '[');
    const struct {
        std::string feature;
        const char* reason;
    } cases[] = {
        {"7", "it is not an object"},
        {"{}", "it has no type"},
        {R"({"type":3})", "its type is not a text"},
        {R"({"type":"Point","coordinates":[1,2]})", "its type is 'Point', not 'Feature'"},
        {R"({"type":"Feature"})", "it has no geometry"},
        {start + "5}", "its geometry is neither an object nor null"},
        {start + "{}}", "its geometry has no type"},
        {start + R"({"type":"Pointer","coordinates":[1,2]}})", "its geometry's type 'Pointer' is unknown"},
        {start + R"({"type":"Point"}})", "its Point has no coordinates"},
        {start + R"({"coordinates":5,"type":"Point"}})", "its coordinates are not an array"},
        {point("[]"), "its coordinates are fewer than a longitude and a latitude"},
        {point("[127]"), "its coordinates are fewer than a longitude and a latitude"},
        {point("[127,\"37\"]"), "one of its coordinates is not a number"},
        {point("[127,[37]]"), "one of its coordinates is not a number"},
        {point("[1e999,37]"), "one of its coordinates is not a number that can be held"},
        {R"({"properties":{"a":tru},)" + point("[1,2]").substr(1), "one of its words is not valid"},
        {R"({"properties":{"a":1.},)" + point("[1,2]").substr(1), "one of its numbers is not valid"},
        {R"({"properties":{"a":[01]},)" + point("[1,2]").substr(1), "one of its numbers is not valid"},
        {R"({"properties":{"a":[1,,2]},)" + point("[1,2]").substr(1), "it is not valid JSON"},
        {R"({"type":"Feature" "geometry":null})", "it is not valid JSON"},
        {R"({"type":"Feat)" + std::string("\xFF") + R"(ure","geometry":null})", "it is not valid JSON"},
        {R"({"type":"A\u001b"})", "its type is 'A ', not 'Feature'"},
        {R"({"properties":{"a":"\q"},)" + point("[1,2]").substr(1), "one of its texts is not valid"},
        {R"({"properties":)" + deep + std::string(200, ']') + "," + point("[1,2]").substr(1),
         "it is nested deeper than 128 levels"},
    };
    for (const auto& [feature, reason] : cases) {
        const auto whole =
            run("cluster --zoom 3", collection(point("[1,2]") + "," + feature + "," + point("[5,6]")));
        EXPECT_EQ(whole.code, 1) << feature;
        EXPECT_THAT(whole.errors, StartsWith(std::string("standard input: feature 1: ") + reason));
        EXPECT_THAT(whole.output, HasSubstr("\"items\":[0,1],\"features\":[0,2]")) << feature;

        const auto lines =
            run("cluster --zoom 3", point("[1,2]") + "\n\n" + feature + "\n" + point("[5,6]") + "\n");
        EXPECT_EQ(lines.code, 1) << feature;
        EXPECT_THAT(lines.errors, StartsWith(std::string("standard input:3: feature 1: ") + reason));
        EXPECT_THAT(lines.output, HasSubstr("\"items\":[0,1],\"features\":[0,2]")) << feature;
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
    const struct {
        std::string text;
        const char* reason;
    } cases[] = {
        {"", "it is empty"},
        {" \n ", "it is empty"},
        {"hello", "it is n"},
        {"[1,2]", "it is neither a FeatureCollection nor a Feature"},
        {"{\"a\":1}", "it is neither a FeatureCollection nor a Feature"},
        {R"({"type":"Topology"})", "its type is 'Topology'"},
        {R"({"type":"FeatureCollection"})", "the FeatureCollection has no features"},
        {R"({"type":"FeatureCollection","features":{}})",
         "the features of the FeatureCollection are not an array"},
        {R"({"type":"FeatureCollection","features":[],"features":[]})", "it has two members 'features'"},
        {collection(point("[1,2]")) + " {}", "there is more behind the FeatureCollection"},
        {collection(point("[1,2]")).substr(0, 80),
         "it is not valid JSON at line 1, column 81: the text ends too early"},
        {point("[1,2]").substr(0, 30), "it is not valid JSON at line 1, column 31: the text ends too early"},
        {collection("\n7,{\"a\":[1,2}},{}"), "it is not valid JSON at line 2, column 12: unexpected '}'"},
        {collection("{},"), "it is not valid JSON at line 1, column 44: unexpected ']'"},
        {collection("{} {}"), "it is not valid JSON at line 1, column 44: unexpected '{'"},
        {"{\"type\":\"FeatureCollection\",x:1}", "it is not valid JSON at line 1, column 29: unexpected 'x'"},
        {member("\"\xFF\""), "the value of 'x' at line 1, column 6: it is not valid JSON"},
        {member("tru"), "the value of 'x' at line 1, column 6: one of its words is not valid"},
        {member("01"), "the value of 'x' at line 1, column 6: one of its numbers is not valid"},
        {member("{\"a\":\"\\q\"}"), "the value of 'x' at line 1, column 6: one of its texts is not valid"},
        {member("[1,,2]"), "the value of 'x' at line 1, column 6: it is not valid JSON"},
        {member("[1}"), "it is not valid JSON at line 1, column 8: unexpected '}'"},
    };
    for (const auto& [text, reason] : cases) {
        const auto outcome = run("cluster --zoom 3", text);
        EXPECT_EQ(outcome.code, 1) << text;
        EXPECT_THAT(outcome.errors, HasSubstr(std::string("standard input: ") + reason)) << text;
        EXPECT_THAT(outcome.output, IsEmpty()) << text;
    }
    EXPECT_THAT(run("cluster --zoom 3 missing.json").errors,
                HasSubstr("missing.json: cannot be read: No such file"));
    EXPECT_EQ(run("cluster --zoom 3 missing.json").code, 1);
    EXPECT_THAT(run("cluster --zoom 3 .").errors, HasSubstr(".: cannot be read: Is a directory"));
}

TEST_F(ClusterCommandTest, TellsWrongUseFromWrongInput) {
    const struct {
        const char* words;
        const char* reason;
    } cases[] = {
        {"", "usage: pelta COMMAND"},
        {"dance", "there is no command 'dance'"},
        {"cluster", "--zoom is missing"},
        {"cluster --zoom", "--zoom needs a value"},
        {"cluster --zoom near", "--zoom takes a number"},
        {"cluster --zoom 5..3", "--zoom takes a number"},
        {"cluster --zoom 1..2.5", "--zoom takes a number"},
        {"cluster --zoom nan", "--zoom takes a number"},
        {"cluster --zoom 3 --min-count -1", "--min-count takes a whole number"},
        {"cluster --zoom 3 --max-distance 1e3", "--max-distance takes a whole number"},
        {"cluster --zoom 3 --fast", "there is no option '--fast'"},
        {"cluster --zoom 3 a b", "there is more than one file"},
    };
    for (const auto& [words, reason] : cases) {
        const auto outcome = run(words);
        EXPECT_EQ(outcome.code, 2) << words;
        EXPECT_THAT(outcome.errors, HasSubstr(reason)) << words;
        EXPECT_THAT(outcome.output, IsEmpty()) << words;
    }
    EXPECT_THAT(run("--help").output, HasSubstr("  cluster "));
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
