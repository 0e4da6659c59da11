#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <pelta/Platform/UIWindow.h>
#include <pelta/View/PgmMapDelegate.h>
#include <pelta/View/PgmMapView.h>

#include "data/MapData.h"
#include "data/PageAddress.h"
#include "map/MapContents.h"
#include "map/PlaceWindow.h"
#include "map/StyleWatch.h"
#include "page/Panel.h"

namespace pelta::viewer {

/// The page: a map, what lies on it, and what is told about it.
class ViewerPage final : public PgmMapDelegate, public std::enable_shared_from_this<ViewerPage> {
 public:
    /// @param query  of the page's own address, from the "?" on.
    explicit ViewerPage(std::string query);
    /// Puts the map into the window and begins to load what the page's address asks for.
    void open(UIWindow& window);

    /// Puts a document on the map in place of what is there, or beside it, and shows all of it.
    void openDocument(const std::string& name, std::string_view text, bool isReplacing);
    /// Moves the camera so that everything on the map is seen.
    void showAll();
    /// Sets a setting of the map, or "cluster", whether points are shown as clusters.
    void setSwitch(const std::string& name, double value);
    void hideBanner() { panel_.hideBanner(); }

    void mapViewDidBecomeIdle(PgmMapView& mapView) override;
    void regionIsChangingWithReason(PgmMapView& mapView, PgmCameraUpdateReason reason) override;
    void regionDidChangeAnimated(PgmMapView& mapView, bool animated, PgmCameraUpdateReason reason) override;
    void didTapMapView(PgmMapView& mapView, CLLocationCoordinate2D latLng) override;
    void didLongTapMapView(PgmMapView& mapView, CLLocationCoordinate2D latLng) override;

 private:
    void placeMap(UIWindow& window);
    void placeCamera();
    void connectLocationButton();
    void showSwitches();
    void showKorea();
    void fetchData();
    void fetchWorldPlaces();
    void dataDidArrive(const std::string& name, std::string_view text);
    void styleDidFail(std::string_view message);
    void addDocument(const std::string& name, std::string_view text);
    void setIsClustered(bool isClustered);
    void shareAddress();
    void tell();
    void loadingDidEnd();

    std::string query_;
    PageAddress address_;
    Panel panel_;
    std::shared_ptr<PgmMapView> map_;
    std::shared_ptr<StyleWatch> styleWatch_;
    std::unique_ptr<MapContents> contents_;
    std::shared_ptr<PlaceWindow> placeWindow_;
    std::vector<Panel::Entry> entries_;
    std::vector<std::string> problems_;  ///< Of the documents on the map.
    std::vector<std::string> leftOuts_;
    std::string styleProblem_;
    bool isStyleLoading_ = true;
    int loadingCount_ = 0;  ///< Documents that have not arrived yet.
};

}  // namespace pelta::viewer
