// Serves the viewer page until interrupted, or writes a picture of it.
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { messagesOf, openPage, startBrowser, waitUntilReady } from './browser.mjs';
import {
    checkSite, checkWritable, giveUpAfter, printable, readArguments, readScale, readSize, run, WrongUse, writeOutput,
} from './command-line.mjs';
import { serve } from './serve.mjs';

const longestSeconds = 60;

const usage = `usage: demo [OPTION…]

Serves the viewer page to this machine, prints its address, opens it where there is a display, and goes on until it is
interrupted.

  --port N             the port; 8080 by default, another one where that is taken
  --screenshot FILE    instead write a picture of the page as a person sees it, and end
  --size WIDTHxHEIGHT  of the picture in points; 1280x800 by default
  --scale N            pixels a point of the picture, 0.5 to 4; 1 by default
  --site FOLDER        the built page; build/web/site by default
  --check              only check the arguments
  -h, --help           print this text

Exit codes: 0 done; 1 failed; 2 wrong use.
`;

const options = {
    port: { type: 'string', default: '8080' },
    screenshot: { type: 'string' },
    size: { type: 'string', default: '1280x800' },
    scale: { type: 'string', default: '1' },
    site: { type: 'string', default: 'build/web/site' },
    check: { type: 'boolean' },
};

function readPort(text) {
    if (!/^\d{1,5}$/.test(text) || Number(text) > 65535) {
        throw new WrongUse(`--port ${text}: a number from 0 to 65535 is needed`);
    }
    return Number(text);
}

async function writeScreenshot(address, file, form) {
    const browser = await startBrowser();
    try {
        const page = await openPage(browser, form);
        await waitUntilReady(page, address);
        const { problems } = await messagesOf(page);
        problems.forEach((text) => process.stderr.write(`${printable(text)}\n`));
        writeOutput(file, await page.screenshot());
        return problems.length > 0 ? 1 : 0;
    } finally {
        await browser.close();
    }
}

async function serveUntilInterrupted(address) {
    process.stdout.write(`The map is at ${address} (Ctrl+C ends it)\n`);
    if (process.env.DISPLAY || process.env.WAYLAND_DISPLAY) {
        spawn('xdg-open', [address], { stdio: 'ignore', detached: true }).on('error', () => {}).unref();
    }
    await Promise.race([once(process, 'SIGINT'), once(process, 'SIGTERM')]);
    return 0;
}

await run(usage, async () => {
    const values = readArguments(options);
    if (values.help) {
        process.stdout.write(usage);
        return 0;
    }
    const form = { ...readSize(values.size), scale: readScale(values.scale) };
    const port = readPort(values.port);
    if (values.screenshot !== undefined) {
        checkWritable(values.screenshot);
    }
    if (values.check) {
        return 0;
    }
    const server = await serve(checkSite(values.site), {}, values.screenshot ? 0 : port);
    const patience = giveUpAfter(longestSeconds, `the page was not ready within ${longestSeconds} s; given up`);
    try {
        if (values.screenshot) {
            return await Promise.race([writeScreenshot(server.address, values.screenshot, form), patience.promise]);
        }
        patience.cancel();
        patience.promise.catch(() => {});
        return await serveUntilInterrupted(server.address);
    } finally {
        patience.cancel();
        await server.close();
    }
});
