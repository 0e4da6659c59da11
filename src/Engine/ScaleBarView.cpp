#include "Engine/ScaleBarView.h"

#include <cmath>

#include <pelta/Platform/Make.h>

namespace pelta {
namespace {

constexpr double longestBar = 100;  // points
constexpr double barHeight = 4;
constexpr double borderWidth = 1;
constexpr double labelGap = 6;
constexpr int mostSegments = 5;
constexpr UIColor dark{0.15, 0.17, 0.2, 1};

/// A number below 1000 of which all digits count, such as 0.2 or 500.
std::string describeNumber(double value) {
    const auto text = std::to_string(value);
    const auto lastDigit = text.find_last_not_of('0');
    return text.substr(0, text[lastDigit] == '.' ? lastDigit : lastDigit + 1);
}

}  // namespace

ScaleBarLength scaleBarLengthFitting(double maximumWidth, double metersPerPoint) {
    const double longest = maximumWidth * metersPerPoint;
    const double power = std::pow(10, std::floor(std::log10(longest)));
    const int leading = longest >= 5 * power ? 5 : longest >= 2 * power ? 2 : 1;
    const double meters = leading * power;
    return {meters, leading == 5 ? 5 : 2,
            meters >= 1000 ? describeNumber(meters / 1000) + " km" : describeNumber(meters) + " m"};
}

void ScaleBarView::completeConstruction(std::string_view className) {
    UIView::completeConstruction(className);
    frame_ = make<UIView>(CGRect{});
    frame_->setBackgroundColor(dark);
    addSubview(frame_);
    for (int i = 0; i < mostSegments; ++i) {
        segments_.push_back(make<UIView>(CGRect{}));
        segments_.back()->setBackgroundColor(i % 2 == 0 ? dark : UIColor::white());
        addSubview(segments_.back());
    }
    label_ = make<UILabel>(CGRect{});
    label_->setAttributes({UIFont::systemFont(11), dark, NSTextAlignment::left});
    addSubview(label_);
}

void ScaleBarView::showMetersPerPoint(double metersPerPoint) {
    if (!(metersPerPoint > 0) || !std::isfinite(metersPerPoint) || metersPerPoint == metersPerPoint_) {
        return;
    }
    metersPerPoint_ = metersPerPoint;
    const auto length = scaleBarLengthFitting(longestBar, metersPerPoint);
    const double width = length.meters / metersPerPoint;
    const double top = (size.height - barHeight) / 2;
    frame_->setFrame({{0, top - borderWidth}, {width + 2 * borderWidth, barHeight + 2 * borderWidth}});
    const double segmentWidth = width / length.segments;
    for (int i = 0; i < mostSegments; ++i) {
        auto& segment = *segments_[static_cast<std::size_t>(i)];
        segment.setFrame({{borderWidth + i * segmentWidth, top}, {segmentWidth, barHeight}});
        segment.setIsHidden(i >= length.segments);
    }
    const double labelLeft = width + 2 * borderWidth + labelGap;
    label_->setFrame({{labelLeft, 0}, {size.width - labelLeft, size.height}});
    label_->setText(length.label);
}

}  // namespace pelta
