// The page of the browser tests: a server, a browser, and the page with its commands.
import assert from 'node:assert/strict';
import { mkdirSync, writeFileSync } from 'node:fs';
import path from 'node:path';
import { after, afterEach, before } from 'node:test';
import { fileURLToPath } from 'node:url';
import { startBrowser } from '../../../apps/viewer/tools/browser.mjs';
import { serve } from '../../../apps/viewer/tools/serve.mjs';
import { Picture } from './picture.mjs';

const root = fileURLToPath(new URL('../../..', import.meta.url));
export const build = path.resolve(root, process.env.PELTA_WEB_BUILD ?? 'build/web');
const screenshots = path.join(build, 'screenshots');

/** A sea-coloured ground and nothing else. */
export const plainStyle = JSON.stringify({
    version: 8,
    name: 'plain',
    sources: {},
    layers: [{ id: 'ground', type: 'background', paint: { 'background-color': 'rgb(200,220,230)' } }],
});
export const ground = [200, 220, 230];
/** Degrees of one point at zoom 10 on the equator. */
export const degree = 360 / (512 * 2 ** 10);

export const assertNear = (actual, wanted, tolerance, what) =>
    assert.ok(Math.abs(actual - wanted) <= tolerance, `${what}: ${actual} instead of ${wanted}`);

/** A picture of a page, kept under a name for a person to look at. */
export async function pictureOf(page, name) {
    const png = await page.screenshot();
    mkdirSync(screenshots, { recursive: true });
    writeFileSync(path.join(screenshots, `${name}.png`), png);
    return Picture.decode(page, png);
}

/** Server and browser of a test file; after each test its pages must have had no errors. */
export function useStudio() {
    const studio = {};
    before(async () => Object.assign(studio, await openStudio()));
    afterEach(() => assert.deepEqual(studio.takeErrors(), []));
    after(() => studio.close());
    return studio;
}

/** Starts server and browser once for a test file. */
export async function openStudio() {
    const server = await serve(path.join(build, 'tests/browser/page'));
    const browser = await startBrowser();
    const stages = [];
    return {
        browser,
        address: server.address,
        takeErrors: () => stages.splice(0).flatMap((stage) => stage.errors),
        /** Opens the page at a size in points and a number of pixels a point, with settings of the browser context. */
        async open({ width = 400, height = 300, scale = 1, ...context } = {}) {
            const page = await browser.newPage({ viewport: { width, height }, deviceScaleFactor: scale, ...context });
            stages.push(await prepare(page, server.address));
            return stages.at(-1);
        },
        async close() {
            await browser.close();
            await server.close();
        },
    };
}

async function prepare(page, address) {
    const errors = [];
    page.on('pageerror', (error) => errors.push(error.message));
    page.on('console', (message) => {
        if (message.type() === 'error') {
            errors.push(message.text());
        }
    });
    await page.goto(address);
    await page.evaluate(() => globalThis.ready);
    return new Stage(page, errors);
}

/** The page's commands, see app/MapCommands.cpp and app/ShapeCommands.cpp, and what is seen. */
class Stage {
    constructor(page, errors) {
        this.page = page;
        /** What went wrong in the page: messages of its console and uncaught exceptions. */
        this.errors = errors;
    }

    /** Runs one command of the page. */
    run(command, ...values) {
        return this.page.evaluate(([name, list]) => globalThis.pelta[name](...list), [command, values]);
    }

    /** Opens a map over the whole page, looking at (0, 0) at zoom 10, and waits until it rests. */
    async openMap(style = plainStyle, { x = 0, y = 0, width = 400, height = 300 } = {}) {
        const map = await this.run('openMap', x, y, width, height, style);
        await this.run('look', map, 0, 0, 10, 0, 0);
        await this.rest(map);
        return map;
    }

    /** Runs commands, `[name, …values]` each, in one go, and waits until the map rests after them. */
    async act(commands, map = 0) {
        const results = await this.page.evaluate(
            ([list, index]) => {
                globalThis.restCount = globalThis.pelta.state(index).idle;
                return list.map(([name, ...values]) => globalThis.pelta[name](...values));
            },
            [commands, map],
        );
        await this.page.waitForFunction((index) => globalThis.pelta.state(index).idle > globalThis.restCount, map);
        return results;
    }

    /** Waits until the map has come to rest at least once. */
    rest(map = 0) {
        return this.page.waitForFunction((index) => globalThis.pelta.state(index).idle > 0, map);
    }

    /** Waits until a part of the map's state is as wanted. */
    until(name, value, map = 0) {
        return this.page.waitForFunction(
            ([index, key, wanted]) => globalThis.pelta.state(index)[key] === wanted,
            [map, name, value],
        );
    }

    /** Where coordinates are drawn. */
    point(latitude, longitude, map = 0) {
        return this.run('point', map, latitude, longitude);
    }

    picture(name) {
        return pictureOf(this.page, name);
    }
}
