#include "Cluster/ItemStore.h"

#include <utility>

#include <pelta/Cluster/PgmHashable.h>

#include "Cluster/ClusterProjection.h"

namespace pelta::detail {

namespace {

constexpr PQTBounds world{-1, -1, 1, 1};
constexpr std::size_t fewDead = 1024;
constexpr std::uint32_t linkMask = (1U << 30U) - 1;

}  // namespace

ItemStore::ItemStore() : tree_(world), newest_(ObjectOf{&records_}) {}

void ItemStore::add(std::shared_ptr<PgmClusterItem> item) {
    const auto number = static_cast<std::uint32_t>(records_.size());
    const CLLocationCoordinate2D position = item->position();
    const bool hashable = isHashable(*item);
    growByEighth(records_);
    records_.push_back({.item = std::move(item),
                        .position = position,
                        .entry = tree_.add(clusterPoint(position), number),
                        .isListed = 1,
                        .isHashable = hashable ? 1U : 0U});
    hashables_ += hashable ? 1 : 0;
    chain(number);
}

/// Most items are of one class, which is asked only once.
bool ItemStore::isHashable(const PgmClusterItem& item) {
    if (lastType_ == nullptr || *lastType_ != typeid(item)) {
        lastType_ = &typeid(item);
        isLastTypeHashable_ = dynamic_cast<const PgmHashable*>(&item) != nullptr;
    }
    return isLastTypeHashable_;
}

void ItemStore::chain(std::uint32_t number) {
    ItemRecord& record = records_[number];
    const std::uint32_t newest = newest_.find(record.item.get());
    record.olderOfSame = (newest == none ? number : newest) & linkMask;
    repeats_ += newest == none ? 0 : 1;
    newest_.set(record.item.get(), number);
}

void ItemStore::remove(const PgmClusterItem& item) {
    // The last one to let an item go may run a destructor of the application's: when all is done.
    std::shared_ptr<PgmClusterItem> released;
    if (const auto number = tree_.remove(clusterPoint(item.position()))) {
        records_[*number].entry = none;
        if (!records_[*number].isAlive()) {
            released = bury(*number);
        }
    }
    const auto alsoReleased = unlist(item);
    if (dead_ > fewDead && dead_ > records_.size() / 2) {
        compact();
    }
}

std::shared_ptr<PgmClusterItem> ItemStore::unlist(const PgmClusterItem& item) {
    std::shared_ptr<PgmClusterItem> released;
    // Those that were removed before are all older.
    std::uint32_t number = newest_.find(&item);
    while (number != none && records_[number].isListed) {
        const std::uint32_t older = olderOfSame(number);
        records_[number].isListed = 0;
        if (!records_[number].isAlive()) {
            released = bury(number);
        }
        number = older;
    }
    return released;
}

std::shared_ptr<PgmClusterItem> ItemStore::bury(std::uint32_t number) {
    const void* object = records_[number].item.get();
    if (newest_.find(object) == number) {
        // What is passed over here is never come to again, so an object added n times is buried in n steps.
        std::uint32_t older = olderOfSame(number);
        while (older != none && !records_[older].isAlive()) {
            older = olderOfSame(older);
        }
        if (older == none) {
            newest_.erase(object);
        } else {
            newest_.set(object, older);
        }
    }
    repeats_ -= newest_.find(object) == none ? 0 : 1;
    hashables_ -= records_[number].isHashable;
    ++dead_;
    return std::exchange(records_[number].item, nullptr);
}

void ItemStore::compact() {
    arrange();
    std::vector<std::uint32_t> numbers(records_.size(), none);
    std::vector<ItemRecord> living;
    living.reserve(records_.size() - dead_);
    for (std::size_t old = 0; old < records_.size(); ++old) {
        if (records_[old].isAlive()) {
            numbers[old] = static_cast<std::uint32_t>(living.size());
            living.push_back(std::move(records_[old]));
        }
    }
    records_ = std::move(living);
    tree_.renumber(numbers);
    newest_.clear();
    dead_ = 0;
    repeats_ = 0;
    for (std::uint32_t number = 0; number < records_.size(); ++number) {
        chain(number);
    }
}

void ItemStore::clear() {
    tree_.clear();
    newest_.clear();
    dead_ = repeats_ = hashables_ = 0;
    const auto released = std::exchange(records_, {});
}

void ItemStore::arrange() {
    if (tree_.isArranged()) {
        return;
    }
    tree_.arrange();
    const auto items = tree_.items();
    for (std::uint32_t entry = 0; entry < items.size(); ++entry) {
        records_[items[entry]].entry = entry;
    }
}

}  // namespace pelta::detail
