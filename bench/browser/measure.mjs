// One measurement of a page, in a browser of its own that is killed afterwards, however busy it is.
import { chromium } from "playwright-core";
import { executable, flags } from "../../apps/viewer/tools/browser.mjs";
import { installProbe } from "./steps.mjs";

/** Says what went wrong in a page; the benchmark goes on and fails at its end. */
export function complain(address, error) {
    process.stderr.write(`${address}: ${error.message}\n`);
    process.exitCode = 1;
}

/** Seconds after which a step is given up. */
const limit = 120;

/** What a step answers, or how it ended without an answer. */
async function withinLimit(promise) {
    let timer;
    const end = new Promise((resolve) => {
        timer = setTimeout(() => resolve({ ending: `over ${limit} s` }), limit * 1000);
    });
    const answer = promise.then((figures) => ({ figures }), (error) => ({ ending: "failed", error }));
    try { return await Promise.race([answer, end]); } finally { clearTimeout(timer); }
}

async function openPage(machine, address) {
    const browser = await chromium.connect(machine.wsEndpoint());
    const page = await browser.newPage({ viewport: { width: 800, height: 600 } });
    page.on("pageerror", (error) => complain(address, error));
    await page.addInitScript(installProbe);
    await page.goto(address);
    await page.waitForFunction(() => window.benchmark);
    await page.evaluate(() => window.benchmark.ready);
    return page;
}

/**
 * Runs the steps in turn, each with frames for so many seconds at most. Answers the figures of all by their names, each with
 * the frames that were done and those wanted. A step that did not come to its end and those after it answer none; `ending`
 * says how it ended.
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
            if (answer.ending) {
                if (answer.error) complain(address, answer.error);
                return { ...figures, ending: answer.ending };
            }
            const { done = frames, ...times } = answer.figures;
            for (const [key, milliseconds] of Object.entries(times)) figures[key] = { milliseconds, done, wanted: frames };
        }
    } finally {
        await machine.kill();
    }
    return figures;
}
