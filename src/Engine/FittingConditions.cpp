#include "Engine/FittingConditions.h"

namespace pelta::fitting {

Conditions without(Unknown unknown, const Conditions& conditions) {
    Conditions rest;
    for (const auto& upper : conditions) {
        if (upper.*unknown == 0) {
            rest.push_back(upper);
        }
        for (const auto& lower : conditions) {
            if (upper.*unknown > 0 && lower.*unknown < 0) {
                rest.push_back(upper.times(1 / upper.*unknown).plus(lower.times(-1 / lower.*unknown)));
            }
        }
    }
    return rest;
}

Conditions with(Unknown unknown, double value, Conditions conditions) {
    for (auto& condition : conditions) {
        condition.limit -= condition.*unknown * value;
        condition.*unknown = 0;
    }
    return conditions;
}

Range rangeOf(Unknown unknown, const Conditions& conditions) {
    Range range;
    for (const auto& condition : conditions) {
        const double factor = condition.*unknown;
        if (factor > 0) {
            range.high = std::min(range.high, condition.limit / factor);
        } else if (factor < 0) {
            range.low = std::max(range.low, condition.limit / factor);
        }
    }
    return range;
}

}  // namespace pelta::fitting
