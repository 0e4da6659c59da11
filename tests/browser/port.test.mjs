// The port around the map: styles and their failures, size and pixels, several maps, the drawing context.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { degree, ground, useStudio, plainStyle } from './support/page.mjs';
import { isNear } from './support/picture.mjs';

const red = [255, 0, 0];
const green = [0, 255, 0];
const blue = [0, 0, 255];
const spot = { at: [0, 0], width: 20, height: 20, anchor: [0.5, 0.5], color: blue, spot: blue };

const studio = useStudio();

const styleOf = (color) => plainStyle.replace('200,220,230', color.join(','));

test('a style that cannot be had tells why, and the empty map still pans and shows shapes once a style comes', async () => {
    const stage = await studio.open();
    const map = await stage.run('openMap', 0, 0, 400, 300, 'no-such-style.json');
    const lines = [];
    stage.page.on('console', (message) => lines.push(message.text()));
    const told = (reason) => lines.filter((line) => line.startsWith('Pelta: ') && reason.test(line)).length;
    await stage.run('look', map, 0, 0, 10, 0, 0);
    await stage.run('addMarker', spot);
    await stage.page.waitForFunction(() => globalThis.pelta.state(0).failure !== '');
    const { failure } = await stage.run('state', map);
    assert.match(failure, /no-such-style\.json.*404/);
    assert.equal(told(/no-such-style\.json.*404/), 1, `one line of the console: ${lines.join('\n')}`);
    await stage.page.mouse.move(200, 150);
    await stage.page.mouse.down();
    await stage.page.mouse.move(210, 150);
    await stage.page.mouse.move(250, 150, { steps: 5 });
    await stage.page.waitForTimeout(300);
    await stage.page.mouse.up();
    await stage.page.waitForFunction(() => globalThis.pelta.point(0, 0, 0).x > 230);
    await stage.act([['setStyle', map, plainStyle]]);
    const place = await stage.point(0, 0);
    const picture = await stage.picture('late-style');
    assert.ok(isNear(picture.at(place.x, place.y), blue), 'the marker is where the map was dragged');
    for (const [style, reason] of [
        ['{"version":8,"name":"x","sources":{},"layers":[{"id":"a","type":"background","paint":{"background-color":7}}]}', /background-color/],
        ['{"version":8,"sources":', /./],
    ]) {
        await stage.run('setStyle', map, style);
        await stage.page.waitForFunction((text) => globalThis.pelta.state(0).failure !== text, failure);
        assert.match((await stage.run('state', map)).failure, reason);
        assert.ok(told(reason) > 0, 'in the console');
        await stage.page.waitForTimeout(200);
        const after = await stage.picture('style-kept');
        assert.ok(isNear(after.at(place.x, place.y), blue) && isNear(after.at(20, 20), ground), 'the style before it stays');
    }
    assert.match(stage.errors.splice(0).join(), /404/);
});

test('addresses within a style start at the style, and a new style brings the shapes along', async () => {
    const stage = await studio.open();
    await stage.page.route('**/styles/first/*', (route) => {
        const isData = route.request().url().endsWith('squares.json');
        const ring = [[-1, -1], [1, -1], [1, 1], [-1, 1], [-1, -1]].map(([x, y]) => [x * 60 * degree, y * 60 * degree]);
        const style = JSON.parse(plainStyle);
        style.sources['pel-shapes'] = { type: 'geojson', data: 'squares.json' };
        style.layers.push({ id: 'squares', type: 'fill', source: 'pel-shapes', paint: { 'fill-color': 'rgb(0,255,0)' } });
        route.fulfill({ json: isData ? { type: 'Polygon', coordinates: [ring] } : style });
    });
    await stage.openMap();
    await stage.act([['addMarker', spot]]);
    const { styles } = await stage.run('state', 0);
    await stage.run('setStyle', 0, 'styles/first/style.json');
    await stage.until('styles', styles + 1);
    await stage.act([['look', 0, 0, 0, 10.1, 0, 0]]);
    let picture = await stage.picture('relative-address');
    assert.ok(isNear(picture.at(160, 150), green), 'data of the style, in a source named as that of the shapes');
    assert.ok(isNear(picture.at(200, 150), blue), 'the marker above it');
    await stage.act([['setStyle', 0, styleOf([250, 240, 200])]]);
    picture = await stage.picture('next-style');
    assert.ok(isNear(picture.at(160, 150), [250, 240, 200]), 'ground of the next style');
    assert.ok(isNear(picture.at(200, 150), blue), 'the marker again');
});

