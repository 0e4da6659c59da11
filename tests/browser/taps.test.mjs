// Taps on the real engine, and the controls over the map.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { assertNear, degree, openStudio } from './support/page.mjs';
import { isNear } from './support/picture.mjs';

let studio;
before(async () => (studio = await openStudio()));
after(() => studio.close());

/** A map that writes down what its application hears of taps. */
async function openListening(settings) {
    const stage = await studio.open(settings);
    const map = await stage.openMap();
    await stage.run('listenToTaps', map);
    return stage;
}

/** What has been heard once a double tap cannot come any more. */
async function heard(stage) {
    await stage.page.waitForTimeout(600);
    return stage.run('takeTaps');
}

const place = (stage, label) => stage.page.locator(`[aria-label="${label}"]`).boundingBox();

async function click(stage, label) {
    const box = await place(stage, label);
    await stage.page.mouse.click(box.x + box.width / 2, box.y + box.height / 2);
}

/** Does something and waits until the map rests at a zoom. */
async function untilZoom(stage, zoom, work) {
    await work();
    await stage.page.waitForFunction((wanted) => Math.abs(globalThis.pelta.camera(0).zoom - wanted) < 1e-6, zoom);
}

test('clicks and touches are told apart', async () => {
    const stage = await openListening({ hasTouch: true });
    const { mouse, touchscreen } = stage.page;
    await mouse.click(100, 100);
    assert.equal(await heard(stage), 'tap');
    await touchscreen.tap(100, 100);
    assert.equal(await heard(stage), 'tap');
    await untilZoom(stage, 11, () => mouse.dblclick(300, 100));
    assert.equal(await heard(stage), '', 'a double click is no tap');
    await untilZoom(stage, 12, async () => {
        await touchscreen.tap(200, 150);
        await touchscreen.tap(200, 150);
    });
    assert.equal(await heard(stage), '', 'a double tap is no tap');
    await mouse.move(150, 150);
    await mouse.down();
    await stage.page.waitForTimeout(900);
    assert.equal(await stage.run('takeTaps'), 'long', 'while the button is down');
    await mouse.up();
    assert.equal(await heard(stage), '', 'once');
    await mouse.down();
    await mouse.move(190, 150, { steps: 4 });
    await mouse.up();
    assert.equal(await heard(stage), '', 'a drag is no tap');
});

test('while the page is busy a drag is no long press, and a press that is held is one', async () => {
    for (const hasTouch of [false, true]) {
        const stage = await openListening({ hasTouch });
        const session = await stage.page.context().newCDPSession(stage.page);
        /** Sends one step of a finger or of the mouse without waiting until the page has heard of it. */
        const send = (step, x) =>
            hasTouch
                ? session.send('Input.dispatchTouchEvent', {
                      type: { press: 'touchStart', move: 'touchMove', lift: 'touchEnd' }[step],
                      touchPoints: step === 'lift' ? [] : [{ x, y: 150, id: 0 }],
                  })
                : session.send('Input.dispatchMouseEvent', {
                      type: { press: 'mousePressed', move: 'mouseMoved', lift: 'mouseReleased' }[step],
                      x, y: 150, button: 'left', buttons: step === 'lift' ? 0 : 1, clickCount: 1,
                  });
        /** Presses, keeps the page from anything else for 0.6 s, moves meanwhile, and lifts a second later. */
        const press = async (places) => {
            await send('press', 150);
            const busy = stage.page.evaluate(() => {
                for (const end = performance.now() + 600; performance.now() < end; );
            });
            await stage.page.waitForTimeout(100);
            const moves = places.map((x) => send('move', x));
            await Promise.all([busy, ...moves]);
            await stage.page.waitForTimeout(1000);
            await send('lift', places.at(-1) ?? 150);
            return heard(stage);
        };
        for (let round = 0; round < 3; ++round) {
            assert.equal(await press([165, 180, 210]), '', 'a drag');
            assert.equal(await press([]), 'long', 'held still');
        }
    }
});

test('a tap of two fingers zooms out', async () => {
    const stage = await openListening({ hasTouch: true });
    const session = await stage.page.context().newCDPSession(stage.page);
    const touchPoints = [{ x: 150, y: 150, id: 0 }, { x: 250, y: 150, id: 1 }];
    await untilZoom(stage, 9, async () => {
        await session.send('Input.dispatchTouchEvent', { type: 'touchStart', touchPoints });
        await session.send('Input.dispatchTouchEvent', { type: 'touchEnd', touchPoints: [] });
    });
    assert.equal(await heard(stage), '');
});

