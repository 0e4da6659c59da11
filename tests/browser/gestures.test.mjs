// Gestures on the real engine: what they do to the camera, by which reason, and what switches them off.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { assertNear, openStudio } from './support/page.mjs';

const resetNorth = 2;
const pan = 4;
const pinch = 8;
const rotate = 16;
const zoomIn = 32;
const tilt = 256;

let studio;
before(async () => (studio = await openStudio()));
after(() => studio.close());

/** Drags with a mouse button over a way, in small steps, standing still before the button is lifted. */
async function drag(page, [fromX, fromY], [toX, toY], button = 'left') {
    await page.mouse.move(fromX, fromY);
    await page.mouse.down({ button });
    for (let i = 1; i <= 10; ++i) {
        await page.mouse.move(fromX + ((toX - fromX) * i) / 10, fromY + ((toY - fromY) * i) / 10);
        await page.waitForTimeout(20);
    }
    await page.waitForTimeout(300);
    await page.mouse.up({ button });
}

/** Moves two fingers; `ways` are their starts and ends. */
async function twoFingers(page, ways) {
    const session = await page.context().newCDPSession(page);
    const send = (type, share) =>
        session.send('Input.dispatchTouchEvent', {
            type,
            touchPoints: type === 'touchEnd' ? [] : ways.map(([[x, y], [toX, toY]], id) => ({
                x: x + (toX - x) * share,
                y: y + (toY - y) * share,
                id,
            })),
        });
    await send('touchStart', 0);
    for (let i = 1; i <= 12; ++i) {
        await send('touchMove', i / 12);
        await page.waitForTimeout(20);
    }
    await page.waitForTimeout(300);
    await send('touchEnd', 1);
    await session.detach();
}

/** Runs a gesture, waits until the map rests, and answers the events and the camera. */
async function perform(stage, gesture) {
    const { idle } = await stage.run('state', 0);
    await stage.run('takeEvents', 0);
    await gesture();
    await stage.page.waitForFunction((count) => globalThis.pelta.state(0).idle > count, idle);
    return { events: await stage.run('takeEvents', 0), camera: await stage.run('camera', 0) };
}

/** The bits of all reasons in a line of events. */
const reasonsOf = (events) => [...events.matchAll(/\(a?(\d+)\)/g)].reduce((bits, [, part]) => bits | part, 0);

/** The events are one whole change: will, changing, did, each at least once and in this order. */
const assertWhole = (events) => assert.match(events, /^will\(\S+\)( changing\(\d+\))+ did\(\S+\)$/);

test('a drag moves the map with the pointer', async () => {
    const stage = await studio.open();
    await stage.openMap();
    const grabbed = await stage.point(0.02, -0.05);
    const { events, camera } = await perform(stage, () => drag(stage.page, [200, 150], [260, 120]));
    assertWhole(events);
    assert.equal(reasonsOf(events), pan);
    const moved = await stage.point(0.02, -0.05);
    assertNear(moved.x - grabbed.x, 60, 4, 'x');
    assertNear(moved.y - grabbed.y, -30, 4, 'y');
    assertNear(camera.zoom, 10, 1e-9, 'zoom');
});

