#pragma once

#include <memory>
#include <string>
#include <vector>

#include <pelta/Platform/UIControls.h>

namespace pelta {

/// The length that a scale bar shows.
struct ScaleBarLength {
    double meters = 0;  ///< 1, 2 or 5 times a power of ten.
    int segments = 1;
    std::string label;  ///< Such as "200 m" or "5 km".
};

/// The longest round length that fits into a width (points) at a ground resolution above 0.
[[nodiscard]] ScaleBarLength scaleBarLengthFitting(double maximumWidth, double metersPerPoint);

/// A bar of dark and light segments with the length that it stands for beside it.
class ScaleBarView final : public UIView {
 public:
    using UIView::UIView;

    /// Extent of the view, points.
    static constexpr CGSize size{170, 16};

    void completeConstruction(std::string_view className) override;
    /// Shows the resolution; nothing is touched while it is the same. Values not above 0 are ignored.
    void showMetersPerPoint(double metersPerPoint);

 private:
    double metersPerPoint_ = 0;
    std::shared_ptr<UIView> frame_;
    std::vector<std::shared_ptr<UIView>> segments_;
    std::shared_ptr<UILabel> label_;
};

}  // namespace pelta
