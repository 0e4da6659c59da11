// One measurement of a page, in a browser of its own that is killed afterwards, however busy it is.
import { chromium } from "playwright-core";
import { executable, flags } from "../../apps/viewer/tools/browser.mjs";

/** The longest that a step may take, milliseconds. */
export const limit = 120_000;
/** What a step that watches the limit by itself may take beyond it: its last frame. */
const grace = 30_000;
const unlimitedFrames = ["--disable-gpu-vsync", "--disable-frame-rate-limit"];

async function withinLimit(promise) {
    let timer;
    promise.catch(() => {}); // of a browser killed meanwhile
    const end = new Promise((resolve) => { timer = setTimeout(() => resolve(null), limit + grace); });
    try { return await Promise.race([promise, end]); } finally { clearTimeout(timer); }
}

async function openPage(machine, address) {
    const browser = await chromium.connect(machine.wsEndpoint());
    const page = await browser.newPage({ viewport: { width: 800, height: 600 } });
    page.on("pageerror", (error) => process.stderr.write(`${address}: ${error.message}\n`));
    await page.goto(address);
    await page.waitForFunction(() => window.benchmark);
    await page.evaluate(() => window.benchmark.ready);
    return page;
}

/**
 * Runs the steps in turn. Answers the figures of all by their names, each with the frames that were done and those wanted; a
 * step over the limit and those after it answer none.
 */
export async function measure(address, scene, steps) {
    const machine = await chromium.launchServer({ executablePath: executable, args: [...flags, ...unlimitedFrames] });
    const figures = {};
    try {
        const page = await openPage(machine, address);
        const sceneText = JSON.stringify(scene);
        for (const { measure: step, frames = 1 } of steps) {
            const answer = await withinLimit(page.evaluate(step, { sceneText, frames, limit }));
            if (!answer) break;
            const { done = frames, ...times } = answer;
            for (const [key, milliseconds] of Object.entries(times)) figures[key] = { milliseconds, done, wanted: frames };
        }
    } finally {
        await machine.kill();
    }
    return figures;
}
