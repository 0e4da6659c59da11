// Draws a GeoJSON file on the map and writes the picture.
import path from 'node:path';
import { messagesOf, openPage, startBrowser, waitUntilReady } from './browser.mjs';
import { checkCamera } from './camera.mjs';
import {
    checkReadable, checkSite, checkWritable, giveUpAfter, printable, readArguments, readScale, readSize, run,
    showProgress, WrongUse, writeOutput,
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
  --check                 only check the arguments
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
    check: { type: 'boolean' },
};

const isAddress = (style) => /^https?:/.test(style);

/** The page's query, the folders that the server has to mount for it, and the files by the addresses they get. */
function pageRequest({ input, camera, cluster, fit, style }) {
    const query = new URLSearchParams({ snapshot: '1', data: `snapshot-input/${encodeURIComponent(path.basename(input))}` });
    const mounts = { '/snapshot-input/': path.dirname(input) };
    const files = new Map();
    if (camera !== undefined) {
        query.set('camera', camera);
    }
    if (cluster) {
        query.set('cluster', '1');
    }
    if (fit) {
        query.set('fit', '1');
    }
    if (style !== undefined && isAddress(style)) {
        query.set('style', style);
    } else if (style !== undefined) {
        mounts['/snapshot-style/'] = path.dirname(style);
        const address = `snapshot-style/${encodeURIComponent(path.basename(style))}`;
        query.set('style', address);
        files.set(address, style);
    }
    return { query, mounts, files };
}

async function draw(values) {
    const { query, mounts, files } = pageRequest(values);
    const server = await serve(values.site, mounts);
    let browser;
    try {
        browser = await startBrowser();
        const page = await openPage(browser, values);
        await waitUntilReady(page, `${server.address}?${query}`);
        const { problems, leftOuts } = await messagesOf(page);
        const named = (text) => [...files].reduce(
            (said, [address, file]) => said.replaceAll(address, () => file), text.replaceAll(server.address, ''));
        return { problems: problems.map(named), leftOuts, picture: await page.screenshot() };
    } finally {
        await browser?.close();
        await server.close();
    }
}

/** Tells the messages, writes the picture, and answers the exit code. */
function finish({ problems, leftOuts, picture }, output) {
    for (const text of [...problems, ...leftOuts]) {
        process.stderr.write(`${printable(text)}\n`);
    }
    writeOutput(output, picture);
    return problems.length > 0 ? 1 : 0;
}

/** The arguments as `draw` takes them; all that can be wrong with them is said here, before anything is drawn. */
function readRequest({ positionals: [input], ...values }) {
    if (!values.output) {
        throw new WrongUse('-o OUT.png is needed');
    }
    const request = { ...values, ...readSize(values.size), scale: readScale(values.scale), input };
    if (values.camera !== undefined) {
        checkCamera(values.camera);
    }
    checkReadable(input);
    if (values.style !== undefined && !isAddress(values.style)) {
        checkReadable(values.style);
    }
    checkWritable(values.output);
    return request;
}

await run(usage, async () => {
    const values = readArguments(options, ['IN.geojson']);
    if (values.help) {
        process.stdout.write(usage);
        return 0;
    }
    const request = readRequest(values);
    if (values.check) {
        return 0;
    }
    checkSite(values.site);

    const patience = giveUpAfter(longestSeconds, `${request.input}: not drawn within ${longestSeconds} s; given up`);
    const hideProgress = showProgress(`Drawing ${request.input}`);
    try {
        return finish(await Promise.race([draw(request), patience.promise]), values.output);
    } finally {
        patience.cancel();
        hideProgress();
    }
});
