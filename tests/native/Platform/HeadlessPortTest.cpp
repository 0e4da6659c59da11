#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <pelta/Platform/PlatformPort.h>
#include <pelta/headless/HeadlessPort.h>

namespace pelta {
namespace {

using ::testing::HasSubstr;

TEST(HeadlessFetchTest, ReadsGivenDocumentsAndFiles) {
    const auto folder = std::filesystem::path(::testing::TempDir()) / "pelta documents";
    std::filesystem::create_directories(folder / "inner.json");
    std::ofstream(folder / "style.json") << "from a file";
    std::ofstream(folder / "empty.json") << "";
    HeadlessPort port;
    port.setResourceFolder(folder);
    port.serveDocument("https://example.org/style.json", "served");
    const auto encoded =
        "file://localhost" + (folder.parent_path() / "pelta%20documents/style.json").string();
    struct Case {
        std::string address;
        std::string text;
        std::string problem = {};  ///< Part of the message; empty when the document is there.
    };
    const Case cases[] = {
        {"https://example.org/style.json", "served"},
        {"style.json", "from a file"},
        {"file:style.json", "from a file"},
        {(folder / "style.json").string(), "from a file"},
        {encoded, "from a file"},
        {"empty.json", ""},
        {"https://example.org/other.json", "", "serveDocument"},
        {"asset:style.json", "", "serveDocument"},
        {"missing.json", "", "no such file"},
        {"inner.json", "", "folder"},
        {"style.json/below", "", "no such file"},
        {"/dev/zero", "", "not a regular file"},
        {"", "", "names no file"},
        {"file://", "", "names no file"},
        {std::string("a\0b", 3), "", "zero byte"},
        {std::string(5000, 'a'), "", "cannot be"},
    };
    for (const Case& c : cases) {
        std::vector<FetchResult> results;
        PlatformPort::current().fetchText(c.address,
                                          [&](const FetchResult& result) { results.push_back(result); });
        EXPECT_TRUE(results.empty()) << "answered from within the call";
        EXPECT_TRUE(port.runUntilIdle());
        ASSERT_EQ(results.size(), 1U);
        EXPECT_EQ(results[0].isOk, c.problem.empty()) << c.address << ": " << results[0].message;
        EXPECT_EQ(results[0].text, c.text) << c.address;
        EXPECT_THAT(results[0].message, HasSubstr(c.problem)) << c.address;
        EXPECT_THAT(results[0].message, HasSubstr(c.problem.empty() ? "" : "\"" + c.address + "\""));
    }
    std::filesystem::remove_all(folder);
}

TEST(HeadlessPortDeathTest, OnlyOneCanBeThere) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // Font look-up runs in a thread.
    const HeadlessPort port;
    EXPECT_DEATH(HeadlessPort(), "installed already");
}

}  // namespace
}  // namespace pelta
