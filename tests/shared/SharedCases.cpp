#include "SharedCases.h"

namespace pelta::shared {

std::span<const SharedCase> sharedCases() {
    static const std::vector<SharedCase> cases = [] {
        std::vector<SharedCase> all;
        for (auto part : {cameraCases(), projectionCases(), eventCases(), featureCases()}) {
            all.insert(all.end(), part.begin(), part.end());
        }
        return all;
    }();
    return cases;
}

}  // namespace pelta::shared
