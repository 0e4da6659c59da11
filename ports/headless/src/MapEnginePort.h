#pragma once

#include <pelta/Engine/MapRenderer.h>

namespace pelta {

/// Makes the renderers of the headless port: exact ones that hold everything in memory and draw no pixels.
class HeadlessEnginePort final : public EnginePort {
 public:
    [[nodiscard]] std::unique_ptr<MapRenderer> makeMapRenderer(MapRendererHost& host, UIView& surface,
                                                               CGSize size, double screenScale) override;
};

}  // namespace pelta
