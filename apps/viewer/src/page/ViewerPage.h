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
#include "map/Overlays.h"
#include "map/PinPictures.h"
#include "map/StyleWatch.h"
#include "page/Panel.h"

namespace pelta::viewer {

/// The page: a map, what lies on it, and what is told about it.
class ViewerPage final : public PgmMapDelegate, public std::enable_shared_from_this<ViewerPage> {
 public:
    explicit ViewerPage(PageAddress address);
    /// Puts the map into the window and begins to load what the page's address asks for.
    void open(UIWindow& window);

    /// Puts a document on the map in place of what is there, or beside it, and shows all of it.
    void openDocument(const std::string& name, std::string_view text, bool isReplacing);
    /// Moves the camera so that everything on the map is seen.
    void showAll();
    void hideBanner() { panel_.hideBanner(); }

    void mapViewDidBecomeIdle(PgmMapView& mapView) override;

 private:
    void placeMap(UIWindow& window);
    void placeCamera();
    void showKorea();
    void fetchData();
    void dataDidArrive(const std::string& name, std::string_view text);
    void styleDidFail(std::string_view message);
    void clear();
    void put(Shapes shapes);
    void addDocument(const std::string& name, std::string_view text);
    void tell();
    void loadingDidEnd();

    PageAddress address_;
    Panel panel_;
    PinPictures pins_;
    std::shared_ptr<PgmMapView> map_;
    std::shared_ptr<StyleWatch> styleWatch_;
    Shapes shapes_;
    std::vector<Panel::Entry> entries_;
    std::vector<std::string> problems_;  ///< Of the documents on the map.
    std::vector<std::string> leftOuts_;
    std::string styleProblem_;
    std::shared_ptr<PgmLatLngBounds> bounds_;  ///< Around everything on the map; null when it is empty.
    bool isStyleLoading_ = true;
    bool isDataLoading_ = false;
};

}  // namespace pelta::viewer
