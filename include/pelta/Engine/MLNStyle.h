#pragma once

#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <pelta/Engine/MLNShapeSource.h>
#include <pelta/Engine/MLNStyleLayer.h>
#include <pelta/Platform/UIImage.h>

namespace pelta {

/// What changed in a style since the last frame, for ports. A layer or source that was added and removed in
/// between is not mentioned.
struct MLNStyleChanges {
    /// The list of layers or their order differs from the last frame's.
    bool isLayerOrderChanged = false;
    /// Layers of the style with changed properties (see `MLNStyleLayer::changes`), added ones included.
    std::vector<std::shared_ptr<MLNStyleLayer>> changedLayers;
    /// Sources that were added or given another shape, in ascending order of identifier.
    std::vector<std::shared_ptr<MLNShapeSource>> changedSources;
    /// Identifiers of sources that were removed.
    std::vector<std::string> removedSources;
    /// Names of images that were set, in the order in which they were.
    std::vector<std::string> changedImages;
    /// Names of images that were removed.
    std::vector<std::string> removedImages;

    [[nodiscard]] bool isEmpty() const noexcept {
        return !isLayerOrderChanged && changedLayers.empty() && changedSources.empty() &&
               removedSources.empty() && changedImages.empty() && removedImages.empty();
    }
};

/// What a style holds: layers in stacking order, sources and images.
///
/// Look-up, insertion beside a layer and removal take constant time. Changes are collected for the port,
/// which takes them once a frame. Main thread only. The map view owns its style and replaces it when another
/// document has loaded.
class MLNStyle {
 public:
    using Layers = std::list<std::shared_ptr<MLNStyleLayer>>;

    /// @param name       of the style document.
    /// @param didChange  called after each change, to ask for a frame.
    MLNStyle(std::string name, std::function<void()> didChange);
    ~MLNStyle();
    MLNStyle(const MLNStyle&) = delete;
    MLNStyle& operator=(const MLNStyle&) = delete;

    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    /// Text for log lines: the name and the number of layers.
    [[nodiscard]] std::string description() const;

    /// All layers, bottom first.
    [[nodiscard]] const Layers& layers() const noexcept { return layers_; }
    /// The layer, or null.
    [[nodiscard]] std::shared_ptr<MLNStyleLayer> layerWithIdentifier(std::string_view identifier) const;
    /// Adds a layer on top. A layer whose identifier is taken, or that another style holds, is refused with a
    /// log line.
    void addLayer(const std::shared_ptr<MLNStyleLayer>& layer);
    /// Adds a layer directly below another of this style; refused as in `addLayer`, also when `sibling` is
    /// not here.
    void insertLayerBelow(const std::shared_ptr<MLNStyleLayer>& layer, const MLNStyleLayer& sibling);
    /// Adds a layer directly above another of this style; refused as in `insertLayerBelow`.
    void insertLayerAbove(const std::shared_ptr<MLNStyleLayer>& layer, const MLNStyleLayer& sibling);
    /// Takes a layer out; one that is not here is ignored.
    void removeLayer(const MLNStyleLayer& layer);

    /// Adds a source; one whose identifier is taken is refused with a log line.
    void addSource(const std::shared_ptr<MLNShapeSource>& source);
    /// The source added by the application, or null; the document's own sources are not listed.
    [[nodiscard]] std::shared_ptr<MLNShapeSource> sourceWithIdentifier(std::string_view identifier) const;
    void removeSource(const MLNShapeSource& source);

    /// The picture set under the name, or null. Valid until the next change of images.
    [[nodiscard]] const UIImage* imageForName(std::string_view name) const;
    /// Sets a picture under a name, replacing the one there.
    void setImage(UIImage image, std::string_view name);
    void removeImageForName(std::string_view name);

    /// For the map view: enters a layer of the style document on top.
    void addDocumentLayer(const std::shared_ptr<MLNStyleLayer>& layer);

    /// For the map view: hands over the changes since the last call and starts a new list. `visit` sees each
    /// changed layer's `changes()` still set; they are cleared when it returns.
    void takeChanges(const std::function<void(const MLNStyleChanges&)>& visit);
    [[nodiscard]] bool hasChanges() const noexcept { return hasChanges_; }

 private:
    friend class MLNStyleLayer;
    friend class MLNShapeSource;

    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept {
            return std::hash<std::string_view>{}(text);
        }
    };
    template <class Value>
    using ByName = std::unordered_map<std::string, Value, NameHash, std::equal_to<>>;

    void insert(const std::shared_ptr<MLNStyleLayer>& layer, Layers::iterator position);
    void layerDidChange(MLNStyleLayer& layer);
    void sourceDidChange(MLNShapeSource& source);
    void noteChange();

    std::string name_;
    std::function<void()> didChange_;
    Layers layers_;
    ByName<Layers::iterator> layerPositions_;
    std::map<std::string, std::shared_ptr<MLNShapeSource>, std::less<>> sources_;
    std::map<std::string, bool, std::less<>> changedSources_;
    std::vector<std::string> removedSources_;
    ByName<UIImage> images_;
    std::vector<std::string> changedImages_;
    std::vector<std::string> removedImages_;
    std::vector<std::weak_ptr<MLNStyleLayer>> changedLayers_;
    bool isLayerOrderChanged_ = false;
    bool hasChanges_ = false;
};

}  // namespace pelta
