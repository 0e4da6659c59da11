#pragma once

#include <string>
#include <string_view>

namespace pelta::random {

class World;

/// Exit code of a run that has broken a rule.
inline constexpr int brokenRule = 3;

/// Ends the process when a rule is broken.
/// @param rule  one word; runs that break the same rule count as the same fault.
void check(bool holds, std::string_view rule, const std::string& found);

/// What must be so whenever everything is at rest.
void checkWorld(World& world);

}  // namespace pelta::random
