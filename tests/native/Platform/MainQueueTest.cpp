#include <atomic>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/Frames.h>
#include <pelta/headless/HeadlessPort.h>

namespace pelta {
namespace {

using ::testing::ElementsAre;

class MainQueueTest : public ::testing::Test {
 protected:
    MainQueue::Task note(const std::string& name) {
        return [this, name] { events_.push_back(name); };
    }

    HeadlessPort port_;
    std::vector<std::string> events_;
};

TEST_F(MainQueueTest, RunsByDueTimeThenBySubmission) {
    MainQueue::asyncAfter(0.2, note("0.2"));
    MainQueue::asyncAfter(0.1, note("0.1 a"));
    MainQueue::asyncAfter(0.1, note("0.1 b"));
    MainQueue::asyncAfter(-5, note("negative"));
    MainQueue::asyncAfter(std::nan(""), note("NaN"));
    MainQueue::async(note("now"));
    EXPECT_THAT(events_, ElementsAre());
    port_.advance(0.15);
    EXPECT_THAT(events_, ElementsAre("negative", "NaN", "now", "0.1 a", "0.1 b"));
    port_.advance(0.05);
    EXPECT_EQ(events_.back(), "0.2");
}

TEST_F(MainQueueTest, AFrameAdvancesThenRunsTasksThenRenders) {
    struct Participant final : FrameParticipant {
        void advanceTo(double /*now*/) override { events->emplace_back("advance"); }
        void renderFrame() override { events->emplace_back("render"); }
        std::vector<std::string>* events = nullptr;
    };
    const auto participants = {std::make_shared<Participant>(), std::make_shared<Participant>()};
    for (const auto& participant : participants) {
        participant->events = &events_;
        FrameLoop::add(participant);
    }
    MainQueue::async(note("task"));
    port_.runFrame();
    EXPECT_THAT(events_, ElementsAre("advance", "advance", "task", "render", "render"));
}

TEST_F(MainQueueTest, SyncRunsAtOnceOnTheMainThreadAndWaitsElsewhere) {
    MainQueue::sync(note("main"));
    EXPECT_THAT(events_, ElementsAre("main"));

    std::atomic<bool> hasReturned{false};
    bool ranOnMainThread = false;
    std::thread other([&] {
        EXPECT_FALSE(MainQueue::isMainThread());
        MainQueue::sync([&] {
            ranOnMainThread = MainQueue::isMainThread();
            EXPECT_FALSE(hasReturned);
        });
        hasReturned = true;
    });
    while (!hasReturned) {
        port_.advance(0.001);
    }
    other.join();
    EXPECT_TRUE(ranOnMainThread);
}

TEST(MainQueueWithoutPortTest, NobodyWaitsForAQueueThatNobodyRuns) {
    auto port = std::make_unique<HeadlessPort>();
    std::atomic<int> runs{0};
    std::atomic<int> returns{0};
    const auto call = [&] {
        for (int i = 0; i < 100; ++i, ++returns) {
            MainQueue::sync([&] { ++runs; });
        }
    };
    std::thread one(call);
    std::thread other(call);
    while (!MainQueue::nextDue()) {
        std::this_thread::yield();
    }
    EXPECT_EQ(returns, 0) << "waits while there is a port";
    port.reset();
    one.join();
    other.join();
    EXPECT_EQ(runs, 0);
    EXPECT_EQ(returns, 200);
    MainQueue::async([&] { ++runs; });
    port = std::make_unique<HeadlessPort>();
    port->advance(1);
    EXPECT_EQ(runs, 0) << "dropped with the port before";
    MainQueue::async([&] { ++runs; });
    port->advance(1);
    EXPECT_EQ(runs, 1);
}

}  // namespace
}  // namespace pelta
