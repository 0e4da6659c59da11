#include <cmath>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <pelta/Platform/Application.h>
#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/Log.h>
#include <pelta/Platform/Make.h>
#include <pelta/Platform/PlatformPort.h>
#include <pelta/headless/HeadlessPort.h>

namespace pelta {
namespace {

using ::testing::ElementsAre;
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

struct Observer final : LocationObserver {
    void locationDidUpdate(const CLLocation& location) override {
        events.push_back("at " + std::to_string(std::lround(location.coordinate.latitude)));
    }
    void headingDidUpdate(const CLHeading& heading) override {
        events.push_back("towards " + std::to_string(std::lround(heading.trueHeading)));
    }
    void locationDidFail(std::string_view reason) override {
        events.push_back("failed: " + std::string(reason));
    }
    std::vector<std::string> events;
};

TEST(HeadlessLocationTest, ReportsReachEveryLivingObserverOnce) {
    HeadlessPort port;
    LocationSource& source = PlatformPort::current().locationSource();
    const auto staying = std::make_shared<Observer>();
    auto released = std::make_shared<Observer>();
    port.reportLocation({{1, 2}});
    EXPECT_FALSE(port.isLocationObserved());
    source.addObserver(staying);
    source.addObserver(staying);
    source.addObserver(released);
    source.addObserver({});
    released.reset();
    port.reportLocation({{37, 127}});
    ::testing::internal::CaptureStdout();
    setIsLoggerEnabled(true);
    port.reportLocation({{std::nan(""), 127}});
    setIsLoggerEnabled(false);
    EXPECT_THAT(::testing::internal::GetCapturedStdout(), HasSubstr("without a valid coordinate"));
    port.reportHeading({80, 90});
    port.reportHeading({INFINITY, 90});
    port.reportLocationFailure("refused");
    EXPECT_TRUE(port.isLocationObserved());
    source.removeObserver(*staying);
    port.reportLocation({{5, 5}});
    EXPECT_THAT(staying->events, ElementsAre("at 37", "towards 90", "failed: refused"));
    EXPECT_FALSE(port.isLocationObserved());
}

TEST(HeadlessApplicationTest, LaunchesInAWindowAndRunsUntilIdle) {
    std::weak_ptr<UIView> added;
    bool hasRun = false;
    const int exitCode = runApplication([&](UIWindow& window) {
        EXPECT_EQ(window.bounds(), (CGRect{{0, 0}, {800, 600}}));
        const auto view = make<UIView>(window.bounds());
        window.addSubview(view);
        added = view;
        MainQueue::asyncAfter(0.2, [&] { hasRun = !added.expired(); });
    });
    EXPECT_EQ(exitCode, 0);
    EXPECT_TRUE(hasRun);
    EXPECT_TRUE(added.expired());
}

TEST(HeadlessPortDeathTest, OnlyOneCanBeThere) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // Font look-up runs in a thread.
    const HeadlessPort port;
    EXPECT_DEATH(HeadlessPort(), "installed already");
}

}  // namespace
}  // namespace pelta
