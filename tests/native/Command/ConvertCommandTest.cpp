#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <string>

#include "CaseFile.h"
#include "Command/CommandRun.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class ConvertCommandTest : public CommandRun {};

// A tower in Seoul; PROJ gives 310796.0319 550372.5270 for the same datum and projection.
const std::string degrees = "126.9882 37.5512";
const std::string katec = "310796.0319 550372.5305";

TEST_F(ConvertCommandTest, ConvertsTheNumbersAndCarriesOverTheRest) {
    const struct {
        std::string line;
        std::string expected;
    } cases[] = {
        {degrees, katec},
        {degrees + " ", katec},
        {degrees + " N Seoul Tower,  남산\t#1", katec + " N Seoul Tower,  남산\t#1"},
        {"126.9882,37.5512,tower, south", katec + " tower, south"},
        {" \t+126.9882 , \t37.5512\ttower", katec + " tower"},
        {"1269882e-4\t37.5512   tower", katec + "   tower"},
        {degrees + "\r", katec + "\r"},
        {degrees + " tower\r", katec + " tower\r"},
        {"", ""},
        {"  ", "  "},
        {"\r", "\r"},
        {"# 1 2", "# 1 2"},
    };
    std::string input, expected;
    for (const auto& [line, result] : cases) {
        const auto outcome = run("convert --from wgs84 --to katec", line + "\n");
        EXPECT_EQ(outcome.output, result + "\n") << line;
        EXPECT_EQ(outcome.code, 0) << line;
        input += line + "\n";
        expected += result + "\n";
    }
    EXPECT_EQ(run("convert --from wgs84 --to katec", input).output, expected);
    EXPECT_EQ(run("convert --from wgs84 --to katec", "\xEF\xBB\xBF" + degrees).output, katec + "\n")
        << "a byte order mark, and no break behind the last line";
    EXPECT_EQ(run("convert --from wgs84 --to katec", "").output, "");
}

TEST_F(ConvertCommandTest, KnowsAllSystems) {
    for (const std::string system : {"katec", "tm", "grs80", "utmk"}) {
        const auto there = run("convert --from wgs84 --to " + system, degrees + "\n");
        EXPECT_THAT(there.output, testing::MatchesRegex("[0-9]+\\.[0-9]{4} [0-9]+\\.[0-9]{4}\n")) << system;
        const auto back = run("convert --to=wgs84 --from=" + system, there.output);
        EXPECT_THAT(back.output, testing::MatchesRegex("[0-9]+\\.[0-9]{10} [0-9]+\\.[0-9]{10}\n")) << system;
        EXPECT_NEAR(std::stod(back.output), 126.9882, 5e-8) << system;
        EXPECT_NEAR(std::stod(back.output.substr(back.output.find(' '))), 37.5512, 5e-8) << system;
        if (system != "katec") {
            EXPECT_NE(there.output, katec + "\n");
        }
    }
}

TEST_F(ConvertCommandTest, NamesLinesThatCannotBeConverted) {
    std::ofstream file(path("some lines.txt"));
    std::string expected, reasons;
    int number = 0;
    for (const auto& [line, answer] : casesOf("Command/bad-lines.txt")) {
        file << degrees << "\n" << line << "\n";
        expected += katec + "\n" + answer.at(0) + "\n";
        reasons += "some lines.txt:" + std::to_string(number += 2) + ": " + answer.at(1) + "\n";
    }
    file.close();
    const auto outcome = run("convert --from wgs84 --to katec 'some lines.txt'");
    EXPECT_EQ(outcome.output, expected);
    EXPECT_EQ(outcome.errors, reasons);
    EXPECT_EQ(outcome.code, 1);
}

TEST_F(ConvertCommandTest, ReadsSeveralFilesAndStandardInput) {
    std::ofstream(path("a")) << degrees << " a\nbad";
    std::ofstream(path("-b")) << degrees << " b\n\nworse\n";
    const auto outcome =
        run("convert --from wgs84 --to katec a missing - . -- -b", degrees + " in\n\n\nworst\n");
    EXPECT_EQ(outcome.output, katec + " a\n* *\n" + katec + " in\n\n\n* *\n" + katec + " b\n\n* *\n");
    EXPECT_THAT(outcome.errors, HasSubstr("a:2: "));
    EXPECT_THAT(outcome.errors, HasSubstr("missing: cannot be read: No such file"));
    EXPECT_THAT(outcome.errors, HasSubstr("standard input:4: "));
    EXPECT_THAT(outcome.errors, HasSubstr(".: cannot be read: Is a directory"));
    EXPECT_THAT(outcome.errors, HasSubstr("-b:3: "));
    EXPECT_EQ(outcome.code, 1);
}

