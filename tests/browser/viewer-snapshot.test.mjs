// The snapshot command: pictures, exit codes and messages.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { chmodSync, existsSync, mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { openPage, startBrowser } from '../../apps/viewer/tools/browser.mjs';
import { isNear, Picture } from './support/picture.mjs';

const root = fileURLToPath(new URL('../..', import.meta.url));
const site = path.resolve(root, process.env.PELTA_WEB_BUILD ?? 'build/web', 'site');
const command = path.join(root, 'apps/viewer/tools/snapshot.mjs');

let folder;
let browser;
let page;

before(async () => {
    folder = mkdtempSync(path.join(tmpdir(), 'snapshot-'));
    browser = await startBrowser();
    page = await openPage(browser, { width: 100, height: 100, scale: 1 });
});

after(async () => {
    await browser?.close();
    rmSync(folder, { recursive: true });
});

/** Runs a program in the folder of the test and answers what came out of it. */
function outcome(program, words, environment = {}) {
    return new Promise((resolve, reject) => {
        const child = spawn(program, words, { cwd: folder, env: { ...process.env, ...environment } });
        const result = { out: '', err: '' };
        child.stdout.on('data', (text) => (result.out += text));
        child.stderr.on('data', (text) => (result.err += text));
        child.on('error', reject).on('close', (code) => resolve({ ...result, code }));
    });
}

const snapshot = (...words) => outcome(process.execPath, [command, '--site', site, ...words]);

function write(name, content) {
    mkdirSync(path.dirname(path.join(folder, name)), { recursive: true });
    writeFileSync(path.join(folder, name), typeof content === 'string' ? content : JSON.stringify(content));
}
const readPicture = (name) => Picture.decode(page, readFileSync(path.join(folder, name)));
const collection = (...features) => ({ type: 'FeatureCollection', features });
const feature = (properties, type, coordinates) => ({ type: 'Feature', properties, geometry: { type, coordinates } });
const greenPin = feature({ 'marker-color': '#00aa44' }, 'Point', [127.8, 36]);
const green = [0, 170, 68];

test('draws every kind of shape in its own colours, at the asked size and camera, and nothing else', async () => {
    const ground = { version: 8, name: 'white', sources: {}, layers: [{ id: 'g', type: 'background', paint: { 'background-color': '#fff' } }] };
    write('white.json', ground);
    write('Ünï 한글 #1%.geojson', collection(
        greenPin,
        feature({ radius: 20000, fill: '#0000ff', 'fill-opacity': 0.5, 'stroke-width': 0 }, 'Point', [128.8, 36]),
        feature({ stroke: '#ff0000', 'stroke-width': 8 }, 'LineString', [[126.5, 35.5], [129, 35.5]]),
        feature({ fill: '#ffcc00', 'fill-opacity': 1, stroke: '#800080', 'stroke-width': 6 }, 'Polygon',
            [[[126.8, 36.2], [127.2, 36.2], [127.2, 36.5], [126.8, 36.5], [126.8, 36.2]],
                [[126.9, 36.3], [127.1, 36.3], [127, 36.4], [126.9, 36.3]]]),
        feature({ 'marker-color': '#000000', visibleMinZoom: 9 }, 'Point', [127.8, 36.3]),
    ));
    const { code, err } = await snapshot('Ünï 한글 #1%.geojson', '-o', 'all.png', '--camera', '36,127.8,7', '--style', 'white.json',
        '--size', '640x480', '--scale', '2');
    assert.equal(err, 'Ünï 한글 #1%.geojson: feature 3: 1 hole is left out: areas are drawn by their outer ring\n');
    assert.equal(code, 0);

    const picture = await readPicture('all.png');
    assert.deepEqual([picture.width, picture.height], [1280, 960]);
    const pin = picture.find(green, undefined, 0);
    assert.ok(pin.count > 800 && Math.abs(pin.x - 640) < 2, JSON.stringify(pin));
    assert.ok(Math.abs(picture.find([0, 122, 49], undefined, 30).bottom - 480) <= 2, 'the tip stands on the coordinate');
    const pixels = 2 * (512 * 2 ** 7) / 360; // A degree of longitude.
    for (const [what, [x, y], color] of [
        ['circle', [640 + pixels, 480], [128, 128, 255]],
        ['area', [640 - 0.93 * pixels, 480 - 0.32 * pixels], [255, 204, 0]],
        ['its hole is filled', [640 - 0.8 * pixels, 480 - 0.43 * pixels], [255, 204, 0]],
        ['outline', [640 - pixels, 480 - 0.43 * pixels], [128, 0, 128]],
        ['line', [640, 480 + 0.62 * pixels], [255, 0, 0]],
        ['ground', [100, 900], [255, 255, 255]],
        ['no ornament', [20, 20], [255, 255, 255]],
        ['hidden below its zoom', [640, 480 - 0.37 * pixels - 30], [255, 255, 255]],
    ]) {
        assert.ok(isNear(picture.at(x, y), color, 6), `${what}: ${picture.at(x, y)}`);
    }
});

