// Clusters as they are seen: badges with the number of their items, which split when the map is zoomed.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { useStudio } from './support/page.mjs';

const green = [102, 153, 0];
const blue = [0, 153, 204];
const white = [255, 255, 255];
/** Degrees of one point at zoom 10 on the equator. */
const degree = 360 / (512 * 2 ** 10);

const studio = useStudio();

/** Items close around a place `x` points right of the middle at zoom 10; the first one stands on it. */
const crowd = (count, x) => Array.from({ length: count }, (_, i) => [i * 0.05 * degree, (x + i * 0.05) * degree]);

/** Asserts that a badge stands on a position, its bottom centre at (x, 150), with a count in its middle. */
function assertBadge(picture, color, x, diameter) {
    const box = [x - 30, 95, x + 30, 160];
    const badge = picture.find(color, box, 20);
    assert.ok(badge.count > 400 * picture.scale ** 2, `badge at ${x}`);
    const edges = { left: x - diameter / 2, right: x + diameter / 2, top: 150 - diameter, bottom: 150 };
    for (const [edge, wanted] of Object.entries(edges)) {
        assert.ok(Math.abs(badge[edge] - wanted) <= 3, `${edge} of the badge at ${x}: ${badge[edge]}, not ${wanted}`);
    }
    const count = picture.find(white, [x - 14, 150 - diameter + 8, x + 14, 142], 60);
    assert.ok(count.count > 40 && Math.abs(count.x - x) < 2, `the count stands in the middle of the badge at ${x}`);
}

test('a badge shows the count of its items, splits when zoomed and goes with its manager', async () => {
    const stage = await studio.open({ scale: 2 });
    const map = await stage.openMap();
    await stage.act([['showClusters', map, [...crowd(40, -30), ...crowd(20, 30)]]]);
    await stage.page.waitForFunction(() => globalThis.pelta.clusterCounts().length === 1);
    await stage.act([['look', map, 0, 0, 10.01, 0, 0]]);
    assert.deepEqual(await stage.run('clusterCounts'), [60]);
    assertBadge(await stage.picture('cluster-one'), green, 170, 45);

    await stage.act([['ease', map, 0, 0, 12, 0, 0]]);
    assert.deepEqual(await stage.run('clusterCounts'), [40, 20]);
    const split = await stage.picture('cluster-split');
    assertBadge(split, blue, 80, 42);
    assertBadge(split, blue, 320, 42);
    assert.equal(split.find(green, undefined, 20).count, 0, 'nothing is left of the badge of all');

    await stage.act([['releaseClusters']]);
    assert.equal((await stage.picture('cluster-none')).find(blue, undefined, 20).count, 0);
});
