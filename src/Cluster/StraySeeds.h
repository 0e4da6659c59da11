#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <pelta/Cluster/PQTPointQuadTree.h>

#include "Cluster/QuadTreeIndex.h"

namespace pelta::detail {

/// Seeds that no search can find, because the tree does not hold them where they are: those beyond the
/// world's edge, above all.
///
/// Ordinary seeds keep their distance from each other, as each claims those around it; so a point lies in the
/// squares of at most a few. Strays do not: any number can reach the same points, and walking through all
/// that each of them reaches would be quadratic. They are collected instead, and each point asks for its
/// nearest.
class StraySeeds {
 public:
    /// @param halfWidth  of the square in which seeds find points.
    explicit StraySeeds(double halfWidth) : halfWidth_(halfWidth) {}

    /// @param seed  must be greater than those added before.
    void add(PQTPoint position, std::uint32_t seed);
    [[nodiscard]] bool isEmpty() const noexcept { return seeds_.empty(); }

    /// To be called once, after all have been added.
    void arrange();

    struct Nearest {
        double distance;  // squared
        std::uint32_t seed;
    };
    /// The stray nearest to `current` of those whose squares contain `stored`, of equally near ones the
    /// latest; seed `none` when there is none.
    [[nodiscard]] Nearest nearest(PQTPoint stored, PQTPoint current) const;

 private:
    struct Seed {
        PQTPoint position;
        std::uint32_t number;
        bool isSplitByX;  // whether the halves to both sides were parted by x or by y
    };

    struct Query {
        PQTPoint stored;
        PQTPoint current;
        Nearest best;
    };

    void part(std::span<Seed> seeds);
    void visit(std::span<const Seed> seeds, Query& query) const;
    void consider(const Seed& seed, Query& query) const;

    double halfWidth_;
    PQTBounds reach_{};        // no seed's square goes beyond
    std::vector<Seed> seeds_;  // the middle one of any span parts the others
};

}  // namespace pelta::detail
