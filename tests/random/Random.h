#pragma once

#include <cstdint>
#include <random>

namespace pelta::random {

/// Numbers that are the same on every machine for the same seed: the standard's engine, but none of its
/// distributions, which each library computes in its own way.
class Random {
 public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}

    /// A number from 0 to below `count`, which must be above 0.
    [[nodiscard]] std::uint32_t below(std::uint32_t count) {
        return static_cast<std::uint32_t>(((engine_() >> 32U) * count) >> 32U);
    }

 private:
    std::mt19937_64 engine_;
};

}  // namespace pelta::random
