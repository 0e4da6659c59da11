#pragma once

#include <memory>
#include <string>
#include <vector>

#include <pelta/Engine/MLNShapeSource.h>
#include <pelta/Engine/MLNStyleLayer.h>
#include <pelta/Platform/CoreGraphics.h>
#include <pelta/Platform/UIColor.h>

namespace pelta {

/// Draws point features as an icon, a text, or both. Properties that nobody has set take the style document
/// format's defaults. Negative sizes count as 0; non-finite numbers are ignored.
class MLNSymbolStyleLayer final : public MLNVectorStyleLayer {
 public:
    /// A layer over the features of a source.
    MLNSymbolStyleLayer(std::string identifier, const MLNShapeSource& source)
        : MLNVectorStyleLayer(std::move(identifier), MLNStyleLayerKind::symbol, source.identifier()) {}
    /// For the style: the layer of that name in the style document.
    MLNSymbolStyleLayer(std::string identifier, std::string sourceIdentifier)
        : MLNVectorStyleLayer(std::move(identifier), MLNStyleLayerKind::symbol, std::move(sourceIdentifier)) {
    }

    /// The text, UTF-8; an empty one draws none.
    [[nodiscard]] const std::optional<MLNExpression<std::string>>& text() const noexcept { return text_; }
    void setText(MLNExpression<std::string> value) { assign(text_, std::move(value), 0); }

    /// Font names in order of preference.
    [[nodiscard]] const std::optional<MLNExpression<std::vector<std::string>>>& textFontNames()
        const noexcept {
        return textFontNames_;
    }
    void setTextFontNames(MLNExpression<std::vector<std::string>> value) {
        assign(textFontNames_, std::move(value), 1);
    }

    /// Points.
    [[nodiscard]] const std::optional<MLNExpression<double>>& textFontSize() const noexcept {
        return textFontSize_;
    }
    void setTextFontSize(MLNExpression<double> value) {
        assignNonNegative(textFontSize_, std::move(value), 2);
    }

    /// Width at which the text breaks, ems; 0 means that it never breaks.
    [[nodiscard]] const std::optional<MLNExpression<double>>& maximumTextWidth() const noexcept {
        return maximumTextWidth_;
    }
    void setMaximumTextWidth(MLNExpression<double> value) {
        assignNonNegative(maximumTextWidth_, std::move(value), 3);
    }

    /// Which part of the text lies on the (offset) position: "center", "top", "bottom", "left", "right" and
    /// the four corners, such as "top-left".
    [[nodiscard]] const std::optional<MLNExpression<std::string>>& textAnchor() const noexcept {
        return textAnchor_;
    }
    void setTextAnchor(MLNExpression<std::string> value) { assign(textAnchor_, std::move(value), 4); }

    /// Shift of the text from the position, ems, right and down.
    [[nodiscard]] const std::optional<MLNExpression<CGVector>>& textOffset() const noexcept {
        return textOffset_;
    }
    void setTextOffset(MLNExpression<CGVector> value) { assignFinite(textOffset_, std::move(value), 5); }

    /// Drawn also where it collides with other symbols.
    [[nodiscard]] const std::optional<MLNExpression<bool>>& textAllowsOverlap() const noexcept {
        return textAllowsOverlap_;
    }
    void setTextAllowsOverlap(MLNExpression<bool> value) { assign(textAllowsOverlap_, std::move(value), 6); }

    /// The icon is drawn alone where the text collides.
    [[nodiscard]] const std::optional<MLNExpression<bool>>& textOptional() const noexcept {
        return textOptional_;
    }
    void setTextOptional(MLNExpression<bool> value) { assign(textOptional_, std::move(value), 7); }

    /// "map" or "viewport".
    [[nodiscard]] const std::optional<MLNExpression<std::string>>& textPitchAlignment() const noexcept {
        return textPitchAlignment_;
    }
    void setTextPitchAlignment(MLNExpression<std::string> value) {
        assign(textPitchAlignment_, std::move(value), 8);
    }

    /// Name of a style image; an empty one draws none.
    [[nodiscard]] const std::optional<MLNExpression<std::string>>& iconImageName() const noexcept {
        return iconImageName_;
    }
    void setIconImageName(MLNExpression<std::string> value) { assign(iconImageName_, std::move(value), 9); }

    /// Factor to the picture's own size.
    [[nodiscard]] const std::optional<MLNExpression<double>>& iconScale() const noexcept {
        return iconScale_;
    }
    void setIconScale(MLNExpression<double> value) { assignNonNegative(iconScale_, std::move(value), 10); }

