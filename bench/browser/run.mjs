// Times the library's shapes in the browser beside pages written by hand for the same picture, the two in turn, and prints a
// table. Usage: node bench/browser/run.mjs --site DIR [--pairs N] [--seconds N] [--short] [CASE…]
// The cases are in cases.mjs, all are run unless some are named; --pairs are runs of each side, 5 unless told; --seconds is
// how long frames are measured for at most, 15 unless told. With --short few shapes are drawn once for a second, which shows
// that all cases still run.
import { parseArgs } from "node:util";
import { serve } from "../../apps/viewer/tools/serve.mjs";
import { cases } from "./cases.mjs";
import { measure } from "./measure.mjs";
import { printCase, printHead } from "./table.mjs";

const usage = `usage: node bench/browser/run.mjs --site DIR [--pairs N] [--seconds N] [--short] [CASE…]
cases: ${Object.keys(cases).join(" ")}
`;

function readArguments() {
    const { values, positionals } = parseArgs({
        options: {
            site: { type: "string" }, pairs: { type: "string", default: "5" }, seconds: { type: "string", default: "15" },
            short: { type: "boolean", default: false },
        },
        allowPositionals: true,
    });
    const unknown = positionals.find((name) => !Object.hasOwn(cases, name));
    if (unknown !== undefined) throw new Error(`there is no case "${unknown}"`);
    if (!values.site) throw new Error("--site is needed: the folder of the built pages");
    for (const name of ["pairs", "seconds"]) {
        if (!/^[1-9]\d*$/.test(values[name])) throw new Error(`--${name} ${values[name]}: a whole number from 1 is needed`);
    }
    const names = positionals.length > 0 ? positionals : Object.keys(cases);
    const size = values.short
        ? { isShort: true, pairs: 1, seconds: 1, shapes: 100 }
        : { pairs: Number(values.pairs), seconds: Number(values.seconds), shapes: Infinity };
    return { site: values.site, ...size, names };
}

/** The arguments, or the end of the program with a word on what is wrong with them. */
function argumentsOrEnd() {
    try {
        return readArguments();
    } catch (error) {
        process.stderr.write(`${error.message}\n${usage}`);
        process.exit(2);
    }
}

/** Runs of both sides. When one is given up, the case is not repeated. */
async function runCase(name, address, settings) {
    const { rival, query = "", count, scene, steps, rows, pairs: most = settings.pairs } = cases[name];
    const pairs = Math.min(settings.pairs, most);
    const shapes = scene(Math.min(count, settings.shapes));
    const pages = { rival, ours: `shapes.html${query}` };
    const runs = { rival: [], ours: [] };
    for (let pair = 1; pair <= pairs; pair += 1) {
        for (const side of ["rival", "ours"].filter((one) => pages[one])) {
            process.stderr.write(`${name}: pair ${pair} of ${pairs}, ${side}\n`);
            runs[side].push(await measure(address + pages[side], shapes, steps, settings.seconds));
        }
        if ([...runs.rival, ...runs.ours].some((figures) => rows.some(({ key }) => !figures[key]))) {
            if (settings.isShort) process.exitCode = 1;
            break;
        }
    }
    return runs;
}

const settings = argumentsOrEnd();
const server = await serve(settings.site);
try {
    printHead();
    for (const name of settings.names) {
        printCase(cases[name], await runCase(name, server.address, settings));
    }
} finally {
    await server.close();
}
