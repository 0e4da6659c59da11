#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "Run.h"

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
    void plan(const std::vector<ModelLayer*>& layers);

    /// The layers of the engine, bottom first.
    [[nodiscard]] const std::vector<EngineLayer>& layers() const noexcept { return layers_; }

 private:
    struct Draft {
        SharedText key;
        std::vector<ModelLayer*> members;
        ModelLayer* literal = nullptr;
        Run* run = nullptr;
    };

    [[nodiscard]] static std::vector<Draft> draft(const std::vector<ModelLayer*>& layers);
    /// Finds for each draft the run that shares most members with it and has the same key.
    static void matchRuns(std::vector<Draft>& drafts);
    [[nodiscard]] std::unique_ptr<Run> makeRun(const Draft& draft);
    static void fillRun(Run& run, std::vector<ModelLayer*> members);

    std::map<std::uint32_t, std::unique_ptr<Run>> runs_;
    std::vector<EngineLayer> layers_;
    std::uint32_t lastNumber_ = 0;
};

}  // namespace pelta