    /// Degrees clockwise, about the (offset) anchor.
    [[nodiscard]] const std::optional<MLNExpression<double>>& iconRotation() const noexcept {
        return iconRotation_;
    }
    void setIconRotation(MLNExpression<double> value) { assignFinite(iconRotation_, std::move(value), 11); }

    /// Which part of the icon lies on the position, as for the text.
    [[nodiscard]] const std::optional<MLNExpression<std::string>>& iconAnchor() const noexcept {
        return iconAnchor_;
    }
    void setIconAnchor(MLNExpression<std::string> value) { assign(iconAnchor_, std::move(value), 12); }

    /// Shift of the icon in points before `iconScale`, right and down; it turns with `iconRotation`.
    [[nodiscard]] const std::optional<MLNExpression<CGVector>>& iconOffset() const noexcept {
        return iconOffset_;
    }
    void setIconOffset(MLNExpression<CGVector> value) { assignFinite(iconOffset_, std::move(value), 13); }

    /// Drawn also where it collides with other symbols.
    [[nodiscard]] const std::optional<MLNExpression<bool>>& iconAllowsOverlap() const noexcept {
        return iconAllowsOverlap_;
    }
    void setIconAllowsOverlap(MLNExpression<bool> value) { assign(iconAllowsOverlap_, std::move(value), 14); }

    /// Does not keep other symbols from being drawn.
    [[nodiscard]] const std::optional<MLNExpression<bool>>& iconIgnoresPlacement() const noexcept {
        return iconIgnoresPlacement_;
    }
    void setIconIgnoresPlacement(MLNExpression<bool> value) {
        assign(iconIgnoresPlacement_, std::move(value), 15);
    }

    /// "map" or "viewport".
    [[nodiscard]] const std::optional<MLNExpression<std::string>>& iconPitchAlignment() const noexcept {
        return iconPitchAlignment_;
    }
    void setIconPitchAlignment(MLNExpression<std::string> value) {
        assign(iconPitchAlignment_, std::move(value), 16);
    }

    /// "map" or "viewport".
    [[nodiscard]] const std::optional<MLNExpression<std::string>>& iconRotationAlignment() const noexcept {
        return iconRotationAlignment_;
    }
    void setIconRotationAlignment(MLNExpression<std::string> value) {
        assign(iconRotationAlignment_, std::move(value), 17);
    }

    /// Colour of the text.
    [[nodiscard]] const std::optional<MLNExpression<UIColor>>& textColor() const noexcept {
        return textColor_;
    }
    void setTextColor(MLNExpression<UIColor> value) { assign(textColor_, std::move(value), 18); }

    /// Colour of the edge around the text.
    [[nodiscard]] const std::optional<MLNExpression<UIColor>>& textHaloColor() const noexcept {
        return textHaloColor_;
    }
    void setTextHaloColor(MLNExpression<UIColor> value) { assign(textHaloColor_, std::move(value), 19); }

    /// Points.
    [[nodiscard]] const std::optional<MLNExpression<double>>& textHaloWidth() const noexcept {
        return textHaloWidth_;
    }
    void setTextHaloWidth(MLNExpression<double> value) {
        assignNonNegative(textHaloWidth_, std::move(value), 20);
    }

    /// 0 to 1.
    [[nodiscard]] const std::optional<MLNExpression<double>>& textOpacity() const noexcept {
        return textOpacity_;
    }
    void setTextOpacity(MLNExpression<double> value) { assignFinite(textOpacity_, std::move(value), 21); }

    /// 0 to 1.
    [[nodiscard]] const std::optional<MLNExpression<double>>& iconOpacity() const noexcept {
        return iconOpacity_;
    }
    void setIconOpacity(MLNExpression<double> value) { assignFinite(iconOpacity_, std::move(value), 22); }

    /// Seen on single-colour (distance field) pictures only.
    [[nodiscard]] const std::optional<MLNExpression<UIColor>>& iconHaloColor() const noexcept {
        return iconHaloColor_;
    }
    void setIconHaloColor(MLNExpression<UIColor> value) { assign(iconHaloColor_, std::move(value), 23); }

    /// Points.
    [[nodiscard]] const std::optional<MLNExpression<double>>& iconHaloWidth() const noexcept {
        return iconHaloWidth_;
    }
    void setIconHaloWidth(MLNExpression<double> value) {
        assignNonNegative(iconHaloWidth_, std::move(value), 24);
    }

