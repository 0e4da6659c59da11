// Info windows and the user's position, by the pixels and the elements on the screen.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { assertNear, degree, ground, useStudio } from './support/page.mjs';
import { isNear } from './support/picture.mjs';

const white = [255, 255, 255];

const studio = useStudio();

for (const scale of [1, 2]) {
    test(`a bubble stands above its pin with the tip on it, at ${scale} pixels a point`, async () => {
        const stage = await studio.open({ scale });
        await stage.openMap();
        const [marker] = await stage.act([['addMarker', { at: [0, 0] }]]);
        await stage.act([['addInfoWindow', { marker, title: '서울특별시청 Seoul' }]]);
        const picture = await stage.picture(`info-window-${scale}x`);
        // The pin is 40 points high, the bubble 44.
        const bubble = picture.find(white, [0, 60, 400, 111], 10);
        assertNear((bubble.left + bubble.right) / 2, 200, 1, 'middle of the bubble');
        assertNear(bubble.top, 69, 1.5, 'upper edge inside its border');
        assert.ok(bubble.bottom > 104 && bubble.bottom <= 110, `tip down to ${bubble.bottom}`);
        assert.ok(isNear(picture.at(200, 105), white), 'white tip above the pin');
        assert.ok(!isNear(picture.at(188, 107), white) && !isNear(picture.at(212, 107), white), 'none beside it');
        const ink = picture.find([0, 0, 0], [0, 66, 400, 104], 90);
        assert.ok(ink.count > 150 * scale * scale, `${ink.count} pixels of text`);
        assertNear((ink.left + ink.right) / 2, 200, 2, 'middle of the text');
        assertNear(ink.left - bubble.left, bubble.right - ink.right, 3, 'equal margins');
        assertNear((ink.top + ink.bottom) / 2, 86, 3.5, 'the text in the body');
        for (let x = bubble.left + 8; x < bubble.right - 8; x += 1 / scale) {
            assert.ok(isNear(picture.at(x, 72), white), `no seam at ${x}`);
        }
    });
}

test('a view of the application is drawn as it stands, groups as a whole', async () => {
    const stage = await studio.open({ scale: 2 });
    await stage.openMap();
    await stage.act([['addInfoWindow', { at: [0, 0], card: true }]]);
    const picture = await stage.picture('info-window-card');
    const wanted = [
        [235, 95, [0, 255, 0], 'card'], [170, 105, [128, 127, 0], 'half-transparent box'],
        [190, 105, [128, 255, 128], 'its inside'], [220, 120, [0, 0, 255], 'drawn disc'],
        [211, 111, [0, 255, 0], 'beside the disc'], [200, 88, ground, 'above'], [200, 152, ground, 'below'],
        [158, 120, ground, 'left'], [242, 120, ground, 'right'],
    ];
    for (const [x, y, color, what] of wanted) {
        assert.ok(isNear(picture.at(x, y), color), `${what}: ${picture.at(x, y)} instead of ${color}`);
    }
});

test('pictures that a window no longer shows leave the engine, and none is missed', async () => {
    const stage = await studio.open();
    await stage.page.evaluate(async () => {
        const { Map } = await import('./maplibre-gl.mjs');
        const original = Map.prototype.addImage;
        globalThis.missed = [];
        Map.prototype.addImage = function record(...values) {
            if (globalThis.engineMap !== this) {
                globalThis.engineMap = this;
                this.on('styleimagemissing', ({ id }) => globalThis.missed.push(id));
            }
            return original.apply(this, values);
        };
    });
    await stage.openMap();
    const [window] = await stage.act([['addInfoWindow', { at: [0, 0], title: 'text' }]]);
    const images = () => stage.page.evaluate(() => globalThis.engineMap.listImages());
    const first = await images();
    for (let i = 0; i < 5; ++i) {
        await stage.act([['redrawInfoWindow', window]]);
    }
    const last = await images();
    assert.deepEqual([first.length, last.length], [1, 1]);
    assert.notDeepEqual(last, first);
    assert.deepEqual(await stage.page.evaluate(() => globalThis.missed), []);
    assert.ok(isNear((await stage.picture('info-window-redrawn')).at(200, 115), white), 'drawn');
});

const dot = (stage) => stage.page.locator('[aria-label="Your location"]');

async function placeOfDot(stage) {
    const { x, y, width, height } = await dot(stage).boundingBox();
    return { x: x + width / 2, y: y + height / 2 };
}

async function openUser(mode, options = {}) {
    const stage = await studio.open({
        geolocation: { latitude: 0, longitude: 0 },
        permissions: ['geolocation'],
        ...options,
    });
    await stage.openMap();
    await stage.run('follow', 0, mode);
    await dot(stage).waitFor();
    return stage;
}

