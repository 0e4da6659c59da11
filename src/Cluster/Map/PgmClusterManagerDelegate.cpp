#include <pelta/Cluster/PgmClusterManagerDelegate.h>

namespace pelta {

void PgmClusterManagerDelegate::willRenderCluster(PgmClusterManager& /*manager*/,
                                                  const std::shared_ptr<PgmCluster>& /*cluster*/,
                                                  PgmMarkerOptions& /*options*/) {}

void PgmClusterManagerDelegate::willRenderClusterItem(PgmClusterManager& /*manager*/,
                                                      const std::shared_ptr<PgmClusterItem>& /*item*/,
                                                      PgmMarkerOptions& /*options*/) {}

bool PgmClusterManagerDelegate::didTapCluster(PgmClusterManager& /*manager*/,
                                              const std::shared_ptr<PgmCluster>& /*cluster*/,
                                              PgmMarkerOptions& /*options*/) {
    return false;
}

bool PgmClusterManagerDelegate::didTapClusterItem(PgmClusterManager& /*manager*/,
                                                  const std::shared_ptr<PgmClusterItem>& /*item*/,
                                                  PgmMarkerOptions& /*options*/) {
    return false;
}

}  // namespace pelta
