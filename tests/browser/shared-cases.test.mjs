// The table of behaviour that all ports share, on the real engine.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { useStudio } from './support/page.mjs';

const studio = useStudio();

/** Runs a case in the page: its steps, each followed by the map's coming to rest or by quiet. */
async function runCase([entry, steps]) {
    const pelta = globalThis.pelta;
    const frame = () => new Promise((resolve) => requestAnimationFrame(resolve));
    /** A step that asks nothing of the map brings no rest; 90 frames and a second without one are taken for that. */
    const rest = async (before) => {
        const start = performance.now();
        const limit = before === 0 ? 20000 : 1500;
        for (let frames = 0; pelta.caseIdleCount() === before && (performance.now() - start < limit || frames < 90); ++frames) {
            await frame();
        }
        await frame();
        await frame();
    };
    pelta.beginCase();
    await rest(0);
    for (let step = 0; step < steps; ++step) {
        const before = pelta.caseIdleCount();
        pelta.runStep(entry, step);
        await rest(before);
    }
    return pelta.endCase();
}

test('cases that every port shows', async (suite) => {
    const stage = await studio.open();
    for (const [entry, { name, steps }] of (await stage.run('sharedCases')).entries()) {
        await suite.test(name, async () => {
            assert.equal(await stage.page.evaluate(runCase, [entry, steps]), '');
        });
    }
});

test('coordinates are drawn where the common arithmetic says', async () => {
    const stage = await studio.open();
    await stage.openMap();
    const error = await stage.run('largestProjectionError', 0, 200, 20261121);
    assert.ok(error <= 0.01, `${error} points off`);
});
