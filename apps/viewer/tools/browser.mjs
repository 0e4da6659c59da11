// The page in a browser without a window.
import { existsSync } from 'node:fs';

export const executable = process.env.CHROMIUM ?? '/usr/bin/chromium';

export const flags = [
    '--no-sandbox',
    '--use-gl=angle',
    '--use-angle=swiftshader',
    '--enable-unsafe-swiftshader',
    '--disable-background-networking',
    '--disable-component-update',
    '--disable-sync',
];

/** Starts the browser; the caller closes it. */
export async function startBrowser() {
    if (!existsSync(executable)) {
        throw new Error(`${executable} is not there: install chromium, or name it in the variable CHROMIUM`);
    }
    // Not before it is needed: arguments are checked where npm's packages are not installed yet.
    const { chromium } = await import('playwright-core');
    return chromium.launch({ executablePath: executable, args: flags });
}

/** Opens a page of a size in points and a number of pixels a point. */
export function openPage(browser, { width, height, scale }) {
    return browser.newPage({ viewport: { width, height }, deviceScaleFactor: scale });
}

/** Waits until the viewer page has loaded everything and its map is idle, or fails with what went wrong in it. */
export async function waitUntilReady(page, address) {
    const failed = new Promise((_, reject) => {
        page.once('pageerror', (error) => reject(new Error(`the page failed: ${error.message}`)));
        page.once('crash', () => reject(new Error('the page crashed')));
    });
    const ready = page
        .goto(address)
        .then(() => page.waitForSelector('html[data-state=ready]', { state: 'attached', timeout: 0 }));
    await Promise.race([ready, failed]);
}

/** The messages that the page lists: what is wrong with its address and the documents, and what it left out on purpose. */
export async function messagesOf(page) {
    const texts = (list) => page.locator(`#${list} li`).allTextContents();
    return {
        problems: [...(await texts('address-problems')), ...(await texts('problems'))],
        leftOuts: await texts('left-outs'),
    };
}
