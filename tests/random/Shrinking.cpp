#include "Shrinking.h"

#include <algorithm>

namespace pelta::random {

namespace {

/// Enough for some hundred operations; a slow fault must not keep everybody waiting.
constexpr int mostAttempts = 250;

Operations without(const Operations& operations, std::size_t first, std::size_t count) {
    Operations rest(operations.begin(), operations.begin() + static_cast<std::ptrdiff_t>(first));
    const std::size_t end = std::min(first + count, operations.size());
    rest.insert(rest.end(), operations.begin() + static_cast<std::ptrdiff_t>(end), operations.end());
    return rest;
}

}  // namespace

Operations shrink(Operations operations, std::uint32_t endOrder, const std::string& fault) {
    int left = mostAttempts;
    const auto stillFails = [&](const Operations& fewer) {
        --left;
        return attempt(fewer, endOrder).fault == fault;
    };
    // Halves first, then ever smaller pieces, from the end, where what happened after the cause is left out
    // at once.
    for (std::size_t piece = std::max<std::size_t>(operations.size() / 2, 1);; piece /= 2) {
        bool hasShrunk = false;
        for (std::size_t end = operations.size(); end > 0 && left > 0;) {
            const std::size_t first = end > piece ? end - piece : 0;
            Operations fewer = without(operations, first, end - first);
            if (stillFails(fewer)) {
                operations = std::move(fewer);
                hasShrunk = true;
            }
            end = first;
        }
        if (piece == 1 && (!hasShrunk || left <= 0)) {
            return operations;
        }
        piece = hasShrunk && piece == 1 ? 2 : piece;
    }
}

}  // namespace pelta::random
