#pragma once

#include <functional>

namespace pelta {

class UIWindow;

/// Runs an application on the port that it was linked with.
///
/// On the web port the window fills the page's element with the id "pelta" (the page's body when there is
/// none), `launch` runs once and the call returns while the application lives on; on the headless port the
/// window is 800 × 600 points, `launch` runs, and then all work that is due runs until the map is idle.
///
/// @param launch  builds the application's views in the window. What it adds stays alive with the window.
/// @return the process's exit code: 0.
int runApplication(const std::function<void(UIWindow&)>& launch);

}  // namespace pelta
