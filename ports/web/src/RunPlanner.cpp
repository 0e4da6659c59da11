#include "RunPlanner.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

namespace pelta {

std::vector<RunPlanner::Draft> RunPlanner::draft(const std::vector<ModelLayer*>& layers) {
    std::vector<Draft> drafts;
    std::vector<ModelLayer*> unseen;
    for (ModelLayer* layer : layers) {
        if (layer->isLiteral) {
            drafts.push_back({nullptr, {}, layer, nullptr});
        } else if (layer->values.sight != LayerSight::nothing) {
            const SharedText& key = layer->values.key;
            if (!drafts.empty() && drafts.back().key == key) {
                drafts.back().members.push_back(layer);
            } else if (layer->values.sight == LayerSight::transparent) {
                unseen.push_back(layer);
            } else {
                drafts.push_back({key, {layer}, nullptr, nullptr});
            }
        }
    }
    // What cannot be seen can stand anywhere.
    std::unordered_map<const std::string*, std::size_t> unseenDrafts;
    for (ModelLayer* layer : unseen) {
        const auto [entry, isNew] = unseenDrafts.emplace(layer->values.key.get(), drafts.size());
        if (isNew) {
            drafts.push_back({layer->values.key, {}, nullptr, nullptr});
        }
        drafts[entry->second].members.push_back(layer);
    }
    return drafts;
}

void RunPlanner::matchRuns(std::vector<Draft>& drafts) {
    struct Vote {
        std::size_t count;
        Draft* draft;
        Run* run;
    };
    std::vector<Vote> votes;
    for (Draft& draft : drafts) {
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

std::unique_ptr<Run> RunPlanner::makeRun(const Draft& draft) {
    auto run = std::make_unique<Run>();
    run->number = ++lastNumber_;
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

void RunPlanner::plan(const std::vector<ModelLayer*>& layers) {
    std::vector<Draft> drafts = draft(layers);
    matchRuns(drafts);
    for (ModelLayer* layer : layers) {
        layer->run = nullptr;
    }
    auto former = std::exchange(runs_, {});
    layers_.clear();
    for (Draft& draft : drafts) {
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
