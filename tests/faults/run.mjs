// Puts single faults into the library and tells which of them the native tests notice.
//
//   node tests/faults/run.mjs [--seed N] [--count N]
//
// Lines are drawn by the seed from the rooms below. Work is done on a copy under build/faults. What survives is listed:
// judge by hand whether it changes behaviour at all; what does deserves a test.
import { execFileSync, spawn } from 'node:child_process';
import { cpSync, mkdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { join, resolve } from 'node:path';
import { parseArgs } from 'node:util';
import { faultsOf } from './operators.mjs';

const ROOMS = ['src/Annotations', 'src/View', 'src/Geometry', 'src/Engine', 'src/Cluster/Map'];
const TEST_SECONDS = 120;
// Tests of other rooms, some of which take long.
const OTHER_TESTS = ['ClusterTruthTest', 'ClusterRulesTest', 'QuadTreeTest', 'GeoTrans', 'GeoTransAgainstProj', 'ClusterCommandTest',
    'ConvertCommandTest', 'GeoJsonReader', 'PageAddress', 'IncludeRules'];
const root = resolve(import.meta.dirname, '../..');
const copy = join(root, 'build/faults/tree');
const build = join(root, 'build/faults/build');

/** A generator of numbers from 0 to 1 that is the same everywhere (mulberry32). */
function generator(seed) {
    let state = seed >>> 0;
    return () => {
        state = (state + 0x6d2b79f5) >>> 0;
        let t = Math.imul(state ^ (state >>> 15), state | 1);
        t ^= t + Math.imul(t ^ (t >>> 7), t | 61);
        return ((t ^ (t >>> 14)) >>> 0) / 2 ** 32;
    };
}

function trackedFiles(...patterns) {
    return execFileSync('git', ['-C', root, 'ls-files', '-z', ...patterns], { encoding: 'utf8' }).split('\0').filter(Boolean);
}

function candidates() {
    return trackedFiles(...ROOMS.map((room) => `${room}/*.cpp`)).flatMap((file) =>
        readFileSync(join(copy, file), 'utf8').split('\n')
            .map((text, index) => ({ file, line: index + 1, text, faults: faultsOf(text) }))
            .filter(({ faults }) => faults.length > 0));
}

/** @returns {Promise<boolean>} whether the command ended well and in time. */
function run(command, args, seconds) {
    return new Promise((done) => {
        const child = spawn(command, args, { stdio: 'ignore', cwd: copy, timeout: seconds * 1000, killSignal: 'SIGKILL' });
        child.on('error', () => done(false));
        child.on('close', (code) => done(code === 0));
    });
}

const buildTests = () => run('cmake', ['--build', build, '--target', 'pelta_tests'], 1800);

/** Both halves of the tests side by side; the first failure in either ends it. */
async function testsPass() {
    const halves = [0, 1].map((index) =>
        run('env', [`GTEST_TOTAL_SHARDS=2`, `GTEST_SHARD_INDEX=${index}`, join(build, 'tests/pelta_tests'),
            `--gtest_filter=-${OTHER_TESTS.map((name) => `${name}.*`).join(':')}`, '--gtest_fail_fast', '--gtest_brief=1'],
        TEST_SECONDS));
    return (await Promise.all(halves)).every(Boolean);
}

async function prepare() {
    rmSync(copy, { recursive: true, force: true });
    for (const file of trackedFiles()) {
        cpSync(join(root, file), join(copy, file), { dereference: false });
    }
    mkdirSync(build, { recursive: true });
    cpSync(join(root, 'node_modules'), join(copy, 'node_modules'), { recursive: true });
    const configured = await run('cmake', ['-S', copy, '-B', build, '-G', 'Ninja', '-DCMAKE_BUILD_TYPE=Debug'], 600);
    if (!configured || !(await buildTests()) || !(await testsPass())) {
        throw new Error('the tests have to build and to pass before faults are put in');
    }
}

/** @returns {Promise<'noticed' | 'survived' | 'does not build'>} */
async function tryFault({ file, line, fault }) {
    const path = join(copy, file);
    const whole = readFileSync(path, 'utf8');
    const lines = whole.split('\n');
    lines[line - 1] = fault;
    writeFileSync(path, lines.join('\n'));
    try {
        if (!(await buildTests())) {
            return 'does not build';
        }
        return (await testsPass()) ? 'survived' : 'noticed';
    } finally {
        writeFileSync(path, whole);
    }
}

const { values } = parseArgs({ options: { seed: { type: 'string' }, count: { type: 'string', default: '30' } } });
const seed = Number(values.seed ?? Date.now() % 1_000_000);
console.log(`seed ${seed}`);
await prepare();
const random = generator(seed);
const pool = candidates();
const survivors = [];
for (let tried = 0; tried < Number(values.count);) {
    const [drawn] = pool.splice(Math.floor(random() * pool.length), 1);
    const fault = { ...drawn, fault: drawn.faults[Math.floor(random() * drawn.faults.length)] };
    const verdict = await tryFault(fault);
    if (verdict === 'does not build') {
        continue;
    }
    tried += 1;
    console.log(`${tried}. ${verdict}: ${fault.file}:${fault.line}\n    - ${fault.text.trim()}\n    + ${fault.fault.trim()}`);
    if (verdict === 'survived') {
        survivors.push(`${fault.file}:${fault.line}`);
    }
}
console.log(`noticed ${Number(values.count) - survivors.length} of ${values.count}`);
if (survivors.length > 0) {
    console.log(`survived: ${survivors.join(', ')}`);
}
