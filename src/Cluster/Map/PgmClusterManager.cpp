#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include <pelta/Annotations/PgmMarker.h>
#include <pelta/Annotations/PgmMarkerOptions.h>
#include <pelta/Cluster/PgmClusterManager.h>
#include <pelta/Platform/Dispatch.h>
#include <pelta/Platform/Log.h>
#include <pelta/Platform/PlatformPort.h>
#include <pelta/View/PgmMapView.h>

#include "Cluster/Map/ShownClusters.h"

namespace pelta {

namespace {

constexpr double requestDelay = 0.2;  // Seconds after the last change.
constexpr double shortestWait = 1e-9;

std::uint64_t roundedZoom(const std::shared_ptr<PgmCameraPosition>& camera) {
    const double zoom = std::floor((camera ? camera->zoom() : 0) + 0.5);
    if (!(zoom >= 0 && std::isfinite(zoom))) {
        fatalError("cannot cluster at the zoom " + std::to_string(zoom));
    }
    return static_cast<std::uint64_t>(zoom);
}

std::int64_t iconCount(const PgmCluster& cluster) {
    constexpr std::uint64_t highest = std::numeric_limits<std::int64_t>::max();
    return static_cast<std::int64_t>(std::min(cluster.count(), highest));
}

}  // namespace

/// Marks that clusters are being formed or shown, during which the application's code may run: clustering
/// that it asks for waits.
class PgmClusterManager::Run {
 public:
    explicit Run(PgmClusterManager& manager) : manager_(manager.shared_from_this()) {
        manager_->isClustering_ = true;
    }
    ~Run() { manager_->isClustering_ = false; }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

