#pragma once

#include <emscripten/val.h>
#include <memory>
#include <vector>

#include <pelta/Pelta.h>

/// The map that the benchmarks of shapes drive from the page's script, and what it shows.
class BenchMap final : public pelta::PgmMapDelegate, public std::enable_shared_from_this<BenchMap> {
 public:
    static BenchMap& shared();

    void open(pelta::UIWindow& window);
    /// Puts a shape on the map and keeps it.
    void show(std::shared_ptr<pelta::PgmShape> shape);
    [[nodiscard]] const std::vector<std::shared_ptr<pelta::PgmShape>>& shapes() const { return shapes_; }
    [[nodiscard]] pelta::PgmMapView& view() { return *view_; }

    /// Calls once, when the map comes to rest the next time.
    void callWhenIdle(emscripten::val callback);
    void mapViewDidBecomeIdle(pelta::PgmMapView&) override;

 private:
    std::shared_ptr<pelta::PgmMapView> view_;
    std::vector<std::shared_ptr<pelta::PgmShape>> shapes_;
    emscripten::val whenIdle_ = emscripten::val::null();
};

/// @param numbers  latitude and longitude in turn.
[[nodiscard]] std::vector<pelta::CLLocationCoordinate2D> coordinatesFrom(const emscripten::val& numbers);
