#include <pelta/Engine/MapRenderer.h>
#include <pelta/Platform/Log.h>

namespace pelta {
namespace {

EnginePort*& installedPort() {
    static EnginePort* port = nullptr;
    return port;
}

}  // namespace

EnginePort& EnginePort::current() {
    if (EnginePort* port = installedPort()) {
        return *port;
    }
    fatalError("no engine port is installed: make the port before the first map view");
}

void EnginePort::install(EnginePort* port) {
    installedPort() = port;
}

}  // namespace pelta