test('the wheel zooms about the pointer, a double click by one level', async () => {
    for (const [gesture, reason] of [[(mouse) => mouse.wheel(0, -300), pinch], [(mouse) => mouse.dblclick(300, 100), zoomIn]]) {
        const stage = await studio.open();
        await stage.openMap();
        await stage.page.mouse.move(300, 100);
        const place = await stage.run('coordinate', 0, 300, 100);
        const { events, camera } = await perform(stage, () => gesture(stage.page.mouse));
        assertWhole(events);
        assert.equal(reasonsOf(events), reason);
        assert.ok(camera.zoom > 10.2, `zoom ${camera.zoom}`);
        if (reason === zoomIn) {
            assert.match(events, /^will\(a/, 'animated');
            assertNear(camera.zoom, 11, 1e-6, 'zoom');
        }
        const still = await stage.point(place.latitude, place.longitude);
        assertNear(still.x, 300, 0.5, 'x');
        assertNear(still.y, 100, 0.5, 'y');
    }
});

test('the right button turns and tilts', async () => {
    const stage = await studio.open();
    await stage.openMap();
    const turned = await perform(stage, () => drag(stage.page, [150, 150], [250, 150], 'right'));
    assertWhole(turned.events);
    assert.equal(reasonsOf(turned.events), rotate);
    assert.ok(turned.camera.bearing > 5, `bearing ${turned.camera.bearing}`);
    const tilted = await perform(stage, () => drag(stage.page, [200, 200], [200, 140], 'right'));
    assert.equal(reasonsOf(tilted.events), tilt);
    assertNear(tilted.camera.tilt, 30, 4, 'tilt');
});

test('two fingers zoom, turn and tilt', async () => {
    const stage = await studio.open({ hasTouch: true });
    await stage.openMap();
    const wide = await perform(stage, () =>
        twoFingers(stage.page, [[[180, 150], [100, 150]], [[220, 150], [300, 150]]]));
    assert.ok(reasonsOf(wide.events) & pinch, wide.events);
    assert.ok(wide.camera.zoom > 11.5, `zoom ${wide.camera.zoom}`);
    const turned = await perform(stage, () =>
        twoFingers(stage.page, [[[120, 150], [200, 70]], [[280, 150], [200, 230]]]));
    assert.ok(reasonsOf(turned.events) & rotate, turned.events);
    const tilted = await perform(stage, () =>
        twoFingers(stage.page, [[[150, 200], [150, 120]], [[250, 200], [250, 120]]]));
    assert.ok(reasonsOf(tilted.events) & tilt, tilted.events);
    assert.ok(tilted.camera.tilt > 10, `tilt ${tilted.camera.tilt}`);
});

test('a fling carries on by the deceleration rate, for the same reason', async () => {
    const stage = await studio.open();
    await stage.openMap();
    const fling = async () => {
        await stage.page.mouse.move(100, 150);
        await stage.page.mouse.down();
        for (let x = 100; x <= 200; x += 20) {
            await stage.page.mouse.move(x, 150);
            await stage.page.waitForTimeout(16);
        }
        await stage.page.mouse.up();
    };
    const ways = {};
    for (const rate of [0.998, 0]) {
        await stage.run('setDecelerationRate', 0, rate);
        await stage.run('look', 0, 0, 0, 10, 0, 0);
        const { events } = await perform(stage, fling);
        assertWhole(events);
        assert.equal(reasonsOf(events), pan);
        ways[rate] = (await stage.point(0, 0)).x - 200;
    }
    // The first step only tells a drag from a click.
    assertNear(ways[0], 80, 8, 'without a fling the map stays where it is left');
    assert.ok(ways[0.998] > ways[0] + 2, `with one it goes on: ${ways[0.998]}`);
});

test('gestures that are switched off do nothing, and limits hold', async () => {
    const stage = await studio.open();
    await stage.openMap();
    const all = async () => {
        await drag(stage.page, [200, 150], [260, 120]);
        await drag(stage.page, [150, 150], [250, 100], 'right');
        await stage.page.mouse.wheel(0, -300);
        await stage.page.mouse.dblclick(200, 150);
        await stage.page.waitForTimeout(600);
        return stage.run('camera', 0);
    };
    await stage.run('setGestures', 0, false, false, false, false);
    const still = await all();
    assert.deepEqual([still.latitude, still.longitude, still.tilt, still.bearing], [0, 0, 0, 0]);
    assertNear(still.zoom, 10, 1e-9, 'zoom');
    await stage.run('setGestures', 0, false, false, true, false);
    const turned = await all();
    assert.ok(turned.bearing !== 0 && turned.tilt === 0 && Math.abs(turned.zoom - 10) < 1e-9, JSON.stringify(turned));
    await stage.run('setGestures', 0, true, true, true, true);
    await stage.run('setLimits', 0, 9, 10.4, 20);
    await all();
    const limited = await all();
    assertNear(limited.zoom, 10.4, 1e-6, 'zoom');
    assertNear(limited.tilt, 20, 1e-6, 'tilt');
    assert.deepEqual(stage.errors, []);
});

test('the compass turns the map to north, and moves with the content inset', async () => {
    const stage = await studio.open();
    await stage.openMap();
    for (const [inset, x, y] of [[0, 372, 28], [50, 322, 78]]) {
        await stage.act([['setInset', 0, inset, 0, 0, inset], ['look', 0, 0, 0, 10 + inset / 100, 0, 40]]);
        const { events, camera } = await perform(stage, () => stage.page.mouse.click(x, y));
        assertWhole(events);
        assert.equal(reasonsOf(events), resetNorth);
        assertNear(Math.min(camera.bearing, 360 - camera.bearing), 0, 1e-6, 'bearing');
    }
});

test('a map that is released in the middle of a gesture goes quietly', async () => {
    const stage = await studio.open();
    for (const gesture of [
        () => drag(stage.page, [200, 150], [260, 120]),
        () => stage.page.mouse.wheel(0, -300),
        () => stage.page.mouse.dblclick(200, 150),
        (map) => stage.run('ease', map, 0.1, 0.1, 9, 0, 0),
    ]) {
        const map = await stage.openMap();
        await stage.run('closeAtNextMove', map);
        await gesture(map);
        await stage.page.waitForFunction(() => document.querySelector('canvas.maplibregl-canvas') === null);
    }
    assert.deepEqual(stage.errors, []);
});
