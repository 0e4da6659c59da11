#include "WebEnginePort.h"

#include "WebMapRenderer.h"

namespace pelta {

std::unique_ptr<MapRenderer> WebEnginePort::makeMapRenderer(MapRendererHost& host, UIView& surface,
                                                            CGSize size, double screenScale) {
    return std::make_unique<WebMapRenderer>(host, surface, size, screenScale);
}

}  // namespace pelta
