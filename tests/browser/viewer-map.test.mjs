// What a person does with the viewer's map: tap, hold, group points, switch settings, share the address.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { waitUntilReady } from '../../apps/viewer/tools/browser.mjs';
import { pictureOf } from './support/page.mjs';
import { isNear } from './support/picture.mjs';
import { useViewer } from './support/viewer.mjs';

const clusterColors = [[0, 153, 204], [102, 153, 0], [255, 136, 0], [204, 0, 0], [153, 51, 204]];
const viewer = useViewer();
const { open } = viewer;

/** The middle of the map, on the page. */
async function middleOf(page) {
    const box = await page.locator('#pelta').boundingBox();
    return [box.x + box.width / 2, box.y + box.height / 2];
}

/** Takes pictures until one satisfies the condition, which is then the answer. */
async function pictureWhere(page, name, condition) {
    for (let attempt = 0; ; attempt += 1) {
        const picture = await pictureOf(page, name);
        if (condition(picture) || attempt === 40) {
            return picture;
        }
        await page.waitForTimeout(250);
    }
}

test('a tap on a marker opens its name above it with the tip on the pin, the next one closes it', async () => {
    const page = await open('?camera=36.3504,127.3845,9');
    const [x, y] = await middleOf(page);
    const before = await pictureOf(page, 'viewer-marker');
    const pin = before.find([229, 57, 75], [x - 14, y - 40, x + 14, y + 4], 70);
    await page.mouse.click(x, y - 14);
    const isOpen = (picture) => picture.find([255, 255, 255], [x - 20, pin.top - 40, x + 20, pin.top - 4], 6).count > 300;
    assert.ok(!isOpen(before));
    const after = await pictureWhere(page, 'viewer-marker-name', isOpen);
    assert.ok(isOpen(after), 'the bubble is open above the pin');
    const bubble = after.find([255, 255, 255], [x - 40, pin.top - 60, x + 40, pin.top + 4], 6);
    assert.ok(Math.abs(bubble.x - x) < 2, `its middle stands over the pin: ${bubble.x}, ${x}`);
    assert.ok(Math.abs(bubble.bottom - pin.top) <= 4, `its tip is on the pin: ${bubble.bottom}, ${pin.top}`);
    await page.waitForTimeout(400); // Two taps in quick succession would be a double tap.
    await page.mouse.click(x, y - 14);
    assert.ok(!isOpen(await pictureWhere(page, 'viewer-marker-closed', (picture) => !isOpen(picture))));
    await page.close();
});

test('a long press tells the coordinate in all systems, each to be copied, and goes along with the map', async () => {
    const page = await open('?camera=37.5665,126.978,10');
    await page.context().grantPermissions(['clipboard-read', 'clipboard-write']);
    const [x, y] = await middleOf(page);
    await page.mouse.move(x, y);
    await page.mouse.down();
    const copy = page.getByRole('button', { name: /^Copy / });
    await copy.first().waitFor();
    await page.mouse.up();
    assert.deepEqual(await copy.evaluateAll((buttons) => buttons.map((button) => button.getAttribute('aria-label'))), [
        'Copy WGS84 37.566500, 126.978000',
        'Copy KATEC 309913.21, 552080.32',
        'Copy TM 197989.73, 451586.90',
        'Copy GRS80 TM 198056.37, 451885.03',
        'Copy UTM-K 953901.17, 1952032.08',
    ]);
    const picture = await pictureWhere(page, 'viewer-coordinates', (shown) => isNear(shown.at(x, y - 40), [255, 255, 255]));
    assert.ok(isNear(picture.at(x, y - 40), [255, 255, 255]), 'the card stands above the place');

    await copy.nth(1).focus();
    await page.keyboard.press('Enter');
    assert.match(await page.evaluate(() => navigator.clipboard.readText()), /^309913\.21, 552080\.32$/);
    assert.match(await page.locator('#notice').textContent(), /^Copied 309913/);

    const box = await copy.first().boundingBox();
    await page.getByRole('button', { name: 'Zoom out' }).click();
    await page.waitForURL(/camera=37\.\d+,126\.\d+,9&?/);
    const moved = await copy.first().boundingBox();
    assert.ok(Math.hypot(moved.x - box.x, moved.y - box.y) < 2, 'the middle of the map stays, and so do the buttons');
    await page.mouse.click(x + 300, y + 200);
    await page.waitForFunction(() => !document.querySelector('[aria-label^="Copy "]'));
    await page.close();
});

