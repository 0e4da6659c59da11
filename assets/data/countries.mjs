// Country areas, their borders and coasts, and where their Korean names stand.
import { createRequire } from 'node:module';
import { feature, lineFeature, pointFeature } from './geojson.mjs';
import { labelPoint } from './label-point.mjs';
import { readTopology, ringArea } from './topology.mjs';

const require = createRequire(import.meta.url);
const topology = require('world-atlas/countries-10m.json');
const { neighbors } = require('topojson-client');
const isoCountries = require('i18n-iso-countries');
const koreanNames = { ...require('i18n-iso-countries/langs/ko.json').countries, ...require('./country-names.json') };

/** Areas without an ISO number that have a name of their own all the same. */
const CODE_BY_NAME = { Kosovo: 'XK' };

/** A country's name is shown from the first zoom at which its area has room for it: [square degrees, zoom]. */
const LABEL_ZOOMS = [[150, 1], [60, 2], [20, 3], [4, 4], [1, 5], [0, 6]];

/** Names that are shown earlier than their area tells: this is a map seen from Korea. */
const EARLY_LABELS = { KR: 2, JP: 2, KP: 3 };

/** @returns {Record<string, object[]>} features by file name. */
export function countryFeatures() {
    const { countries, borders, coasts } = readTopology(topology, topology.objects.countries);
    const tints = tintsOf(topology.objects.countries.geometries);
    const areas = countries.map(({ geometry, polygons }, index) => ({
        code: codeOf(geometry), name: geometry.properties.name, tint: tints[index], polygons,
    }));
    return {
        countries: areas.map(({ code, tint, polygons }) => feature('MultiPolygon', polygons, { code, tint })),
        borders: borders.map((line) => lineFeature(line)),
        coasts: coasts.map((line) => lineFeature(line)),
        'country-labels': labels(areas),
    };
}

function codeOf(geometry) {
    return CODE_BY_NAME[geometry.properties.name] ?? isoCountries.numericToAlpha2(geometry.id) ?? '';
}

/** One name a country, on its largest polygon, largest country first. */
function labels(areas) {
    const largest = new Map();
    for (const { code, polygons } of areas) {
        for (const [ring] of polygons) {
            const area = ringArea(ring);
            if (koreanNames[code] && area > (largest.get(code)?.area ?? 0)) {
                largest.set(code, { area, ring });
            }
        }
    }
    return [...largest].sort(([, a], [, b]) => b.area - a.area).map(([code, { area, ring }], order) =>
        pointFeature(labelPoint(ring), {
            code, name: koreanName(code), order: code in EARLY_LABELS ? 0 : order + 1, minzoom: labelZoom(code, area),
        }));
}

function koreanName(code) {
    const name = koreanNames[code];
    return Array.isArray(name) ? name[0] : name;
}

function labelZoom(code, area) {
    return EARLY_LABELS[code] ?? LABEL_ZOOMS.find(([least]) => area >= least)[1];
}

/** Small numbers such that neighbours differ, by taking the least that no earlier neighbour has. */
function tintsOf(geometries) {
    const tints = [];
    neighbors(geometries).forEach((around, index) => {
        const taken = new Set(around.filter((other) => other < index).map((other) => tints[other]));
        tints[index] = [0, 1, 2, 3, 4, 5, 6, 7].find((tint) => !taken.has(tint));
    });
    return tints;
}
