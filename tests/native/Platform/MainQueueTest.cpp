#include <atomic>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include <pelta/Platform/Dispatch.h>
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

TEST_F(MainQueueTest, TasksAddedForTheSameMomentWaitForTheNextTurn) {
    MainQueue::async([this] {
        events_.emplace_back("first");
        MainQueue::async(note("added"));
    });
    MainQueue::async(note("second"));
    EXPECT_EQ(MainQueue::runDue(port_.now()), 2U);
    EXPECT_THAT(events_, ElementsAre("first", "second"));
    EXPECT_TRUE(MainQueue::hasDue(port_.now()));
    EXPECT_EQ(MainQueue::runDue(port_.now()), 1U);
    EXPECT_FALSE(MainQueue::nextDue());
}

TEST_F(MainQueueTest, AnEndlessChainOfTasksDoesNotStopTime) {
    std::function<void()> again = [&again] { MainQueue::async(again); };
    MainQueue::async(again);
    EXPECT_FALSE(port_.runUntilIdle(0.1));
    EXPECT_DOUBLE_EQ(port_.now(), 0.1);
    MainQueue::clear();
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

TEST_F(MainQueueTest, ClearDropsTasksAndLetsWaitingThreadsGo) {
    std::atomic<bool> hasReturned{false};
    std::thread other([&] {
        MainQueue::sync(note("never"));
        hasReturned = true;
    });
    while (!hasReturned) {
        if (MainQueue::nextDue()) {
            MainQueue::clear();
        }
    }
    other.join();
    EXPECT_THAT(events_, ElementsAre());
}

}  // namespace
}  // namespace pelta