async function turnDevice(stage, heading) {
    await stage.page.evaluate((alpha) => {
        dispatchEvent(new DeviceOrientationEvent('deviceorientationabsolute', { alpha, absolute: true }));
    }, (360 - heading) % 360);
    await stage.page.waitForTimeout(600);
}

async function assertDotAt(stage, latitude, longitude) {
    const place = await placeOfDot(stage);
    const wanted = await stage.point(latitude, longitude);
    assertNear(place.x, wanted.x, 0.6, 'x of the dot');
    assertNear(place.y, wanted.y, 0.6, 'y of the dot');
}

for (const scale of [1, 2]) {
    test(`the dot follows the device and points where it points, at ${scale} pixels a point`, async () => {
        const stage = await openUser(1, { scale });
        await assertDotAt(stage, 0, 0);
        await stage.page.context().setGeolocation({ latitude: 30 * degree, longitude: -60 * degree });
        await stage.until('location', `${(30 * degree).toFixed(6)} ${(-60 * degree).toFixed(6)}`);
        await stage.page.waitForTimeout(100);
        await assertDotAt(stage, 30 * degree, -60 * degree);
        await stage.picture(`location-dot-${scale}x`);

        await stage.run('follow', 0, 3);
        // In two steps: what the map has still to turn in its last frame stays on the dot, which is little of a few degrees.
        await turnDevice(stage, 86);
        await turnDevice(stage, 90);
        assertNear((await stage.run('camera', 0)).bearing, 90, 0.5, 'the map turns with the device');
        let picture = await stage.picture(`location-heading-${scale}x`);
        // Much redder than the ground, and than the halo there.
        const isBeam = (x, y) => picture.at(x, y)[0] - picture.at(x, y)[1] > 60;
        assert.ok(isBeam(200, 136) && !isBeam(214, 150) && !isBeam(186, 150), 'the beam points up');
        await stage.act([['look', 0, 30 * degree, -60 * degree, 10, 0, 0]]);
        picture = await stage.picture(`location-turned-${scale}x`);
        assert.ok(isBeam(214, 150) && !isBeam(200, 136) && !isBeam(186, 150), 'the beam points east');

        await stage.act([['look', 0, 30 * degree, -60 * degree, 10, 60, 0]]);
        picture = await stage.picture(`location-tilted-${scale}x`);
        const tilted = await dot(stage).locator('canvas').boundingBox();
        assertNear(tilted.height / tilted.width, 0.5, 0.02, 'lies on the tilted map');
    });
}

test('the halo pulses, and stands still where less motion is preferred', async () => {
    const stage = await openUser(1);
    const prefer = async (reducedMotion, wanted) => {
        await stage.page.emulateMedia({ reducedMotion });
        await stage.page.waitForFunction((state) => {
            const pulses = document.querySelector('[aria-label="Your location"]').getAnimations({ subtree: true });
            return pulses.length === 2 && pulses.every(({ playState }) => playState === state);
        }, wanted);
    };
    await prefer('no-preference', 'running');
    assert.deepEqual(await dot(stage).evaluate((element) => element.getAnimations({ subtree: true }).map((animation) => [
        animation.effect.getTiming().duration,
        ...animation.effect.getKeyframes().map(({ offset, scale, opacity }) => [offset, scale ?? opacity]),
    ])), [[3000, [0, '0'], [0.2, '0.35'], [1, '1']], [3000, [0, '0.4'], [0.2, '0.4'], [1, '0']]]);
    await prefer('reduce', 'paused');
    await stage.page.waitForTimeout(100);
    const picture = await stage.picture('location-halo-still');
    const [red, green] = picture.at(200, 165);
    assert.ok(red - green > 20, `the halo is seen beside the dot: ${picture.at(200, 165)}`);
    assert.ok(isNear(picture.at(200, 178), ground), 'and ends');
});

for (const [what, reason, setting] of [
    ['without permission', 'denied', () => {}],
    ['in a browser without a location service', 'unavailable', () => Object.defineProperty(navigator, 'geolocation', { value: undefined })],
]) {
    test(`${what} nothing is shown, one line says why, and the application hears it once`, async () => {
        const stage = await studio.open({ permissions: [] });
        const lines = [];
        stage.page.on('console', (message) => lines.push(message.text()));
        await stage.openMap();
        await stage.page.evaluate(setting);
        await stage.run('setLogging', true);
        await stage.run('listenToTaps', 0);
        await stage.run('follow', 0, 2);
        await stage.page.waitForTimeout(500);
        assert.equal(lines.filter((line) => line.includes('location is not known')).length, 1, lines.join('\n'));
        assert.equal(await stage.run('takeTaps'), reason);
        assert.equal(await dot(stage).count(), 0);
    });
}
