#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>
#include <vector>

#include <pelta/Engine/MLNStyle.h>
#include <pelta/Engine/MLNSymbolStyleLayer.h>

#include "MapProperty.h"
#include "MapSceneSource.h"

namespace pelta {

/// What decides where a symbol layer draws, as it was at the last commit.
struct MapSymbolProperties {
    MapProperty<std::string> text;
    MapProperty<double> textSize;
    MapProperty<double> maximumTextWidth;
    MapProperty<std::string> textAnchor;
    MapProperty<CGVector> textOffset;
    MapProperty<std::string> textPitchAlignment;
    MapProperty<std::string> iconImageName;
    MapProperty<double> iconScale;
    MapProperty<double> iconRotation;
    MapProperty<std::string> iconAnchor;
    MapProperty<CGVector> iconOffset;
    MapProperty<std::string> iconPitchAlignment;
    MapProperty<std::string> iconRotationAlignment;
};

struct MapLineProperties {
    MapProperty<double> width;
};

struct MapFillProperties {};

/// One drawn layer, as it was at the last commit.
struct MapSceneLayer {
    std::shared_ptr<const MLNVectorStyleLayer> model;  ///< For its identity and what never changes.
    MLNPredicate predicate;
    std::variant<MapFillProperties, MapLineProperties, MapSymbolProperties> properties;
    float minimumZoomLevel = 0;
    float maximumZoomLevel = 24;
    bool isVisible = true;

    [[nodiscard]] bool isDrawnAt(double zoom) const noexcept {
        return isVisible && minimumZoomLevel <= zoom && zoom < maximumZoomLevel;
    }
};

/// A style as it is drawn: layers, sources and images as the last commit left them, whatever has happened to
/// the model since. Layers of the style document have no data here and are left out.
class MapScene {
 public:
    /// Takes a frame's changes. One pass over the layers when their order changed, one over the features of
    /// each changed source, constant time for each changed layer and image.
    void commit(const MLNStyle& style, const MLNStyleChanges& changes);

    /// Positions in `layer` of the drawn layers, bottom first.
    [[nodiscard]] const std::vector<std::uint32_t>& order() const noexcept { return order_; }
    [[nodiscard]] const MapSceneLayer& layer(std::uint32_t slot) const noexcept { return layers_[slot]; }
    /// The source, or null.
    [[nodiscard]] const MapSceneSource* source(std::string_view identifier) const noexcept;
    /// Extent of a style image in points; nothing when none is set under the name.
    [[nodiscard]] std::optional<CGSize> imageSize(std::string_view name) const;

 private:
    void updateLayer(const std::shared_ptr<MLNStyleLayer>& model);
    void updateOrder(const MLNStyle& style);
    void updateSources(const MLNStyleChanges& changes);
    void updateImages(const MLNStyle& style, const MLNStyleChanges& changes);

    std::vector<MapSceneLayer> layers_;
    std::vector<std::uint32_t> freeSlots_;
    std::unordered_map<const MLNStyleLayer*, std::uint32_t> slots_;
    std::vector<std::uint32_t> order_;
    std::map<std::string, MapSceneSource, std::less<>> sources_;
    std::map<std::string, CGSize, std::less<>> imageSizes_;
};

}  // namespace pelta
