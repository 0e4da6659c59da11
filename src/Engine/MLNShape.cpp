#include <algorithm>

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

}  // namespace pelta
