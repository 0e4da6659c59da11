// What the benchmarks put on the map: shapes over Korea, the same for every run. Coordinates are latitude and longitude in
// turn, degrees.

/** Numbers from 0 to 1, the same after each start. */
function randomNumbers() {
    let state = 20261121;
    return () => {
        state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
        return state / 2 ** 32;
    };
}

/** Points all over Korea. */
export function markersOverKorea(count) {
    const random = randomNumbers();
    const coordinates = Array.from({ length: count * 2 }, (_, i) => (i % 2 === 0 ? 33 + 6 * random() : 124 + 8 * random()));
    return { kind: "markers", coordinates };
}

/**
 * Lines that wind from points all over Korea, three kilometres a step. Each step turns so far that GL JS straightens none of
 * them: a page that leaves its tolerance alone draws them the same.
 */
export function linesOverKorea(count, pointsOfEach) {
    const random = randomNumbers();
    const coordinates = [];
    for (let line = 0; line < count; line += 1) {
        let [latitude, longitude] = [33 + 6 * random(), 124 + 8 * random()];
        let heading = 2 * Math.PI * random();
        for (let point = 0; point < pointsOfEach; point += 1) {
            coordinates.push(latitude, longitude);
            heading += (point % 2 === 0 ? 1 : -1) + 0.4 * (random() - 0.5);
            latitude += 0.03 * Math.cos(heading);
            longitude += 0.037 * Math.sin(heading);
        }
    }
    return { kind: "lines", coordinates, pointsOfEach };
}

const corners = 6;

function hexagonAround(latitude, longitude, radius) {
    const width = radius / Math.cos(latitude * Math.PI / 180);
    const angles = Array.from({ length: corners }, (_, i) => 2 * Math.PI * i / corners);
    return angles.flatMap((angle) => [latitude + radius * Math.sin(angle), longitude + width * Math.cos(angle)]);
}

/**
 * Hexagons in rows and columns, some 10 points apart at zoom 6 and 5 at zoom 5. They fill 0.4 of that, so even at zoom 5
 * outlines of 1 point, smoothed edges counted in, keep off each other.
 */
export function separateAreas(count) {
    const columns = Math.ceil(Math.sqrt(count * 4 / 3));
    const rows = Math.ceil(count / columns);
    const coordinates = Array.from({ length: count }, (_, i) => hexagonAround(
        33 + 6 * (Math.floor(i / columns) + 0.5) / rows, 124 + 8 * (i % columns + 0.5) / columns, 0.2 * 6 / rows)).flat();
    return { kind: "areas", coordinates, pointsOfEach: corners };
}

/** Hexagons that all cover the middle of the map. */
export function overlappingAreas(count) {
    const random = randomNumbers();
    const coordinates = Array.from({ length: count },
        () => hexagonAround(35.9 + 0.2 * random(), 127.9 + 0.2 * random(), 0.2)).flat();
    return { kind: "areas", coordinates, pointsOfEach: corners };
}
