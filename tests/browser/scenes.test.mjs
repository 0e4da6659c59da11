// Random scenes, drawn by merged layers and by one layer for each of the model's: nobody can tell the difference.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { useStudio, plainStyle } from './support/page.mjs';

const [width, height] = [360, 300];
/** Degrees of one point at zoom 10 on the equator. */
const degree = 360 / (512 * 2 ** 10);
const sceneCount = Number(process.env.PELTA_SCENES ?? 60);

const studio = useStudio();

/** Numbers from 0 to 1, the same for each seed. */
function randomFrom(seed) {
    let state = Math.imul(seed + 1, 0x9e3779b1) >>> 0;
    return () => {
        state = (Math.imul(state ^ (state >>> 15), 0x2c1b3c6d) + 0x6d2b79f5) >>> 0;
        return ((state ^ (state >>> 14)) >>> 0) / 2 ** 32;
    };
}

/** Two labels of the style's own, so that areas lie below and markers above them. */
function labelledStyle() {
    const style = JSON.parse(plainStyle);
    const features = [[-60, 40], [70, -50]].map(([x, y]) => ({
        type: 'Feature', properties: {}, geometry: { type: 'Point', coordinates: [x * degree, y * degree] },
    }));
    style.sources.labels = { type: 'geojson', data: { type: 'FeatureCollection', features } };
    style.layers.push({
        id: 'labels', type: 'symbol', source: 'labels',
        layout: { 'text-field': '\u2588\u2588', 'text-size': 30, 'text-allow-overlap': true, 'text-ignore-placement': true },
        paint: { 'text-color': 'rgb(120,60,160)' },
    });
    return JSON.stringify(style);
}

/** Shapes of all kinds around (0, 0) at zoom 10, as commands for the page, and changes to them. */
class Scene {
    constructor(seed) {
        this.random = randomFrom(seed);
        this.boxes = [];
        this.shapes = Array.from({ length: 6 + this.whole(20) }, () => this.shape());
        this.changes = Array.from({ length: 3 + this.whole(8) }, () => this.change());
        this.camera = [this.between(-8, 8) * degree, this.between(-8, 8) * degree, 9.9 + this.random() * 0.6,
            this.chance(0.25) ? 40 : 0, this.chance(0.25) ? this.whole(360) : 0];
    }

    chance(share) { return this.random() < share; }
    whole(limit) { return Math.floor(this.random() * limit); }
    between(low, high) { return low + (high - low) * this.random(); }
    pick(list) { return list[this.whole(list.length)]; }
    place() { return [this.between(-120, 120), this.between(-150, 150)]; }
    color(least = 0.4) { return [this.whole(256), this.whole(256), this.whole(256), this.chance(0.4) ? this.between(least, 1) : 1]; }

    /** A place whose surroundings, `x` and `y` points to each side, meet no reserved ones. */
    freePlace(x, y, reserves) {
        for (let attempt = 0; attempt < 60; ++attempt) {
            const [up, right] = this.place();
            const box = [right - x, up - y, right + x, up + y];
            const meets = this.boxes.some(({ box: other, reserved }) => (reserved || reserves) &&
                box[0] < other[2] && other[0] < box[2] && box[1] < other[3] && other[1] < box[3]);
            if (!meets) {
                this.boxes.push({ box, reserved: reserves });
                return [up * degree, right * degree];
            }
        }
        return null;
    }

    stacking() {
        return {
            zIndex: this.whole(4),
            ...(this.chance(0.15) && { minZoom: this.pick([9, 10.2, 11]) }),
            ...(this.chance(0.1) && { maxZoom: this.pick([9, 10.2, 11]) }),
        };
    }

    shape() {
        const make = this.pick(['marker', 'marker', 'marker', 'polyline', 'polyline', 'polygon', 'circle']);
        return this[make]() ?? this.polyline();
    }

    marker() {
        // A title lies above all icons of its run: those markers keep apart from the others.
        const isTitled = this.chance(0.35);
        const at = this.freePlace(isTitled ? 45 : 22, isTitled ? 42 : 32, isTitled);
        return at && ['addMarker', {
            at, ...this.stacking(), angle: this.chance(0.3) ? this.whole(360) : 0,
            iconScale: this.chance(0.3) ? this.between(0.6, 1.3) : 1,
            alpha: this.chance(0.2) ? this.pick([0, 0.5]) : 1,
            ...(this.chance(0.5) && { width: 10 + 2 * this.whole(8), height: 10 + 2 * this.whole(8), color: this.color(), anchor: [0.5, 0.5] }),
            ...(isTitled && { title: this.pick(['서울', 'Busan', '{brace}']), titleColor: this.color(), titleSize: this.pick([10, 12, 14]) }),
        }];
    }

