#pragma once

#include <memory>
#include <string>
#include <vector>

#include <pelta/Engine/MLNShapeSource.h>
#include <pelta/Engine/MLNStyleLayer.h>
#include <pelta/Platform/CoreGraphics.h>
#include <pelta/Platform/UIColor.h>

namespace pelta {

/// Draws lines and the outlines of areas. Negative widths count as 0; non-finite numbers are ignored.
class MLNLineStyleLayer final : public MLNVectorStyleLayer {
 public:
    /// A layer over the features of a source.
    MLNLineStyleLayer(std::string identifier, const MLNShapeSource& source)
        : MLNVectorStyleLayer(std::move(identifier), MLNStyleLayerKind::line, source.identifier()) {}
    /// For the style: the layer of that name in the style document.
    MLNLineStyleLayer(std::string identifier, std::string sourceIdentifier)
        : MLNVectorStyleLayer(std::move(identifier), MLNStyleLayerKind::line, std::move(sourceIdentifier)) {}

    /// End of a line: "butt", "round" or "square".
    [[nodiscard]] const std::optional<MLNExpression<std::string>>& lineCap() const noexcept {
        return lineCap_;
    }
    void setLineCap(MLNExpression<std::string> value) { assign(lineCap_, std::move(value), 0); }

    /// Corner of a line: "bevel", "round" or "miter".
    [[nodiscard]] const std::optional<MLNExpression<std::string>>& lineJoin() const noexcept {
        return lineJoin_;
    }
    void setLineJoin(MLNExpression<std::string> value) { assign(lineJoin_, std::move(value), 1); }

    /// Points; 0 draws nothing.
    [[nodiscard]] const std::optional<MLNExpression<double>>& lineWidth() const noexcept {
        return lineWidth_;
    }
    void setLineWidth(MLNExpression<double> value) { assignNonNegative(lineWidth_, std::move(value), 2); }

    /// Colour of the line.
    [[nodiscard]] const std::optional<MLNExpression<UIColor>>& lineColor() const noexcept {
        return lineColor_;
    }
    void setLineColor(MLNExpression<UIColor> value) { assign(lineColor_, std::move(value), 3); }

    /// Lengths of dashes and gaps in turn, in line widths; an empty list draws a solid line. A list with a
    /// negative or non-finite length is ignored.
    [[nodiscard]] const std::optional<MLNExpression<std::vector<double>>>& lineDashPattern() const noexcept {
        return lineDashPattern_;
    }
    void setLineDashPattern(MLNExpression<std::vector<double>> value) {
        assignNonNegative(lineDashPattern_, std::move(value), 4);
    }

    /// 0 to 1.
    [[nodiscard]] const std::optional<MLNExpression<double>>& lineOpacity() const noexcept {
        return lineOpacity_;
    }
    void setLineOpacity(MLNExpression<double> value) { assignFinite(lineOpacity_, std::move(value), 5); }

    /// For ports: calls `visit(index, group, name, value)` for every property in the order of its change bit,
    /// with the name that style documents use; `value` is an optional expression, absent while nobody has set
    /// it.
    template <class Visitor>
    void visitProperties(Visitor&& visit) const {
        visit(0U, MLNPropertyGroup::layout, std::string_view("line-cap"), lineCap_);
        visit(1U, MLNPropertyGroup::layout, std::string_view("line-join"), lineJoin_);
        visit(2U, MLNPropertyGroup::paint, std::string_view("line-width"), lineWidth_);
        visit(3U, MLNPropertyGroup::paint, std::string_view("line-color"), lineColor_);
        visit(4U, MLNPropertyGroup::paint, std::string_view("line-dasharray"), lineDashPattern_);
        visit(5U, MLNPropertyGroup::paint, std::string_view("line-opacity"), lineOpacity_);
    }

 private:
    std::optional<MLNExpression<std::string>> lineCap_;
    std::optional<MLNExpression<std::string>> lineJoin_;
    std::optional<MLNExpression<double>> lineWidth_;
    std::optional<MLNExpression<UIColor>> lineColor_;
    std::optional<MLNExpression<std::vector<double>>> lineDashPattern_;
    std::optional<MLNExpression<double>> lineOpacity_;
};

}  // namespace pelta
