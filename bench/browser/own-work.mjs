/**
 * Counts the milliseconds that the library's own code takes on the main thread. Time belongs to the library from where the
 * browser calls something of its own, a frame, a timer or a listener, up to where it calls a map of GL JS.
 */
export class OwnWork {
    #isOwn = [];
    #since = 0;
    #milliseconds = 0;
    #isDrawing = true;
    #nextFrame = window.requestAnimationFrame.bind(window);

    constructor() {
        for (const scheduler of ["requestAnimationFrame", "setTimeout"]) {
            const native = window[scheduler].bind(window);
            window[scheduler] = (work, ...values) => native(this.#ownUnlessEngine(work), ...values);
        }
    }

    /** The engine's module with maps that tell when they are called. */
    watchedEngine(engine) {
        const watch = this;
        class WatchedMap extends engine.Map {
            constructor(options) {
                const leave = watch.#enter(false);
                super({ ...options, transformConstrain: watch.#as(true, options.transformConstrain) });
                leave();
            }
        }
        for (let kind = engine.Map.prototype; kind !== Object.prototype; kind = Object.getPrototypeOf(kind)) {
            for (const [name, { value }] of Object.entries(Object.getOwnPropertyDescriptors(kind))) {
                if (typeof value === "function" && name !== "constructor" && !Object.hasOwn(WatchedMap.prototype, name)) {
                    WatchedMap.prototype[name] = this.#as(false, value);
                }
            }
        }
        const { on } = WatchedMap.prototype;
        WatchedMap.prototype.on = function (event, listener, ...rest) {
            return on.call(this, event, watch.#ownUnlessEngine(listener), ...rest);
        };
        const { _render } = WatchedMap.prototype;
        WatchedMap.prototype._render = function (...values) {
            return watch.#isDrawing ? _render.apply(this, values) : this;
        };
        return { ...engine, Map: WatchedMap };
    }

    /**
     * Does a piece of work in each of a number of frames, and tells the own milliseconds of a frame. The engine's drawing is
     * left out meanwhile: it would not count, and keep a thousand frames going for minutes.
     */
    async ofFrames(frames, seconds, work) {
        const end = performance.now() + seconds * 1000;
        const step = this.#as(true, work);
        this.#milliseconds = 0;
        this.#isDrawing = false;
        let done = 0;
        while (done < frames && performance.now() < end) {
            step(done);
            await new Promise((resolve) => { this.#nextFrame(resolve); });
            done += 1;
        }
        this.#isDrawing = true;
        return { milliseconds: this.#milliseconds / done, done };
    }

    /** Work of the library's, also when GL JS is what calls it, or of GL JS. */
    #as(isOwn, work) {
        const watch = this;
        return function (...values) {
            if (watch.#isOwn.at(-1) === isOwn) return work.apply(this, values);
            const leave = watch.#enter(isOwn);
            try {
                return work.apply(this, values);
            } finally {
                leave();
            }
        };
    }

    #ownUnlessEngine(work) {
        return this.#isOwn.at(-1) === false ? work : this.#as(true, work);
    }

    #enter(isOwn) {
        this.#count();
        this.#isOwn.push(isOwn);
        return () => {
            this.#count();
            this.#isOwn.pop();
        };
    }

    #count() {
        const now = performance.now();
        if (this.#isOwn.at(-1) === true) this.#milliseconds += now - this.#since;
        this.#since = now;
    }
}
