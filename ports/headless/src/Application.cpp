#include <pelta/Platform/Application.h>
#include <pelta/headless/HeadlessPort.h>

namespace pelta {

int runApplication(const std::function<void(UIWindow&)>& launch) {
    constexpr CGSize windowSize{800, 600};
    HeadlessPort port;
    const auto window = port.makeWindow(windowSize);
    launch(*window);
    port.runUntilIdle();
    return 0;
}

}  // namespace pelta
