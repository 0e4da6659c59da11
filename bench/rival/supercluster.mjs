// Loads points into supercluster several times over and prints the milliseconds of each load, one a line.
// Usage: node bench/rival/supercluster.mjs FILE LOADS. FILE has "longitude latitude" on every line.
import { readFileSync } from "node:fs";
import { performance } from "node:perf_hooks";
import Supercluster from "supercluster";

const [file, loads] = process.argv.slice(2);
const features = readFileSync(file, "utf8").trimEnd().split("\n").map((line) => ({
    type: "Feature",
    properties: {},
    geometry: { type: "Point", coordinates: line.split(" ").map(Number) },
}));

for (let i = 0; i < Number(loads); i += 1) {
    const index = new Supercluster({ radius: 200, extent: 512, maxZoom: 16 });
    const start = performance.now();
    index.load(features);
    process.stdout.write(`${performance.now() - start}\n`);
}
