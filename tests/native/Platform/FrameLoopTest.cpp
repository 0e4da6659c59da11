#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/Frames.h>
#include <pelta/headless/HeadlessPort.h>

namespace pelta {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;

struct Participant final : FrameParticipant {
    void advanceTo(double now) override { onAdvance(now); }
    void renderFrame() override { onRender(); }
    std::function<void(double)> onAdvance = [](double) {};
    std::function<void()> onRender = [] {};
};

class FrameLoopTest : public ::testing::Test {
 protected:
    std::shared_ptr<Participant> addParticipant() {
        auto participant = std::make_shared<Participant>();
        FrameLoop::add(participant);
        return participant;
    }

    HeadlessPort port_;
};

TEST_F(FrameLoopTest, AdvancesThenRunsTasksThenRenders) {
    std::vector<std::string> events;
    const auto first = addParticipant();
    const auto second = addParticipant();
    const auto note = [&events](const std::shared_ptr<Participant>& participant, const std::string& name) {
        participant->onAdvance = [&events, name](double) { events.push_back("advance " + name); };
        participant->onRender = [&events, name] { events.push_back("render " + name); };
    };
    note(first, "1");
    note(second, "2");
    MainQueue::async([&events] { events.emplace_back("task"); });
    port_.runFrame();
    EXPECT_THAT(events, ElementsAre("advance 1", "advance 2", "task", "render 1", "render 2"));
}

TEST_F(FrameLoopTest, FramesComeAtSixtiethsOfASecondWhileRequested) {
    std::vector<double> times;
    const auto participant = addParticipant();
    participant->onAdvance = [&times](double now) { times.push_back(now * 60); };
    participant->onRender = [&times] {
        if (times.size() < 3) {
            FrameLoop::request();
            FrameLoop::request();
        }
    };
    port_.advance(0.1);  // Nothing requested.
    FrameLoop::request();
    EXPECT_TRUE(FrameLoop::isRequested());
    EXPECT_TRUE(port_.runUntilIdle());
    EXPECT_THAT(times, ElementsAre(DoubleNear(7, 1e-6), DoubleNear(8, 1e-6), DoubleNear(9, 1e-6)));
    EXPECT_FALSE(FrameLoop::isRequested());
}

TEST_F(FrameLoopTest, ParticipantsMayComeAndGoWithinAFrame) {
    std::vector<std::string> events;
    auto leaving = addParticipant();
    auto staying = addParticipant();
    std::shared_ptr<Participant> added;
    leaving->onAdvance = [&](double now) {
        events.emplace_back("leaving");
        leaving.reset();
        added = addParticipant();
        added->onRender = [&events] { events.emplace_back("added renders"); };
        FrameLoop::run(now);  // A frame within a frame is ignored.
        port_.advance(1);     // So is time within a frame.
    };
    staying->onRender = [&events] { events.emplace_back("staying renders"); };
    port_.runFrame();
    EXPECT_THAT(events, ElementsAre("leaving", "staying renders", "added renders"));
    EXPECT_DOUBLE_EQ(port_.now(), 0);
}

}  // namespace
}  // namespace pelta
