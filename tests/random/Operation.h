#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Values.h"

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
    std::function<void(World& world, const Operation& operation)> perform;
    InCallbacks inCallbacks = InCallbacks::seldom;
};

/// One operation with its arguments, each a place in a list of values.
struct Operation {
    static constexpr std::size_t argumentLimit = 5;

    const OperationKind* kind = nullptr;
    std::array<std::uint32_t, argumentLimit> arguments{};
    std::shared_ptr<const Operation> inner;  ///< What a callback does; null without "{operation}".

    /// @name What an argument stands for, by its place in the words
    /// @{
    [[nodiscard]] double number(std::size_t place) const { return valueOf(numbers(), place); }
    [[nodiscard]] CLLocationCoordinate2D coordinate(std::size_t place) const {
        return valueOf(coordinates(), place);
    }
    [[nodiscard]] const Path& path(std::size_t place) const { return valueOf(paths(), place); }
    [[nodiscard]] const std::string& text(std::size_t place) const { return valueOf(texts(), place); }
    [[nodiscard]] UIColor colour(std::size_t place) const { return valueOf(colours(), place); }
    [[nodiscard]] CGSize size(std::size_t place) const { return valueOf(sizes(), place); }
    [[nodiscard]] CGPoint point(std::size_t place) const { return valueOf(places(), place); }
    [[nodiscard]] double duration(std::size_t place) const { return valueOf(seconds(), place); }
    [[nodiscard]] std::int64_t order(std::size_t place) const { return valueOf(orders(), place); }
    [[nodiscard]] std::uint64_t count(std::size_t place) const { return valueOf(counts(), place); }
    [[nodiscard]] const StyleText& style(std::size_t place) const { return valueOf(styles(), place); }
    [[nodiscard]] bool flag(std::size_t place) const { return arguments[place] != 0; }
    /// @}

 private:
    template <class T>
    [[nodiscard]] const T& valueOf(const std::vector<Named<T>>& values, std::size_t place) const {
        return values[arguments[place]].value;
    }
};

using Operations = std::vector<Operation>;

/// All kinds of operations.
[[nodiscard]] std::span<const OperationKind> operationKinds();

/// The operations of a seed: a map to begin with, then whatever comes.
[[nodiscard]] Operations drawOperations(std::uint64_t seed);

/// "marker 3 goes to map 1".
[[nodiscard]] std::string describe(const Operation& operation);

}  // namespace pelta::random
