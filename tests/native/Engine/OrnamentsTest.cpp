#include "EngineFixture.h"

namespace pelta {
namespace {

class OrnamentsTest : public EngineTest {};

TEST_F(OrnamentsTest, KeepToTheirCornersOfTheSafeArea) {
    const auto view = makeView();
    for (const auto& ornament : {view->logoView(), view->compassView()}) {
        for (const auto& constraint : ornament->constraints()) {
            if (constraint->identifier() == "width") {
                constraint->setConstant(40);
            } else if (constraint->identifier() == "height") {
                constraint->setConstant(20);
            }
        }
    }
    view->setSafeAreaInsets({1, 2, 3, 4});
    view->setContentInset({10, 20, 30, 40});
    view->layoutIfNeeded();
    EXPECT_EQ(view->logoView()->frame(), (CGRect{{30, 300 - 3 - 30 - 8 - 20}, {40, 20}}));
    EXPECT_EQ(view->compassView()->frame(), (CGRect{{400 - 4 - 40 - 8 - 40, 19}, {40, 20}}));
    EXPECT_EQ(view->scaleBar()->frame().origin, (CGPoint{30, 19}));
    view->setShowsLogoView(false);
    EXPECT_TRUE(view->logoView()->isHidden());
}

TEST_F(OrnamentsTest, TheCompassShowsTheBearingAndResetsIt) {
    const auto window = port.makeWindow(viewFrame.size);
    const auto view = makeView();
    window->addSubview(view);
    for (const auto& constraint : view->compassView()->constraints()) {
        if (!constraint->identifier().empty()) {
            constraint->setConstant(40);
        }
    }
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_TRUE(view->compassView()->isHidden());
    view->setCamera(cameraAt(*view, {0, 0}, 5, 0, 90), false);
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_FALSE(view->compassView()->isHidden());
    EXPECT_NEAR(view->compassView()->transform().b, -1, 1e-12);
    view->setShowsCompassView(false);
    EXPECT_TRUE(view->compassView()->isHidden());
    view->setShowsCompassView(true);
    static_cast<void>(log->take());
    port.tap(*window, {400 - 8 - 20, 28});
    EXPECT_TRUE(port.runUntilIdle());
    EXPECT_EQ(log->take(), "will 2 animated, is 2, did 2 animated");
    EXPECT_EQ(view->direction(), 0);
    EXPECT_TRUE(view->compassView()->isHidden());
}

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
