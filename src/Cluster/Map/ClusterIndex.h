#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <pelta/Cluster/PgmCluster.h>
#include <pelta/Geometry/PgmLatLngBounds.h>

namespace pelta::detail {

/// The clusters of one grouping, found by where they are.
///
/// Positions stand in one flat array in the order of the cells of a grid over all coordinates, so that a map
/// over a few streets does not look at the clusters of the rest of the world.
class ClusterIndex {
 public:
    using Clusters = std::vector<std::shared_ptr<PgmCluster>>;

    ClusterIndex() = default;
    /// @param clusters  none of them null.
    explicit ClusterIndex(Clusters clusters);

    [[nodiscard]] const Clusters& clusters() const noexcept { return clusters_; }

    /// Numbers of the clusters whose positions lie within the bounds, ascending.
    [[nodiscard]] std::vector<std::uint32_t> within(const PgmLatLngBounds& bounds) const;

    /// Number of the cluster with the same position and the same items in any order.
    [[nodiscard]] std::optional<std::uint32_t> find(const PgmCluster& cluster) const;

    /// True when every one of as many clusters is found here, and every one here among them.
    [[nodiscard]] bool holdsTheSame(const Clusters& others) const;

 private:
    struct Place {
        CLLocationCoordinate2D position;
        std::uint32_t number;
    };

    [[nodiscard]] std::size_t row(double latitude) const noexcept;
    [[nodiscard]] std::size_t column(double longitude) const noexcept;
    [[nodiscard]] std::size_t cell(CLLocationCoordinate2D position) const noexcept;

    Clusters clusters_;
    std::size_t side_ = 1;               // cells of the grid on each side
    std::vector<Place> places_;          // by cell, rows from the south, within a row from the west
    std::vector<std::uint32_t> starts_;  // of the cells among the places; one more at the end
};

}  // namespace pelta::detail
