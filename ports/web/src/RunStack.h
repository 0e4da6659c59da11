#pragma once

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <vector>

#include "ExtentIndex.h"
#include "Run.h"

namespace pelta {

/// Layers that the engine is to draw as one, or a literal one.
struct RunDraft {
    SharedText key;
    std::vector<ModelLayer*> members;  ///< Bottom first.
    ModelLayer* literal = nullptr;
    Run* run = nullptr;  ///< The present run that it continues; null for a new one.
};

/// Stacks layers, which come bottom first, into few runs that look the same.
///
/// A layer joins the lowest run with its key that lies above everything it could be drawn over: lines and
/// areas reach as far as their shape, grown by what they are drawn wide; all else could be anywhere. Lines
/// may lie over lines of their own run, in the order of their sort keys. Areas may not lie over areas of
/// their own run: the engine smooths the edges of a layer's areas after all their insides.
class RunStack {
 public:
    /// @param worldSize  side of the world in points, at the lowest zoom that the stack has to be right for.
    explicit RunStack(double worldSize) : worldSize_(worldSize) {}

    /// Puts a layer whose values are read on top.
    void put(ModelLayer& layer);

    /// True when lines and areas had to be kept apart because they met: at a higher zoom the stack could be
    /// lower.
    [[nodiscard]] bool isCrowded() const noexcept { return isCrowded_; }
    /// The runs and literal layers, bottom first.
    [[nodiscard]] std::vector<RunDraft> take() noexcept { return std::move(drafts_); }

 private:
    void putLiteral(ModelLayer& layer);
    /// Where a layer is drawn; nothing for anywhere.
    [[nodiscard]] std::optional<Extent> drawnExtent(const ModelLayer& layer) const;
    /// The lowest run that a layer may join, by what it could be drawn over.
    [[nodiscard]] std::size_t floorOf(const ModelLayer& layer, const std::optional<Extent>& extent) const;
    /// The run that takes a layer which may not join those below `floor`; a new one if need be.
    [[nodiscard]] std::size_t runFor(const ModelLayer& layer, std::size_t floor);

    double worldSize_;
    std::vector<RunDraft> drafts_;
    std::unordered_map<const std::string*, std::vector<std::size_t>> byKey_;  ///< Ascending.
    ExtentIndex extents_;        ///< What is seen of lines and areas, by run.
    std::size_t barrier_ = 0;    ///< One above the highest run that could be seen anywhere.
    std::size_t seenLimit_ = 0;  ///< One above the highest run of which anything is seen.
    bool isCrowded_ = false;
};

}  // namespace pelta
