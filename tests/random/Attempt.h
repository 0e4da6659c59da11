#pragma once

#include <string>

#include "Operation.h"

namespace pelta::random {

/// How a run of operations ended.
struct Outcome {
    std::string
        fault;  ///< What went wrong, in one line that is the same for the same fault; empty when nothing did.
    std::string report;  ///< All that the run wrote.
};

/// Performs operations on a new world, lets it settle, and releases it, in a process of its own, so that
/// crashes, aborts of the sanitizers, leaks and runs without an end are survived.
///
/// @param endOrder  the order in which the world is released.
[[nodiscard]] Outcome attempt(const Operations& operations, std::uint32_t endOrder);

/// Leaves out of failing operations as many as can be, as long as the rest fails in the same way.
///
/// @param fault  as `attempt` gave it for all of them.
[[nodiscard]] Operations shrink(Operations operations, std::uint32_t endOrder, const std::string& fault);

/// Loads what a process loads once (fonts, pictures, symbols), so that the processes of attempts have it from
/// their start.
void prepareAttempts();

}  // namespace pelta::random
