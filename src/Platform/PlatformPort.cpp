#include <atomic>

#include <pelta/Platform/Log.h>
#include <pelta/Platform/PlatformPort.h>

#include "Platform/MainThread.h"

namespace pelta {

namespace {

std::atomic<PlatformPort*> installedPort{nullptr};

}  // namespace

PlatformPort& PlatformPort::current() {
    PlatformPort* port = installedPort.load();
    if (port == nullptr) {
        fatalError("No platform port is installed; make one (such as a HeadlessPort) first.");
    }
    return *port;
}

bool PlatformPort::isInstalled() noexcept {
    return installedPort.load() != nullptr;
}

void PlatformPort::install(PlatformPort* port) {
    installedPort.store(port);
    if (port != nullptr) {
        detail::becomeMainThread();
    }
}

}  // namespace pelta
