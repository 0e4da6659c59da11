// Runs clang-tidy on source files, as many at once as there are processors: node tools/run/lint.mjs FILE…, from the root.
//
// A file is left alone when it was found clean before: the same text with the same headers of our own, rules, compiler's
// words and clang-tidy. What was clean is remembered outside of the tree, in XDG_CACHE_HOME/pelta-lint, so that another
// clone need not find it out again.
import { execFile, execFileSync } from 'node:child_process';
import { createHash } from 'node:crypto';
import { existsSync, mkdirSync, readdirSync, readFileSync, renameSync, rmSync, statSync, utimesSync, writeFileSync } from 'node:fs';
import { availableParallelism, homedir } from 'node:os';
import path from 'node:path';
import { promisify } from 'node:util';

const root = process.cwd();
const memory = path.join(process.env.XDG_CACHE_HOME || path.join(homedir(), '.cache'), 'pelta-lint');
const daysToForget = 60;

const rules = ['.clang-tidy', 'tools/run/lint.mjs'].map((file) => readFileSync(file, 'utf8'));
const [version] = execFileSync('clang-tidy', ['--version'], { encoding: 'utf8' }).match(/version \S+/);
const sumOf = (...texts) => createHash('sha256').update(JSON.stringify(texts)).digest('hex');

/** The build whose compilation database has a file; the examples are built by themselves. */
function buildOf(source) {
    const folders = { 'ports/web/': 'web', 'apps/viewer/src/page/': 'web', 'tests/browser/': 'web', 'bench/browser/': 'web',
        'tests/': 'sanitize', 'examples/': undefined, '': 'release' };
    return folders[Object.keys(folders).find((start) => source.startsWith(start))];
}

const databases = new Map();

/** The command that compiles a file, in the folder where it runs. */
function compilation(source) {
    const build = buildOf(source);
    if (build === undefined) {
        return { command: `c++ -std=c++20 -Iinclude -Iports/headless/include -c ${source}`, directory: root };
    }
    if (!databases.has(build)) {
        const entries = JSON.parse(readFileSync(`build/${build}/compile_commands.json`, 'utf8'));
        databases.set(build, new Map(entries.map((entry) => [path.relative(root, entry.file), entry])));
    }
    const entry = databases.get(build).get(source);
    if (!entry) {
        throw new Error(`${source} is not compiled in build/${build}`);
    }
    return entry;
}

/** What the compiler is told, in words that are the same in every clone. */
const wordsOf = ({ command }) =>
    command.replaceAll(`${root}/`, '').replace(/^\S*( [^-]\S*)* /, '').replace(' -Werror ', ' ');

/** What em++ tells its compiler and clang-tidy does not know. */
const webWords = () => execFileSync('em++', ['--cflags'], { encoding: 'utf8' }).trim().split(' ');

function tidyWords(source) {
    const build = buildOf(source);
    if (build === undefined) {
        return [source, '--', '-std=c++20', '-Iinclude', '-Iports/headless/include'];
    }
    const before = build === 'web' ? webWords().map((word) => `--extra-arg-before=${word}`) : [];
    return ['-p', `build/${build}`, ...before, source];
}

/** The sums of a file's headers, by their paths from the root; those of the system are left out. */
async function headerSums({ command, directory }) {
    const listing = `${command.replace(/ -o \S+/, '')} -MM`;
    const { stdout } = await promisify(execFile)('sh', ['-c', listing], { cwd: directory });
    const files = stdout.replaceAll('\\\n', ' ').trim().split(/\s+/).slice(2);
    return Object.fromEntries(files
        .map((file) => path.relative(root, path.resolve(directory, file)))
        .filter((file) => !file.startsWith('..'))
        .map((file) => [file, sumOf(readFileSync(file, 'utf8'))]));
}

const isUnchanged = ([file, sum]) => existsSync(file) && sumOf(readFileSync(file, 'utf8')) === sum;

function isRemembered(record) {
    if (!existsSync(record) || !Object.entries(JSON.parse(readFileSync(record, 'utf8'))).every(isUnchanged)) {
        return false;
    }
    utimesSync(record, new Date(), new Date());
    return true;
}

function remember(record, sums) {
    const unfinished = `${record}.${process.pid}`;
    writeFileSync(unfinished, JSON.stringify(sums));
    renameSync(unfinished, record);
}

function forgetOldRecords() {
    const oldest = Date.now() - daysToForget * 24 * 3600 * 1000;
    for (const name of readdirSync(memory)) {
        const record = path.join(memory, name);
        if (statSync(record).mtimeMs < oldest) {
            rmSync(record);
        }
    }
}

/** Answers whether the file is clean. */
async function lint(source) {
    const compiled = compilation(source);
    const words = tidyWords(source);
    const text = readFileSync(source, 'utf8');
    const record = path.join(memory, sumOf(...rules, version, source, text, wordsOf(compiled), words));
    if (isRemembered(record)) {
        return true;
    }
    console.log(source);
    const sums = await headerSums(compiled);
    try {
        await promisify(execFile)('clang-tidy', ['--quiet', ...words], { maxBuffer: Infinity });
    } catch ({ stdout, stderr }) {
        console.log(`${stdout}${stderr.replace(/^\d+ warnings.* generated\.\n/gm, '')}`);
        return false;
    }
    remember(record, sums);
    return true;
}

mkdirSync(memory, { recursive: true });
const waiting = process.argv.slice(2);
let isClean = true;
await Promise.all(Array.from({ length: availableParallelism() }, async () => {
    for (let source = waiting.shift(); source !== undefined; source = waiting.shift()) {
        isClean = (await lint(source)) && isClean;
    }
}));
forgetOldRecords();
process.exitCode = isClean ? 0 : 1;