test('all places of the world come in clusters, and a tap on one shows its items', async () => {
    const page = await open('?camera=36.5,127.8,6&cluster');
    assert.match(await page.locator('#documents').textContent(), /Clusters135233 points/);
    const picture = await pictureOf(page, 'viewer-clusters');
    const badges = (shown) => clusterColors.reduce((count, color) => count + shown.find(color, undefined, 4).count, 0);
    assert.ok(badges(picture) > 3000, `badges are drawn: ${badges(picture)}`);

    const badge = picture.find(clusterColors[0], [340, 20, 1200, 780], 4);
    const column = Array.from({ length: 800 }, (_, y) => y).find((y) => isNear(picture.at(badge.left + 2, y), clusterColors[0], 4));
    await page.mouse.click(badge.left + 12, column);
    await page.waitForURL((url) => Number(url.searchParams.get('camera').split(',')[2]) > 6.5);
    await page.waitForFunction(() => document.documentElement.dataset.state === 'ready');
    await pictureOf(page, 'viewer-cluster-split');

    await page.getByLabel('In clusters').uncheck();
    await page.waitForURL((url) => !url.searchParams.has('cluster'));
    assert.doesNotMatch(await page.locator('#documents').textContent(), /Clusters/);
    await page.close();
});

test('settings of the panel reach the map, by mouse and keyboard', async () => {
    const page = await open('?camera=36,128,7');
    await page.locator('summary').focus();
    await page.keyboard.press('Enter');
    const zoomIn = page.getByRole('button', { name: 'Zoom in' });
    assert.ok(await zoomIn.isVisible());
    await page.getByLabel('Zoom control').focus();
    await page.keyboard.press('Space');
    await zoomIn.waitFor({ state: 'hidden' });
    await page.getByLabel('Zoom control').check();
    await zoomIn.waitFor();

    const location = page.getByRole('button', { name: 'My location', exact: true });
    const before = await location.boundingBox();
    await page.getByLabel('Inset').fill('60');
    await page.waitForFunction((x) => document.querySelector('[aria-label="My location"][role=button], button[aria-label="My location"]')
        .getBoundingClientRect().x < x - 50, before.x);
    const after = await location.boundingBox();
    assert.deepEqual([before.x - after.x, before.y - after.y].map(Math.round), [60, 60]);

    await page.getByLabel('Zoom to').fill('7');
    await page.getByLabel('Zoom to').blur();
    await zoomIn.click();
    await page.waitForTimeout(600);
    assert.match(page.url(), /camera=[\d.]+,[\d.]+,7(&|$)|^[^?]*\?camera=36,128,7$/);
    await pictureOf(page, 'viewer-settings');
    await page.close();
});

test('the location button shows where the device is', async () => {
    const context = await viewer.browser.newContext({
        viewport: { width: 800, height: 600 }, geolocation: { latitude: 36.5, longitude: 128, accuracy: 20 }, permissions: ['geolocation'],
    });
    const page = await context.newPage();
    await waitUntilReady(page, `${viewer.server.address}?camera=36,128,8`);
    await page.getByRole('button', { name: 'My location', exact: true }).click();
    await page.waitForURL(/camera=36\.5,128,/, { timeout: 20_000 });
    assert.equal(await page.locator('[data-switch=userTrackingMode]').inputValue(), '2');
    const [x, y] = await middleOf(page);
    const dot = (await pictureWhere(page, 'viewer-location', (picture) => !isNear(picture.at(x, y), [245, 242, 232], 20))).at(x, y);
    assert.ok(!isNear(dot, [245, 242, 232], 20), `something stands in the middle: ${dot}`);
    await context.close();
});