    /// For ports: calls `visit(index, group, name, value)` for every property in the order of its change bit,
    /// with the name that style documents use; `value` is an optional expression, absent while nobody has set
    /// it.
    template <class Visitor>
    void visitProperties(Visitor&& visit) const {
        visit(0U, MLNPropertyGroup::layout, std::string_view("text-field"), text_);
        visit(1U, MLNPropertyGroup::layout, std::string_view("text-font"), textFontNames_);
        visit(2U, MLNPropertyGroup::layout, std::string_view("text-size"), textFontSize_);
        visit(3U, MLNPropertyGroup::layout, std::string_view("text-max-width"), maximumTextWidth_);
        visit(4U, MLNPropertyGroup::layout, std::string_view("text-anchor"), textAnchor_);
        visit(5U, MLNPropertyGroup::layout, std::string_view("text-offset"), textOffset_);
        visit(6U, MLNPropertyGroup::layout, std::string_view("text-allow-overlap"), textAllowsOverlap_);
        visit(7U, MLNPropertyGroup::layout, std::string_view("text-optional"), textOptional_);
        visit(8U, MLNPropertyGroup::layout, std::string_view("text-pitch-alignment"), textPitchAlignment_);
        visit(9U, MLNPropertyGroup::layout, std::string_view("icon-image"), iconImageName_);
        visit(10U, MLNPropertyGroup::layout, std::string_view("icon-size"), iconScale_);
        visit(11U, MLNPropertyGroup::layout, std::string_view("icon-rotate"), iconRotation_);
        visit(12U, MLNPropertyGroup::layout, std::string_view("icon-anchor"), iconAnchor_);
        visit(13U, MLNPropertyGroup::layout, std::string_view("icon-offset"), iconOffset_);
        visit(14U, MLNPropertyGroup::layout, std::string_view("icon-allow-overlap"), iconAllowsOverlap_);
        visit(15U, MLNPropertyGroup::layout, std::string_view("icon-ignore-placement"),
              iconIgnoresPlacement_);
        visit(16U, MLNPropertyGroup::layout, std::string_view("icon-pitch-alignment"), iconPitchAlignment_);
        visit(17U, MLNPropertyGroup::layout, std::string_view("icon-rotation-alignment"),
              iconRotationAlignment_);
        visit(18U, MLNPropertyGroup::paint, std::string_view("text-color"), textColor_);
        visit(19U, MLNPropertyGroup::paint, std::string_view("text-halo-color"), textHaloColor_);
        visit(20U, MLNPropertyGroup::paint, std::string_view("text-halo-width"), textHaloWidth_);
        visit(21U, MLNPropertyGroup::paint, std::string_view("text-opacity"), textOpacity_);
        visit(22U, MLNPropertyGroup::paint, std::string_view("icon-opacity"), iconOpacity_);
        visit(23U, MLNPropertyGroup::paint, std::string_view("icon-halo-color"), iconHaloColor_);
        visit(24U, MLNPropertyGroup::paint, std::string_view("icon-halo-width"), iconHaloWidth_);
    }

 private:
    std::optional<MLNExpression<std::string>> text_;
    std::optional<MLNExpression<std::vector<std::string>>> textFontNames_;
    std::optional<MLNExpression<double>> textFontSize_;
    std::optional<MLNExpression<double>> maximumTextWidth_;
    std::optional<MLNExpression<std::string>> textAnchor_;
    std::optional<MLNExpression<CGVector>> textOffset_;
    std::optional<MLNExpression<bool>> textAllowsOverlap_;
    std::optional<MLNExpression<bool>> textOptional_;
    std::optional<MLNExpression<std::string>> textPitchAlignment_;
    std::optional<MLNExpression<std::string>> iconImageName_;
    std::optional<MLNExpression<double>> iconScale_;
    std::optional<MLNExpression<double>> iconRotation_;
    std::optional<MLNExpression<std::string>> iconAnchor_;
    std::optional<MLNExpression<CGVector>> iconOffset_;
    std::optional<MLNExpression<bool>> iconAllowsOverlap_;
    std::optional<MLNExpression<bool>> iconIgnoresPlacement_;
    std::optional<MLNExpression<std::string>> iconPitchAlignment_;
    std::optional<MLNExpression<std::string>> iconRotationAlignment_;
    std::optional<MLNExpression<UIColor>> textColor_;
    std::optional<MLNExpression<UIColor>> textHaloColor_;
    std::optional<MLNExpression<double>> textHaloWidth_;
    std::optional<MLNExpression<double>> textOpacity_;
    std::optional<MLNExpression<double>> iconOpacity_;
    std::optional<MLNExpression<UIColor>> iconHaloColor_;
    std::optional<MLNExpression<double>> iconHaloWidth_;
};

}  // namespace pelta
