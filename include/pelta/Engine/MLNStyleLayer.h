#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <pelta/Engine/MLNExpression.h>
#include <pelta/Platform/CoreGraphics.h>

namespace pelta {

class MLNStyle;

/// What a layer draws.
enum class MLNStyleLayerKind : unsigned { background, fill, line, symbol, other };

/// One entry of a style's stack of layers.
///
/// A model: a write that changes something marks the layer and asks for a frame. A layer lives on without a
/// style and can move between styles. Main thread only.
class MLNStyleLayer {
 public:
    /// For the concrete layers.
    MLNStyleLayer(std::string identifier, MLNStyleLayerKind kind);
    virtual ~MLNStyleLayer() = default;
    MLNStyleLayer(const MLNStyleLayer&) = delete;
    MLNStyleLayer& operator=(const MLNStyleLayer&) = delete;

    /// Unique within a style.
    [[nodiscard]] const std::string& identifier() const noexcept { return identifier_; }
    /// What the layer draws; fixed for its class.
    [[nodiscard]] MLNStyleLayerKind kind() const noexcept { return kind_; }

    /// Off: nothing of the layer is drawn or found; on at first.
    [[nodiscard]] bool isVisible() const noexcept { return isVisible_; }
    void setIsVisible(bool visible);
    /// Lowest zoom at which the layer is drawn; 0 at first. Values are clamped to 0…24, NaN is ignored.
    [[nodiscard]] float minimumZoomLevel() const noexcept { return minimumZoomLevel_; }
    void setMinimumZoomLevel(float zoomLevel);
    /// Zoom from which on the layer is no longer drawn; 24 at first. Values are clamped to 0…24, NaN is
    /// ignored.
    [[nodiscard]] float maximumZoomLevel() const noexcept { return maximumZoomLevel_; }
    void setMaximumZoomLevel(float zoomLevel);

    /// True for the layers that came with the style document, whose other properties the engine keeps itself.
    [[nodiscard]] bool isFromDocument() const noexcept { return isFromDocument_; }
    /// The style that holds the layer, or null.
    [[nodiscard]] MLNStyle* style() const noexcept { return style_; }

    /// Bit of a change that is not a property of its own kind of layer.
    static constexpr std::uint32_t visibilityChange = 1U << 31U;
    /// Bit of a change of the zoom range.
    static constexpr std::uint32_t zoomRangeChange = 1U << 30U;
    /// Bit of a change of the predicate.
    static constexpr std::uint32_t predicateChange = 1U << 29U;
    /// All bits: the layer is new to the port.
    static constexpr std::uint32_t everythingChanged = ~std::uint32_t{0};
    /// For ports, while they take a frame's changes: which properties changed since the last frame.
    /// Properties of the concrete layer are numbered from bit 0 in the order of its `visitProperties`.
    [[nodiscard]] std::uint32_t changes() const noexcept { return changes_; }

 protected:
    /// Notes changed properties and asks for a frame.
    void markChanged(std::uint32_t changes);

    /// Stores a property and marks it, if the new value differs.
    template <class T>
    void assign(std::optional<MLNExpression<T>>& field, MLNExpression<T> value, unsigned index) {
        if (field && *field == value) {
            return;
        }
        field = std::move(value);
        markChanged(1U << index);
    }

    /// As `assign`, leaving out non-finite constants.
    void assignFinite(std::optional<MLNExpression<double>>& field, MLNExpression<double> value,
                      unsigned index);
    void assignFinite(std::optional<MLNExpression<CGVector>>& field, MLNExpression<CGVector> value,
                      unsigned index);
    /// As `assignFinite`, negative constants counting as 0; a list with one such number is left out.
    void assignNonNegative(std::optional<MLNExpression<double>>& field, MLNExpression<double> value,
                           unsigned index);
    void assignNonNegative(std::optional<MLNExpression<std::vector<double>>>& field,
                           MLNExpression<std::vector<double>> value, unsigned index);

 private:
    friend class MLNStyle;

    std::string identifier_;
    MLNStyle* style_ = nullptr;
    const MLNStyle* drawnIn_ = nullptr;   // the style whose last frame had this layer
    const MLNStyle* listedIn_ = nullptr;  // the style that lists this layer as changed
    std::uint32_t changes_ = 0;
    float minimumZoomLevel_ = 0;
    float maximumZoomLevel_ = 24;
    MLNStyleLayerKind kind_;
    bool isVisible_ = true;
    bool isFromDocument_ = false;
};

/// A layer that draws features of a source.
class MLNVectorStyleLayer : public MLNStyleLayer {
 public:
    /// For the concrete layers.
    MLNVectorStyleLayer(std::string identifier, MLNStyleLayerKind kind, std::string sourceIdentifier)
        : MLNStyleLayer(std::move(identifier), kind), sourceIdentifier_(std::move(sourceIdentifier)) {}

    /// Name of the source whose features the layer draws.
    [[nodiscard]] const std::string& sourceIdentifier() const noexcept { return sourceIdentifier_; }
    /// Which features of the source are drawn; all of them at first.
    [[nodiscard]] const MLNPredicate& predicate() const noexcept { return predicate_; }
    void setPredicate(MLNPredicate predicate);

 private:
    std::string sourceIdentifier_;
    MLNPredicate predicate_;
};

/// A layer of the style document that is neither fill, line nor symbol.
class MLNDocumentStyleLayer final : public MLNStyleLayer {
 public:
    using MLNStyleLayer::MLNStyleLayer;
};

/// Whether a layer property belongs to a style document's "layout" or "paint" group.
enum class MLNPropertyGroup : unsigned { layout, paint };

}  // namespace pelta
