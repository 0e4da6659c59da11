import * as maplibregl from "./maplibre-gl.mjs";

maplibregl.setWorkerUrl(new URL("./maplibre-gl-worker.mjs", import.meta.url).href);

/** Starts an application's module; `settings` go to it as they are. Answers the running module. */
export function start(application, settings = {}) {
    return application({ maplibregl, ...settings });
}
