#include <gtest/gtest.h>
#include <limits>

#include <pelta/Platform/CALayer.h>

namespace pelta {
namespace {

TEST(TimingFunctionTest, FollowsItsCurve) {
    const auto steep = CAMediaTimingFunction(1, 0, 0, 1);
    const auto overshooting = CAMediaTimingFunction(0.5, -1, 0.5, 2);
    struct Case {
        CAMediaTimingFunction curve;
        double time;
        double progress;
    };
    const Case cases[] = {
        {CAMediaTimingFunction::linear(), 0.3, 0.3},
        // Published values of the CSS curves ease, ease-in, ease-out and ease-in-out.
        {CAMediaTimingFunction::standard(), 0.25, 0.40851059},
        {CAMediaTimingFunction::standard(), 0.5, 0.80240339},
        {CAMediaTimingFunction::easeIn(), 0.5, 0.31535681},
        {CAMediaTimingFunction::easeOut(), 0.5, 0.68464319},
        {CAMediaTimingFunction::easeInEaseOut(), 0.25, 0.12916193},
        {CAMediaTimingFunction::easeInEaseOut(), 0.5, 0.5},
        {steep, 0.5, 0.5},  // The curve is vertical there.
        {overshooting, 0.5, 0.5},
        {overshooting, 0, 0},
        {steep, -1, 0},
        {steep, 2, 1},
        {steep, std::numeric_limits<double>::quiet_NaN(), 0},
        {CAMediaTimingFunction(-3, 0, 7, 1), 0.5, 0.5},  // Times of the control points are clamped.
    };
    for (const Case& c : cases) {
        EXPECT_NEAR(c.curve.progressAt(c.time), c.progress, 1e-7) << "at " << c.time;
    }
}

}  // namespace
}  // namespace pelta