test('the topmost shape is asked, and when it declines the map is told', async () => {
    const stage = await openListening();
    const circle = (fill) => ['addCircle', { at: [0, 0], radius: 3000, fill }];
    const results = await stage.act([
        circle([0, 0, 255]),
        circle([255, 0, 0]),
        ['addPolyline', { through: [[0.05, -0.1], [0.05, 0.1]], width: 2 }],
    ]);
    const [lower, upper, line] = results;
    await stage.run('makeTouchable', lower, 'lower', true);
    await stage.run('makeTouchable', upper, 'upper', false);
    await stage.run('makeTouchable', line, 'line', true);
    const { page } = stage;
    await page.mouse.click(200, 150);
    assert.equal(await heard(stage), 'upper tap');
    await stage.act([['setZIndex', lower, 1]]);
    await page.mouse.click(200, 150);
    assert.equal(await heard(stage), 'lower');
    await stage.act([['setVisible', lower, false]]);
    await page.mouse.click(200, 150);
    assert.equal(await heard(stage), 'upper tap');
    const { y } = await stage.point(0.05, 0);
    await page.mouse.click(230, y - 21);
    assert.equal(await heard(stage), 'line', 'within 22 points of a thin line');
    await page.mouse.click(230, y - 26);
    assert.equal(await heard(stage), 'tap');
});

test('zoom buttons act by mouse and by keyboard, and take no taps from the map', async () => {
    const stage = await openListening();
    await stage.run('showControls', 0);
    await stage.page.waitForSelector('[aria-label="Zoom in"]', { state: 'visible' });
    await untilZoom(stage, 11, () => click(stage, 'Zoom in'));
    await untilZoom(stage, 10, () => click(stage, 'Zoom out'));
    await untilZoom(stage, 12, async () => {
        await click(stage, 'Zoom in');
        await click(stage, 'Zoom in');
    });
    await stage.act([['look', 0, 0, 0, 10, 0, 0]]);
    for (const [label, key, zoom] of [['Zoom in', 'Enter', 11], ['Zoom out', ' ', 10]]) {
        const button = stage.page.locator(`[aria-label="${label}"]`);
        assert.equal(await button.getAttribute('role'), 'button');
        assert.equal(await button.getAttribute('tabindex'), '0');
        await button.focus();
        await untilZoom(stage, zoom, () => stage.page.keyboard.press(key));
    }
    assert.equal(await heard(stage), '');
});

test('the location button leads back to the user', async () => {
    const stage = await openListening({
        geolocation: { latitude: 0.02, longitude: 0.03 },
        permissions: ['geolocation'],
    });
    await stage.run('showControls', 0);
    await stage.run('followUser', 0);
    const isAtUser = () => {
        const { latitude, longitude } = globalThis.pelta.camera(0);
        return Math.abs(latitude - 0.02) < 1e-6 && Math.abs(longitude - 0.03) < 1e-6;
    };
    await stage.page.waitForFunction(isAtUser);
    await stage.page.mouse.move(200, 100);
    await stage.page.mouse.down();
    await stage.page.mouse.move(260, 160, { steps: 8 });
    await stage.page.waitForTimeout(300); // Released at rest, the map does not run on.
    await stage.page.mouse.up();
    await stage.page.waitForFunction((text) => !eval(`(${text})()`), isAtUser.toString());
    await click(stage, 'My location');
    await stage.page.waitForFunction(isAtUser);
});

test('ornaments keep their corners, and are crisp', async () => {
    for (const scale of [1, 2]) {
        const stage = await studio.open({ scale });
        await stage.openMap();
        await stage.run('showControls', 0);
        const corners = [
            // frame, inset, top of the zoom control, edges that the corner ornaments keep [right, bottom]
            { size: [400, 300], inset: 0, zoomTop: 109.5, right: 400, bottom: 300 },
            { size: [360, 261], inset: 0, zoomTop: 90, right: 360, bottom: 261 },
            { size: [360, 261], inset: 20, zoomTop: 70, right: 340, bottom: 241 },
        ];
        for (const { size, inset, zoomTop, right, bottom } of corners) {
            const turn = 20 + inset / 10 + size[0] / 100;
            await stage.act([
                ['setFrame', 0, 0, 0, ...size],
                ['setInset', 0, inset, inset, inset, inset],
                ['look', 0, 0, 0, 10, 0, turn],
            ]);
            const plus = await place(stage, 'Zoom in');
            const minus = await place(stage, 'Zoom out');
            const location = await place(stage, 'My location');
            const zoomX = right - 48;
            const onPixel = (value) => Math.round(value * scale) / scale;
            assert.deepEqual(plus, { x: zoomX, y: onPixel(zoomTop), width: 40, height: 40 });
            assert.deepEqual(minus, { x: zoomX, y: onPixel(zoomTop) + 41, width: 40, height: 40 });
            assert.deepEqual(location, { x: zoomX, y: bottom - 48, width: 40, height: 40 });
            const compass = await place(stage, 'Compass, turns the map to north');
            assertNear(compass.x + compass.width / 2, right - 28, 0.01, 'compass');
            assertNear(compass.y + compass.height / 2, inset + 28, 0.01, 'compass');
        }
        const picture = await stage.picture(`ornaments-${scale}x`);
        const minus = await place(stage, 'Zoom out');
        const dark = picture.find([38, 49, 61], [minus.x, minus.y, minus.x + 40, minus.y + 40], 8);
        assert.deepEqual([dark.top - minus.y, dark.bottom - minus.y], [18, 20], 'two points high, edges on pixels');
        assert.ok(isNear(picture.at(minus.x + 5, minus.y + 20), [255, 255, 255]), 'the card is opaque');

        await stage.run('setZoomOutEnabled', 0, false);
        const plus = await place(stage, 'Zoom in');
        await stage.page.mouse.move(plus.x + 20, plus.y + 20);
        await stage.page.mouse.down();
        await stage.page.waitForTimeout(100);
        const pressed = await stage.picture(`ornaments-pressed-${scale}x`);
        assert.ok(isNear(pressed.at(plus.x + 6, plus.y + 20), [230, 234, 239], 4), 'pressed');
        assert.ok(isNear(pressed.at(minus.x + 20, minus.y + 19), [195, 202, 211], 4), 'disabled');
        await stage.page.mouse.up();
    }
});

