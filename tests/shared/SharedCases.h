#pragma once

#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "SharedScene.h"

/// @file
/// One table of behaviour that every port must show: camera, projection, feature query and order of events.
/// Only public headers, no test framework, no exceptions, so that the table runs natively and in a page.

namespace pelta::shared {

/// One behaviour.
///
/// A runner makes a `SharedScene`, lets the map come to rest, runs each step and lets the map come to rest
/// after it (`EventRecorder::idleCount` has grown, or nothing was asked of the map), and then reports
/// `failures()`. The case passes when there are none.
struct SharedCase {
    std::string_view name;  ///< Unique, a word of letters, digits and underscores.
    std::vector<std::function<void(SharedScene&)>> steps;
};

/// Every case, in a fixed order.
[[nodiscard]] std::span<const SharedCase> sharedCases();

/// @name The table's parts
/// @{
[[nodiscard]] std::vector<SharedCase> cameraCases();
[[nodiscard]] std::vector<SharedCase> projectionCases();
[[nodiscard]] std::vector<SharedCase> eventCases();
[[nodiscard]] std::vector<SharedCase> featureCases();
/// @}

}  // namespace pelta::shared