TEST_F(ConvertCommandTest, NamesAHundredBadLinesOfAFileAndCountsTheOthers) {
    const auto outcome = shell("yes bad | head -n 100000 >bad; '" PELTA_COMMAND
                               "' convert --from wgs84 --to katec bad bad 2>err | wc -l >out");
    EXPECT_EQ(std::stoi(outcome.output), 200'000);
    const std::string last =
        "\nbad:100: the line does not start with a number\nbad: 99900 more lines cannot be converted\n";
    EXPECT_THAT(outcome.errors, HasSubstr(last + "bad:1: "));
    EXPECT_TRUE(outcome.errors.ends_with(last));
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 202);
}

TEST_F(ConvertCommandTest, RefusesAFileThatIsTheOutputAsWell) {
    for (const std::string files : {"f >>f", "<f >>f", "f 1<>f", "- f empty <empty >>f"}) {
        std::ofstream(path("f")) << degrees << "\n";
        std::ofstream(path("empty")).flush();
        const auto outcome = shell("ulimit -f 64; '" PELTA_COMMAND "' convert --from wgs84 --to katec " +
                                   files + " 2>err; code=$?; cp f out; exit $code");
        EXPECT_EQ(outcome.code, 1) << files;
        EXPECT_EQ(outcome.output, degrees + "\n") << files;
        EXPECT_THAT(outcome.errors,
                    HasSubstr(": cannot be read: it is the output as well; write to another file\n"));
    }
    EXPECT_EQ(shell("'" PELTA_COMMAND "' convert --from wgs84 --to katec empty >>empty").code, 0);
}

// A second must go by before there is a progress line at all.
TEST_F(ConvertCommandTest, LeavesNoProgressLineWhenInterrupted) {
    const auto outcome = shell("script -qec \"bash -c '(while sleep 0.02; do echo " + degrees +
                               "; done) | timeout -s INT 1.5 \\\"" PELTA_COMMAND
                               "\\\" convert --from wgs84 --to katec >out'\" typed </dev/null >err");
    EXPECT_THAT(outcome.output, StartsWith(katec + "\n"));
    EXPECT_THAT(outcome.errors, HasSubstr(" lines"));
    EXPECT_TRUE(outcome.errors.ends_with(" lines\r\033[K")) << outcome.errors;
}

// Longer than any room that the command reads into: memory does not grow with a file, nor with a line.
TEST_F(ConvertCommandTest, KeepsTrackInLongFilesAndLongLines) {
    const std::string longRest(600'000, 'r');
    std::string input, expected;
    for (int i = 0; i < 20'000; ++i) {
        input += degrees + " " + std::to_string(i) + "\n";
        expected += katec + " " + std::to_string(i) + "\n";
    }
    input +=
        degrees + " " + longRest + "\nbad\n" + std::string(300'000, ' ') + degrees + "\nbad\n#" + longRest;
    expected += katec + " " + longRest + "\n* *\n* * ";
    const auto outcome = run("convert --from wgs84 --to katec", input);
    EXPECT_TRUE(outcome.output.starts_with(expected));
    EXPECT_TRUE(outcome.output.ends_with(degrees + "\n* *\n#" + longRest + "\n"));
    EXPECT_EQ(outcome.errors,
              "standard input:20002: the line does not start with a number\n"
              "standard input:20003: the numbers are too far from the start of the line\n"
              "standard input:20004: the line does not start with a number\n");
    const auto narrow =
        shell("ulimit -v 60000; yes '" + degrees +
              "' | head -c 80000000 | '" PELTA_COMMAND "' convert --from wgs84 --to utmk 2>err | wc -l >out");
#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_EQ(std::stoi(narrow.output), 80'000'000 / (static_cast<int>(degrees.size()) + 1) + 1);
#endif
}

TEST_F(ConvertCommandTest, AnswersEachLineOfAPipeAtOnce) {
    const auto outcome = shell("bash -c 'coproc \"" PELTA_COMMAND
                               "\" convert --from wgs84 --to katec;"
                               " echo " +
                               degrees +
                               " >&${COPROC[1]}; read -t 20 -u ${COPROC[0]} line;"
                               " echo \"$line\" >out'");
    EXPECT_EQ(outcome.output, katec + "\n");
}

}  // namespace
