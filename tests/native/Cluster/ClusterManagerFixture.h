#pragma once

#include <cmath>
#include <functional>
#include <optional>

#include "View/MapFixture.h"

namespace pelta {

inline constexpr CLLocationCoordinate2D seoul{37.5665, 126.9780};

class Place final : public PgmClusterItem {
 public:
    explicit Place(CLLocationCoordinate2D where) : position_(where) {}
    CLLocationCoordinate2D position() const override { return position_; }

 private:
    CLLocationCoordinate2D position_;
};

using Item = std::shared_ptr<PgmClusterItem>;

inline Item place(double latitude, double longitude) {
    return std::make_shared<Place>(CLLocationCoordinate2D{latitude, longitude});
}

/// The library's algorithm, or what a test gives in its place, counting its runs.
class CountedAlgorithm final : public PgmClusterAlgorithm {
 public:
    using Groups = std::vector<std::pair<double, std::vector<Item>>>;

    std::uint64_t minClusteringCount() const override { return real_.minClusteringCount(); }
    void setMinClusteringCount(std::uint64_t count) override { real_.setMinClusteringCount(count); }
    std::uint64_t maxDistanceBetweenItems() const override { return real_.maxDistanceBetweenItems(); }
    void setMaxDistanceBetweenItems(std::uint64_t points) override {
        real_.setMaxDistanceBetweenItems(points);
    }
    void add(Item item) override { real_.add(std::move(item)); }
    void add(std::span<const Item> items) override { real_.add(items); }
    void remove(const Item& item) override { real_.remove(item); }
    void remove(std::span<const Item> items) override { real_.remove(items); }
    void clear() override { real_.clear(); }
    std::vector<std::shared_ptr<PgmCluster>> clustersAtZoom(float zoom) override {
        zooms.push_back(zoom);
        if (!given) {
            return real_.clustersAtZoom(zoom);
        }
        std::vector<std::shared_ptr<PgmCluster>> clusters;
        for (const auto& [longitude, items] : *given) {
            const CLLocationCoordinate2D place{0, longitude};
            clusters.push_back(std::make_shared<PgmStaticCluster>(place, items));
        }
        return clusters;
    }

    std::vector<float> zooms;
    std::optional<Groups> given;  ///< On the equator, by longitude.

 private:
    PgmNonHierarchicalDistanceBasedAlgorithm real_;
};

/// Writes down what it is told, and does what a test wants.
class Listener final : public PgmClusterManagerDelegate {
 public:
    void willRenderCluster(PgmClusterManager&, const std::shared_ptr<PgmCluster>& cluster,
                           PgmMarkerOptions& options) override {
        rendered.push_back(std::to_string(cluster->count()) + " items");
        action(options);
    }
    void willRenderClusterItem(PgmClusterManager&, const Item& item, PgmMarkerOptions& options) override {
        rendered.emplace_back(item->position() == options.position() ? "item" : "item elsewhere");
        action(options);
    }
    bool didTapCluster(PgmClusterManager&, const std::shared_ptr<PgmCluster>& cluster,
                       PgmMarkerOptions& options) override {
        tapped.push_back(std::to_string(cluster->count()) + " items");
        action(options);
        return isHandling;
    }
    bool didTapClusterItem(PgmClusterManager&, const Item&, PgmMarkerOptions& options) override {
        tapped.emplace_back("item");
        action(options);
        return isHandling;
    }

    std::vector<std::string> rendered, tapped;
    std::function<void(PgmMarkerOptions&)> action = [](PgmMarkerOptions&) {};
    bool isHandling = true;
};

class ClusterManagerFixture : public MapFixture {
 protected:
    void SetUp() override {
        look(seoul, 10);
        manager->setAlgorithm(algorithm);
        manager->setDelegate(listener);
    }

    void look(CLLocationCoordinate2D target, double zoom) {
        map->setCameraPosition(PgmCameraPosition::cameraPosition(target, zoom));
    }

    std::vector<std::shared_ptr<PgmMarker>> markers() const {
        std::vector<std::shared_ptr<PgmMarker>> list;
        for (const auto& [index, shape] : map->shapesMap()) {
            list.push_back(std::dynamic_pointer_cast<PgmMarker>(shape));
        }
        return list;
    }

    /// A pair and a single item, close to Seoul, clustered at zoom 10.
    void addPairAndSingle() {
        const std::array items{place(37.5665, 126.9780), place(37.5666, 126.9781), place(37.6, 127.2)};
        manager->addItems(items);
        port.advance(0.25);
    }

    /// Whether a place, or a copy of it further round the world, is drawn inside the view.
    bool isOnScreen(CLLocationCoordinate2D at) const {
        for (at.longitude -= 720; at.longitude < 900; at.longitude += 360) {
            const auto point = engineOf(map).convertCoordinate(at, nullptr);
            const auto size = map->bounds().size;
            if (point.x >= 0 && point.x <= size.width && point.y >= 0 && point.y <= size.height) {
                return std::isfinite(at.latitude) && std::isfinite(at.longitude);
            }
        }
        return false;
    }

    /// Every cluster in view has one marker, at its place; nothing else within the view has.
    void expectMarkersOfWhatIsVisible() {
        const auto visible = [&](const auto& list) {
            std::vector<std::pair<double, double>> positions;
            for (const auto& each : list) {
                if (const auto at = each->position(); isOnScreen(at)) {
                    positions.emplace_back(at.latitude, at.longitude);
                }
            }
            return positions;
        };
        EXPECT_THAT(visible(markers()), testing::UnorderedElementsAreArray(visible(manager->clusters())));
    }

    std::shared_ptr<PgmMapView> map = makeLoadedMap();
    std::shared_ptr<CountedAlgorithm> algorithm = std::make_shared<CountedAlgorithm>();
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();
    std::shared_ptr<PgmClusterManager> manager = PgmClusterManager::create(map);
};

}  // namespace pelta
