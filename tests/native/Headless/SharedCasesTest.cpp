#include <gtest/gtest.h>
#include <ostream>

#include <pelta/headless/HeadlessPort.h>

#include "shared/SharedCases.h"

namespace pelta::shared {

/// What a failing case is called in the report.
void PrintTo(const SharedCase& shared, std::ostream* out) {
    *out << shared.name;
}

namespace {

class SharedCases : public testing::TestWithParam<SharedCase> {};

TEST_P(SharedCases, HoldsOnTheHeadlessPort) {
    HeadlessPort port;
    const auto window = port.makeWindow(SharedScene::size);
    SharedScene scene(*window);
    ASSERT_TRUE(port.runUntilIdle());
    for (const auto& step : GetParam().steps) {
        step(scene);
        ASSERT_TRUE(port.runUntilIdle());
    }
    for (const std::string& failure : scene.failures()) {
        ADD_FAILURE() << failure;
    }
}

INSTANTIATE_TEST_SUITE_P(, SharedCases, testing::ValuesIn(sharedCases().begin(), sharedCases().end()),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace pelta::shared
