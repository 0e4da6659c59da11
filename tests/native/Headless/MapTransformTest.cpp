#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

#include "MapTransform.h"
#include "shared/ProjectionSamples.h"

namespace pelta {
namespace {

/// Row-major, applied to column vectors.
using Matrix = std::array<std::array<double, 4>, 4>;

constexpr Matrix identity{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

Matrix operator*(const Matrix& a, const Matrix& b) {
    Matrix product{};
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            for (std::size_t i = 0; i < 4; ++i) {
                product[row][column] += a[row][i] * b[i][column];
            }
        }
    }
    return product;
}

Matrix translation(double x, double y, double z) {
    Matrix matrix = identity;
    matrix[0][3] = x;
    matrix[1][3] = y;
    matrix[2][3] = z;
    return matrix;
}

Matrix rotation(std::size_t from, std::size_t to, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    Matrix matrix = identity;
    matrix[from][from] = matrix[to][to] = std::cos(angle);
    matrix[from][to] = -std::sin(angle);
    matrix[to][from] = std::sin(angle);
    return matrix;
}

/// An OpenGL frustum whose centre is shifted by `offset` points.
Matrix frustum(CGSize size, CGPoint offset) {
    const double focus = 3;  // 1 / tan of half of 2·atan(1/3)
    const double near = size.height / 50;
    const double far = size.height * 100;
    Matrix matrix{};
    matrix[0][0] = focus * size.height / size.width;
    matrix[1][1] = focus;
    matrix[0][2] = -2 * offset.x / size.width;
    matrix[1][2] = 2 * offset.y / size.height;
    matrix[2][2] = (far + near) / (near - far);
    matrix[2][3] = 2 * far * near / (near - far);
    matrix[3][2] = -1;
    return matrix;
}

CGPoint worldPoint(CLLocationCoordinate2D coordinate, double zoom) {
    const double size = 512 * std::pow(2, zoom);
    const double sine = std::sin(coordinate.latitude * std::numbers::pi / 180);
    return {size * (coordinate.longitude + 180) / 360,
            size * (0.5 - std::atanh(sine) / (2 * std::numbers::pi))};
}

/// Where a chain of 4 × 4 matrices, written down step by step, puts a coordinate.
CGPoint pointByMatrices(const shared::ProjectionSample& sample) {
    const auto& [size, inset, camera, coordinate, point] = sample;
    const CGPoint offset{(inset.left - inset.right) / 2, (inset.top - inset.bottom) / 2};
    Matrix flip = identity;
    flip[1][1] = -1;
    const CGPoint center = worldPoint(camera.center, camera.zoom);
    const Matrix toClip = frustum(size, offset) * flip * translation(0, 0, -1.5 * size.height) *
                          rotation(1, 2, camera.pitch) * rotation(0, 1, -camera.bearing) *
                          translation(-center.x, -center.y, 0);
    const CGPoint world = worldPoint(coordinate, camera.zoom);
    std::array<double, 4> clip{};
    for (std::size_t row = 0; row < 4; ++row) {
        clip[row] = toClip[row][0] * world.x + toClip[row][1] * world.y + toClip[row][3];
    }
    return {(clip[0] / clip[3] + 1) * size.width / 2, (1 - clip[1] / clip[3]) * size.height / 2};
}

TEST(MapTransform, AgreesWithMatricesAndInvertsItself) {
    for (const auto& sample : shared::projectionSamples(300, 11)) {
        const CGPoint truth = pointByMatrices(sample);
        EXPECT_NEAR(sample.point.x, truth.x, 1e-4);
        EXPECT_NEAR(sample.point.y, truth.y, 1e-4);
        const MapTransform transform(sample.camera, sample.size, sample.inset);
        const auto back = transform.coordinateForPoint(sample.point);
        const double tolerance = 1e-6 / std::exp2(sample.camera.zoom);
        EXPECT_NEAR(back.latitude, sample.coordinate.latitude, tolerance * 10);
        EXPECT_NEAR(back.longitude, sample.coordinate.longitude, tolerance * 10);
    }
}

TEST(MapTransform, EndsAtTheHorizon) {
    const MapTransform transform({{37, 127}, 10, 80, 0}, {400, 300}, {});
    EXPECT_NEAR(transform.horizon(), 150 - 450 * std::tan(9.25 * std::numbers::pi / 180), 1e-9);
    const auto below = transform.coordinateForPoint({200, transform.horizon()});
    EXPECT_EQ(transform.coordinateForPoint({200, -5000}), below);
    EXPECT_GT(below.latitude, 37);
    EXPECT_LE(transform.relativeDistance(MapTransform::groundForCoordinate({20, 127})), 0);
    const CGPoint behind = transform.pointForCoordinate({20, 127});
    EXPECT_TRUE(std::isfinite(behind.x) && behind.y > 1e5);
}

}  // namespace
}  // namespace pelta