test('tells what is bad, draws what is good, and exits with 1', async () => {
    const noGeometry = { type: 'Feature', properties: {} };
    const good = JSON.stringify(greenPin);
    const cases = [
        ['features.geojson', collection(noGeometry, greenPin, feature({}, 'Point', [200, 0])), true,
            ['features.geojson: feature 0: it has no geometry', 'features.geojson: feature 2: position 0: longitude 200 is outside']],
        ['cut.geojson', `{"type":"FeatureCollection","features":[${good},{"type":"Fea`, true,
            ['cut.geojson: feature 1: not JSON at line 1, column']],
        ['deep.geojson', `{"type":"FeatureCollection","features":[${good},{"geometry":${'['.repeat(1e7)}`, true,
            ['deep.geojson: feature 1: not JSON at line 1, column']],
        ['empty.geojson', '', false, ['empty.geojson: the file is empty']],
    ];
    for (const [name, content, isDrawn, messages] of cases) {
        write(name, content);
        const { code, err } = await snapshot(name, '-o', `${name}.png`, '--fit', '--size', '320x240');
        const lines = err.trimEnd().split('\n');
        assert.equal(lines.length, messages.length, err);
        messages.forEach((message, i) => assert.ok(lines[i].startsWith(message), lines[i]));
        assert.equal(code, 1);
        const { count } = (await readPicture(`${name}.png`)).find(green, undefined, 0);
        assert.equal(count > 150, isDrawn, `${name}: ${count} pixels of the good pin`);
    }

    write('good.geojson', collection(greenPin));
    const noStyle = await snapshot('good.geojson', '-o', 'none.png', '--style', 'http://127.0.0.1:9/style.json');
    assert.match(noStyle.err, /127\.0\.0\.1:9\/style\.json/);
    assert.equal(noStyle.code, 1);
    write('styles/$& 한글.json', '{"version": 8,');
    const badStyle = await snapshot('good.geojson', '-o', 'none.png', '--style', 'styles/$& 한글.json');
    assert.match(badStyle.err, /^style document styles\/\$& 한글\.json: /);
    assert.equal(badStyle.code, 1);
});

test('what is wrong with the arguments is told by name before anything is drawn; help is no wrong use', async () => {
    write('good.geojson', collection(greenPin));
    const usage = /usage: snapshot IN\.geojson -o OUT\.png/;
    const drawn = ['good.geojson', '-o', 'wrong.png'];
    for (const [code, message, ...words] of [
        [2, /^IN\.geojson is needed/],
        [2, /^-o OUT\.png is needed/, 'good.geojson'],
        [2, /^IN\.geojson is needed/, 'other.geojson', ...drawn],
        [2, /--colour/, ...drawn, '--colour', 'red'],
        [2, /^--size 0x100: /, ...drawn, '--size', '0x100'],
        [2, /^--scale -1: /, ...drawn, '--scale', '-1'],
        [2, /^--camera -95,127,7: latitude must be a number from -90 to 90\n/, ...drawn, '--camera', '-95,127,7'],
        [2, /^--camera 1,2,3,,5: tilt must be a number from 0 to 60\n/, ...drawn, '--camera', '1,2,3,,5'],
        [2, /^--camera 1,2,0x3: zoom must be/, ...drawn, '--camera', '1,2,0x3'],
        [2, /^--camera 1,2: LAT,LNG,ZOOM\[,TILT\[,BEARING\]\] is needed\n/, ...drawn, '--camera', '1,2'],
        [2, /^--camera 1,2,3,4,5,6: LAT,LNG/, ...drawn, '--camera', '1,2,3,4,5,6'],
        [1, /^missing\.geojson: cannot be read \(ENOENT\)\n$/, 'missing.geojson', '-o', 'wrong.png'],
        [1, /^missing\.json: cannot be read \(ENOENT\)\n$/, ...drawn, '--style', 'missing.json'],
        [1, /^missing\/wrong\.png: cannot be written \(ENOENT\)\n$/, 'good.geojson', '-o', 'missing/wrong.png'],
        [1, /^good\.geojson\/wrong\.png: cannot be written \(ENOTDIR\)\n$/, 'good.geojson', '-o', 'good.geojson/wrong.png'],
        [1, /^\.: cannot be written \(EISDIR\)\n$/, 'good.geojson', '-o', '.'],
    ]) {
        const { err, ...rest } = await outcome(process.execPath, [command, '--site', 'no page', ...words]);
        assert.match(err, message);
        assert.equal(usage.test(err), code === 2, err);
        assert.deepEqual(rest, { out: '', code }, words.join(' '));
        assert.equal(existsSync(path.join(folder, 'wrong.png')), false);
    }
    const help = await snapshot('--help');
    assert.match(help.out, /^usage: snapshot/);
    assert.deepEqual([help.code, help.err], [0, '']);
});

test('./run helps and refuses without building, and builds nothing but the page that it serves', async () => {
    write('good.geojson', collection(greenPin));
    // A build that writes down what it is asked for, and fails.
    write('bin/cmake', '#!/bin/sh\nif [ "$1" = --build ]; then echo "$@" >>"$LOG"; exit 1; fi\n');
    chmodSync(path.join(folder, 'bin/cmake'), 0o755);
    const log = path.join(folder, 'builds');
    const page = '--build --preset web --target viewer_page\n';
    for (const [code, words, message, builds = ''] of [
        [0, 'snapshot --help', /^usage: snapshot IN\.geojson/],
        [0, 'demo -h', /^usage: demo/],
        [2, 'snapshot good.geojson -o out.png --camera 1,2', /^--camera 1,2: /],
        [1, 'snapshot good.geojson -o missing/out.png', /^missing\/out\.png: cannot be written/],
        [1, 'demo --screenshot missing/out.png', /^missing\/out\.png: cannot be written/],
        [1, 'snapshot good.geojson -o out.png', /^==>/, page],
        [1, 'demo --screenshot out.png', /^==>/, page],
    ]) {
        writeFileSync(log, '');
        const { out, err, ...rest } = await outcome(path.join(root, 'run'), words.split(' '),
            { LOG: log, PATH: `${path.join(folder, 'bin')}:${process.env.PATH}` });
        assert.match(out + err, message, words);
        assert.deepEqual({ ...rest, builds: readFileSync(log, 'utf8') }, { code, builds }, words);
    }
});
