#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <pelta/Engine/MLNStyle.h>

#include "MapSceneLayer.h"
#include "MapSceneSource.h"

namespace pelta {

/// What predicates choose from: the features of a source by the text of an attribute.
struct MapSelection {
    std::string source;
    std::string attribute;  ///< Empty: all features are chosen.
    friend bool operator==(const MapSelection&, const MapSelection&) = default;
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
    /// The same layer in short.
    [[nodiscard]] const MapLayerKey& key(std::uint32_t slot) const noexcept { return keys_[slot]; }
    /// All that layers have ever chosen their features from.
    [[nodiscard]] const std::vector<MapSelection>& selections() const noexcept { return selections_; }
    /// The source, or null.
    [[nodiscard]] const MapSceneSource* source(std::string_view identifier) const noexcept;
    /// Extent of a style image in points; nothing when none is set under the name.
    [[nodiscard]] std::optional<CGSize> imageSize(std::string_view name) const;
    /// Sum of width and height that no style image exceeds, points.
    [[nodiscard]] double largestImage() const noexcept { return largestImage_; }

 private:
    void updateLayer(const std::shared_ptr<MLNStyleLayer>& model);
    void updateOrder(const MLNStyle& style);
    void updateSources(const MLNStyleChanges& changes);
    void updateImages(const MLNStyle& style, const MLNStyleChanges& changes);
    [[nodiscard]] std::uint32_t selectionOf(const MLNVectorStyleLayer& model);

    std::vector<MapSceneLayer> layers_;
    std::vector<MapLayerKey> keys_;  ///< Of the layers, in their slots.
    std::vector<MapSelection> selections_;
    std::vector<std::uint32_t> freeSlots_;
    std::unordered_map<const MLNStyleLayer*, std::uint32_t> slots_;
    std::vector<std::uint32_t> order_;
    std::map<std::string, MapSceneSource, std::less<>> sources_;
    std::map<std::string, CGSize, std::less<>> imageSizes_;
    double largestImage_ = 0;
};

}  // namespace pelta
