#include "EngineFixture.h"

namespace pelta {
namespace {

class OrnamentsTest : public EngineTest {};

TEST_F(OrnamentsTest, TheScaleBarShowsARoundLength) {
    const auto view = makeView();
    EXPECT_FALSE(view->showsScale());
    view->setShowsScale(true);
    struct Case {
        double latitude, zoom;
        std::string label;
        int segments;
    };
    for (const Case& each : {Case{0, 0, "5000 km", 5}, Case{0, 10, "5 km", 5}, Case{60, 10, "2 km", 2},
                             Case{37, 14.2, "200 m", 2}, Case{0, 22, "1 m", 2}}) {
        view->setCamera(cameraAt(*view, {each.latitude, 0}, each.zoom), false);
        EXPECT_TRUE(port.runUntilIdle());
        const auto& parts = view->scaleBar()->subviews();
        EXPECT_EQ(dynamic_cast<const UILabel&>(*parts.back()).text(), each.label);
        double length = 0;
        int segments = 0;
        for (std::size_t i = 1; i + 1 < parts.size(); ++i) {
            segments += parts[i]->isHidden() ? 0 : 1;
            length += parts[i]->isHidden() ? 0 : parts[i]->frame().size.width;
        }
        EXPECT_EQ(segments, each.segments);
        const double unit = each.label.find("km") != std::string::npos ? 1000 : 1;
        EXPECT_NEAR(length * view->metersPerPointAtLatitude(each.latitude), std::stod(each.label) * unit,
                    1e-3);
        EXPECT_LE(length, 100);
    }
    const auto revision = UIView::treeRevision();
    port.runFrame();
    EXPECT_EQ(UIView::treeRevision(), revision);
}

}  // namespace
}  // namespace pelta
