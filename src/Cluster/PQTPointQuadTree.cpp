#include <utility>

#include <pelta/Cluster/PQTPointQuadTree.h>

#include "Cluster/QuadTreeIndex.h"

namespace pelta {

PQTPointQuadTree::PQTPointQuadTree(PQTBounds bounds)
    : index_(std::make_unique<detail::QuadTreeIndex>(bounds)) {}
PQTPointQuadTree::~PQTPointQuadTree() = default;
PQTPointQuadTree::PQTPointQuadTree(PQTPointQuadTree&&) noexcept = default;
PQTPointQuadTree& PQTPointQuadTree::operator=(PQTPointQuadTree&&) noexcept = default;

void PQTPointQuadTree::add(std::shared_ptr<PQTPointQuadTreeItem> item) {
    if (item == nullptr) {
        return;
    }
    const bool isReused = !freeNumbers_.empty();
    const auto number = isReused ? freeNumbers_.back() : static_cast<std::uint32_t>(items_.size());
    if (index_->add(item->point(), number) == detail::none) {
        return;
    }
    if (isReused) {
        freeNumbers_.pop_back();
        items_[number] = std::move(item);
    } else {
        items_.push_back(std::move(item));
    }
}

bool PQTPointQuadTree::remove(const PQTPointQuadTreeItem& item) {
    const auto number = index_->remove(item.point());
    if (!number) {
        return false;
    }
    // The item's destructor may be the application's; the tree is whole again before it runs.
    const auto removed = std::exchange(items_[*number], nullptr);
    freeNumbers_.push_back(*number);
    return true;
}

std::vector<std::shared_ptr<PQTPointQuadTreeItem>> PQTPointQuadTree::searchWithBounds(
    PQTBounds bounds) const {
    std::vector<std::uint32_t> numbers;
    index_->search(bounds, numbers);
    std::vector<std::shared_ptr<PQTPointQuadTreeItem>> found;
    found.reserve(numbers.size());
    for (const std::uint32_t number : numbers) {
        found.push_back(items_[number]);
    }
    return found;
}

void PQTPointQuadTree::clear() noexcept {
    index_->clear();
    freeNumbers_.clear();
    const auto released = std::exchange(items_, {});
}

std::size_t PQTPointQuadTree::count() const noexcept {
    return index_->count();
}

}  // namespace pelta
