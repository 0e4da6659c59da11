// What is measured, inside the page: each function travels there by itself, so it uses nothing from around it but `probe`.
// It answers milliseconds by the name of the row that shows them, and `done`, the number of frames, where that may be fewer
// than wanted because time was up, `seconds`.

/** Runs in each page first: what all measurements use. */
export function installProbe() {
    window.probe = {
        nextFrame: (note) => new Promise((resolve) => { requestAnimationFrame(() => resolve(note?.())); }),
        /** Waits until the graphics process has drawn all that it was told: it may be seconds behind the page. */
        drawn() {
            const context = document.querySelector("canvas.maplibregl-canvas").getContext("webgl2");
            context.readPixels(0, 0, 1, 1, context.RGBA, context.UNSIGNED_BYTE, new Uint8Array(4));
        },
        /**
         * Does a piece of work in each frame. Answers the milliseconds of a frame, all drawn, and those on the main thread:
         * the work and all callbacks of the frame.
         */
        async frames(wanted, seconds, work) {
            const start = performance.now();
            let done = 0;
            let busy = 0;
            while (done < wanted && performance.now() - start < seconds * 1000) {
                requestAnimationFrame(() => { busy -= performance.now(); });
                busy -= performance.now();
                work(done);
                busy += performance.now();
                await this.nextFrame(() => { busy += performance.now(); });
                done += 1;
            }
            this.drawn();
            return { frame: (performance.now() - start) / done, busy: busy / done, done, start };
        },
    };
}

/** From the scene to the map at rest, all drawn. */
export async function addToIdle({ sceneText }) {
    const scene = JSON.parse(sceneText);
    const start = performance.now();
    await window.benchmark.add(scene);
    window.probe.drawn();
    return { add: performance.now() - start };
}

/** A frame while the map moves two points each, to the side and back. */
export async function panning({ frames, seconds }) {
    const pan = (number) => window.benchmark.panBy(number % frames < frames / 2 ? 2 : -2);
    const { frame, busy, done } = await window.probe.frames(frames, seconds, pan);
    return { pan: frame, panBusy: busy, done };
}

/**
 * A frame in which one marker moves, round a circle. What the worker puts off shows in the time until the map is at rest
 * again, divided by the frames.
 */
export async function movingOne({ sceneText, frames, seconds }) {
    const marker = Math.floor(JSON.parse(sceneText).coordinates.length / 4); // the one in the middle
    const { frame, busy, done, start } = await window.probe.frames(frames, seconds, (number) => {
        const angle = (2 * Math.PI * number) / frames;
        window.benchmark.moveMarker(marker, 36 + Math.sin(angle), 128 + Math.cos(angle));
    });
    await window.benchmark.idle();
    window.probe.drawn();
    return { move: frame, moveBusy: busy, moveToIdle: (performance.now() - start) / done, done };
}

/** The library's own work for a frame that is only drawn again. */
export async function repainting({ frames, seconds }) {
    const { ownWork, repaint } = window.benchmark;
    const { milliseconds, done } = await ownWork.ofFrames(frames, seconds, repaint);
    return { repaint: milliseconds, done };
}

/** The library's own work for a frame in which only the camera has moved. */
export async function ownPanning({ frames, seconds }) {
    const { ownWork, panBy } = window.benchmark;
    const { milliseconds, done } = await ownWork.ofFrames(frames, seconds, (number) => panBy(number % 200 < 100 ? 2 : -2));
    return { ownPan: milliseconds, done };
}
