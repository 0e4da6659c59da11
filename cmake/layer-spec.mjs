// Writes LayerSpec.h: which layer properties can have a value of each feature's own. Usage: node layer-spec.mjs IN OUT
import { readFileSync, writeFileSync } from 'node:fs';

const [input, output] = process.argv.slice(2);
const format = JSON.parse(readFileSync(input, 'utf8'));
const names = [];
for (const kind of ['fill', 'line', 'symbol']) {
    for (const group of ['layout', 'paint']) {
        for (const [name, { 'property-type': type }] of Object.entries(format[`${group}_${kind}`])) {
            if (type === 'data-driven' || type === 'cross-faded-data-driven') {
                names.push(name);
            }
        }
    }
}
names.sort();
writeFileSync(output, `#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace pelta {

/// Whether features of one engine layer can each have their own value of a layer property.
[[nodiscard]] inline bool isDataDriven(std::string_view property) {
    static constexpr std::array<std::string_view, ${names.length}> names{
${names.map((name) => `        "${name}",`).join('\n')}
    };
    return std::binary_search(names.begin(), names.end(), property);
}

}  // namespace pelta
`);
