#include <algorithm>
#include <array>
#include <cmath>
#include <random>

#include "EngineFixture.h"
#include "MapTransform.h"

namespace pelta {
namespace {

using Corners = std::array<CLLocationCoordinate2D, 4>;

class Spread {
 public:
    double between(double low, double high) { return std::uniform_real_distribution(low, high)(generator_); }
    UIEdgeInsets insets(double most) {
        return {between(0, most), between(0, most), between(0, most), between(0, most)};
    }

 private:
    std::mt19937 generator_{9};
};

/// The copy of a coordinate that is nearest to the camera's centre.
CLLocationCoordinate2D nearestCopy(CLLocationCoordinate2D coordinate, CLLocationCoordinate2D center) {
    coordinate.longitude += 360 * std::round((center.longitude - coordinate.longitude) / 360);
    return coordinate;
}

class CameraFittingTest : public EngineTest {
 protected:
    struct Task {
        MLNCoordinateBounds bounds;
        UIEdgeInsets inset, padding;
        double pitch, bearing;

        [[nodiscard]] Corners corners() const {
            const auto& [sw, ne] = bounds;
            return {sw, ne, {sw.latitude, ne.longitude}, {ne.latitude, sw.longitude}};
        }
        /// What inset and padding leave of the view.
        [[nodiscard]] CGRect area() const {
            const double left = inset.left + padding.left;
            const double top = inset.top + padding.top;
            return {{left, top},
                    {viewFrame.size.width - left - inset.right - padding.right,
                     viewFrame.size.height - top - inset.bottom - padding.bottom}};
        }
    };

    /// @param span  degrees of latitude and of longitude at most.
    Task task(double leastSpan, double span, double furthestNorth) {
        const double height = leastSpan * std::pow(span / leastSpan, spread.between(0, 1));
        const double width = leastSpan * std::pow(span / leastSpan, spread.between(0, 1));
        const double south = spread.between(-furthestNorth, furthestNorth - height);
        const double west = spread.between(-180, 180);
        return {{{south, west}, {south + height, west + width}},
                spread.insets(60),
                spread.insets(60),
                spread.between(0, 60),
                spread.between(0, 360)};
    }

    CameraState fit(const Task& task) {
        view->setContentInset(task.inset);
        view->setCamera(cameraAt(*view, {0, 0}, 3, task.pitch, task.bearing), false);
        view->setCamera(view->cameraThatFitsCoordinateBounds(task.bounds, task.padding), false);
        const auto camera = view->camera();
        EXPECT_NEAR(camera.pitch, task.pitch, 1e-9);
        EXPECT_NEAR(camera.heading, task.bearing, 1e-9);
        return {camera.centerCoordinate, view->zoomLevel(), camera.pitch, camera.heading};
    }

    /// How far the corner furthest outside of the padded area is drawn from it, points; 0 when all are
    /// inside.
    [[nodiscard]] double overshoot(const Task& task) const {
        const auto area = task.area();
        double furthest = 0;
        for (const auto& corner : task.corners()) {
            const auto point =
                view->convertCoordinate(nearestCopy(corner, view->centerCoordinate()), nullptr);
            furthest = std::max({furthest, area.minX() - point.x, point.x - area.maxX(),
                                 area.minY() - point.y, point.y - area.maxY()});
        }
        return furthest;
    }

    /// Whether some centre shows all corners at a camera's zoom: centres are tried in rows half a point
    /// apart. Within a row a corner is drawn the further to the left, the further to the right the centre
    /// lies.
    static bool canShowAll(const Task& task, const CameraState& camera) {
        const auto area = task.area();
        for (double row = -1500; row < 1500; row += 0.5) {
            const MapTransform there(camera, viewFrame.size, task.inset);
            auto center = camera;
            center.center = MapTransform::coordinateForGround(
                there.groundShifted(MapTransform::groundForCoordinate(camera.center), {0, row}));
            const MapTransform transform(center, viewFrame.size, task.inset);
            double low = -1e9;
            double high = 1e9;
            for (const auto& corner : task.corners()) {
                const auto ground = MapTransform::groundForCoordinate(nearestCopy(corner, camera.center));
                const auto point = transform.pointForGround(ground);
                const double distance = transform.relativeDistance(ground);
                if (distance <= 0 || point.y < area.minY() || point.y > area.maxY()) {
                    low = HUGE_VAL;
                    break;
                }
                low = std::max(low, (point.x - area.maxX()) * distance);
                high = std::min(high, (point.x - area.minX()) * distance);
            }
            if (low <= high) {
                return true;
            }
        }
        return false;
    }

    Spread spread;
    std::shared_ptr<MLNMapView> view = makeView();
};

TEST_F(CameraFittingTest, ShowsAllCornersAsLargeAsCanBe) {
    for (int i = 0; i < 60; ++i) {
        const auto each = task(0.001, 5, 60);
        const auto camera = fit(each);
        EXPECT_EQ(overshoot(each), 0) << i;
        auto closer = camera;
        closer.zoom += 0.02;
        EXPECT_FALSE(canShowAll(each, closer)) << i;
        closer.zoom = camera.zoom - 0.01;
        EXPECT_TRUE(canShowAll(each, closer)) << i << ": the search finds what there is";
    }
}

TEST_F(CameraFittingTest, ShowsAllCornersOfLargeAreasToTheEdgesOfTheWorld) {
    int fitted = 0;
    for (int i = 0; i < 500; ++i) {
        const auto each = task(5, 160, 85);
        if (fit(each).zoom > 0) {
            ++fitted;
            EXPECT_EQ(overshoot(each), 0) << i;
        }
    }
    EXPECT_GT(fitted, 200);
}

}  // namespace
}  // namespace pelta
