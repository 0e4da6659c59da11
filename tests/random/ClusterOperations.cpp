/// Cluster managers and their items.

#include <algorithm>

#include "Kinds.h"

namespace pelta::random {

namespace {

using Slot = World::ManagerSlot;

/// A number of items, within reason.
std::size_t itemCount(const Operation& operation) {
    constexpr std::uint64_t most = 60;
    return static_cast<std::size_t>(std::min(operation.count(1), most));
}

/// An operation on the manager that is the first argument.
template <class Work>
OperationKind onManager(std::string_view words, std::uint32_t weight, Work work,
                        InCallbacks inCallbacks = InCallbacks::seldom) {
    const auto perform = [work](World& world, const Operation& operation) {
        Slot& slot = world.managers[operation.arguments[0]];
        if (const auto held = slot.manager) {  // The work may release the manager.
            work(slot, operation);
        }
    };
    return {words, weight, perform, inCallbacks};
}

void start(World& world, const Operation& operation) {
    Slot& slot = world.managers[operation.arguments[0]];
    const auto map = world.map(operation.arguments[1]);
    if (!map) {
        return;
    }
    slot = {PgmClusterManager::create(map), std::make_shared<ClusterListener>(), {}};
    slot.manager->setDelegate(slot.listener);
    const std::string name = "manager " + std::to_string(operation.arguments[0]);
    world.track(name, slot.manager);
    world.track("the listener of " + name, slot.listener);
}

void release(World& world, const Operation& operation) {
    const Slot released = std::exchange(world.managers[operation.arguments[0]], {});
}

void takeItems(World& world, const Operation& operation) {
    Slot& slot = world.managers[operation.arguments[0]];
    const auto manager = slot.manager;
    if (!manager) {
        return;
    }
    std::vector<std::shared_ptr<PgmClusterItem>> items(itemCount(operation));
    CLLocationCoordinate2D place = operation.coordinate(2);
    for (auto& item : items) {
        item = std::make_shared<Item>(place);
        place = {place.latitude + 0.01, place.longitude - 0.01};
        world.track("an item", item);
    }
    slot.items.insert(slot.items.end(), items.begin(), items.end());
    manager->addItems(items);
}

void takeItemsAgain(Slot& slot, const Operation& operation) {
    const std::vector again(slot.items);
    slot.manager->addItems(std::span(again).first(std::min(itemCount(operation), again.size())));
}

void loseItems(Slot& slot, const Operation& operation) {
    const auto count = std::min(itemCount(operation), slot.items.size());
    const auto end = slot.items.begin() + static_cast<std::ptrdiff_t>(count);
    const std::vector lost(slot.items.begin(), end);
    slot.items.erase(slot.items.begin(), end);
    slot.manager->removeItems(lost);
}

void clear(Slot& slot, const Operation& /*operation*/) {
    slot.items.clear();
    slot.manager->clearItems();
}

void takeTiming(Slot& slot, const Operation& operation) {
    slot.manager->setSync(operation.flag(1));
    slot.manager->setCameraChangedImmy(operation.flag(2));
}

void takeLimits(Slot& slot, const Operation& operation) {
    slot.manager->algorithm()->setMaxDistanceBetweenItems(operation.count(1));
    slot.manager->algorithm()->setMinClusteringCount(operation.count(2));
}

void whenAsked(World& world, const Operation& operation) {
    if (const auto& listener = world.managers[operation.arguments[0]].listener) {
        listener->actions[operation.arguments[1]] = world.action(operation);
    }
}

void configure(Slot& slot, const Operation& operation) {
    slot.listener->configure = [operation](PgmMarkerOptions& options) {
        options.setTitle(operation.text(2));
        options.setTitleSize(operation.number(1));
        options.setIconScale(operation.number(1));
        options.setZIndex(operation.order(3));
    };
}

}  // namespace

std::vector<OperationKind> clusterOperations() {
    return {
        {"{manager} starts on {map}", 25, start},
        {"{manager} is released", 6, release, InCallbacks::often},
        {"{manager} takes {count} items around {coordinate}", 30, takeItems},
        onManager("{manager} takes its first {count} items again", 6, takeItemsAgain),
        onManager("{manager} loses its first {count} items", 12, loseItems, InCallbacks::often),
        onManager("{manager} loses all items", 4, clear),
        onManager("{manager} groups anew", 8,
                  [](Slot& slot, const Operation&) { slot.manager->Pgmalidate(); }),
        onManager("{manager} groups changes at once: {flag}, moves at once: {flag}", 6, takeTiming),
        onManager("{manager} groups within {count}, at least {count}", 8, takeLimits),
        {"the delegate of {manager}, asked about {question}, does: {operation}", 18, whenAsked},
        onManager("{manager} shows markers of size {number}, titled {text}, at {order}", 6, configure),
    };
}

}  // namespace pelta::random
