#pragma once

#include <memory>
#include <string>
#include <vector>

#include <pelta/Engine/MLNShapeSource.h>
#include <pelta/Engine/MLNStyleLayer.h>
#include <pelta/Platform/CoreGraphics.h>
#include <pelta/Platform/UIColor.h>

namespace pelta {

/// Fills areas. Non-finite numbers are ignored.
class MLNFillStyleLayer final : public MLNVectorStyleLayer {
 public:
    /// A layer over the features of a source.
    MLNFillStyleLayer(std::string identifier, const MLNShapeSource& source)
        : MLNVectorStyleLayer(std::move(identifier), MLNStyleLayerKind::fill, source.identifier()) {}
    /// For the style: the layer of that name in the style document.
    MLNFillStyleLayer(std::string identifier, std::string sourceIdentifier)
        : MLNVectorStyleLayer(std::move(identifier), MLNStyleLayerKind::fill, std::move(sourceIdentifier)) {}

    /// Colour of the area.
    [[nodiscard]] const std::optional<MLNExpression<UIColor>>& fillColor() const noexcept {
        return fillColor_;
    }
    void setFillColor(MLNExpression<UIColor> value) { assign(fillColor_, std::move(value), 0); }

    /// 0 to 1.
    [[nodiscard]] const std::optional<MLNExpression<double>>& fillOpacity() const noexcept {
        return fillOpacity_;
    }
    void setFillOpacity(MLNExpression<double> value) { assignFinite(fillOpacity_, std::move(value), 1); }

    /// For ports: calls `visit(index, group, name, value)` for every property in the order of its change bit,
    /// with the name that style documents use; `value` is an optional expression, absent while nobody has set
    /// it.
    template <class Visitor>
    void visitProperties(Visitor&& visit) const {
        visit(0U, MLNPropertyGroup::paint, std::string_view("fill-color"), fillColor_);
        visit(1U, MLNPropertyGroup::paint, std::string_view("fill-opacity"), fillOpacity_);
    }

 private:
    std::optional<MLNExpression<UIColor>> fillColor_;
    std::optional<MLNExpression<double>> fillOpacity_;
};

}  // namespace pelta
