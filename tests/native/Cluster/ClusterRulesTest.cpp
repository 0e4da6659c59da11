#include <cmath>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include <pelta/Cluster/PgmClusterAlgorithm.h>
#include <pelta/Cluster/PgmHashable.h>

#include "Cluster/LiteralClustering.h"

// Results that are plain to see, and real places.

namespace pelta {
namespace {

using Item = std::shared_ptr<PgmClusterItem>;

struct Place : PgmClusterItem {
    explicit Place(CLLocationCoordinate2D where) : at(where) {}
    CLLocationCoordinate2D position() const override { return at; }
    CLLocationCoordinate2D at;
};

/// Items on the equator at these longitudes.
std::vector<Item> itemsAt(std::initializer_list<double> longitudes) {
    std::vector<Item> items;
    for (const double longitude : longitudes) {
        items.push_back(std::make_shared<Place>(CLLocationCoordinate2D{0, longitude}));
    }
    return items;
}

/// Indices of the items in each cluster.
std::vector<std::vector<std::size_t>> groups(PgmClusterAlgorithm& algorithm, const std::vector<Item>& items,
                                             float zoom) {
    std::vector<std::vector<std::size_t>> result;
    for (const auto& cluster : algorithm.clustersAtZoom(zoom)) {
        result.emplace_back();
        for (const Item& item : cluster->items()) {
            result.back().push_back(
                static_cast<std::size_t>(std::find(items.begin(), items.end(), item) - items.begin()));
        }
    }
    return result;
}

TEST(ClusterRulesTest, GroupsByNearestSeedLatestOnTies) {
    // At zoom 0 a seed reaches 70.3 degrees to each side.
    struct Case {
        const char* what;
        std::vector<Item> items;
        float zoom;
        std::uint64_t smallestCount;
        std::vector<std::vector<std::size_t>> groups;
    };
    const Case cases[] = {
        {"nothing", {}, 0, 2, {}},
        {"one item", itemsAt({10}), 0, 2, {{0}}},
        {"two within reach", itemsAt({10, 80}), 0, 2, {{0, 1}}},
        {"the same two, closer in", itemsAt({10, 80}), 1, 2, {{0}, {1}}},
        {"between two seeds: the later takes it on a tie", itemsAt({-45, 0, 45}), 0.25F, 1, {{0}, {1, 2}}},
        {"a group of 1 under 2 comes last", itemsAt({1, 100, 101}), 1, 2, {{1, 2}, {0}}},
        {"a fractional zoom counts as it is", itemsAt({0, 60}), 0.25F, 2, {{0}, {1}}},
        {"a negative one, too", itemsAt({-130, 130}), -2, 2, {{0, 1}}},
        {"beyond the edge nobody is found, but seeds find", itemsAt({170, 190, 180}), 0, 2, {{0, 2}}},
    };
    for (const Case& test : cases) {
        PgmNonHierarchicalDistanceBasedAlgorithm algorithm;
        algorithm.setMinClusteringCount(test.smallestCount);
        algorithm.add(test.items);
        EXPECT_THAT(groups(algorithm, test.items, test.zoom), testing::ElementsAreArray(test.groups))
            << test.what;
    }
}

TEST(ClusterRulesTest, WhatIsNowhereIsInNoClusterAndSeedsNone) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const auto nowhere : {CLLocationCoordinate2D{std::nan(""), 10},
                               {0, std::nan("")},
                               {infinity, 10},
                               {-infinity, 10},
                               {85.05, infinity}}) {
        for (const bool isAddedSomewhere : {false, true}) {
            SCOPED_TRACE(testing::Message()
                         << nowhere.latitude << " " << nowhere.longitude << " " << isAddedSomewhere);
            const auto lost =
                std::make_shared<Place>(isAddedSomewhere ? CLLocationCoordinate2D{0, 10} : nowhere);
            // Items on both edges and in between, which a position that was pushed to an edge would find.
            const std::vector<Item> items{lost, std::make_shared<Place>(CLLocationCoordinate2D{85.05, 10}),
                                          std::make_shared<Place>(CLLocationCoordinate2D{0, 10}),
                                          std::make_shared<Place>(CLLocationCoordinate2D{-85.05, 10})};
            const std::vector<std::vector<std::size_t>> others{{1}, {2}, {3}};
            PgmNonHierarchicalDistanceBasedAlgorithm algorithm;
            algorithm.setMinClusteringCount(0);
            algorithm.add(items);
            lost->at = nowhere;
            EXPECT_EQ(groups(algorithm, items, 1), others);
            algorithm.add(items[2]);
            EXPECT_EQ(groups(algorithm, items, 1), others) << "also where items repeat";
            algorithm.remove(lost);
            algorithm.remove(items[2]);
            algorithm.add(items[2]);
            lost->at = {0, 10};
            EXPECT_EQ(algorithm.clustersAtZoom(1).size(), 3U) << "removed, it comes back no more";
        }
    }
}

/// Steps that grow with the square of the count would take minutes here.
TEST(ClusterRulesTest, AnObjectIsRemovedAsOftenAsItWasAdded) {
    constexpr long count = 100'000;
    const auto items = itemsAt({10});
    const std::vector<Item> same(count, items[0]);
    const auto moving = std::make_shared<Place>(CLLocationCoordinate2D{});
    PgmNonHierarchicalDistanceBasedAlgorithm algorithm;
    algorithm.add(same);
    algorithm.remove(std::span(same).first(count / 2));
    algorithm.add(items);
    EXPECT_EQ(items[0].use_count(), 1 + count + count / 2 + 1);
    EXPECT_EQ(groups(algorithm, items, 1), (std::vector<std::vector<std::size_t>>{{0}}));
    algorithm.remove(same);
    EXPECT_TRUE(algorithm.clustersAtZoom(1).empty());
    for (long i = 0; i < count; ++i) {
        moving->at.longitude = static_cast<double>(i) * 1e-4;
        algorithm.add(moving);
    }
    for (long i = count; i-- > 0;) {
        moving->at.longitude = static_cast<double>(i) * 1e-4;
        algorithm.remove(moving);
    }
    EXPECT_EQ(items[0].use_count(), 1 + count);
    EXPECT_EQ(moving.use_count(), 1) << "nothing is held any longer";
}

TEST(ClusterRulesTest, AgreesWithTheLiteralRulesOnAllTheCitiesOfTheWorld) {
    std::ifstream file(PELTA_CITIES);
    PgmNonHierarchicalDistanceBasedAlgorithm algorithm;
    literal::Algorithm model;
    std::size_t count = 0;
    for (CLLocationCoordinate2D at; file >> at.longitude >> at.latitude; ++count) {
        const auto city = std::make_shared<Place>(at);
        algorithm.add(city);
        model.add(city);
    }
    ASSERT_GT(count, 100'000U);
    const auto expected = model.clustersAtZoom(7);
    const auto actual = algorithm.clustersAtZoom(7);
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        ASSERT_EQ(actual[i]->position(), expected[i].position);
        ASSERT_THAT(actual[i]->items(), testing::ElementsAreArray(expected[i].items)) << "cluster " << i;
    }
}

}  // namespace
}  // namespace pelta
