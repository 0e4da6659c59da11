// The viewer page as the tests open it.
import path from 'node:path';
import { after, before } from 'node:test';
import { openPage, startBrowser, waitUntilReady } from '../../../apps/viewer/tools/browser.mjs';
import { serve } from '../../../apps/viewer/tools/serve.mjs';
import { build } from './page.mjs';

/** Server and browser of a test file; they start before its tests and end after them. */
export function useViewer() {
    const viewer = {
        /** Opens the viewer with a query and waits until it is ready. */
        async open(query = '', form = { width: 1280, height: 800, scale: 1 }) {
            const page = await openPage(viewer.browser, form);
            await waitUntilReady(page, viewer.server.address + query);
            return page;
        },
    };
    before(async () => {
        viewer.server = await serve(path.join(build, 'site'));
        viewer.browser = await startBrowser();
    });
    after(async () => {
        await viewer.browser?.close();
        await viewer.server?.close();
    });
    return viewer;
}
