#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <pelta/Cluster/PgmCluster.h>

namespace pelta::detail {

/// The clusters of one run of the algorithm, and what tells each from the others: its position and the items
/// that stand there. A cluster's number is its place among them.
class Grouping {
 public:
    using Clusters = std::vector<std::shared_ptr<PgmCluster>>;
    /// No number of a cluster.
    static constexpr std::uint32_t none = UINT32_MAX;

    Grouping() = default;
    /// @param clusters  none of them null. They are asked now; what they answer later does not count.
    explicit Grouping(Clusters clusters);

    [[nodiscard]] std::size_t size() const noexcept { return clusters_.size(); }
    [[nodiscard]] const Clusters& clusters() const noexcept { return clusters_; }
    /// By number.
    [[nodiscard]] const std::vector<CLLocationCoordinate2D>& positions() const noexcept { return positions_; }

    /// Equal for clusters that are the same.
    [[nodiscard]] std::size_t hash(std::uint32_t number) const noexcept;
    /// Whether a cluster has the same position and the same items, in any order, as one of another grouping.
    [[nodiscard]] bool isSame(std::uint32_t number, const Grouping& others, std::uint32_t other) const;

 private:
    /// A cluster's items in short: the item itself of one, a sum over the items of several.
    struct Contents {
        std::size_t count;
        std::uint64_t mark;
        friend bool operator==(const Contents&, const Contents&) = default;
    };

    [[nodiscard]] static Contents contentsOf(const PgmCluster& cluster);

    Clusters clusters_;
    std::vector<CLLocationCoordinate2D> positions_;
    std::vector<Contents> contents_;
};

}  // namespace pelta::detail
