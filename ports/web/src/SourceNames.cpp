#include "SourceNames.h"

#include <algorithm>
#include <array>

namespace pelta {

SourceNames::SourceNames(const StyleDocument& document) {
    const auto& taken = document.sourceIdentifiers;
    while (std::any_of(taken.begin(), taken.end(),
                       [this](const std::string& name) { return name.starts_with(prefix_); })) {
        prefix_ += ':';
    }
}

std::string SourceNames::ofWhole(std::string_view source) const {
    return prefix_ + std::string(source);
}

std::string SourceNames::ofKind(std::string_view source, MLNShapeKind shape) const {
    static constexpr std::array<std::string_view, 4> suffixes{"#points", "#lines", "#areas", "#others"};
    return ofWhole(source) + std::string(suffixes[static_cast<std::size_t>(shape)]);
}

}  // namespace pelta