const pin = (x, y, more) => ({
    at: [-y * degree, x * degree], width: 20, height: 20, anchor: [0.5, 0.5], color: [0, 0, 255], spot: [255, 0, 0], ...more,
});
const line = (y, more) => ({ through: [[-y * degree, -150 * degree], [-y * degree, 150 * degree]], ...more });

test('of shapes that crowd together the one on top is asked, or the nearest', async () => {
    const stage = await openListening();
    const cases = [
        [[['addMarker', pin(2, 0)], ['addMarker', pin(15, 0)]], '0', '1', 'the lower holds the point'],
        [[['addMarker', pin(0, 0)], ['addMarker', pin(5, 0)]], '1', '1', 'both hold it'],
        [[['addMarker', pin(12, 0)], ['addMarker', pin(-14, 0)]], '0', '1', 'neither holds it'],
        [[['addMarker', pin(15, 0)], ['addPolyline', line(2)]], '1', '0', 'line nearer'],
        [[['addMarker', pin(0, -22, { title: 'title' })], ['addMarker', pin(14, 0)]], '0', '1', 'the title holds it'],
        [[['addMarker', pin(15, 0)], ['addCircle', { at: [0, 0], radius: 3000, globalZIndex: 3000 }]], '0', '1', 'areas last'],
    ];
    for (const [commands, nearest, topmost, what] of cases) {
        const shapes = await stage.act(commands);
        for (const [index, shape] of shapes.entries()) {
            await stage.run('makeTouchable', shape, String(index), true);
        }
        for (const [isPreferred, wanted] of [[true, nearest], [false, topmost]]) {
            await stage.run('preferNearest', 0, isPreferred);
            await stage.page.mouse.click(200, 150);
            assert.equal(await heard(stage), wanted, `${what}, ${isPreferred ? 'nearest' : 'topmost'}`);
        }
        await stage.act(shapes.map((shape) => ['removeShape', shape]));
    }
});

test('the pointer is a hand over what takes taps, and a tap in the middle of a hole goes to the map', async () => {
    const stage = await openListening();
    const square = (half) => [[-half, -half], [-half, half], [half, half], [half, -half]].map((pair) => pair.map((each) => each * degree));
    const [area] = await stage.act([['addPolygon', { ring: square(80), holes: [square(40)] }]]);
    const hands = async (places) => {
        for (const [x, y, isHand, what] of places) {
            await stage.page.mouse.move(x, y);
            const cursor = await stage.page.evaluate(([left, top]) => getComputedStyle(document.elementFromPoint(left, top)).cursor, [x, y]);
            assert.equal(cursor === 'pointer', isHand, `${what}: ${cursor}`);
        }
    };
    await hands([[260, 150, false, 'an area that takes no taps']]);
    await stage.run('makeTouchable', area, 'area', true);
    await stage.run('showControls', 0);
    await stage.page.waitForTimeout(100);
    const button = await place(stage, 'Zoom in');
    await hands([
        [260, 150, true, 'area'], [200, 150, false, 'hole'], [237, 150, false, 'hole near its edge'], [243, 150, true, 'area again'],
        [290, 150, false, 'outside'], [button.x + 5, button.y + 5, true, 'button'], [100, 20, false, 'map'],
    ]);
    for (const [x, wanted] of [[260, 'area'], [200, 'tap'], [210, 'tap'], [225, 'area']]) {
        await stage.page.mouse.click(x, 150);
        assert.equal(await heard(stage), wanted, `at ${x}`);
    }
    await stage.page.mouse.move(260, 150);
    await stage.page.mouse.down();
    await stage.page.mouse.move(270, 160, { steps: 3 });
    const dragging = await stage.page.evaluate(() => getComputedStyle(document.elementFromPoint(270, 160)).cursor);
    assert.notEqual(dragging, 'pointer', 'while the map is dragged');
    await stage.page.mouse.up();
});
