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
    /// Identifiers of layers that the last frame had and the style has no more, in ascending order. One whose
    /// identifier has passed to another layer object is listed too: take it out before adding the other.
    std::vector<std::string> removedLayers;
    /// Layers of the style with changed properties (see `MLNStyleLayer::changes`). Layers that the last frame
    /// did not have are among them, with `everythingChanged`; layers that were only moved are not.
    std::vector<std::shared_ptr<MLNStyleLayer>> changedLayers;
    /// Sources that were added or given another shape, in ascending order of identifier.
    std::vector<std::shared_ptr<MLNShapeSource>> changedSources;
    /// Identifiers of sources that were removed.
    std::vector<std::string> removedSources;
    /// Names of images that were set, in the order in which they were.
    std::vector<std::string> changedImages;
    /// Names of images that were removed, to be taken out once all else of this list has been drawn.
    std::vector<std::string> removedImages;

    /// True when there is nothing to take over.
    [[nodiscard]] bool isEmpty() const noexcept {
        return !isLayerOrderChanged && removedLayers.empty() && changedLayers.empty() &&
               changedSources.empty() && removedSources.empty() && changedImages.empty() &&
               removedImages.empty();
    }
};

/// What a style holds: layers in stacking order, sources and images.
///
/// Look-up, insertion beside a layer and removal take constant time. Changes are collected for the port,
/// which takes them once a frame. Main thread only. The map view owns its style and replaces it when another
/// document has loaded.
class MLNStyle {
 public:
    /// Layers, lowest first.
    using Layers = std::list<std::shared_ptr<MLNStyleLayer>>;

    /// @param name       of the style document.
    /// @param didChange  called at the first change after `takeChanges`, to ask for a frame.
    MLNStyle(std::string name, std::function<void()> didChange);
    ~MLNStyle();
    MLNStyle(const MLNStyle&) = delete;
    MLNStyle& operator=(const MLNStyle&) = delete;

    /// The style document's own name; empty without one.
    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    /// Text for log lines: the name and the number of layers.
    [[nodiscard]] std::string description() const;

    /// All layers, bottom first.
    [[nodiscard]] const Layers& layers() const noexcept { return layers_; }
    /// The layer, or null.
    [[nodiscard]] std::shared_ptr<MLNStyleLayer> layerWithIdentifier(std::string_view identifier) const;
    /// Adds a layer on top. A layer whose identifier is taken, or that is in a style already, is refused with
    /// a log line; so is a document's own layer that a frame has been drawn without.
    void addLayer(const std::shared_ptr<MLNStyleLayer>& layer);
    /// Adds a layer directly below another of this style; refused as in `addLayer`, also when `sibling` is
    /// not here.
    void insertLayerBelow(const std::shared_ptr<MLNStyleLayer>& layer, const MLNStyleLayer& sibling);
    /// Adds a layer directly above another of this style; refused as in `insertLayerBelow`.
    void insertLayerAbove(const std::shared_ptr<MLNStyleLayer>& layer, const MLNStyleLayer& sibling);
    /// Takes a layer out; one that is not here is ignored.
    void removeLayer(const MLNStyleLayer& layer);

    /// Adds a source; one whose identifier another that was added has is refused with a log line. The style
    /// document's own sources count for the document's layers alone, under whatever names.
    void addSource(const std::shared_ptr<MLNShapeSource>& source);
    /// The source added by the application, or null; the document's own sources are not listed.
    [[nodiscard]] std::shared_ptr<MLNShapeSource> sourceWithIdentifier(std::string_view identifier) const;
    /// Takes a source out; nothing when it is not in this style.
    void removeSource(const MLNShapeSource& source);

    /// The picture set under the name, or null. Valid until the next change of images.
    [[nodiscard]] const UIImage* imageForName(std::string_view name) const;
    /// Sets a picture under a name, replacing the one there.
    void setImage(UIImage image, std::string_view name);
    /// Takes a picture out; nothing when there is none of that name.
    void removeImageForName(std::string_view name);

    /// For the map view: enters a layer of the style document on top.
    void addDocumentLayer(const std::shared_ptr<MLNStyleLayer>& layer);

    /// For the map view: hands over the changes since the last call and starts a new list. `visit` sees each
    /// changed layer's `changes()` still set; they are cleared when it returns. It is not called when the
    /// changes have cancelled each other out.
    void takeChanges(const std::function<void(const MLNStyleChanges&)>& visit);
    /// True while there is something for `takeChanges`.
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

    void insert(const std::shared_ptr<MLNStyleLayer>& layer, Layers::const_iterator position);
    void markEntered(const std::shared_ptr<MLNStyleLayer>& layer);
    void noteChange();
    void layerDidChange(MLNStyleLayer& layer);
    void listAsChanged(const std::shared_ptr<MLNStyleLayer>& layer);
    void sourceDidChange(const MLNShapeSource& source);
    void touchSource(const std::string& identifier);
    void touchImage(std::string_view name);
    void takeRemovedLayers(MLNStyleChanges& changes);
    [[nodiscard]] bool takeLayerOrder();
    void takeChangedLayers(MLNStyleChanges& changes);
    void takeSourcesAndImages(MLNStyleChanges& changes);

    std::string name_;
    std::function<void()> didChange_;

    Layers layers_;
    std::unordered_map<std::string_view, Layers::iterator> layerPositions_;  // keys lie in the layers
    std::map<std::string, std::shared_ptr<MLNShapeSource>, std::less<>> sources_;
    ByName<UIImage> images_;

    // Since the last frame. Layers that were drawn in it and taken out since, and those with changes.
    std::vector<std::shared_ptr<MLNStyleLayer>> removedLayers_;
    std::vector<std::shared_ptr<MLNStyleLayer>> changedLayers_;
    std::vector<const MLNStyleLayer*> drawnOrder_;
    // Whether the last frame had the source or image that was touched.
    std::map<std::string, bool, std::less<>> touchedSources_;
    ByName<bool> touchedImages_;
    std::vector<std::string> touchedImageOrder_;
    bool isLayerOrderTouched_ = false;
    bool hasChanges_ = false;
};

}  // namespace pelta
