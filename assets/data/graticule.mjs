// Meridians and parallels every 15 degrees.
import { lineFeature } from './geojson.mjs';

const STEP = 15;               // degrees
const NORTHERN_END = 85.0511;  // degrees: where a square Mercator world ends

/** @returns {Record<string, object[]>} features by file name. */
export function graticuleFeatures() {
    const lines = [];
    for (let longitude = -180; longitude < 180; longitude += STEP) {
        lines.push(lineFeature([[longitude, -NORTHERN_END], [longitude, NORTHERN_END]]));
    }
    for (let latitude = -75; latitude <= 75; latitude += STEP) {
        lines.push(lineFeature([[-180, latitude], [180, latitude]]));
    }
    return { graticule: lines };
}
