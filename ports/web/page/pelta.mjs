import * as maplibregl from "./maplibre-gl.mjs";

maplibregl.setWorkerUrl(new URL("./maplibre-gl-worker.mjs", import.meta.url).href);

/** Starts an application's module; `settings` go to it as they are. Answers the running module, or fails. */
export async function start(application, settings = {}) {
    const context = document.createElement("canvas").getContext("webgl2");
    if (!context) {
        throw new Error("The map needs WebGL 2, which this browser does not offer or has switched off.");
    }
    context.getExtension("WEBGL_lose_context")?.loseContext();
    return application({ maplibregl, ...settings });
}
