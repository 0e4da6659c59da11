#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <variant>
#include <vector>

#include <pelta/Platform/CoreLocation.h>

/// @file
/// What is clustered, and what comes out of it.

namespace pelta {

/// Something with a geographic position, implemented by the application.
///
/// Items are told apart by identity, unless they also implement `PgmHashable`.
class PgmClusterItem {
 public:
    virtual ~PgmClusterItem() = default;
    /// WGS84, degrees. Any values are accepted; see `PgmNonHierarchicalDistanceBasedAlgorithm` for those that
    /// cannot be clustered. Remove and add an item to move it: one that only answers differently goes on
    /// being found where it was when it was added.
    [[nodiscard]] virtual CLLocationCoordinate2D position() const = 0;
};

/// A group of items that are shown as one.
class PgmCluster {
 public:
    virtual ~PgmCluster() = default;
    /// Where the cluster is shown; WGS84, degrees.
    [[nodiscard]] virtual CLLocationCoordinate2D position() const = 0;
    /// Number of items.
    [[nodiscard]] virtual std::uint64_t count() const = 0;
    /// The items. The view is valid as long as the cluster.
    [[nodiscard]] virtual std::span<const std::shared_ptr<PgmClusterItem>> items() const = 0;
};

/// A cluster that never changes. It keeps its items alive.
class PgmStaticCluster final : public PgmCluster {
 public:
    /// @param position  WGS84, degrees; stored unchanged.
    /// @param items     in the order in which `items()` gives them.
    PgmStaticCluster(CLLocationCoordinate2D position, std::vector<std::shared_ptr<PgmClusterItem>> items)
        : position_(position), items_(std::move(items)) {}

    /// A cluster of one item.
    PgmStaticCluster(CLLocationCoordinate2D position, std::shared_ptr<PgmClusterItem> item)
        : position_(position), items_(std::move(item)) {}

    [[nodiscard]] CLLocationCoordinate2D position() const override { return position_; }
    [[nodiscard]] std::uint64_t count() const override { return items().size(); }
    [[nodiscard]] std::span<const std::shared_ptr<PgmClusterItem>> items() const override {
        if (const auto* one = std::get_if<std::shared_ptr<PgmClusterItem>>(&items_)) {
            return {one, 1};
        }
        return *std::get_if<std::vector<std::shared_ptr<PgmClusterItem>>>(&items_);
    }

 private:
    CLLocationCoordinate2D position_;
    // Most clusters hold one item; it needs no memory of its own.
    std::variant<std::shared_ptr<PgmClusterItem>, std::vector<std::shared_ptr<PgmClusterItem>>> items_;
};

}  // namespace pelta
