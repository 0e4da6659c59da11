#pragma once

#include "Run.h"

namespace pelta {

/// Whether the engine keeps a layer before or after another of its run by the order of their arrival, because
/// their sort keys are equal. Such a feature cannot change and stay where it is.
[[nodiscard]] bool sharesSortKey(const ModelLayer& layer);

/// Gives the members of a run sort keys that keep them in order, changing as few as possible.
///
/// Lines each have a key of their own. Symbols cost the engine a drawing call for each key, so that in runs
/// of more than a few they share keys: those with equal keys are drawn in the order of their arrival, within
/// each of the engine's tiles. Members that are to arrive anew are marked so.
void assignSortKeys(Run& run);

}  // namespace pelta
