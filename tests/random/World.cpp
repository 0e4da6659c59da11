#include "World.h"

#include "Checks.h"
#include "Values.h"

namespace pelta::random {

namespace {

constexpr CGSize windowSize{400, 600};
constexpr int callsOfAction = 3;
constexpr int deepestCall = 3;

}  // namespace

World::World() : window(port.makeWindow(windowSize)) {
    for (const auto& style : styles()) {
        if (!style.value.text.empty()) {
            port.serveDocument(style.value.address, style.value.text);
        }
    }
    port.serveDocument(std::string(defaultStyleURL()), styles().front().value.text);
    for (const auto& picture : pictures()) {
        images.push_back(PgmImage::imageWith(picture.value));
    }
    images.push_back(PgmImage::imageWith(pictures().front().value, "a name of its own"));
    images.push_back(PgmImage::imageWith(pictures().back().value, "a name of its own"));
    for (const auto& image : images) {
        track("a picture of the application", image);
    }
    track("the window", window);
}

World::~World() = default;

void World::perform(const Operation& operation) {
    operation.kind->perform(*this, operation);
    noteWindowPictures();
}

Action World::action(const Operation& operation) {
    return [this, inner = operation.inner, left = std::make_shared<int>(callsOfAction)] {
        if (*left == 0 || depth_ == deepestCall || isChecking_) {
            return;
        }
        --*left;
        ++depth_;
        perform(*inner);
        --depth_;
    };
}

void World::trackShape(const std::shared_ptr<PgmShape>& shape) {
    track(shape->identifier(), shape);
    madeShapes_.push_back(shape);
}

std::vector<std::shared_ptr<PgmShape>> World::livingShapes() const {
    std::vector<std::shared_ptr<PgmShape>> living;
    for (const auto& made : madeShapes_) {
        if (auto shape = made.lock()) {
            living.push_back(std::move(shape));
        }
    }
    return living;
}

void World::noteWindowPictures() {
    for (const auto& shape : livingShapes()) {
        const auto infoWindow = std::dynamic_pointer_cast<PgmInfoWindow>(shape);
        if (infoWindow && infoWindow->iconImage()) {
            windowPictures_.insert(infoWindow->iconImage()->reuseIdentifier());
        }
    }
}

void World::settle() {
    constexpr double patience = 60;
    check(port.runUntilIdle(patience), "rest", "something is still going on after a minute");
    noteWindowPictures();
    isChecking_ = true;
    checkWorld(*this);
    isChecking_ = false;
}

void World::end(std::uint32_t order) {
    images.clear();
    const std::array<Action, 3> releases{[this] { shapes = {}, sources = {}; }, [this] { managers = {}; },
                                         [this] {
                                             for (const MapSlot& slot : std::exchange(maps, {})) {
                                                 if (slot.view) {
                                                     slot.view->removeFromSuperview();
                                                 }
                                             }
                                         }};
    constexpr std::array<std::array<std::size_t, 3>, 3> sequences{{{0, 1, 2}, {2, 1, 0}, {1, 2, 0}}};
    for (const std::size_t part : sequences[order % 3]) {
        releases[part]();
    }
    window = nullptr;
    const bool isSettledFirst = order >= 3;
    if (isSettledFirst) {
        check(port.runUntilIdle(), "rest", "something goes on without maps");
    } else {
        // What was queued before must find its objects gone.
        port.advance(1);
    }
    for (const Tracked& one : tracked_) {
        check(one.object.expired(), "ownership", one.name + " outlives its owners");
    }
}

}  // namespace pelta::random
