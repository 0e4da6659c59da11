#include "RunPlanner.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <unordered_map>
#include <utility>

namespace pelta {

namespace {

/// The lowest zoom that a plan made at a zoom is to be right for: whole, so that plans are made seldom, and
/// some way below, so that a camera that moves out finds the next plan drawn.
double plannedZoomFor(double zoom) {
    constexpr double lead = 0.25;
    return std::max(std::floor(zoom - lead), 0.0);
}

}  // namespace

void RunPlanner::matchRuns(std::vector<RunDraft>& drafts) {
    struct Vote {
        std::size_t count;
        RunDraft* draft;
        Run* run;
    };
    std::vector<Vote> votes;
    for (RunDraft& draft : drafts) {
        std::unordered_map<Run*, std::size_t> counts;
        for (const ModelLayer* member : draft.members) {
            if (member->run != nullptr && member->run->key == draft.key) {
                ++counts[member->run];
            }
        }
        for (const auto& [run, count] : counts) {
            votes.push_back({count, &draft, run});
        }
    }
    std::sort(votes.begin(), votes.end(), [](const Vote& a, const Vote& b) {
        return std::pair(b.count, a.run->number) < std::pair(a.count, b.run->number);
    });
    std::set<Run*> taken;
    for (const Vote& vote : votes) {
        if (vote.draft->run == nullptr && taken.insert(vote.run).second) {
            vote.draft->run = vote.run;
        }
    }
}

std::unique_ptr<Run> RunPlanner::makeRun(const RunDraft& draft) {
    auto run = std::make_unique<Run>();
    run->number = ++lastNumber_;
    run->kind = draft.members.front()->layer->kind();
    run->key = draft.key;
    run->base = draft.members.front()->values.own;
    return run;
}

void RunPlanner::fillRun(Run& run, std::vector<ModelLayer*> members) {
    for (std::size_t i = 0; i < members.size(); ++i) {
        members[i]->run = &run;
        members[i]->position = i;
    }
    run.needsSortKeys = run.needsSortKeys || run.members != members;
    run.members = std::move(members);
}

bool RunPlanner::holdsAt(double zoom) const noexcept {
    const double wanted = plannedZoomFor(zoom);
    return wanted == plannedZoom_ || (wanted > plannedZoom_ && !isCrowded_);
}

void RunPlanner::plan(const std::vector<ModelLayer*>& layers, double zoom) {
    plannedZoom_ = plannedZoomFor(zoom);
    constexpr double worldSizeAtZero = 512;
    RunStack stack(worldSizeAtZero * std::exp2(plannedZoom_));
    for (ModelLayer* layer : layers) {
        stack.put(*layer);
    }
    isCrowded_ = stack.isCrowded();
    std::vector<RunDraft> drafts = stack.take();
    matchRuns(drafts);
    for (ModelLayer* layer : layers) {
        layer->run = nullptr;
    }
    auto former = std::exchange(runs_, {});
    layers_.clear();
    for (RunDraft& draft : drafts) {
        if (draft.literal == nullptr) {
            auto run = draft.run ? std::move(former.at(draft.run->number)) : makeRun(draft);
            draft.run = run.get();
            fillRun(*run, std::move(draft.members));
            runs_.emplace(run->number, std::move(run));
        }
        layers_.push_back({draft.literal, draft.run});
    }
}

}  // namespace pelta