 private:
    std::shared_ptr<PgmClusterManager> manager_;
};

std::shared_ptr<PgmClusterManager> PgmClusterManager::create(const std::shared_ptr<PgmMapView>& mapView) {
    return make<PgmClusterManager>(mapView);
}

PgmClusterManager::PgmClusterManager(const std::shared_ptr<PgmMapView>& mapView)
    : mapView_(mapView),
      previousCamera_(mapView ? mapView->cameraPosition() : nullptr),
      algorithm_(std::make_shared<PgmNonHierarchicalDistanceBasedAlgorithm>()),
      clusterIconGenerator_(PgmDefaultClusterIconGenerator::create()),
      shown_(std::make_unique<detail::ShownClusters>()) {}

PgmClusterManager::~PgmClusterManager() = default;

void PgmClusterManager::completeConstruction(std::string_view /*className*/) {
    if (const auto view = mapView()) {
        view->setClusterDelegate(shared_from_this());
    }
}

void PgmClusterManager::setClusterIconGenerator(std::shared_ptr<PgmClusterIconGenerator> generator) {
    if (generator) {
        clusterIconGenerator_ = std::move(generator);
    }
}

void PgmClusterManager::setAlgorithm(std::shared_ptr<PgmClusterAlgorithm> algorithm) {
    if (algorithm) {
        algorithm_ = std::move(algorithm);
    }
}

const std::vector<std::shared_ptr<PgmCluster>>& PgmClusterManager::clusters() const noexcept {
    return shown_->clusters();
}

// Items

void PgmClusterManager::addItem(std::shared_ptr<PgmClusterItem> item) {
    algorithm_->add(std::move(item));
    requestCluster();
}

void PgmClusterManager::addItems(std::span<const std::shared_ptr<PgmClusterItem>> items) {
    algorithm_->add(items);
    requestCluster();
}

void PgmClusterManager::removeItem(const std::shared_ptr<PgmClusterItem>& item) {
    algorithm_->remove(item);
    requestCluster();
}

void PgmClusterManager::removeItems(std::span<const std::shared_ptr<PgmClusterItem>> items) {
    algorithm_->remove(items);
    requestCluster();
}

void PgmClusterManager::clearItems() {
    algorithm_->clear();
    requestCluster();
}

void PgmClusterManager::Pgmalidate() {
    cluster(true);
}

// When to cluster

void PgmClusterManager::requestCluster() {
    if (sync_) {
        cluster(false);
        return;
    }
    requestDue_ = PlatformPort::current().now() + requestDelay;
    if (!isRequestScheduled_) {
        scheduleRequest(requestDelay);
    }
}

void PgmClusterManager::scheduleRequest(double delay) {
    isRequestScheduled_ = true;
    MainQueue::asyncAfter(delay, [weak = weak_from_this()] {
        if (const auto manager = weak.lock()) {
            manager->requestIsDue();
        }
    });
}

void PgmClusterManager::requestIsDue() {
    isRequestScheduled_ = false;
    const double wait = requestDue_ - PlatformPort::current().now();
    if (wait > shortestWait) {
        scheduleRequest(wait);
    } else {
        cluster(false);
    }
}

void PgmClusterManager::regionIsChangingWithReason(PgmMapView& /*mapView*/,
                                                   PgmCameraUpdateReason /*reason*/) {
    checkNeedCluster();
}

void PgmClusterManager::mapViewDidChangeVisibleArea(PgmMapView& /*mapView*/) {
    checkNeedCluster();
}

void PgmClusterManager::checkNeedCluster() {
    if (isClustering_) {
        doLater(Deferred::check);
        return;
    }
    const auto view = mapView();
    if (!view || !previousCamera_) {
        return;
    }
    if (roundedZoom(previousCamera_) == roundedZoom(view->cameraPosition())) {
        updateCluster(view);
    } else if (cameraChangedImmy_) {
        cluster(false);
    } else {
        requestCluster();
    }
}

// Clustering

void PgmClusterManager::doLater(Deferred work) {
    if (deferred_ == Deferred::nothing) {
        MainQueue::async([weak = weak_from_this()] {
            if (const auto manager = weak.lock()) {
                manager->doDeferred();
            }
        });
    }
    deferred_ = std::max(deferred_, work);
}

void PgmClusterManager::doDeferred() {
    const auto work = std::exchange(deferred_, Deferred::nothing);
    if (work == Deferred::check) {
        checkNeedCluster();
    } else {
        cluster(work == Deferred::forcedRun);
    }
}

void PgmClusterManager::cluster(bool force) {
    if (isClustering_) {
        doLater(force ? Deferred::forcedRun : Deferred::run);
        return;
    }
    const Run run(*this);
    const auto view = mapView();
    if (!view) {
        return;
    }
    const auto algorithm = algorithm_;
    auto camera = view->cameraPosition();
    auto clusters = algorithm->clustersAtZoom(static_cast<float>(roundedZoom(camera)));
    std::erase(clusters, nullptr);
    onStage(view, [&](const detail::ShownClusters::Stage& stage) {
        shown_->show(std::move(clusters), force, stage);
    });
    previousCamera_ = std::move(camera);
}

void PgmClusterManager::updateCluster(const std::shared_ptr<PgmMapView>& view) {
    const Run run(*this);
    onStage(view, [&](const detail::ShownClusters::Stage& stage) { shown_->extend(stage); });
}

template <class Work>
void PgmClusterManager::onStage(const std::shared_ptr<PgmMapView>& view, Work&& work) {
    if (const auto bounds = view->contentBounds()) {
        work({view, detail::VisibleArea(*bounds),
              [this](const auto& marker, const auto& shown) { prepareMarker(marker, shown); }});
    }
}

// Markers

bool PgmClusterManager::isShownAsItem(const PgmCluster& cluster) const {
    return algorithm_->minClusteringCount() >= 2 && cluster.count() < 2;
}

void PgmClusterManager::prepareMarker(const std::shared_ptr<PgmMarker>& marker,
                                      const std::shared_ptr<PgmCluster>& cluster) {
    const auto options = PgmMarkerOptionsImpl::withResetMarker(marker);
    options->setPosition(cluster->position());
    const auto delegate = delegate_.lock();
    if (!isShownAsItem(*cluster)) {
        const auto generator = clusterIconGenerator_;
        options->setIconImage(generator->iconForCount(iconCount(*cluster)));
        if (delegate) {
            delegate->willRenderCluster(*this, cluster, *options);
        }
    } else if (const auto items = cluster->items(); delegate && !items.empty()) {
        const auto item = items.front();
        delegate->willRenderClusterItem(*this, item, *options);
    }
    marker->setTouchEvent([weak = weak_from_this()](PgmShape& shape) {
        const auto manager = weak.lock();
        return manager && manager->didTap(std::static_pointer_cast<PgmMarker>(shape.shared_from_this()));
    });
}

bool PgmClusterManager::didTap(const std::shared_ptr<PgmMarker>& marker) {
    const auto cluster = shown_->clusterOf(*marker);
    const auto delegate = delegate_.lock();
    if (!cluster || !delegate) {
        return false;
    }
    const auto options = PgmMarkerOptionsImpl::withMarker(marker);
    if (!isShownAsItem(*cluster)) {
        return delegate->didTapCluster(*this, cluster, *options);
    }
    const auto items = cluster->items();
    const auto item = items.empty() ? nullptr : items.front();
    return item && delegate->didTapClusterItem(*this, item, *options);
}

}  // namespace pelta
