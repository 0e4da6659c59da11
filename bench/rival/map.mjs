// What the hand-written pages have in common: a map over Korea on the bare style, and what a benchmark asks of a page.
import * as maplibregl from "./maplibre-gl.mjs";

maplibregl.setWorkerUrl("./maplibre-gl-worker.mjs");

/** Everything that is not said here, fading among it, is as GL JS has it by itself; so it is on the library's page. */
export const map = new maplibregl.Map({
    container: "map", style: "style/pelta-light.json", center: [128, 36], zoom: 6, attributionControl: false,
});

const idle = () => new Promise((resolve) => map.once("idle", resolve));

function panBy(points) {
    const center = map.project(map.getCenter());
    map.jumpTo({ center: map.unproject([center.x - points, center.y]) });
}

const iconNames = ["blue", "gray", "green", "red", "yellow"];
const colors = ["rgb(51,102,204)", "rgb(255,153,51)", "rgb(51,153,51)", "rgb(204,51,51)", "rgb(153,102,204)"];
export const colorOf = (number) => colors[number % colors.length];
export const iconOf = (number) => iconNames[number % iconNames.length];

async function addIcons() {
    for (const name of iconNames) {
        const image = new Image();
        image.src = `peltamap_default_marker_icon_${name}@1x.png`;
        await image.decode();
        map.addImage(name, image, { pixelRatio: 1 });
    }
}

/** Latitudes and longitudes in turn as positions, longitude first. */
export const positionsOf = (numbers) =>
    Array.from({ length: numbers.length / 2 }, (_, i) => [numbers[2 * i + 1], numbers[2 * i]]);

/** Positions as lists of a length. */
export const listsOf = (positions, length) =>
    Array.from({ length: positions.length / length }, (_, i) => positions.slice(i * length, (i + 1) * length));

/** Features numbered from 0, so that one can be changed later. */
export const featuresOf = (geometries, propertiesOf) => ({
    type: "FeatureCollection",
    features: geometries.map((geometry, id) => ({ type: "Feature", id, geometry, properties: propertiesOf(id) })),
});

// The fonts that the library's page asks the browser for.
const fonts = [
    "Noto Sans Regular", "Noto Sans", "Noto Sans KR", "Noto Sans CJK KR", "Apple SD Gothic Neo", "Malgun Gothic",
];

/** The layout and paint of a marker with title, as the library draws one of its own: the later one lies above. */
export const markerStyle = (icon, title) => ({
    layout: {
        "symbol-z-order": "source",
        "icon-image": icon, "icon-anchor": "bottom", "icon-allow-overlap": true,
        "text-field": title, "text-font": fonts, "text-size": 12, "text-anchor": "top", "text-offset": [0, 1 / 3],
        "text-allow-overlap": true, "text-optional": true, "text-max-width": 100_000,
    },
    paint: {
        "text-color": "#000", "text-halo-color": "#fff", "text-halo-width": 2,
        "icon-halo-color": "rgba(255,255,255,0.5)", "icon-halo-width": 1,
    },
});

/** Hands a page to whoever measures it. `add` puts a scene on the map. */
export function offer(add, commands = {}) {
    window.benchmark = {
        ready: map.once("load").then(addIcons).then(idle),
        add(scene) {
            add(scene);
            return idle();
        },
        idle,
        panBy,
        ...commands,
    };
}
