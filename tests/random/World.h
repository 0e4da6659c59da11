#pragma once

#include <array>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <pelta/Pelta.h>
#include <pelta/headless/HeadlessPort.h>

#include "Application.h"
#include "Operation.h"
#include "Placeholders.h"

namespace pelta::random {

/// An application of some maps in one window, with shapes and cluster managers that come and go.
class World {
 public:
    /// A map with what belongs to it.
    struct MapSlot {
        std::shared_ptr<PgmMapView> view;
        std::shared_ptr<MapListener> listener;
    };
    struct ManagerSlot {
        std::shared_ptr<PgmClusterManager> manager;
        std::shared_ptr<ClusterListener> listener;
        std::vector<std::shared_ptr<PgmClusterItem>> items;
    };

    World();
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    void perform(const Operation& operation);
    /// What a callback does: the inner operation, a few times at most, so that callbacks that call one
    /// another come to an end.
    [[nodiscard]] Action action(const Operation& operation);

    /// Lets everything come to rest and checks what must be so then.
    void settle();
    /// Releases everything, in one of several orders, and checks that nothing is left.
    void end(std::uint32_t order);

    HeadlessPort port;
    std::shared_ptr<UIWindow> window;
    std::array<MapSlot, mapCount> maps;
    std::array<std::shared_ptr<PgmShape>, shapeCount> shapes;
    std::array<std::shared_ptr<PgmImageDataSource>, shapeCount> sources;
    std::array<ManagerSlot, managerCount> managers;
    std::vector<std::shared_ptr<PgmImage>> images;

    /// The map in a slot; null beyond the slots too.
    [[nodiscard]] std::shared_ptr<PgmMapView> map(std::uint32_t slot) const {
        return slot < mapCount ? maps[slot].view : nullptr;
    }
    /// The shape in a slot if it is one of the type; otherwise null.
    template <class Shape>
    [[nodiscard]] std::shared_ptr<Shape> shape(std::uint32_t slot) const {
        return std::dynamic_pointer_cast<Shape>(shapes[slot]);
    }
    /// Notes an object that must go with the last of its owners.
    void track(const std::string& name, const std::shared_ptr<const void>& object) {
        tracked_.push_back({name, object});
    }
    void trackShape(const std::shared_ptr<PgmShape>& shape);
    /// Shapes made by the application that are still there, also those that only a map holds.
    [[nodiscard]] std::vector<std::shared_ptr<PgmShape>> livingShapes() const;
    /// Names of pictures that info windows have shown, which are theirs alone.
    [[nodiscard]] const std::set<std::string>& windowPictures() const { return windowPictures_; }

 private:
    struct Tracked {
        std::string name;
        std::weak_ptr<const void> object;
    };

    void noteWindowPictures();

    std::vector<Tracked> tracked_;
    std::vector<std::weak_ptr<PgmShape>> madeShapes_;
    std::set<std::string> windowPictures_;
    int depth_ = 0;
    bool isChecking_ = false;
};

}  // namespace pelta::random
