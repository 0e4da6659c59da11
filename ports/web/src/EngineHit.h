#pragma once

#include <cstddef>
#include <cstdint>

namespace pelta {

/// A feature that the engine has found: the index of its layer among those asked, and its number.
struct EngineHit {
    std::size_t layer = 0;
    std::uint32_t feature = 0;
};

}  // namespace pelta
