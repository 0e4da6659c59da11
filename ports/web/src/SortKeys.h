#pragma once

#include "Run.h"

namespace pelta {

/// Gives the members of a run keys that ascend from the lowest, changing as few as possible.
void assignSortKeys(Run& run);

}  // namespace pelta
