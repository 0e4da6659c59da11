// What is measured, inside the page: each function travels there by itself, so it uses nothing from around it. It answers
// milliseconds by the name of the row that shows them, and `done`, the number of frames, where that may be fewer than
// wanted because the limit came first.

/** From the scene to the map at rest. */
export async function addToIdle({ sceneText }) {
    const scene = JSON.parse(sceneText);
    const start = performance.now();
    await window.benchmark.add(scene);
    return { add: performance.now() - start };
}

/** A frame while the map moves two points each, to the side and back. */
export async function panning({ frames, limit }) {
    const start = performance.now();
    let done = 0;
    while (done < frames && performance.now() - start < limit) {
        window.benchmark.panBy(done < frames / 2 ? 2 : -2);
        await new Promise((resolve) => { requestAnimationFrame(resolve); });
        done += 1;
    }
    return { pan: (performance.now() - start) / done, done };
}

/**
 * A frame in which one marker moves, round a circle. What the worker puts off shows in the second number: all the time until
 * the map is at rest, a frame.
 */
export async function movingOne({ frames, limit }) {
    const start = performance.now();
    let done = 0;
    while (done < frames && performance.now() - start < limit) {
        const angle = (2 * Math.PI * done) / frames;
        window.benchmark.moveMarker(5000, 36 + Math.sin(angle), 128 + Math.cos(angle));
        await new Promise((resolve) => { requestAnimationFrame(resolve); });
        done += 1;
    }
    const move = (performance.now() - start) / done;
    await window.benchmark.idle();
    return { move, moveToIdle: (performance.now() - start) / done, done };
}

/** The library's own work for a frame that is only drawn again. */
export async function repainting({ frames, limit }) {
    const { ownWork, repaint } = window.benchmark;
    const { milliseconds, done } = await ownWork.ofFrames(frames, repaint, limit);
    return { repaint: milliseconds, done };
}

/** The library's own work for a frame in which only the camera has moved. */
export async function ownPanning({ frames, limit }) {
    const { ownWork, panBy } = window.benchmark;
    const { milliseconds, done } = await ownWork.ofFrames(frames, (frame) => panBy(frame % 200 < 100 ? 2 : -2), limit);
    return { ownPan: milliseconds, done };
}
