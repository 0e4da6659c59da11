#include "MapEnginePort.h"

#include "HeadlessMapRenderer.h"

namespace pelta {

std::unique_ptr<MapRenderer> HeadlessEnginePort::makeMapRenderer(MapRendererHost& host, UIView& /*surface*/,
                                                                 CGSize size, double /*screenScale*/) {
    return std::make_unique<HeadlessMapRenderer>(host, size);
}

}  // namespace pelta
