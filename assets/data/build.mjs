// Writes the data of the base style: node build.mjs OUT_FOLDER
import { mkdirSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { countryFeatures } from './countries.mjs';
import { collectionText } from './geojson.mjs';
import { graticuleFeatures } from './graticule.mjs';
import { placeFeatures } from './places.mjs';

const [folder] = process.argv.slice(2);
if (!folder) {
    process.stderr.write('usage: node build.mjs OUT_FOLDER\n');
    process.exit(2);
}
mkdirSync(folder, { recursive: true });
for (const [name, features] of Object.entries({ ...countryFeatures(), ...placeFeatures(), ...graticuleFeatures() })) {
    writeFileSync(join(folder, `${name}.json`), collectionText(features));
}
