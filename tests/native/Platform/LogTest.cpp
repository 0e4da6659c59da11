#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>

#include <pelta/Platform/Bundle.h>
#include <pelta/Platform/Log.h>
#include <pelta/Platform/PlatformPort.h>

namespace pelta {
namespace {

TEST(LogTest, LinesAppearOnlyWhileEnabledAndNameTheirPlace) {
    ::testing::internal::CaptureStdout();
    dPrint("before");
    setIsLoggerEnabled(true);
    dPrint("Tapped.", "src/View/PgmMapView.cpp", 7);
    dPrint("", "plain.cpp", 0);
    const int line = __LINE__ + 1;
    dPrint("here");
    setIsLoggerEnabled(false);
    dPrint("after");
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "📌 [PgmMapView.cpp:7] Tapped.\n📌 [plain.cpp:0] \n📌 [LogTest.cpp:" + std::to_string(line) +
                  "] here\n");
}

TEST(LogDeathTest, ProgrammingErrorsPrintTheirMessageAndAbort) {
    EXPECT_DEATH(fatalError("Unsorted criteria.", "a/b/Generator.cpp", 12),
                 "Unsorted criteria\\..*Generator\\.cpp:12");
    EXPECT_DEATH(static_cast<void>(PlatformPort::current()), "No platform port is installed");
}

}  // namespace
}  // namespace pelta
