// The cases of the benchmark: what is on the map, the rival's page, what is measured, and the aims.
import { linesOverKorea, markersOverKorea, overlappingAreas, separateAreas } from "./scenes.mjs";
import { addToIdle, movingOne, ownPanning, panning, repainting } from "./steps.mjs";

/**
 * A case:
 *   title   what the map shows;
 *   rival   page that does the same by hand; a case without one shows our figures alone;
 *   count   how many shapes there are;
 *   scene   makes so many of them, what is put on the map;
 *   pairs   the most runs of each side, where few are enough;
 *   steps   what a measurement does, in turn, each with its number of frames;
 *   rows    what is printed: the name of a figure, what it is, and the most that it may be, as a ratio to the rival's or,
 *           without one, in milliseconds.
 */
const drawn = {
    steps: [{ measure: addToIdle }, { measure: panning, frames: 200 }],
    rows: [
        { key: "add", what: "add to idle", aim: 1.3 },
        { key: "pan", what: "frame while panning", aim: 1.1 },
        { key: "panBusy", what: "of it on the main thread" },
    ],
};

const onlyShown = { ...drawn, pairs: 1, rows: drawn.rows.map(({ key, what }) => ({ key, what })) };
const grouped = (number) => number.toLocaleString("en-US");

const markers = (count) => ({
    title: `${grouped(count)} markers with titles`,
    rival: "one-symbol-layer.html",
    count,
    scene: markersOverKorea,
    ...drawn,
});

const literal = (count) => ({
    ...markers(count), title: `${grouped(count)} markers, by hand a layer each`, rival: "layer-per-marker.html", ...onlyShown,
});

const areas = {
    title: "5,000 outlined polygons, separate",
    rival: "one-area-layer.html",
    count: 5000,
    scene: separateAreas,
    ...drawn,
};

// One layer for all areas and one for all outlines cannot draw the same picture here: the outlines of areas that are
// covered show through.
const overlapping = {
    ...areas, title: "5,000 outlined polygons, all overlapping", scene: overlappingAreas, ...onlyShown,
};

export const cases = {
    "markers-1000": markers(1000),
    "markers-10000": markers(10_000),
    "markers-50000": markers(50_000),
    "literal-1000": literal(1000),
    "literal-3000": literal(3000),
    moving: {
        ...markers(10_000),
        steps: [{ measure: addToIdle }, { measure: movingOne, frames: 200 }],
        rows: [
            { key: "move", what: "frame that moves one of them", aim: 1.5 },
            { key: "moveBusy", what: "of it on the main thread" },
            { key: "moveToIdle", what: "the same, with all until idle", aim: 1.5 },
        ],
    },
    lines: {
        title: "10,000 polylines of 20 points",
        rival: "one-line-layer.html",
        count: 10_000,
        scene: (count) => linesOverKorea(count, 20),
        ...drawn,
    },
    areas,
    overlapping,
    unchanged: {
        title: "50,000 markers with titles, our own work",
        query: "?own-work",
        count: 50_000,
        scene: markersOverKorea,
        pairs: 1,
        steps: [{ measure: addToIdle }, { measure: repainting, frames: 1000 }, { measure: ownPanning, frames: 1000 }],
        rows: [
            { key: "repaint", what: "frame that is drawn again", aim: 0.2 },
            { key: "ownPan", what: "frame while panning", aim: 0.2 },
        ],
    },
};
