// The base style as it is built: whole, offline, and with its names where they belong.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync, mkdtempSync, readFileSync, readdirSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { validateStyleMin } from '@maplibre/maplibre-gl-style-spec';

const root = fileURLToPath(new URL('../..', import.meta.url));
const readJson = (...path) => JSON.parse(readFileSync(join(...path), 'utf8'));
const style = readJson(root, 'assets/style/pelta-light.json');

let folder;
let data;

before(() => {
    folder = mkdtempSync(join(tmpdir(), 'basestyle-'));
    execFileSync(process.execPath, [join(root, 'assets/data/build.mjs'), join(folder, 'pelta-light')]);
    data = Object.fromEntries(readdirSync(join(folder, 'pelta-light')).map((file) =>
        [file.replace('.json', ''), readJson(folder, 'pelta-light', file).features]));
});

after(() => rmSync(folder, { recursive: true }));

/** Even-odd rule over all rings of a country. */
function countryAt([x, y]) {
    return data.countries.find(({ geometry }) => geometry.coordinates.flat().reduce((inside, ring) => {
        for (let i = 1; i < ring.length; ++i) {
            const [[ax, ay], [bx, by]] = [ring[i - 1], ring[i]];
            inside = (ay > y) !== (by > y) && x < ax + ((bx - ax) * (y - ay)) / (by - ay) ? !inside : inside;
        }
        return inside;
    }, false))?.properties.code;
}

const placed = (name, features = data.places) => features.find((f) => f.properties.name === name)?.geometry.coordinates;

test('the style is valid, draws without a network, and its data is beside it', () => {
    assert.deepEqual(validateStyleMin(style), []);
    assert.equal(style.glyphs, undefined);
    assert.doesNotMatch(JSON.stringify(style), /:\/\//);
    for (const { data: address } of Object.values(style.sources)) {
        assert.ok(existsSync(join(folder, address)), address);
    }
    const types = style.layers.map((layer) => layer.type);
    assert.ok(types.indexOf('symbol') > types.lastIndexOf('fill') && types.indexOf('symbol') > types.lastIndexOf('line'));
});

test('names stand on their own country', () => {
    const korean = readJson(root, 'assets/data/korean-cities.json');
    assert.equal(new Set(korean.map((city) => city.hangul)).size, 40);
    for (const { hangul } of korean) {
        assert.equal(countryAt(placed(hangul)), 'KR', hangul);
        assert.equal(data.places.filter((f) => f.properties.name === hangul).length, 1, hangul);
    }
    for (const [name, code] of [['Tokyo', 'JP'], ['Pyongyang', 'KP'], ['Beijing', 'CN'], ['Paris', 'FR'], ['Moscow', 'RU']]) {
        assert.equal(countryAt(placed(name)), code, name);
    }
    for (const { geometry, properties } of data['country-labels']) {
        assert.equal(countryAt(geometry.coordinates), properties.code, properties.name);
    }
    assert.ok(placed('대한민국', data['country-labels']));
    assert.equal(placed('Busan') ?? placed('Pusan'), undefined, 'Korean cities are named once, in Hangul');
});

test('no line runs across the whole map', () => {
    const lines = [...data.coasts, ...data.borders].map((f) => f.geometry.coordinates);
    const rings = data.countries.flatMap((f) => f.geometry.coordinates.flat());
    for (const line of [...lines, ...rings]) {
        for (let i = 1; i < line.length; ++i) {
            const alongPole = line[i][1] === -90 && line[i - 1][1] === -90;
            assert.ok(alongPole || Math.abs(line[i][0] - line[i - 1][0]) < 90, `${line[i - 1]} to ${line[i]}`);
        }
    }
    for (const ring of rings) {
        assert.deepEqual(ring[0], ring.at(-1), 'a ring is closed');
    }
});
