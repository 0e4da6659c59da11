#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "Run.h"
#include "RunStack.h"

namespace pelta {

/// One layer of the engine: a layer of the model as it is, or a run.
struct EngineLayer {
    ModelLayer* literal = nullptr;
    Run* run = nullptr;
};

/// Divides a stack of layers into the fewest runs. Runs keep their number from plan to plan, so that a change
/// touches only what it splits or joins.
class RunPlanner {
 public:
    /// @param layers  the whole stack, bottom first, their values read.
    /// @param zoom    of the camera; at others the plan holds for as long as `holdsAt` says.
    void plan(const std::vector<ModelLayer*>& layers, double zoom);
    /// Whether a plan made at `zoom` would be the same, or no better: false before what is drawn wider on the
    /// ground could meet, and when it has come far enough apart for a better one.
    [[nodiscard]] bool holdsAt(double zoom) const noexcept;

    /// The layers of the engine, bottom first.
    [[nodiscard]] const std::vector<EngineLayer>& layers() const noexcept { return layers_; }

 private:
    /// Finds for each draft the run that shares most members with it and has the same key.
    static void matchRuns(std::vector<RunDraft>& drafts);
    [[nodiscard]] std::unique_ptr<Run> makeRun(const RunDraft& draft);
    static void fillRun(Run& run, std::vector<ModelLayer*> members);

    std::map<std::uint32_t, std::unique_ptr<Run>> runs_;
    std::vector<EngineLayer> layers_;
    std::uint32_t lastNumber_ = 0;
    double plannedZoom_ = 0;  ///< The lowest zoom that the plan is right for.
    bool isCrowded_ = false;  ///< A higher zoom could have a better plan.
};

}  // namespace pelta
