#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

#include <pelta/Platform/CALayer.h>
#include <pelta/Platform/CoreLocation.h>

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

CGPoint apply(const CGAffineTransform& t, CGPoint p) {
    return {t.a * p.x + t.c * p.y + t.tx, t.b * p.x + t.d * p.y + t.ty};
}

std::array<double, 3> apply(const CATransform3D& t, std::array<double, 3> v) {
    std::array<double, 3> result{};
    for (std::size_t column = 0; column < 3; ++column) {
        result[column] =
            v[0] * t.m[column] + v[1] * t.m[4 + column] + v[2] * t.m[8 + column] + t.m[12 + column];
    }
    return result;
}

TEST(TransformTest, RotationsTurnClockwiseOnTheScreen) {
    constexpr double quarter = std::numbers::pi / 2;
    const CGPoint down = apply(CGAffineTransform::rotation(quarter), {1, 0});
    EXPECT_NEAR(down.x, 0, 1e-12);
    EXPECT_NEAR(down.y, 1, 1e-12);

    const auto aboutX = apply(CATransform3D{}.rotatedBy(quarter, 2, 0, 0), {0, 1, 0});
    EXPECT_NEAR(aboutX[2], 1, 1e-12);
    const auto aboutZ = apply(CATransform3D{}.rotatedBy(quarter, 0, 0, 1), {1, 0, 0});
    EXPECT_NEAR(aboutZ[1], 1, 1e-12);
    // The later rotation comes first: x turns about z into y, which then turns about x into z.
    const auto both =
        apply(CATransform3D{}.rotatedBy(quarter, 1, 0, 0).rotatedBy(quarter, 0, 0, 1), {1, 0, 0});
    EXPECT_NEAR(both[2], 1, 1e-12);
    EXPECT_EQ(CATransform3D{}.rotatedBy(quarter, 0, 0, 0), CATransform3D{});
}

TEST(LocationTest, ValidCoordinatesAreFiniteAndInRange) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    for (const CLLocationCoordinate2D good : {CLLocationCoordinate2D{90, -180}, {-90, 180}, {37.5, 127}}) {
        EXPECT_TRUE(CLLocationCoordinate2DIsValid(good));
    }
    for (const CLLocationCoordinate2D bad :
         {CLLocationCoordinate2D{90.1, 0}, {0, -180.1}, {nan, 0}, {0, nan}}) {
        EXPECT_FALSE(CLLocationCoordinate2DIsValid(bad));
    }
}

}  // namespace
}  // namespace pelta
