// What `cmake --install` lays down for the web: an application elsewhere finds it and becomes a page.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { rmSync } from 'node:fs';
import path from 'node:path';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { openPage, startBrowser } from '../../apps/viewer/tools/browser.mjs';
import { serve } from '../../apps/viewer/tools/serve.mjs';
import { Picture } from './support/picture.mjs';

const root = fileURLToPath(new URL('../..', import.meta.url));
const build = path.resolve(root, process.env.PELTA_WEB_BUILD ?? 'build/web');
const work = path.join(build, 'installed-tree');
const markerRed = [229, 57, 75];

const cmake = (...args) =>
    execFileSync('cmake', args, { encoding: 'utf8', env: { ...process.env, NODE_PATH: '/usr/share/nodejs' } });

/** Builds the first program against the installed tree; answers the folder of its page. */
function buildFirstProgram() {
    const installed = path.join(work, 'prefix');
    const program = path.join(work, 'first_program');
    rmSync(installed, { recursive: true, force: true });
    cmake('--install', build, '--prefix', installed);
    cmake(
        '-S', path.join(root, 'examples/first_program'), '-B', program, '-G', 'Ninja', '-DCMAKE_BUILD_TYPE=Release',
        '-DCMAKE_TOOLCHAIN_FILE=/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake',
        `-Dpelta_DIR=${path.join(installed, 'lib/cmake/pelta')}`,
        `-DPELTA_MAPLIBRE_DIR=${path.join(root, 'node_modules/maplibre-gl/dist')}`,
    );
    cmake('--build', program);
    return path.join(program, 'site');
}

/** Takes pictures until one passes, for at most half a minute; answers the last one. */
async function pictureOnceIt(passes, page) {
    for (const start = Date.now(); ; await page.waitForTimeout(200)) {
        const picture = await Picture.decode(page, await page.screenshot());
        if (passes(picture) || Date.now() - start > 30_000) {
            return picture;
        }
    }
}

test('the first program, built against the installed tree, is a page with its marker on Seoul', async () => {
    const server = await serve(buildFirstProgram());
    const browser = await startBrowser();
    try {
        const page = await openPage(browser, { width: 400, height: 300, scale: 1 });
        await page.goto(server.address);
        const markerIn = (picture) => picture.find(markerRed, [185, 100, 215, 151], 40);
        const picture = await pictureOnceIt((candidate) => markerIn(candidate).count > 100, page);
        const marker = markerIn(picture);
        assert.ok(marker.count > 100, 'a red marker stands on the middle of the page');
        assert.ok(Math.abs(marker.x - 200) < 1, `the marker is centred on its position: ${marker.x}`);
    } finally {
        await browser.close();
        await server.close();
    }
});
