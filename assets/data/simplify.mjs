// Leaves out points that do not show: fine near the Korean peninsula, coarser with the distance from it.

const DETAIL_CENTRE = [127.6, 36.8];  // longitude, latitude
const DETAIL_RADIUS = 6.5;            // degrees with the finest line
const COARSE_RADIUS = 26;             // degrees from where on the line is coarsest
const FINEST_TOLERANCE = 0.002;       // degrees
const COARSEST_TOLERANCE = 0.022;     // degrees

/** How far, in degrees of latitude, a line may be off at a place. */
export function toleranceAt([longitude, latitude]) {
    const distance = Math.hypot((longitude - DETAIL_CENTRE[0]) * cosineOf(DETAIL_CENTRE[1]),
        latitude - DETAIL_CENTRE[1]);
    const share = Math.min(1, Math.max(0, (distance - DETAIL_RADIUS) / (COARSE_RADIUS - DETAIL_RADIUS)));
    return FINEST_TOLERANCE + share * (COARSEST_TOLERANCE - FINEST_TOLERANCE);
}

export function cosineOf(latitude) {
    return Math.cos((latitude * Math.PI) / 180);
}

/** Fewest points of a closed line that is an area. */
const SMALLEST_RING = 4;

/** Douglas-Peucker with a tolerance that depends on the place; both ends stay, and a ring stays a ring. */
export function simplifyLine(line) {
    const kept = new Uint8Array(line.length);
    kept[0] = kept[line.length - 1] = 1;
    const open = [[0, line.length - 1]];
    while (open.length > 0) {
        const [first, last] = open.pop();
        const split = worstPoint(line, first, last);
        if (split > 0) {
            kept[split] = 1;
            open.push([first, split], [split, last]);
        }
    }
    const simplified = line.filter((_, index) => kept[index]);
    return isClosed(line) && simplified.length < SMALLEST_RING ? line : simplified;
}

function isClosed(line) {
    const [first, last] = [line[0], line[line.length - 1]];
    return first[0] === last[0] && first[1] === last[1];
}

/** @returns {number} the index of the point that is furthest outside its tolerance, or 0. */
function worstPoint(line, first, last) {
    let worst = 0;
    let worstRatio = 1;
    for (let index = first + 1; index < last; ++index) {
        const ratio = distanceToSegment(line[index], line[first], line[last]) / toleranceAt(line[index]);
        if (ratio > worstRatio) {
            worstRatio = ratio;
            worst = index;
        }
    }
    return worst;
}

function distanceToSegment([x, y], [ax, ay], [bx, by]) {
    const stretch = cosineOf(y);
    const [dx, dy] = [(bx - ax) * stretch, by - ay];
    const [px, py] = [(x - ax) * stretch, y - ay];
    const length = dx * dx + dy * dy;
    const along = length > 0 ? Math.min(1, Math.max(0, (px * dx + py * dy) / length)) : 0;
    return Math.hypot(px - along * dx, py - along * dy);
}
