#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

/// Runs the built command as a shell does, in a folder of the test's own.
class CommandRun : public testing::Test {
 protected:
    void SetUp() override { std::filesystem::create_directories(folder_); }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    struct Outcome {
        int code;
        std::string output;
        std::string errors;
    };

    /// Runs `pelta WORDS` with the text as standard input.
    Outcome run(const std::string& words, const std::string& input = {}) const {
        std::ofstream(path("in"), std::ios::binary) << input;
        return shell("'" PELTA_COMMAND "' " + words + " <in >out 2>err");
    }

    /// Runs a line of shell that leaves what it writes in the files "out" and "err".
    Outcome shell(const std::string& line) const {
        const int status = std::system(("cd '" + folder_.string() + "' && " + line).c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, textOf("out"), textOf("err")};
    }

    std::filesystem::path path(const std::string& name) const { return folder_ / name; }

 private:
    std::string textOf(const std::string& name) const {
        std::stringstream text;
        text << std::ifstream(path(name), std::ios::binary).rdbuf();
        return text.str();
    }

    std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() / ("pelta-command-test-" + std::to_string(getpid()));
};