    polyline() {
        const through = Array.from({ length: 2 + this.whole(4) }, () => this.place().map((part) => part * degree));
        return ['addPolyline', {
            through, ...this.stacking(), width: 1 + this.whole(9), color: this.color(),
            ...(this.chance(0.3) && { pattern: this.pick([[2, 1], [1, 1], [3, 2, 1, 2]]) }),
        }];
    }

    area() {
        return {
            ...this.stacking(), fill: this.chance(0.1) ? [0, 0, 0, 0] : this.color(), stroke: this.color(),
            strokeWidth: this.pick([0, 1, 3, 6]), globalZIndex: this.pick([-200000, -200000, 50000]),
        };
    }

    polygon() {
        const [y, x] = this.place();
        const corners = 3 + this.whole(4);
        const ring = Array.from({ length: corners }, (_, i) => {
            const [turn, reach] = [(2 * Math.PI * i) / corners, this.between(15, 60)];
            return [(y + reach * Math.sin(turn)) * degree, (x + reach * Math.cos(turn)) * degree];
        });
        return ['addPolygon', { ring, ...this.area() }];
    }

    circle() {
        return ['addCircle', { at: this.place().map((part) => part * degree), radius: this.between(800, 4000), ...this.area() }];
    }

    /** A change of one shape: [its place in the list, what to set], or [its place, null] to remove it. */
    change() {
        const number = this.whole(this.shapes.length);
        const [command, { title }] = this.shapes[number];
        const paint = { addMarker: 'titleColor', addPolyline: 'color' }[command] ?? 'fill';
        const changes = [{ zIndex: this.whole(6) }, { visible: this.chance(0.3) }, { [paint]: this.color() }, { minZoom: 8 }, { maxZoom: 22 }, null];
        if (command !== 'addMarker') {
            changes.push({ [command === 'addPolyline' ? 'width' : 'strokeWidth']: 1 + this.whole(7) });
        } else if (title === undefined) {
            const at = this.freePlace(22, 32, false);
            changes.push({ angle: this.whole(360) }, { iconScale: this.between(0.6, 1.3) }, ...(at ? [{ at }, { at }] : []));
        } else {
            changes.push({ title: '' }, { title: 'Jeju' });
        }
        return [number, this.pick(changes)];
    }

    rects() {
        return Array.from({ length: 8 }, () => {
            const [left, top, size] = [this.whole(width - 40), this.whole(height - 40), this.pick([1, 10, 40])];
            return [left, top, left + size, top + size];
        });
    }
}

/** Pixels that differ between the left and the right half. */
function differing(picture) {
    const pixels = picture.pixels;
    let count = 0;
    for (let row = 0; row < picture.height; ++row) {
        for (let column = 0; column < width; ++column) {
            const left = 4 * (row * picture.width + column);
            const right = left + 4 * width;
            count += [0, 1, 2].some((part) => Math.abs(pixels[left + part] - pixels[right + part]) > 16) ? 1 : 0;
        }
    }
    return count;
}

/** Two maps side by side: the merged one and the literal one. */
async function openBoth(stage, style) {
    const maps = [];
    for (const isLiteral of [false, true]) {
        await stage.run('setDrawsLayersLiterally', isLiteral);
        maps.push(await stage.openMap(style, { x: isLiteral ? width : 0, y: 0, width, height }));
    }
    return maps;
}

/** Runs commands and waits until both maps rest. */
async function actOnBoth(stage, commands) {
    await stage.page.evaluate((list) => {
        globalThis.restCounts = [0, 1].map((map) => globalThis.pelta.state(map).idle);
        globalThis.results = list.map(([name, ...values]) => globalThis.pelta[name](...values));
    }, commands);
    await stage.page.waitForFunction(() =>
        globalThis.restCounts.every((count, map) => globalThis.pelta.state(map).idle > count));
    return stage.page.evaluate(() => globalThis.results);
}

async function compare(stage, scene, numbers, name) {
    const picture = await stage.picture(name);
    const limit = (width * height) / 1000;
    const count = differing(picture);
    const failures = count > limit ? [`${name}: ${count} pixels differ`] : [];
    for (const rect of scene.rects()) {
        const found = [];
        for (const map of [0, 1]) {
            found.push((await stage.run('shapesIn', map, ...rect)).map((number) => numbers[map].indexOf(number)));
        }
        if (JSON.stringify(found[0]) !== JSON.stringify(found[1])) {
            failures.push(`${name}: [${found[0]}] instead of [${found[1]}] in [${rect}]`);
        }
    }
    return failures;
}

