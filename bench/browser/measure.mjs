// One measurement of a page, in a browser of its own that is killed afterwards, however busy it is.
import { chromium } from "playwright-core";
import { executable, flags } from "../../apps/viewer/tools/browser.mjs";
import { installProbe } from "./steps.mjs";

/** Seconds after which a step is given up. */
export const limit = 120;

async function withinLimit(promise) {
    let timer;
    promise.catch(() => {}); // of a browser killed meanwhile
    const end = new Promise((resolve) => { timer = setTimeout(() => resolve(null), limit * 1000); });
    try { return await Promise.race([promise, end]); } finally { clearTimeout(timer); }
}

async function openPage(machine, address) {
    const browser = await chromium.connect(machine.wsEndpoint());
    const page = await browser.newPage({ viewport: { width: 800, height: 600 } });
    page.on("pageerror", (error) => process.stderr.write(`${address}: ${error.message}\n`));
    await page.addInitScript(installProbe);
    await page.goto(address);
    await page.waitForFunction(() => window.benchmark);
    await page.evaluate(() => window.benchmark.ready);
    return page;
}

/**
 * Runs the steps in turn. Answers the figures of all by their names, each with the frames that were done and those wanted; a
 * step over the limit and those after it answer none. A step ends its frames after so many seconds.
 */
export async function measure(address, scene, steps, seconds) {
    // The browser holds frames back until the graphics process has taken the last ones. Without that, as with its flags for
    // unlimited frame rates, a page seems quick that is drawn minutes later.
    const machine = await chromium.launchServer({ executablePath: executable, args: flags });
    const figures = {};
    try {
        const page = await openPage(machine, address);
        const sceneText = JSON.stringify(scene);
        for (const { measure: step, frames = 1 } of steps) {
            const answer = await withinLimit(page.evaluate(step, { sceneText, frames, seconds }));
            if (!answer) break;
            const { done = frames, ...times } = answer;
            for (const [key, milliseconds] of Object.entries(times)) figures[key] = { milliseconds, done, wanted: frames };
        }
    } finally {
        await machine.kill();
    }
    return figures;
}
