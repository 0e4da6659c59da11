// Where overlays are drawn, in what colour and in what order, by the pixels on the screen.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { assertNear, degree, ground, useStudio, plainStyle } from './support/page.mjs';
import { isNear } from './support/picture.mjs';

const red = [255, 0, 0];
const green = [0, 255, 0];
const blue = [0, 0, 255];

const studio = useStudio();

/** Markers of every combination of anchor, angle, scale and size, on a grid of places 80 points apart. */
function markerGrid() {
    const combinations = [];
    for (const anchor of [[0.5, 1], [0, 0], [0.8, 0.3]]) {
        for (const angle of [0, 40, 250]) {
            for (const [iconScale, width, height] of [[1, 20, 30], [1.5, 20, 30], [0.7, 41, 27]]) {
                combinations.push({ anchor, angle, iconScale, width, height });
            }
        }
    }
    return combinations.map((options, i) => ({
        ...options,
        at: [(2 - Math.floor(i / 6)) * 80 * degree, ((i % 6) - 2.5) * 80 * degree],
    }));
}

for (const scale of [1, 2]) {
    test(`the anchor of a marker's picture lies on its position, at ${scale} pixels a point`, async () => {
        const stage = await studio.open({ width: 560, height: 500, scale });
        await stage.openMap(plainStyle, { width: 560, height: 500 });
        const markers = markerGrid();
        await stage.act(markers.map((options) => ['addMarker', options]));
        const picture = await stage.picture(`anchors-${scale}x`);
        for (const { at, ...options } of markers) {
            const place = await stage.point(...at);
            const spot = picture.find(red, [place.x - 12, place.y - 12, place.x + 12, place.y + 12], 90);
            const corner = options.anchor.some((part) => part === 0 || part === 1);
            // At an edge of the picture half of the spot, or three quarters, is cut off.
            const tolerance = corner ? 1.5 * options.iconScale : 0.75;
            assert.ok(spot.count > 0, JSON.stringify(options));
            assertNear(spot.x, place.x, tolerance, `x of ${JSON.stringify(options)}`);
            assertNear(spot.y, place.y, tolerance, `y of ${JSON.stringify(options)}`);
        }
    });
}

test('the tip of the standard marker stands on its position and its title hangs below', async () => {
    const stage = await studio.open({ scale: 2 });
    await stage.openMap();
    await stage.act([['addMarker', { at: [0, 0], title: '서울특별시', titleColor: green, titleHaloColor: green }]]);
    const picture = await stage.picture('standard-marker');
    const isPaint = (x, y) => !isNear(picture.at(x, y), ground, 40);
    assert.ok(isPaint(200, 148), 'paint just above the position');
    assert.ok(!isPaint(200, 151) && !isPaint(194, 149) && !isPaint(206, 149), 'none beside and below it');
    const title = picture.find(green, undefined, 90);
    assert.ok(title.count > 300, 'the title is drawn');
    assert.ok(title.top > 150 && title.top < 162, `title from ${title.top}`);
    assertNear((title.left + title.right) / 2, 200, 1.5, 'middle of the title');
    assertNear(title.right - title.left, 5 * 12, 14, 'width of five syllables in one line');
});

test('of overlapping markers the one with the higher zIndex lies above, also after a change', async () => {
    const stage = await studio.open();
    await stage.openMap();
    const box = { at: [0, 0], width: 40, height: 40, anchor: [0.5, 0.5] };
    const [lower] = await stage.act([
        ['addMarker', { ...box, zIndex: 2, color: blue, spot: blue }],
        ['addMarker', { ...box, zIndex: 1, color: red, spot: red }],
        ['addMarker', { ...box, zIndex: 3, at: [-30 * degree, 0], color: green, spot: green }],
    ]);
    let picture = await stage.picture('stacking-before');
    assert.ok(isNear(picture.at(200, 140), blue), 'blue above red');
    assert.ok(isNear(picture.at(200, 168), green), 'green above blue');
    await stage.act([['setZIndex', lower, 0]]);
    picture = await stage.picture('stacking-after');
    assert.ok(isNear(picture.at(200, 140), red), 'red above blue');
    assert.ok(isNear(picture.at(200, 168), green), 'green above all');
});

test('areas lie below the labels of the style, markers above', async () => {
    const block = '\u2588'.repeat(3);
    const label = (id, lng) => ({
        id,
        type: 'symbol',
        source: 'labels',
        filter: ['==', ['get', 'lng'], lng],
        layout: { 'text-field': block, 'text-size': 40, 'text-allow-overlap': true },
        paint: { 'text-color': 'rgb(0,0,255)' },
    });
    const feature = (lng) => ({
        type: 'Feature',
        properties: { lng },
        geometry: { type: 'Point', coordinates: [lng * degree, 0] },
    });
    const style = JSON.parse(plainStyle);
    style.sources.labels = {
        type: 'geojson',
        data: { type: 'FeatureCollection', features: [feature(-90), feature(90)] },
    };
    style.layers.push(label('left', -90), label('right', 90));
    const stage = await studio.open();
    await stage.openMap(JSON.stringify(style));
    const ring = [[-1, -1], [1, -1], [1, 1], [-1, 1]].map(([y, x]) => [y * 60 * degree, x * 180 * degree]);
    await stage.act([
        ['addPolygon', { ring, fill: red }],
        ['addMarker', { at: [0, 90 * degree], width: 60, height: 60, anchor: [0.5, 0.5], color: green, spot: green }],
    ]);
    const picture = await stage.picture('labels');
    assert.ok(isNear(picture.at(110, 150), blue, 30), `label above the area: ${picture.at(110, 150)}`);
    assert.ok(isNear(picture.at(200, 150), red), 'the area beside it');
    assert.ok(isNear(picture.at(290, 150), green), 'marker above the label');
});

