// The table of the benchmark: a row for each figure of a case, with the median and the spread of its runs.
const middle = (values) => [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];

function readable(milliseconds) {
    if (milliseconds >= 100) return Math.round(milliseconds).toLocaleString("en-US");
    return milliseconds.toFixed(milliseconds >= 1 ? 1 : 3);
}

function range(values, write) {
    return values.length > 1 ? ` (${write(Math.min(...values))}–${write(Math.max(...values))})` : "";
}

/** Median and spread, with the number of frames where they are fewer than wanted; or how a run ended without. */
function cell(runs, key) {
    if (runs.length === 0) return "–";
    const unfinished = runs.find((run) => !run[key]);
    if (unfinished) return unfinished.ending;
    const figures = runs.map((run) => run[key]);
    const times = figures.map(({ milliseconds }) => milliseconds);
    const fewest = Math.min(...figures.map(({ done }) => done));
    const note = fewest < figures[0].wanted ? `, ${fewest} frames` : "";
    return `${readable(middle(times))}${range(times, readable)}${note}`;
}

/** The ratio of the medians, and the spread of the ratios of the pairs. */
function ratioOf(ours, rival, key) {
    const pairs = ours.map((run, i) => run[key]?.milliseconds / rival[i]?.[key]?.milliseconds);
    if (pairs.length === 0 || pairs.some(Number.isNaN)) return { text: "–" };
    const value = middle(ours.map((run) => run[key].milliseconds)) / middle(rival.map((run) => run[key].milliseconds));
    const write = (ratio) => ratio.toFixed(2);
    return { value, text: write(value) + range(pairs, write) };
}

function aimText(aim, ratio, hasRival) {
    if (aim === undefined) return "shown";
    return hasRival ? `≤ ${aim}${ratio.value > aim ? ", missed" : ""}` : `< ${aim} ms`;
}

export function printHead() {
    console.log("| shapes | measured | Pelta, ms (spread) | by hand, ms (spread) | ratio (of pairs) | aim | pairs |");
    console.log("|---|---|---|---|---|---|---|");
}

export function printCase({ title, rival, rows }, runs) {
    for (const { key, what, aim } of rows) {
        const ratio = ratioOf(runs.ours, runs.rival, key);
        const cells = [title, what, cell(runs.ours, key), cell(runs.rival, key), ratio.text,
            aimText(aim, ratio, rival !== undefined), runs.ours.length];
        console.log(`| ${cells.join(" | ")} |`);
    }
}
