#include <utility>
#include <vector>

#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/Frames.h>
#include <pelta/Platform/PlatformPort.h>

namespace pelta {

namespace {

struct LoopState {
    std::vector<std::weak_ptr<FrameParticipant>> participants;
    bool isRequested = false;
    bool isRunning = false;
};

LoopState& loopState() {
    static LoopState state;
    return state;
}

/// The living participants, held while they work; the released ones are forgotten.
std::vector<std::shared_ptr<FrameParticipant>> livingParticipants() {
    auto& participants = loopState().participants;
    std::erase_if(participants, [](const auto& participant) { return participant.expired(); });
    std::vector<std::shared_ptr<FrameParticipant>> living;
    living.reserve(participants.size());
    for (const auto& participant : participants) {
        living.push_back(participant.lock());
    }
    return living;
}

}  // namespace

void FrameLoop::add(std::weak_ptr<FrameParticipant> participant) {
    loopState().participants.push_back(std::move(participant));
}

void FrameLoop::request() {
    LoopState& state = loopState();
    if (!state.isRequested && PlatformPort::isInstalled()) {
        state.isRequested = true;
        PlatformPort::current().requestFrame();
    }
}

void FrameLoop::run(double now) {
    LoopState& state = loopState();
    if (state.isRunning) {
        return;
    }
    state.isRunning = true;
    state.isRequested = false;
    for (const auto& participant : livingParticipants()) {
        participant->advanceTo(now);
    }
    MainQueue::runDue(now);
    for (const auto& participant : livingParticipants()) {
        participant->renderFrame();
    }
    state.isRunning = false;
}

bool FrameLoop::isRequested() noexcept {
    return loopState().isRequested;
}

void FrameLoop::clear() {
    loopState().participants.clear();
    loopState().isRequested = false;
}

}  // namespace pelta
