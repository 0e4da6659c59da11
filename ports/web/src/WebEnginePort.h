#pragma once

#include <pelta/Engine/MapRenderer.h>

namespace pelta {

/// Makes renderers that draw with GL JS.
class WebEnginePort final : public EnginePort {
 public:
    [[nodiscard]] std::unique_ptr<MapRenderer> makeMapRenderer(MapRendererHost& host, UIView& surface,
                                                               CGSize size, double screenScale) override;
};

}  // namespace pelta
