// Rings and shared lines of a TopoJSON topology, simplified line by line so that neighbours keep meeting.
import { simplifyLine, toleranceAt } from './simplify.mjs';

/** Smallest island that is kept, in squares of the tolerance at its place. */
const SMALLEST_ISLAND = 3;

/** How far from 180 degrees the points of a cut along the antimeridian may be, in degrees. */
const CUT_WIDTH = 0.005;

const RADIANS = Math.PI / 180;  // of one degree

/** Lines shared by two countries (`borders`) and by one (`coasts`), and each country's polygons. */
export function readTopology(topology, object) {
    const lines = topology.arcs.map((arc) => simplifyLine(unwrap(decode(arc, topology.transform))));
    const users = lines.map(() => new Set());
    const kept = new Set();
    const countries = object.geometries.map((geometry) => {
        const parts = polygonArcs(geometry).map((rings) => rings.map((arcs) => ({ arcs, ring: ringOf(arcs, lines) })));
        const polygons = keepVisible(parts);
        for (const { arcs } of polygons.flat()) {
            arcs.map(lineIndex).forEach((index) => kept.add(index) && users[index].add(geometry));
        }
        return { geometry, polygons: polygons.map((rings) => rings.map(({ ring }) => closePole(ring))) };
    });
    const indices = [...kept].sort((a, b) => a - b);
    return {
        countries,
        borders: indices.filter((index) => users[index].size > 1).map((index) => lines[index]),
        coasts: indices.filter((index) => users[index].size === 1).flatMap((index) => withoutCuts(lines[index])),
    };
}

/** Longitude and latitude from the quantised steps of TopoJSON. */
function decode(arc, { scale, translate }) {
    let [x, y] = [0, 0];
    return arc.map(([dx, dy]) => {
        x += dx;
        y += dy;
        return [x * scale[0] + translate[0], y * scale[1] + translate[1]];
    });
}

/** A line that steps over the antimeridian goes on beyond 180 degrees instead of round the world. */
function unwrap(line) {
    let turns = 0;
    return line.map(([longitude, latitude], index) => {
        if (index > 0) {
            turns -= Math.round((longitude - line[index - 1][0]) / 360);
        }
        return [longitude + turns * 360, latitude];
    });
}

/** Areas are cut along the antimeridian; those cuts are no coast. */
function withoutCuts(line) {
    const pieces = [[line[0]]];
    for (let i = 1; i < line.length; ++i) {
        if (onAntimeridian(line[i - 1]) && onAntimeridian(line[i])) {
            pieces.push([line[i]]);
        } else {
            pieces.at(-1).push(line[i]);
        }
    }
    return pieces.filter((piece) => piece.length > 1);
}

function onAntimeridian([longitude]) {
    return Math.abs(Math.abs(longitude) - 180) < CUT_WIDTH;
}

function polygonArcs(geometry) {
    return geometry.type === 'Polygon' ? [geometry.arcs] : geometry.arcs ?? [];
}

/** A negative reference is the line of its complement, taken backwards. */
function lineIndex(reference) {
    return reference < 0 ? ~reference : reference;
}

function ringOf(arcs, lines) {
    const points = arcs.flatMap((reference, order) => {
        const line = lines[lineIndex(reference)];
        const directed = reference < 0 ? [...line].reverse() : line;
        return order > 0 ? directed.slice(1) : directed;
    });
    return nearGreenwich(unwrap(points));
}

/** Moves a ring by whole turns, so that its middle lies between 180 degrees west and east. */
function nearGreenwich(ring) {
    const longitudes = ring.map(([longitude]) => longitude);
    const middle = (Math.min(...longitudes) + Math.max(...longitudes)) / 2;
    const turns = Math.round(middle / 360);
    return turns === 0 ? ring : ring.map(([longitude, latitude]) => [longitude - turns * 360, latitude]);
}

/** Leaves out islands too small to show, but never the whole country; holes stay, as other countries lie in them. */
function keepVisible(parts) {
    const sized = parts.map((rings) => ({ rings, area: ringArea(rings[0].ring) }));
    const largest = sized.reduce((best, part) => (part.area > best.area ? part : best), sized[0]);
    return sized.filter((part) => part === largest || part.area >= SMALLEST_ISLAND * toleranceAt(part.rings[0].ring[0]) ** 2)
        .map(({ rings }) => rings);
}

/** @returns {number} area in square degrees of latitude. */
export function ringArea(ring) {
    let sum = 0;
    for (let i = 1; i < ring.length; ++i) {
        const [[ax, ay], [bx, by]] = [ring[i - 1], ring[i]];
        sum += (bx - ax) * Math.sin(((ay + by) / 2) * RADIANS);
    }
    return Math.abs(sum) / RADIANS;
}

/** A ring that goes once round the world is closed along the south pole. */
function closePole(ring) {
    const [first, last] = [ring[0], ring[ring.length - 1]];
    if (Math.abs(last[0] - first[0]) < 180) {
        return ring;
    }
    return [...ring, [last[0], -90], [first[0], -90], first];
}
