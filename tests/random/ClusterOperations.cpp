/// Cluster managers and their items.

#include <algorithm>
#include <array>

#include "Arguments.h"

namespace pelta::random {

namespace {

constexpr std::uint64_t mostItems = 60;

/// An operation on the manager that is the first argument.
template <void (*work)(World::ManagerSlot&, const Operation&)>
void onManager(World& world, const Operation& operation) {
    World::ManagerSlot& slot = world.managers[operation.arguments[0]];
    if (slot.manager) {
        // The work may release the manager.
        const auto held = slot.manager;
        work(slot, operation);
    }
}

void start(World& world, const Operation& operation) {
    World::ManagerSlot& slot = world.managers[operation.arguments[0]];
    const auto map = mapAt(world, operation, 1);
    if (!map) {
        return;
    }
    slot = {};
    slot.manager = PgmClusterManager::create(map);
    slot.listener = std::make_shared<ClusterListener>();
    slot.manager->setDelegate(slot.listener);
    const std::string name = "manager " + std::to_string(operation.arguments[0]);
    world.track(name, slot.manager);
    world.track("the listener of " + name, slot.listener);
}

void release(World& world, const Operation& operation) {
    const World::ManagerSlot released = std::exchange(world.managers[operation.arguments[0]], {});
}

void takeItems(World& world, const Operation& operation) {
    World::ManagerSlot& slot = world.managers[operation.arguments[0]];
    const auto manager = slot.manager;
    if (!manager) {
        return;
    }
    const CLLocationCoordinate2D middle = coordinateAt(operation, 2);
    const std::uint64_t count = std::min(counts()[operation.arguments[1]].value, mostItems);
    std::vector<std::shared_ptr<PgmClusterItem>> items;
    for (std::uint64_t i = 0; i < count; ++i) {
        const double step = 0.01 * static_cast<double>(i);
        items.push_back(
            std::make_shared<Item>(CLLocationCoordinate2D{middle.latitude + step, middle.longitude - step}));
        world.track("an item", items.back());
    }
    slot.items.insert(slot.items.end(), items.begin(), items.end());
    manager->addItems(items);
}

void takeItemsAgain(World::ManagerSlot& slot, const Operation& operation) {
    const auto count = static_cast<std::size_t>(std::min(counts()[operation.arguments[1]].value, mostItems));
    const std::vector again(slot.items.begin(), slot.items.begin() + static_cast<std::ptrdiff_t>(
                                                                         std::min(count, slot.items.size())));
    slot.manager->addItems(again);
}

void loseItems(World::ManagerSlot& slot, const Operation& operation) {
    const auto count = static_cast<std::size_t>(std::min(counts()[operation.arguments[1]].value, mostItems));
    const auto end = slot.items.begin() + static_cast<std::ptrdiff_t>(std::min(count, slot.items.size()));
    const std::vector lost(slot.items.begin(), end);
    slot.items.erase(slot.items.begin(), end);
    slot.manager->removeItems(lost);
}

void clear(World::ManagerSlot& slot, const Operation& /*operation*/) {
    slot.items.clear();
    slot.manager->clearItems();
}

void regroup(World::ManagerSlot& slot, const Operation& /*operation*/) {
    slot.manager->Pgmalidate();
}

void takeTiming(World::ManagerSlot& slot, const Operation& operation) {
    slot.manager->setSync(flagAt(operation, 1));
    slot.manager->setCameraChangedImmy(flagAt(operation, 2));
}

void takeLimits(World::ManagerSlot& slot, const Operation& operation) {
    slot.manager->algorithm()->setMaxDistanceBetweenItems(counts()[operation.arguments[1]].value);
    slot.manager->algorithm()->setMinClusteringCount(counts()[operation.arguments[2]].value);
}

void whenAsked(World& world, const Operation& operation) {
    if (const auto& listener = world.managers[operation.arguments[0]].listener) {
        listener->actions[operation.arguments[1]] = world.action(operation);
    }
}

void configure(World::ManagerSlot& slot, const Operation& operation) {
    slot.listener->configure = [size = numberAt(operation, 1), title = textAt(operation, 2),
                                order = orders()[operation.arguments[3]].value](PgmMarkerOptions& options) {
        options.setTitle(title);
        options.setTitleSize(size);
        options.setIconScale(size);
        options.setZIndex(order);
    };
}

constexpr std::array kinds{
    OperationKind{"{manager} starts on {map}", 25, start},
    OperationKind{"{manager} is released", 6, release, InCallbacks::often},
    OperationKind{"{manager} takes {count} items around {coordinate}", 30, takeItems},
    OperationKind{"{manager} takes its first {count} items again", 6, onManager<takeItemsAgain>},
    OperationKind{"{manager} loses its first {count} items", 12, onManager<loseItems>, InCallbacks::often},
    OperationKind{"{manager} loses all items", 4, onManager<clear>},
    OperationKind{"{manager} groups anew", 8, onManager<regroup>},
    OperationKind{"{manager} groups changes at once: {flag}, moves at once: {flag}", 6,
                  onManager<takeTiming>},
    OperationKind{"{manager} groups within {count}, at least {count}", 8, onManager<takeLimits>},
    OperationKind{"the delegate of {manager}, asked about {question}, does: {operation}", 18, whenAsked},
    OperationKind{"{manager} shows markers of size {number}, titled {text}, at {order}", 6,
                  onManager<configure>},
};

}  // namespace

std::span<const OperationKind> clusterOperations() {
    return kinds;
}

}  // namespace pelta::random