test('two maps show their own, and a released one frees its drawing context', async () => {
    const stage = await studio.open({ width: 600, height: 300 });
    const left = await stage.openMap(plainStyle, { width: 300, height: 300 });
    const right = await stage.openMap(styleOf([250, 240, 200]), { x: 300, width: 300, height: 300 });
    await stage.act([['addMarker', spot]], left);
    await stage.act([['addMarker', { ...spot, map: right, at: [0, 60 * degree], color: red, spot: red }]], right);
    let picture = await stage.picture('two-maps');
    assert.ok(isNear(picture.at(150, 150), blue) && isNear(picture.at(20, 20), ground), 'left');
    assert.ok(isNear(picture.at(510, 150), red) && isNear(picture.at(320, 20), [250, 240, 200]), 'right');
    await stage.page.evaluate(() => {
        const canvas = document.querySelectorAll('canvas.maplibregl-canvas')[1];
        globalThis.rightContext = canvas.getContext('webgl2');
    });
    await stage.run('closeMap', right);
    await stage.page.waitForFunction(() => globalThis.rightContext.isContextLost());
    assert.equal(await stage.page.locator('canvas.maplibregl-canvas').count(), 1);
    await stage.act([['look', left, 0, 20 * degree, 10, 0, 0]], left);
    picture = await stage.picture('one-map-left');
    assert.ok(isNear(picture.at(130, 150), blue), 'the left map lives on');
    // Far more maps than a page may have drawing contexts at a time.
    for (let i = 0; i < 24; ++i) {
        const map = await stage.openMap(plainStyle, { x: 300, width: 200, height: 200 });
        await stage.run('closeMap', map);
    }
    assert.equal(await stage.page.evaluate(() => document.querySelector('canvas').getContext('webgl2').isContextLost()), false);
});

test('another size and another number of pixels keep camera and shapes', async () => {
    const stage = await studio.open();
    await stage.openMap();
    await stage.act([['addMarker', spot], ['look', 0, 0, 40 * degree, 10, 20, 30]]);
    const camera = await stage.run('camera', 0);
    const session = await stage.page.context().newCDPSession(stage.page);
    for (const [width, height, scale] of [[500, 400, 1], [500, 400, 2], [400, 300, 1]]) {
        await session.send('Emulation.setDeviceMetricsOverride', { width, height, deviceScaleFactor: scale, mobile: false });
        await stage.act([['setFrame', 0, 0, 0, width, height - 20], ['look', 0, 0, 40 * degree, 10 + 0.1 * scale, 20, 30]]);
        await stage.act([['setFrame', 0, 0, 0, width, height], ['look', 0, 0, 40 * degree, 10, 20, 30]]);
        const place = await stage.point(0, 40 * degree);
        assert.ok(Math.abs(place.x - width / 2) < 0.01 && Math.abs(place.y - height / 2) < 0.01, JSON.stringify(place));
        const canvas = await stage.page.evaluate(() => [document.querySelector('.maplibregl-canvas').width, devicePixelRatio]);
        assert.deepEqual(canvas, [width * scale, scale]);
        const picture = await stage.picture(`size-${width}-${scale}`);
        const marker = await stage.point(0, 0);
        const found = picture.find(blue);
        assert.ok(Math.abs(found.x - marker.x) < 0.6 && Math.abs(found.y - marker.y) < 0.6, `${found.x} ${found.y}`);
        assert.ok(Math.abs(found.right - found.left - 20) <= 1, 'the picture keeps its size in points');
    }
    const after = await stage.run('camera', 0);
    for (const [name, value] of Object.entries(camera)) {
        assert.ok(Math.abs(after[name] - value) < 1e-9, name);
    }
});

test('a resting map asks for no frames', async () => {
    const stage = await studio.open();
    await stage.openMap();
    await stage.act([['addMarker', { ...spot, title: '서울' }]]);
    await stage.page.waitForTimeout(500);
    const before = await stage.run('state', 0);
    await stage.page.waitForTimeout(1000);
    assert.deepEqual(await stage.run('state', 0), before);
});

test('a lost drawing context comes back with shapes, also those changed meanwhile', async () => {
    const stage = await studio.open();
    await stage.openMap();
    await stage.act([['addMarker', spot]]);
    await stage.page.evaluate(() => {
        globalThis.loss = document.querySelector('.maplibregl-canvas').getContext('webgl2').getExtension('WEBGL_lose_context');
        globalThis.loss.loseContext();
    });
    await stage.page.waitForTimeout(200);
    await stage.run('addMarker', { ...spot, at: [0, 80 * degree], color: green, spot: green });
    await stage.page.waitForTimeout(200);
    const { idle } = await stage.run('state', 0);
    await stage.page.evaluate(() => globalThis.loss.restoreContext());
    await stage.page.waitForFunction((count) => globalThis.pelta.state(0).idle > count, idle);
    const picture = await stage.picture('context-restored');
    assert.ok(isNear(picture.at(200, 150), blue), 'the marker from before');
    assert.ok(isNear(picture.at(280, 150), green), 'the one from meanwhile');
});