test('areas show their fill and outline, lines their dashes', async () => {
    const stage = await studio.open();
    await stage.openMap();
    const square = (x, y) =>
        [[-30, -30], [30, -30], [30, 30], [-30, 30]].map(([dy, dx]) => [(y + dy) * degree, (x + dx) * degree]);
    const metres = 40075016.68557849 / 512 / 2 ** 10;
    await stage.act([
        ['addPolygon', { ring: square(-120, 80), fill: green, stroke: blue, strokeWidth: 6 }],
        ['addPolygon', { ring: square(0, 80), fill: [255, 0, 0, 0.5] }],
        ['addCircle', { at: [80 * degree, 120 * degree], radius: 30 * metres, fill: red, stroke: green, strokeWidth: 4 }],
        ['addPolyline', { through: [[-60 * degree, -160 * degree], [-60 * degree, 160 * degree]], width: 8, color: blue, pattern: [2, 1] }],
    ]);
    const picture = await stage.picture('areas');
    const wanted = [
        [80, 70, green, 'fill'], [50, 70, blue, 'left edge of the outline'], [80, 98, blue, 'inner half of the outline'],
        [80, 104, ground, 'outside'], [200, 70, [228, 110, 115], 'half-transparent fill'],
        [171, 70, [228, 110, 115], 'its edge without an outline'], [320, 70, red, 'circle'],
        [320, 40, green, 'top of its outline'], [320, 36, ground, 'above the circle'], [346, 44, ground, 'beside its corner'],
    ];
    for (const [x, y, color, what] of wanted) {
        assert.ok(isNear(picture.at(x, y), color, 20), `${what}: ${picture.at(x, y)} instead of ${color}`);
    }
    const dashes = Array.from({ length: 320 }, (_, i) => isNear(picture.at(40.5 + i, 210), blue, 80));
    const starts = dashes.filter((isBlue, i) => isBlue && !dashes[i - 1]).length;
    const share = dashes.filter(Boolean).length / dashes.length;
    assertNear(starts, 320 / 24, 1.5, 'dashes of 24 points');
    assertNear(share, 2 / 3, 0.08, 'share of the dashes');
});

test('a tilted and turned camera draws shapes where it says they are', async () => {
    const stage = await studio.open({ scale: 2 });
    await stage.openMap();
    const places = [[0, 0], [60, 90], [-50, 60], [90, -70]].map(([y, x]) => [y * degree, x * degree]);
    await stage.act([
        ...places.map((at) => ['addMarker', { at, width: 16, height: 24, color: blue }]),
        ['addCircle', { at: [-40 * degree, -80 * degree], radius: 1500, fill: green }],
        ['look', 0, 10 * degree, 10 * degree, 10.3, 50, 35],
    ]);
    const picture = await stage.picture('tilted');
    for (const at of places) {
        const place = await stage.point(...at);
        const spot = picture.find(red, [place.x - 8, place.y - 8, place.x + 8, place.y + 8], 90);
        assertNear(spot.x, place.x, 1, 'x');
        assertNear(spot.bottom, place.y, 1, 'y of the tip');
    }
    const middle = await stage.point(-40 * degree, -80 * degree);
    const circle = picture.find(green);
    assert.ok(isNear(picture.at(middle.x, middle.y), green));
    assert.ok(circle.right - circle.left > 1.2 * (circle.bottom - circle.top), 'foreshortened');
});

/** The corners of a square about a place, `half` points to each side. */
const square = ([latitude, longitude], half) =>
    [[-1, -1], [-1, 1], [1, 1], [1, -1]].map(([y, x]) => [latitude + y * half * degree, longitude + x * half * degree]);

test('holes show what lies below, are outlined, and can be changed', async () => {
    const stage = await studio.open({ scale: 2 });
    await stage.openMap();
    const west = [0, -100 * degree];
    const east = [0, 100 * degree];
    const look = { fill: green, stroke: blue, strokeWidth: 6 };
    const [first] = await stage.act([
        ['addPolygon', { ...look, ring: square(west, 80), holes: [square(west, 40), square([0, -160 * degree], 10)] }],
        ['addPolygon', { ...look, ring: square(east, 80), holes: [square(east, 50), square(east, 20)] }],
    ]);
    const check = (picture, places) => {
        for (const [x, y, color, what] of places) {
            assert.ok(isNear(picture.at(x, y), color), `${what}: ${picture.at(x, y)} instead of ${color}`);
        }
    };
    const large = [[100, 150, ground, 'hole'], [135, 185, ground, 'its corner'], [60, 150, blue, 'its outline'], [140, 150, blue, 'its outline']];
    const small = [[40, 150, ground, 'second hole'], [30, 150, blue, 'its outline'], [75, 90, green, 'area']];
    check(await stage.picture('holes'), [
        ...large, ...small, [20, 150, blue, 'outer outline'], [10, 150, ground, 'outside'],
        [265, 150, ground, 'hole of the other area'], [225, 150, green, 'the other area'],
    ]);
    await stage.act([['change', first, { holes: [] }]]);
    check(await stage.picture('holes-gone'), [[100, 150, green, 'filled'], [60, 150, green, 'no outline'], [40, 150, green, 'filled']]);
    await stage.act([['change', first, { holes: [square(west, 40)] }]]);
    check(await stage.picture('holes-back'), [...large, [40, 150, green, 'one hole less']]);
});
