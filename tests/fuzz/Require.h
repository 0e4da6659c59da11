#pragma once

#include <string_view>

namespace pelta::fuzz {

/// Ends the process as a crash does when a property of the code under test does not hold, so that the fuzzer
/// keeps the input.
///
/// @param property  what must hold, in words.
/// @param detail    what was found in its place.
void require(bool holds, std::string_view property, std::string_view detail = {});

/// Requires of a message that it is one line of text.
void requireTidy(std::string_view message);

/// Tells faults on a copy of the present standard error from now on, for programs that catch standard error.
void keepReports();

}  // namespace pelta::fuzz
