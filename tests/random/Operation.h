#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Random.h"

namespace pelta::random {

class World;
struct Operation;

/// How often a kind of operation is what a callback does.
enum class InCallbacks : std::uint8_t {
    never,   ///< It passes time, which a callback must not.
    seldom,  ///< As often as elsewhere.
    often,   ///< It takes away what the caller may still be at work on.
};

/// What is done to a world, as plain values. Every operation can be performed in every world: one whose
/// object is not there does nothing. So any part of a list is a list, too.
struct OperationKind {
    /// What is done, in words. "{name}" stands for an argument; `placeholders` says which there are.
    std::string_view words;
    /// How often it is drawn beside the others.
    std::uint32_t weight;
    void (*perform)(World& world, const Operation& operation);
    InCallbacks inCallbacks = InCallbacks::seldom;
};

/// One operation with its arguments, each a place in a list of values.
struct Operation {
    static constexpr std::size_t argumentLimit = 5;

    const OperationKind* kind = nullptr;
    std::array<std::uint32_t, argumentLimit> arguments{};
    std::shared_ptr<const Operation> inner;  ///< What a callback does; null without "{operation}".
};

using Operations = std::vector<Operation>;

/// All kinds of operations.
[[nodiscard]] std::span<const OperationKind> operationKinds();

/// The operations of a seed: a map to begin with, then whatever comes.
[[nodiscard]] Operations drawOperations(std::uint64_t seed);

/// "marker 3 goes to map 1".
[[nodiscard]] std::string describe(const Operation& operation);

}  // namespace pelta::random
