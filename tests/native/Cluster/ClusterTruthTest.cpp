#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <random>
#include <string>

#include <pelta/Cluster/PgmClusterAlgorithm.h>
#include <pelta/Cluster/PgmHashable.h>

#include "Cluster/LiteralClustering.h"

// The clustering of the library beside the literal one, on seeded sets of every kind.

namespace pelta {
namespace {

using Item = std::shared_ptr<PgmClusterItem>;

struct Place : PgmClusterItem {
    explicit Place(CLLocationCoordinate2D where) : place(where) {}
    CLLocationCoordinate2D position() const override { return place; }
    CLLocationCoordinate2D place;
};

/// Equal to all others of its name.
class NamedPlace final : public Place, public PgmHashable {
 public:
    NamedPlace(CLLocationCoordinate2D position, unsigned name) : Place(position), name_(name) {}
    std::size_t hash() const override { return name_ % 3; }
    bool equals(const PgmHashable& other) const override {
        return dynamic_cast<const NamedPlace&>(other).name_ == name_;
    }

 private:
    unsigned name_;
};

/// What a set's positions are drawn from.
enum class Spread { uniform, clustered, line, point, grid, edges, nonFinite, beyond, count };

/// One seeded set: positions, settings, and a history of additions and removals.
class Scenario {
 public:
    Scenario(Spread spread, unsigned seed) : spread_(spread), random_(seed) {
        zoom_ = chance(0.5) ? static_cast<float>(below(25)) - 2 : static_cast<float>(between(-2, 22));
        distance_ = static_cast<unsigned>(oneOf({0, 1, 7, 100, 200, 200, 200, 201, 999, 100'000}));
        count_ = static_cast<unsigned>(oneOf({0, 1, 2, 2, 2, 3, 5, 65, 1000}));
        const double degrees = 400.0 / std::pow(2.0, zoom_ + 11) * 360;
        extent_ = std::min(degrees * between(0.2, 15), 80.0);
        middle_ = {between(-60, 60), between(-170, 170)};
        hasNames_ = chance(0.25);
        hasMoves_ = chance(0.1);
    }

    void run() {
        for (unsigned round = 0; round < 4; ++round) {
            addSome();
            compare(round);
            removeSome();
            if (hasMoves_) {
                moveSome();
            }
            compare(round);
            if (chance(0.1)) {
                fast_.clear();
                literal_.clear();
            }
        }
    }

 private:
    std::size_t below(std::size_t count) { return random_() % count; }
    double between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random_);
    }
    bool chance(double probability) { return between(0, 1) < probability; }

    CLLocationCoordinate2D around(CLLocationCoordinate2D middle, double extent) {
        return {middle.latitude + between(-extent, extent), middle.longitude + between(-extent, extent)};
    }

    template <std::size_t count>
    double oneOf(const double (&values)[count]) {
        return values[below(count)];
    }

    CLLocationCoordinate2D position() {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        const auto somewhere = around(middle_, extent_);
        switch (spread_) {
            case Spread::clustered:
                return around({middle_.latitude + extent_ * static_cast<double>(below(4)), middle_.longitude},
                              extent_ * (chance(0.9) ? 0.02 : 1));
            case Spread::line:
                return chance(0.5) ? CLLocationCoordinate2D{middle_.latitude, somewhere.longitude}
                                   : CLLocationCoordinate2D{somewhere.latitude, middle_.longitude};
            case Spread::point:
                return chance(0.98) ? middle_ : somewhere;
            case Spread::grid:  // Equal distances between many.
                return {middle_.latitude, middle_.longitude + extent_ / 4 * static_cast<double>(below(9))};
            case Spread::edges: {
                const double jitter = chance(0.5) ? between(-1e-3, 1e-3) : 0;
                return {oneOf({90, -90, 85.05112878, -85.05112878, 85.0511, -85.0511, 0, 85.1}) + jitter,
                        oneOf({180, -180, 179.9999, -179.9999, 180.0000001, 0}) - jitter};
            }
            case Spread::nonFinite: {
                auto odd = somewhere;
                (chance(0.5) ? odd.latitude : odd.longitude) =
                    oneOf({NAN, infinity, -infinity, 1e300, -1e300, 0, 90, -90, 180, -180, 181, -541});
                return chance(0.5) ? odd : somewhere;
            }
            case Spread::beyond:
                return around({middle_.latitude, 180}, extent_);
            default:
                return somewhere;
        }
    }

    Item newItem() {
        if (hasNames_ && chance(0.7)) {
            return std::make_shared<NamedPlace>(position(), static_cast<unsigned>(below(40)));
        }
        return std::make_shared<Place>(position());
    }

    void addSome() {
        std::vector<Item> added;
        for (std::size_t left = below(chance(0.3) ? 260 : 60); left > 0; --left) {
            if (pool_.empty() || !chance(0.05)) {
                pool_.push_back(newItem());
            }
            added.push_back(chance(0.95) ? pool_.back() : pool_[below(pool_.size())]);
        }
        fast_.add(added);
        for (const Item& item : added) {
            literal_.add(item);
        }
    }

    void removeSome() {
        const double share = chance(0.2) ? 0.95 : 0.2;
        for (const Item& item : pool_) {
            if (chance(share)) {
                // Also such as were removed before, or never added.
                const Item removed = chance(0.97) ? item : std::make_shared<Place>(item->position());
                fast_.remove(removed);
                literal_.remove(removed);
            }
        }
    }

    void moveSome() {
        for (const Item& item : pool_) {
            if (chance(0.2)) {
                std::dynamic_pointer_cast<Place>(item)->place = position();
            }
        }
    }

    void compare(unsigned round) {
        fast_.setMinClusteringCount(count_);
        fast_.setMaxDistanceBetweenItems(distance_);
        literal_.minClusteringCount = count_;
        literal_.maxDistanceBetweenItems = distance_;
        const auto expected = literal_.clustersAtZoom(zoom_);
        const auto actual = fast_.clustersAtZoom(zoom_);
        ASSERT_EQ(actual.size(), expected.size()) << "round " << round;
        for (std::size_t i = 0; i < actual.size(); ++i) {
            const auto items = actual[i]->items();
            ASSERT_EQ(std::vector<Item>(items.begin(), items.end()), expected[i].items)
                << "round " << round << ", cluster " << i << " of " << actual.size();
            ASSERT_EQ(actual[i]->count(), items.size());
            const auto bits = [](CLLocationCoordinate2D at) {
                return std::pair(std::bit_cast<std::uint64_t>(at.latitude),
                                 std::bit_cast<std::uint64_t>(at.longitude));
            };
            ASSERT_EQ(bits(actual[i]->position()), bits(expected[i].position)) << "cluster " << i;
        }
    }

    Spread spread_;
    std::mt19937 random_;
    float zoom_ = 0;
    unsigned distance_ = 0;
    unsigned count_ = 0;
    double extent_ = 0;
    CLLocationCoordinate2D middle_;
    bool hasNames_ = false;
    bool hasMoves_ = false;
    std::vector<Item> pool_;
    PgmNonHierarchicalDistanceBasedAlgorithm fast_;
    literal::Algorithm literal_;
};

TEST(ClusterTruthTest, AgreesWithTheLiteralRulesOnThousandsOfSets) {
    constexpr unsigned setsOfEachSpread = 300;
    for (int spread = 0; spread < static_cast<int>(Spread::count); ++spread) {
        for (unsigned seed = 0; seed < setsOfEachSpread; ++seed) {
            SCOPED_TRACE("spread " + std::to_string(spread) + ", seed " + std::to_string(seed));
            Scenario(static_cast<Spread>(spread), seed).run();
            if (HasFatalFailure()) {
                return;
            }
        }
    }
}

}  // namespace
}  // namespace pelta
