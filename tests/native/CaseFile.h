#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

/// What is given to a reader of text, and parts of what it answers.
struct TextCase {
    std::string text;
    std::vector<std::string> answer;
};

/// The cases of a file beside the tests: a text on a line, and the parts of its answer on indented lines
/// below. "\n" and "\xHH" stand for a line break and for a byte; lines that start with "# " are remarks.
inline std::vector<TextCase> casesOf(const std::string& file) {
    static const std::regex escape(R"(\\n|\\x([0-9A-F]{2}))");
    std::vector<TextCase> cases;
    std::ifstream lines(std::filesystem::path(PELTA_SOURCE_TREE) / "tests/native" / file);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("    ")) {
            cases.back().answer.push_back(line.substr(4));
        } else if (!line.empty() && !line.starts_with("# ")) {
            std::smatch found;
            while (std::regex_search(line, found, escape)) {
                const int byte = found[1].matched ? std::stoi(found[1], nullptr, 16) : '\n';
                line.replace(static_cast<std::size_t>(found.position()),
                             static_cast<std::size_t>(found.length()), 1, static_cast<char>(byte));
            }
            cases.push_back({line, {}});
        }
    }
    EXPECT_FALSE(cases.empty()) << file;
    return cases;
}
