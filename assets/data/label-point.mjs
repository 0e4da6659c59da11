// Where to write a name on an area: the middle of the largest circle that fits into it, as seen on the map.

/** Cells smaller than this share of the area's size are not looked into. */
const PRECISION = 0.01;

/** @returns {[number, number]} longitude and latitude of the point that is furthest from the ring. */
export function labelPoint(ring) {
    const outline = ring.map(toMap);
    const [left, right] = [Math.min(...outline.map((p) => p[0])), Math.max(...outline.map((p) => p[0]))];
    const [bottom, top] = [Math.min(...outline.map((p) => p[1])), Math.max(...outline.map((p) => p[1]))];
    const size = Math.max(right - left, top - bottom);
    let best = cellAt(outline, (left + right) / 2, (bottom + top) / 2, 0);
    const open = [cellAt(outline, (left + right) / 2, (bottom + top) / 2, size / 2)];
    while (open.length > 0) {
        const cell = open.pop();
        if (cell.distance > best.distance) {
            best = cell;
        }
        if (cell.reach - best.distance > PRECISION * size) {
            const half = cell.half / 2;
            for (const [dx, dy] of [[-half, -half], [half, -half], [-half, half], [half, half]]) {
                open.push(cellAt(outline, cell.x + dx, cell.y + dy, half));
            }
        }
    }
    return fromMap([best.x, best.y]);
}

/** Mercator, in degrees at the equator: sizes compare as they look. */
function toMap([longitude, latitude]) {
    const clamped = Math.min(85, Math.max(-85, latitude));
    return [longitude, (Math.asinh(Math.tan((clamped * Math.PI) / 180)) * 180) / Math.PI];
}

function fromMap([x, y]) {
    return [x, (Math.atan(Math.sinh((y * Math.PI) / 180)) * 180) / Math.PI];
}

/** `distance` from the outline, negative outside; `reach` is the most that any point of the cell can have. */
function cellAt(outline, x, y, half) {
    const distance = signedDistance(outline, x, y);
    return { x, y, half, distance, reach: distance + half * Math.SQRT2 };
}

function signedDistance(outline, x, y) {
    let nearest = Infinity;
    let inside = false;
    for (let i = 1; i < outline.length; ++i) {
        const [[ax, ay], [bx, by]] = [outline[i - 1], outline[i]];
        if ((ay > y) !== (by > y) && x < ax + ((bx - ax) * (y - ay)) / (by - ay)) {
            inside = !inside;
        }
        nearest = Math.min(nearest, squaredDistance(x, y, ax, ay, bx, by));
    }
    return (inside ? 1 : -1) * Math.sqrt(nearest);
}

function squaredDistance(x, y, ax, ay, bx, by) {
    const [dx, dy] = [bx - ax, by - ay];
    const length = dx * dx + dy * dy;
    const along = length > 0 ? Math.min(1, Math.max(0, ((x - ax) * dx + (y - ay) * dy) / length)) : 0;
    const [ex, ey] = [x - ax - along * dx, y - ay - along * dy];
    return ex * ex + ey * ey;
}
