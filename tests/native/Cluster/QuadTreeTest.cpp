#include <cmath>
#include <gtest/gtest.h>
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
                const auto item = std::make_shared<Dot>(PQTPoint{value(), value()});
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
