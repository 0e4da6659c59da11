// Times the library's markers in the browser beside one hand-written symbol layer over the same points, case by case in
// turn, and prints a table. Usage: node bench/browser/run.mjs --site DIR [--pairs N] [COUNT…]
import { chromium } from "playwright-core";
import { serve } from "../../apps/viewer/tools/serve.mjs";

const limitMilliseconds = 120_000;
const panFrames = 200;
const flags = [
    "--no-sandbox", "--use-gl=angle", "--use-angle=swiftshader", "--enable-unsafe-swiftshader",
    "--disable-background-networking", "--disable-component-update", "--disable-sync",
    "--disable-gpu-vsync", "--disable-frame-rate-limit",
];

function parseArguments(words) {
    const settings = { site: "", pairs: 3, counts: [] };
    for (let i = 0; i < words.length; i += 1) {
        if (words[i] === "--site") settings.site = words[(i += 1)] ?? "";
        else if (words[i] === "--pairs") settings.pairs = Number(words[(i += 1)]);
        else settings.counts.push(Number(words[i]));
    }
    if (settings.counts.length === 0) settings.counts = [1000, 3000, 10_000];
    const numbers = [settings.pairs, ...settings.counts];
    if (!settings.site || numbers.some((number) => !Number.isInteger(number) || number < 1)) {
        process.stderr.write("usage: node bench/browser/run.mjs --site DIR [--pairs N] [COUNT…]\n");
        process.exit(2);
    }
    return settings;
}

/// Points over Korea, the same for every run: latitude and longitude in turn.
function pointsOverKorea(count) {
    let state = 20261121;
    const random = () => {
        state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
        return state / 2 ** 32;
    };
    return Array.from({ length: count * 2 }, (_, i) => (i % 2 === 0 ? 33 + 6 * random() : 124 + 8 * random()));
}

async function withLimit(promise) {
    let timer;
    promise.catch(() => {}); // of a browser killed meanwhile
    const limit = new Promise((resolve) => { timer = setTimeout(() => resolve(null), limitMilliseconds); });
    try { return await Promise.race([promise, limit]); } finally { clearTimeout(timer); }
}

/// One run of a page, in a browser of its own that is killed afterwards, however busy it is: milliseconds from add to
/// idle, and the mean frame while panning. null: over the limit.
async function measure(address, coordinates) {
    const machine = await chromium.launchServer({ executablePath: "/usr/bin/chromium", args: flags });
    try {
        const browser = await chromium.connect(machine.wsEndpoint());
        const page = await browser.newPage({ viewport: { width: 800, height: 600 } });
        page.on("pageerror", (error) => process.stderr.write(`${address}: ${error.message}\n`));
        await page.goto(address);
        await page.waitForFunction(() => window.benchmark);
        await page.evaluate(() => window.benchmark.ready);
        const add = await withLimit(page.evaluate(addAll, coordinates));
        return { add, frame: add === null ? null : await withLimit(page.evaluate(pan, panFrames)) };
    } finally {
        await machine.kill();
    }
}

async function addAll(points) {
    const start = performance.now();
    await window.benchmark.add(points);
    return performance.now() - start;
}

async function pan(frames) {
    const nextFrame = () => new Promise((resolve) => requestAnimationFrame(resolve));
    const start = performance.now();
    for (let i = 0; i < frames; i += 1) {
        window.benchmark.panBy(i < frames / 2 ? 2 : -2);
        await nextFrame();
    }
    return (performance.now() - start) / frames;
}

const median = (values) => [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];

function summary(runs, key) {
    const values = runs.map((run) => run[key]);
    if (values.includes(null)) return { text: `over ${limitMilliseconds / 1000} s`, value: null };
    const spread = `${Math.min(...values).toFixed(1)}–${Math.max(...values).toFixed(1)}`;
    return { text: `${median(values).toFixed(1)} (${spread})`, value: median(values) };
}

function printRow(count, what, ours, rival) {
    const ratio = ours.value === null || rival.value === null ? "–" : (ours.value / rival.value).toFixed(2);
    console.log(`| ${count} | ${what} | ${ours.text} | ${rival.text} | ${ratio} |`);
}

const settings = parseArguments(process.argv.slice(2));
const server = await serve(settings.site);
try {
    console.log("| markers | measured | Pelta, ms (spread) | one symbol layer, ms (spread) | ratio |");
    console.log("|---|---|---|---|---|");
    for (const count of settings.counts) {
        const coordinates = pointsOverKorea(count);
        const ours = [];
        const rival = [];
        for (let pair = 0; pair < settings.pairs; pair += 1) {
            rival.push(await measure(`${server.address}one-layer.html`, coordinates));
            ours.push(await measure(`${server.address}markers.html`, coordinates));
            if (ours.at(-1).frame === null) break;
        }
        printRow(count, "add to idle", summary(ours, "add"), summary(rival, "add"));
        printRow(count, "frame while panning", summary(ours, "frame"), summary(rival, "frame"));
    }
} finally {
    await server.close();
}
