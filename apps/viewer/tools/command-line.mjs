// What the commands have in common: reading arguments, telling how they are used, and giving up in time.
import { accessSync, constants, existsSync, statSync, writeFileSync } from 'node:fs';
import path from 'node:path';
import { parseArgs } from 'node:util';

/** Wrong arguments: the message, then the usage, on standard error; exit 2. */
export class WrongUse extends Error {}

/** Joins an option and a value that begins with a minus and a digit, which would otherwise count as an option. */
function joinNegativeValues(words) {
    const joined = [];
    for (const word of words) {
        if (/^-[\d.]/.test(word) && /^--[a-z]+$/.test(joined.at(-1) ?? '')) {
            joined.push(`${joined.pop()}=${word}`);
        } else {
            joined.push(word);
        }
    }
    return joined;
}

/** Reads arguments as `parseArgs` does; wrong ones are `WrongUse`. */
export function readArguments(options, positionals = []) {
    try {
        const result = parseArgs({
            args: joinNegativeValues(process.argv.slice(2)),
            options: { help: { type: 'boolean', short: 'h' }, ...options },
            allowPositionals: true,
        });
        if (!result.values.help && result.positionals.length !== positionals.length) {
            const given = result.positionals.map((word) => `"${word}"`).join(' ') || 'nothing';
            throw new WrongUse(`${positionals.join(' ') || 'no file'} is needed, ${given} is given`);
        }
        return { ...result.values, positionals: result.positionals };
    } catch (error) {
        throw error instanceof WrongUse ? error : new WrongUse(error.message);
    }
}

/** "800x600" as numbers. */
export function readSize(text) {
    const [, width, height] = /^(\d{1,4})x(\d{1,4})$/.exec(text)?.map(Number) ?? [];
    if (!(width >= 16 && height >= 16 && width <= 8192 && height <= 8192)) {
        throw new WrongUse(`--size ${text}: WIDTHxHEIGHT in points is needed, each from 16 to 8192`);
    }
    return { width, height };
}

/** Pixels a point. */
export function readScale(text) {
    const scale = /^\d+(\.\d+)?$/.test(text) ? Number(text) : NaN;
    if (!(scale >= 0.5 && scale <= 4)) {
        throw new WrongUse(`--scale ${text}: a number from 0.5 to 4 is needed`);
    }
    return scale;
}

export function checkReadable(file) {
    try {
        accessSync(file, constants.R_OK);
    } catch (error) {
        throw new Error(`${file}: cannot be read (${error.code})`);
    }
}

const cannotBeWritten = (file, reason) => new Error(`${file}: cannot be written (${reason})`);

/** Refuses a file that could not be written, and leaves it as it is. */
export function checkWritable(file) {
    let found;
    try {
        found = statSync(file, { throwIfNoEntry: false });
        // A new file is made in its folder; the slash says that it must be one.
        accessSync(found ? file : `${path.dirname(file)}/`, constants.W_OK);
    } catch (error) {
        throw cannotBeWritten(file, error.code);
    }
    if (found?.isDirectory()) {
        throw cannotBeWritten(file, 'EISDIR');
    }
}

export function writeOutput(file, content) {
    try {
        writeFileSync(file, content);
    } catch (error) {
        throw cannotBeWritten(file, error.code);
    }
}

/** A line on a terminal that says how long something takes; nothing elsewhere. Answers how to take it away. */
export function showProgress(text) {
    if (!process.stderr.isTTY) {
        return () => {};
    }
    const start = Date.now();
    const show = () => process.stderr.write(`\r${printable(text)}… ${Math.round((Date.now() - start) / 1000)} s`);
    show();
    const timer = setInterval(show, 500);
    const hide = () => {
        clearInterval(timer);
        process.stderr.write('\r\u001b[K');
    };
    process.once('SIGINT', () => {
        hide();
        process.exit(130);
    });
    return hide;
}

/** The folder of the built page. */
export function checkSite(site) {
    if (!existsSync(path.join(site, 'index.html'))) {
        throw new Error(`${site} holds no built page: build it with ./run demo, or name its folder with --site`);
    }
    return site;
}

/** Control characters as spaces, so that foreign text cannot steer the terminal. */
export const printable = (text) => text.replace(/[\u0000-\u001f\u007f-\u009f]/g, ' ');

/** A promise that fails with a message after some seconds. */
export function giveUpAfter(seconds, message) {
    let timer;
    const promise = new Promise((_, reject) => {
        timer = setTimeout(() => reject(new Error(message)), seconds * 1000);
    });
    return { promise, cancel: () => clearTimeout(timer) };
}

/** Runs a command and ends the process with its exit code: 0 done, 1 failed, 2 wrong use. */
export async function run(usage, command) {
    let code;
    try {
        code = await command();
    } catch (error) {
        const isWrongUse = error instanceof WrongUse;
        process.stderr.write(`${printable(error.message.split('\n')[0])}\n${isWrongUse ? `\n${usage}` : ''}`);
        code = isWrongUse ? 2 : 1;
    }
    process.exit(code);
}
