#include <algorithm>
#include <atomic>

#include <pelta/Engine/MLNShape.h>

namespace pelta {

void MLNAttributes::set(std::string_view name, MLNAttributeValue value) {
    const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                    [name](const auto& each) { return each.first == name; });
    if (entry == entries_.end()) {
        entries_.emplace_back(name, std::move(value));
    } else {
        entry->second = std::move(value);
    }
}

const MLNAttributeValue* MLNAttributes::find(std::string_view name) const noexcept {
    for (const auto& [key, value] : entries_) {
        if (key == name) {
            return &value;
        }
    }
    return nullptr;
}

std::uint64_t MLNShape::nextRevision() noexcept {
    static std::atomic<std::uint64_t> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

}  // namespace pelta
