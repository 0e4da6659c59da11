// Draws a GeoJSON file on the map and writes the picture.
import { accessSync, constants, writeFileSync } from 'node:fs';
import path from 'node:path';
import { messagesOf, openPage, startBrowser, waitUntilReady } from './browser.mjs';
import {
    checkSite, giveUpAfter, printable, readArguments, readScale, readSize, run, WrongUse,
} from './command-line.mjs';
import { serve } from './serve.mjs';

const longestSeconds = 60;

const usage = `usage: snapshot IN.geojson -o OUT.png [OPTION…]

Draws a GeoJSON file on the map, without panel and ornaments, and writes the picture as PNG.

  -o, --output FILE       where the picture goes
  --camera LAT,LNG,ZOOM[,TILT[,BEARING]]
                          where the map looks, in degrees and zoom levels; Korea by default
  --cluster               draw points as clusters
  --fit                   show all of the data; keeps tilt and bearing of --camera
  --style FILE|URL        a style document in place of the base style
  --size WIDTHxHEIGHT     in points; 800x600 by default
  --scale N               pixels a point, 0.5 to 4; 1 by default
  --site FOLDER           the built page; build/web/site by default
  -h, --help              print this text

Exit codes: 0 done; 1 some input was bad (each fault is told with file, feature counted from 0, and reason; what is good
is drawn all the same) or nothing could be drawn within ${longestSeconds} s; 2 wrong use.
`;

const options = {
    output: { type: 'string', short: 'o' },
    camera: { type: 'string' },
    cluster: { type: 'boolean' },
    fit: { type: 'boolean' },
    style: { type: 'string' },
    size: { type: 'string', default: '800x600' },
    scale: { type: 'string', default: '1' },
    site: { type: 'string', default: 'build/web/site' },
};

function checkReadable(file) {
    try {
        accessSync(file, constants.R_OK);
    } catch (error) {
        throw new Error(`${file}: cannot be read (${error.code})`);
    }
}

/** The page's query, and the folders that the server has to mount for it. */
function pageRequest({ input, camera, cluster, fit, style }) {
    const query = new URLSearchParams({ snapshot: '1', data: `snapshot-input/${encodeURIComponent(path.basename(input))}` });
    const mounts = { '/snapshot-input/': path.dirname(input) };
    if (camera !== undefined) {
        query.set('camera', camera);
    }
    if (cluster) {
        query.set('cluster', '1');
    }
    if (fit) {
        query.set('fit', '1');
    }
    if (style !== undefined && /^https?:/.test(style)) {
        query.set('style', style);
    } else if (style !== undefined) {
        checkReadable(style);
        mounts['/snapshot-style/'] = path.dirname(style);
        query.set('style', `snapshot-style/${encodeURIComponent(path.basename(style))}`);
    }
    return { query, mounts };
}

/** A line on a terminal that says how long it takes; nothing elsewhere. */
function showProgress(text) {
    if (!process.stderr.isTTY) {
        return () => {};
    }
    const start = Date.now();
    const show = () => process.stderr.write(`\r${printable(text)}… ${Math.round((Date.now() - start) / 1000)} s`);
    show();
    const timer = setInterval(show, 500);
    return () => {
        clearInterval(timer);
        process.stderr.write('\r\u001b[K');
    };
}

async function draw(values) {
    const { query, mounts } = pageRequest(values);
    const server = await serve(values.site, mounts);
    let browser;
    try {
        browser = await startBrowser();
        const page = await openPage(browser, values);
        await waitUntilReady(page, `${server.address}?${query}`);
        const messages = await messagesOf(page);
        return { messages, picture: messages.addressProblems.length > 0 ? undefined : await page.screenshot() };
    } finally {
        await browser?.close();
        await server.close();
    }
}

/** Tells the messages, writes the picture, and answers the exit code. */
function finish({ messages, picture }, output) {
    if (messages.addressProblems.length > 0) {
        throw new WrongUse(`--${messages.addressProblems.join('; ')}`);
    }
    for (const text of [...messages.problems, ...messages.leftOuts]) {
        process.stderr.write(`${printable(text)}\n`);
    }
    writeFileSync(output, picture);
    return messages.problems.length > 0 ? 1 : 0;
}

await run(usage, async () => {
    const values = readArguments(options, ['IN.geojson']);
    if (values.help) {
        process.stdout.write(usage);
        return 0;
    }
    if (!values.output) {
        throw new WrongUse('-o OUT.png is needed');
    }
    const [input] = values.positionals;
    const request = { ...values, ...readSize(values.size), scale: readScale(values.scale), input };
    checkReadable(input);
    checkSite(values.site);

    const patience = giveUpAfter(longestSeconds, `${input}: not drawn within ${longestSeconds} s; given up`);
    const hideProgress = showProgress(`Drawing ${input}`);
    try {
        return finish(await Promise.race([draw(request), patience.promise]), values.output);
    } finally {
        patience.cancel();
        hideProgress();
    }
});
