#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include <pelta/Engine/MLNStyleLayer.h>

#include "Extent.h"
#include "LayerValues.h"
#include "ShapeIndex.h"

namespace pelta {

struct Run;
struct RunFeature;

/// A layer of the model and how the engine has it: as a layer of its own, or with a run.
struct ModelLayer {
    std::shared_ptr<MLNStyleLayer> layer;
    const MLNVectorStyleLayer* drawn = nullptr;  ///< The same; null for a document's layer and other kinds.
    ShapeIndex* shapes = nullptr;                ///< Of the layer's source, while `place` is set.
    ShapePlace* place = nullptr;  ///< Of the identifier that the layer selects; null if it does not.
    std::size_t rank = 0;         ///< Place in the stack, bottom first.

    bool isLiteral = false;            ///< An engine layer of its own, as the model has it.
    LayerValues values;                ///< Else, what its feature shows; of a literal layer only the sight.
    Extent extent;                     ///< Of the shape, of a line or an area.
    std::uint64_t extentRevision = 0;  ///< Of the shape, when the extent was taken.

    Run* run = nullptr;        ///< That it is drawn with; null when there is nothing to draw.
    std::size_t position = 0;  ///< Among the run's members.
    double sortKey = 0;        ///< Within the run.
    bool isTouched = false;    ///< Values or shape have changed since they were sent.
    bool isAnew = false;       ///< To be sent as a new feature, which the engine draws after its equals.

    /// What the engine has of the layer.
    struct Sent {
        RunFeature* feature = nullptr;  ///< Null for nothing.
        std::uint32_t run = 0;          ///< 0 before the feature's properties are written.
        double sortKey = 0;
        PropertySet own = 0;  ///< Values that the feature carries.
        std::array<SharedText, propertyLimit> values;
    } sent;
};

/// Layers that the engine draws as one, see `RunStack`.
struct Run {
    std::uint32_t number = 0;
    MLNStyleLayerKind kind = MLNStyleLayerKind::other;
    SharedText key;                    ///< Of all members, see `LayerValues`.
    std::vector<ModelLayer*> members;  ///< Bottom first.
    /// What the engine's layer holds: the value of each property for features that do not carry their own.
    std::array<SharedText, propertyLimit> base;
    PropertySet varying = 0;     ///< Properties that features may carry.
    PropertySet unwritten = 0;   ///< Properties of the engine's layer that are to be written.
    bool needsSortKeys = false;  ///< Other members, or another order, than the sort keys are for.
};

}  // namespace pelta
