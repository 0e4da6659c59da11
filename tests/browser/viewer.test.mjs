// The viewer page as a person meets it: what it opens with, files that are given to it, and what it says about them.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { pictureOf } from './support/page.mjs';
import { isNear } from './support/picture.mjs';
import { useViewer } from './support/viewer.mjs';

const { open } = useViewer();

/** Where a coordinate is drawn when the map looks at another one, north up, at a zoom level. */
async function projector(page, center, zoom) {
    const box = await page.locator('#pelta').boundingBox();
    const scale = (512 * 2 ** zoom) / 360;
    const y = (latitude) => (Math.log(Math.tan(Math.PI / 4 + (latitude * Math.PI) / 360)) * 180) / Math.PI;
    return ([latitude, longitude]) => [
        box.x + box.width / 2 + (longitude - center[1]) * scale,
        box.y + box.height / 2 - (y(latitude) - y(center[0])) * scale,
    ];
}

const point = (properties, coordinates) => ({ type: 'Feature', properties, geometry: { type: 'Point', coordinates } });
const fileOf = (name, ...features) => ({
    name,
    mimeType: 'application/geo+json',
    buffer: Buffer.from(JSON.stringify({ type: 'FeatureCollection', features })),
});
const texts = (page, list) => page.locator(`#${list} li`).allTextContents();

test('opens on Korea: sea and land, pins on their cities, the dashed line, circles and areas', async () => {
    const page = await open('?camera=36.2,127.9,7.5');
    const place = await projector(page, [36.2, 127.9], 7.5);
    const picture = await pictureOf(page, 'viewer-korea');
    const colorAt = (coordinate) => picture.at(...place(coordinate));

    assert.ok(isNear(colorAt([36.9, 129.75]), [195, 220, 232]), `sea: ${colorAt([36.9, 129.75])}`);
    const land = colorAt([36.75, 128.6]);
    assert.ok(isNear(land, [245, 242, 232], 10), `land: ${land}`);

    for (const [name, city] of [['대전', [36.3504, 127.3845]], ['대구', [35.8714, 128.6014]]]) {
        const [x, y] = place(city);
        const pin = picture.find([229, 57, 75], [x - 11, y - 34, x + 11, y + 4], 70);
        assert.ok(pin.count > 100 && Math.abs(pin.x - x) < 1, `${name}: ${JSON.stringify(pin)} at ${x}, ${y}`);
        assert.ok(Math.abs(pin.bottom - y) <= 2, `the tip of ${name} is at ${pin.bottom}, not at ${y}`);
        const ring = picture.at(x + 16, y);
        assert.ok(ring[2] - ring[0] > 15, `a blue circle lies around ${name}: ${ring}`);
    }

    const [from, to] = [place([36.3504, 127.3845]), place([35.8714, 128.6014])];
    const length = Math.hypot(to[0] - from[0], to[1] - from[1]);
    const isDark = Array.from({ length: Math.floor(length) }, (_, i) =>
        picture.at(from[0] + ((to[0] - from[0]) * i) / length, from[1] + ((to[1] - from[1]) * i) / length)[0] < 110);
    const changes = isDark.filter((dark, i) => i > 0 && dark !== isDark[i - 1]).length;
    assert.ok(changes > 12, `the line to Daegu is dashed: ${changes} changes over ${length} points`);

    assert.deepEqual(await page.locator('#documents span').allTextContents(), ['40 markers, 1 line, 2 areas, 40 circles']);
    assert.match(await page.locator('footer').textContent(), /GeoNames\s+\(CC BY 4\.0\).*Natural Earth.*MapLibre.*Noto/s);
    assert.equal(await page.locator('#banner').isVisible(), false);
    await page.close();
});

test('fits on a telephone', async () => {
    const page = await open('', { width: 360, height: 640, scale: 2 });
    await pictureOf(page, 'viewer-telephone');
    const [map, panel] = [await page.locator('#pelta').boundingBox(), await page.locator('#panel').boundingBox()];
    assert.ok(map.height > 320 && map.y + map.height <= panel.y + 1 && panel.y + panel.height <= 641);
    assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), 360);
    assert.ok(await page.locator('#open').isVisible());
    await page.close();
});

test('shows chosen and dropped files, tells what is wrong in them, and takes nothing in them for markup', async () => {
    const markup = '<img src=x onerror="globalThis.taken = true">';
    const page = await open('?camera=36.2,127.9,7.5');

    await page.setInputFiles('#files', [
        fileOf(`${markup}.geojson`, point({ title: markup, 'marker-color': '#00aa44' }, [127, 36]), point({ fill: markup }, [128, 37])),
        fileOf('second.geojson', point({}, [127.5, 36.5])),
    ]);
    await page.waitForFunction(() => document.getElementById('documents').textContent.includes('second'));
    await page.waitForSelector('html[data-state=ready]');
    assert.deepEqual(await page.locator('#documents li').allTextContents(), [
        `${markup}.geojson2 markers`,
        'second.geojson1 marker',
    ]);
    const [problem] = await texts(page, 'problems');
    assert.ok(problem.startsWith(`${markup}.geojson: feature 1: fill: unknown colour "<img src=x`), problem);
    assert.equal(await page.locator('#banner-text').textContent(), problem);
    assert.equal(await page.locator('#panel li img, #banner img').count(), 0);
    assert.equal(await page.evaluate(() => globalThis.taken), undefined);
    const green = (await pictureOf(page, 'viewer-files')).find([0, 170, 68], undefined, 0);
    assert.ok(green.count > 150, 'the pin has the very colour of its file, and all is in view');

    await page.locator('#banner-close').click();
    assert.equal(await page.locator('#banner').isVisible(), false);

    await page.evaluate(() => {
        const dataTransfer = new DataTransfer();
        dataTransfer.items.add(new File(['{"type":"LineString","coordinates":[[126,36],[127,36.500]]}'], 'line.json'));
        dispatchEvent(new DragEvent('dragover', { dataTransfer, cancelable: true }));
        dispatchEvent(new DragEvent('drop', { dataTransfer, cancelable: true }));
    });
    await page.waitForFunction(() => document.getElementById('documents').textContent === 'line.json1 line');
    assert.deepEqual(await texts(page, 'problems'), []);
    await page.close();
});

test('names bad addresses, data and styles in the banner; the empty map still moves', async () => {
    const cases = [
        ['?camera=95,127,7', /^camera "95,127,7": latitude must be a number from -90 to 90$/, 'address-problems'],
        ['?data=none.geojson', /^none\.geojson: .*404/, 'problems'],
        ['?data=page.js', /^page\.js: not JSON at line 1, column \d/, 'problems'],
        ['?style=none.json', /none\.json.*404/, 'problems'],
        ['?style=page.js', /page\.js/, 'problems'],
    ];
    for (const [query, message, list] of cases) {
        const page = await open(query);
        assert.match(await page.locator('#banner-text').textContent(), message, query);
        assert.match((await texts(page, list))[0], message, query);
        if (query === '?style=none.json') {
            const scaleBar = page.locator('#pelta').getByText(/^\d+ k?m$/);
            const before = await scaleBar.textContent();
            await page.mouse.move(800, 400);
            await page.mouse.wheel(0, -1200);
            await page.waitForFunction((text) => !document.getElementById('pelta').textContent.includes(text), before);
        }
        await page.close();
    }
});