/** Draws a scene on both maps, changes it, and takes it away; what differed. */
async function judge(stage, seed) {
    const scene = new Scene(seed);
    const looks = [0, 1].map((map) => ['look', map, ...scene.camera]);
    const adds = [0, 1].flatMap((map) => scene.shapes.map(([command, options]) => [command, { ...options, map }]));
    const results = await actOnBoth(stage, [...looks, ...adds]);
    const all = results.slice(2);
    const numbers = [all.slice(0, scene.shapes.length), all.slice(scene.shapes.length)];
    const failures = await compare(stage, scene, numbers, `scene-${seed}`);
    await actOnBoth(stage, [0, 1].flatMap((map) => scene.changes.map(([place, options]) =>
        options ? ['change', numbers[map][place], options] : ['removeShape', numbers[map][place]])));
    failures.push(...await compare(stage, scene, numbers, `scene-${seed}-changed`));
    if (seed % 4 === 0) {
        // Further out lines are wider on the ground, so that other areas can be drawn together; then back in.
        for (const [name, step] of [['out', -scene.between(1, 3)], ['in', 0]]) {
            const [y, x, zoom, ...rest] = scene.camera;
            await actOnBoth(stage, [0, 1].map((map) => ['look', map, y, x, zoom + step, ...rest]));
            failures.push(...await compare(stage, scene, numbers, `scene-${seed}-${name}`));
        }
    }
    await actOnBoth(stage, all.map((number) => ['removeShape', number]));
    return failures;
}

test(`${sceneCount} random scenes look and answer the same, merged and layer by layer`, async () => {
    const stage = await studio.open({ width: 2 * width, height });
    await openBoth(stage, labelledStyle());
    const failures = [];
    for (let seed = 0; seed < sceneCount; ++seed) {
        failures.push(...await judge(stage, seed));
    }
    assert.deepEqual(failures, []);
});

/** Runs in the page: keeps what goes to the engine's sources, for `takeSent`. */
async function listenToSources() {
    const { GeoJSONSource } = await import('./maplibre-gl.mjs');
    globalThis.sent = [];
    for (const method of ['updateData', 'setData']) {
        const original = GeoJSONSource.prototype[method];
        GeoJSONSource.prototype[method] = function record(data) {
            globalThis.sent.push([method, data]);
            return original.call(this, data);
        };
    }
}

/** What a call has changed, in short: "add 1", "update 1 newGeometry", "update 1 title". */
function inShort([method, { remove = [], add = [], update = [] }]) {
    const parts = [];
    for (const [name, list] of Object.entries({ remove, add, update })) {
        const details = list.flatMap?.(({ newGeometry, addOrUpdateProperties = [], removeProperties = [] }) =>
            [...(newGeometry ? ['geometry'] : []), ...addOrUpdateProperties.map(({ key }) => key), ...removeProperties.map((key) => `no ${key}`)]) ?? [];
        parts.push(...(list.length > 0 ? [[name, list.length, ...(name === 'update' ? details : [])].join(' ')] : []));
    }
    return [method, ...parts].join(' ');
}

test('changes to one of many markers cross as changes to one feature', async () => {
    const stage = await studio.open();
    await stage.openMap();
    await stage.page.evaluate(listenToSources);
    const marker = (i) => ['addMarker', { at: [0, (i - 20) * 6 * degree], title: `T ${i}` }];
    const third = (await stage.act(Array.from({ length: 40 }, (_, i) => marker(i))))[2];
    const changes = [
        [['change', third, { at: [20 * degree, 0] }], 'update 1 geometry'],
        [['change', third, { title: 'new' }], 'update 1 text-field'],
        [['change', third, { zIndex: 1 }], 'update 1 symbol-key'],
        [['change', third, { visible: false }], 'remove 1'],
        [['change', third, { visible: true }], 'add 1'],
        [marker(40), 'add 1'],
    ];
    for (const [command, sent] of changes) {
        await stage.page.evaluate(() => { globalThis.sent = []; });
        await stage.act([command]);
        assert.deepEqual((await stage.page.evaluate(() => globalThis.sent)).map(inShort), [`updateData ${sent}`]);
    }
});

test('a title lies above a later icon of its run, and only there', async () => {
    const stage = await studio.open({ width: 2 * width, height });
    await openBoth(stage, plainStyle);
    const [red, green] = [[255, 0, 0], [0, 160, 0]];
    const titled = { at: [0, 0], width: 10, height: 10, title: '\u2588\u2588', titleColor: red, titleHaloColor: red, titleSize: 20 };
    const cover = { at: [-40 * degree, 0], width: 60, height: 60, color: green, spot: green };
    for (const [otherRun, isCovered] of [[{}, false], [{ minZoom: 5 }, true]]) {
        const numbers = await actOnBoth(stage, [0, 1].flatMap((map) =>
            [['addMarker', { ...titled, map }], ['addMarker', { ...cover, ...otherRun, zIndex: 1, map }]]));
        const picture = await stage.picture(`title-covered-${isCovered}`);
        assert.equal(picture.find(red, [0, 0, width, height]).count < 20, isCovered, 'merged');
        assert.ok(picture.find(red, [width, 0, 2 * width, height]).count < 20, 'literal');
        await actOnBoth(stage, numbers.map((number) => ['removeShape', number]));
    }
});
