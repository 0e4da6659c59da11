#include "WebEnginePort.h"

#include <pelta/web/CheckingMode.h>

#include "WebMapRenderer.h"

namespace pelta {

namespace {

bool drawsLayersLiterally = false;

}  // namespace

void setDrawsLayersLiterally(bool isLiteral) {
    drawsLayersLiterally = isLiteral;
}

std::unique_ptr<MapRenderer> WebEnginePort::makeMapRenderer(MapRendererHost& host, UIView& surface,
                                                            CGSize size, double screenScale) {
    return std::make_unique<WebMapRenderer>(host, surface, size, screenScale, drawsLayersLiterally);
}

}  // namespace pelta
