// GeoJSON as the base style reads it: short numbers, one feature a line.

const DECIMALS = 3;  // of a degree: about 100 metres

export function feature(type, coordinates, properties = {}) {
    return { type: 'Feature', properties, geometry: { type, coordinates: rounded(coordinates) } };
}

export function pointFeature(position, properties) {
    return feature('Point', position, properties);
}

export function lineFeature(line, properties) {
    return feature('LineString', line, properties);
}

export function collectionText(features) {
    return `{"type":"FeatureCollection","features":[\n${features.map((f) => JSON.stringify(f)).join(',\n')}\n]}\n`;
}

function rounded(value) {
    return Array.isArray(value) ? value.map(rounded) : Number(value.toFixed(DECIMALS));
}
