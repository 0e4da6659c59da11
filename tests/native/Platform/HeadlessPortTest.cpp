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

FetchResult fetch(HeadlessPort& port, const std::string& address) {
    std::vector<FetchResult> results;
    PlatformPort::current().fetchText(address,
                                      [&results](const FetchResult& result) { results.push_back(result); });
    EXPECT_TRUE(results.empty()) << "answered from within the call";
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(results.size(), 1U);
    return results.empty() ? FetchResult{} : results.front();
}

TEST(HeadlessFetchTest, ReadsGivenDocumentsAndFiles) {
    const auto folder = std::filesystem::path(::testing::TempDir()) / "pelta documents";
    std::filesystem::create_directories(folder / "inner.json");
    std::ofstream(folder / "style.json") << "from a file";
    std::ofstream(folder / "empty.json") << "";
    HeadlessPort port;
    port.setResourceFolder(folder);
    port.serveDocument("https://example.org/style.json", "served");
    const std::string encoded =
        "file://localhost" + (folder.parent_path() / "pelta%20documents/style.json").string();
    struct Case {
        std::string address;
        std::string text;
        std::string problem;  ///< Part of the message; empty when the document is there.
    };
    for (const Case& c :
         {Case{"https://example.org/style.json", "served", ""}, Case{"style.json", "from a file", ""},
          Case{"file:style.json", "from a file", ""},
          Case{(folder / "style.json").string(), "from a file", ""}, Case{encoded, "from a file", ""},
          Case{"empty.json", "", ""}, Case{"https://example.org/other.json", "", "serveDocument"},
          Case{"asset:style.json", "", "serveDocument"}, Case{"missing.json", "", "no such file"},
          Case{"inner.json", "", "folder"}, Case{"style.json/below", "", "no such file"},
          Case{"/dev/zero", "", "not a regular file"}, Case{"", "", "names no file"},
          Case{"file://", "", "names no file"}, Case{std::string("a\0b", 3), "", "zero byte"},
          Case{std::string(5000, 'a'), "", "cannot be"}}) {
        const FetchResult result = fetch(port, c.address);
        EXPECT_EQ(result.isOk, c.problem.empty()) << c.address << ": " << result.message;
        EXPECT_EQ(result.text, c.text) << c.address;
        EXPECT_THAT(result.message, HasSubstr(c.problem)) << c.address;
        EXPECT_THAT(result.message, HasSubstr(c.problem.empty() ? "" : "\"" + c.address + "\""));
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
