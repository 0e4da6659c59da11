#pragma once

#include "Attempt.h"

namespace pelta::random {

/// Leaves out of failing operations as many as can be, as long as the rest fails in the same way.
///
/// @param fault  as `attempt` gave it for all of them.
[[nodiscard]] Operations shrink(Operations operations, std::uint32_t endOrder, const std::string& fault);

}  // namespace pelta::random
