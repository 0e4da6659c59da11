#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include <pelta/Cluster/PQTPointQuadTree.h>

#include "Cluster/LiteralClustering.h"

namespace pelta {
namespace {

constexpr PQTBounds world{-1, -1, 1, 1};

class Dot final : public PQTPointQuadTreeItem {
 public:
    explicit Dot(PQTPoint where) : point_(where) {}
    PQTPoint point() const override { return point_; }

 private:
    PQTPoint point_;
};

std::shared_ptr<Dot> dot(double x, double y) {
    return std::make_shared<Dot>(PQTPoint{x, y});
}

std::vector<PQTPoint> pointsIn(const PQTPointQuadTree& tree, PQTBounds bounds = world) {
    std::vector<PQTPoint> points;
    for (const auto& item : tree.searchWithBounds(bounds)) {
        points.push_back(item->point());
    }
    return points;
}

TEST(QuadTreeTest, HoldsFinitePointsOfTheUnitSquareOnly) {
    struct Case {
        PQTPoint point;
        bool isHeld;
    };
    const double infinity = std::numeric_limits<double>::infinity();
    const Case cases[] = {{{0, 0}, true},         {{-1, -1}, true},        {{1, 1}, true},
                          {{-1, 1}, true},        {{1.0000001, 0}, false}, {{0, -2}, false},
                          {{NAN, 0}, false},      {{0, NAN}, false},       {{infinity, 0}, false},
                          {{0, -infinity}, false}};
    for (const auto& [point, isHeld] : cases) {
        PQTPointQuadTree tree({-5, -5, 5, 5});
        tree.add(dot(point.x, point.y));
        EXPECT_EQ(tree.count(), isHeld ? 1U : 0U) << point.x << ", " << point.y;
        EXPECT_EQ(tree.remove(*dot(point.x, point.y)), isHeld) << point.x << ", " << point.y;
        EXPECT_EQ(tree.count(), 0U);
    }
    PQTPointQuadTree tree(world);
    tree.add(nullptr);
    EXPECT_EQ(tree.count(), 0U);
}

TEST(QuadTreeTest, FindsPointsOnTheRectanglesBorder) {
    PQTPointQuadTree tree(world);
    tree.add(dot(0.25, 0.5));
    EXPECT_EQ(pointsIn(tree, {0.25, 0.5, 0.25, 0.5}).size(), 1U);
    EXPECT_EQ(pointsIn(tree, {0, 0, 0.25, 0.5}).size(), 1U);
    EXPECT_EQ(pointsIn(tree, {0.2500001, 0, 1, 1}).size(), 0U);
    EXPECT_EQ(pointsIn(tree, {NAN, 0, 1, 1}).size(), 0U);
}

TEST(QuadTreeTest, SplitsAtTheSixtyFifthItemAndKeepsTheSplit) {
    PQTPointQuadTree tree(world);
    // Left and right in turn: while there is one leaf, the order of adding; afterwards the right side comes
    // first.
    for (int i = 0; i < 64; ++i) {
        tree.add(dot(i % 2 == 0 ? -0.5 : 0.5, 0.5 + i * 0.001));
    }
    EXPECT_EQ(pointsIn(tree).front(), (PQTPoint{-0.5, 0.5}));
    tree.add(dot(0, 0));
    const auto split = pointsIn(tree);
    ASSERT_EQ(split.size(), 65U);
    EXPECT_EQ(split.front(), (PQTPoint{0.5, 0.501}));
    EXPECT_EQ(split[32], (PQTPoint{-0.5, 0.5}));
    EXPECT_EQ(split.back(), (PQTPoint{0, 0})) << "the centre belongs to the bottom left";

    for (const PQTPoint point : split) {
        EXPECT_TRUE(tree.remove(Dot(point)));
    }
    tree.add(dot(-0.5, 0.5));
    tree.add(dot(0, 0.5));
    tree.add(dot(0.5, 0.5));
    EXPECT_EQ(pointsIn(tree), (std::vector<PQTPoint>{{0.5, 0.5}, {-0.5, 0.5}, {0, 0.5}}))
        << "x = 0 counts as left; an emptied leaf stays";
    tree.clear();
    EXPECT_EQ(tree.count(), 0U);
    tree.add(dot(-0.5, 0.5));
    tree.add(dot(0.5, 0.5));
    EXPECT_EQ(pointsIn(tree), (std::vector<PQTPoint>{{-0.5, 0.5}, {0.5, 0.5}})) << "clearing forgets splits";
}

TEST(QuadTreeTest, OfItemsAtOnePointTheEarliestGoesFirst) {
    PQTPointQuadTree tree(world);
    std::vector<std::shared_ptr<PQTPointQuadTreeItem>> items;
    for (int i = 0; i < 100; ++i) {
        items.push_back(dot(0.3, 0.7));
        tree.add(items.back());
    }
    EXPECT_EQ(tree.searchWithBounds(world), items);
    EXPECT_TRUE(tree.remove(*items[57]));
    items.erase(items.begin());
    EXPECT_EQ(tree.searchWithBounds(world), items);
    EXPECT_FALSE(tree.remove(*dot(0.3, 0.70001)));
    EXPECT_EQ(tree.count(), 99U);
}

TEST(QuadTreeTest, ReleasesWhatItRemoves) {
    PQTPointQuadTree tree(world);
    auto item = dot(0.1, 0.1);
    const std::weak_ptr<Dot> watch = item;
    tree.add(item);
    EXPECT_TRUE(tree.remove(*item));
    item.reset();
    EXPECT_TRUE(watch.expired());
}

TEST(QuadTreeTest, AgreesWithALiteralTreeThroughChanges) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        std::mt19937 random(seed);
        // Few different values, so that points repeat and lie on dividing lines.
        const int steps = seed % 3 == 0 ? 8 : 1000;
        std::uniform_int_distribution<int> step(-steps, steps);
        const auto value = [&] {
            return static_cast<double>(step(random)) / steps * (seed % 2 == 0 ? 1 : 1e-6);
        };
        PQTPointQuadTree tree(world);
        literal::QuadTree<std::shared_ptr<PQTPointQuadTreeItem>> model;
        std::vector<PQTPoint> added;
        for (int round = 0; round < 1500; ++round) {
            if (random() % 5 < (round < 1000 ? 3U : 1U)) {
                const auto item = dot(value(), value());
                tree.add(item);
                model.add(item->point(), item);
                added.push_back(item->point());
            } else if (!added.empty()) {
                const PQTPoint point = added[random() % added.size()];
                ASSERT_EQ(tree.remove(Dot(point)), model.remove(point)) << "seed " << seed;
            }
            if (round % 50 == 0) {
                const PQTBounds area{value() - 0.1, value() - 0.1, value() + 0.1, value() + 0.1};
                ASSERT_EQ(tree.searchWithBounds(area), model.search(area)) << "seed " << seed;
                ASSERT_EQ(tree.searchWithBounds(world), model.search(world)) << "seed " << seed;
            }
        }
    }
}

}  // namespace
}  // namespace pelta
