// A static file server for the built page. Also a command: node serve.mjs SITE [PORT]
import { createReadStream, promises as fs } from 'node:fs';
import { createServer } from 'node:http';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const types = {
    '.css': 'text/css; charset=utf-8',
    '.geojson': 'application/geo+json',
    '.html': 'text/html; charset=utf-8',
    '.js': 'text/javascript; charset=utf-8',
    '.json': 'application/json',
    '.mjs': 'text/javascript; charset=utf-8',
    '.png': 'image/png',
    '.svg': 'image/svg+xml',
    '.wasm': 'application/wasm',
    '.woff2': 'font/woff2',
};

// With these two the page is alone in its process and its clock is a fine one.
const headers = {
    'Cross-Origin-Opener-Policy': 'same-origin',
    'Cross-Origin-Embedder-Policy': 'require-corp',
    'Cache-Control': 'no-cache',
};

/** The file that a request's path names: in a mounted folder, else in the site; undefined outside of both. */
function fileOf(requestPath, site, mounts) {
    const prefix = Object.keys(mounts).find((start) => requestPath.startsWith(start));
    const folder = path.resolve(prefix ? mounts[prefix] : site);
    const file = path.join(folder, prefix ? requestPath.slice(prefix.length) : requestPath);
    return file === folder || file.startsWith(folder + path.sep) ? file : undefined;
}

async function answer(request, response, site, mounts) {
    if (request.method !== 'GET' && request.method !== 'HEAD') {
        response.writeHead(405, { Allow: 'GET, HEAD' }).end();
        return;
    }
    try {
        const requestPath = decodeURIComponent(new URL(request.url, 'http://localhost').pathname);
        let file = fileOf(requestPath, site, mounts);
        if (file && (await fs.stat(file)).isDirectory()) {
            file = path.join(file, 'index.html');
        }
        const { size } = await fs.stat(file);
        const type = types[path.extname(file).toLowerCase()] ?? 'application/octet-stream';
        response.writeHead(200, { ...headers, 'Content-Type': type, 'Content-Length': size });
        if (request.method === 'HEAD') {
            response.end();
        } else {
            createReadStream(file).on('error', () => response.destroy()).pipe(response);
        }
    } catch {
        response.writeHead(404, { ...headers, 'Content-Type': 'text/plain' }).end('not found\n');
    }
}

/**
 * Serves a folder to this machine alone.
 *
 * @param {string} site    the folder.
 * @param {object} mounts  further folders by the start of their paths, such as {'/input/': '/home/me/maps'}.
 * @param {number} port    0 for any free one; a port that is taken counts as 0.
 * @returns {Promise<{address: string, close: () => Promise<void>}>}
 */
export async function serve(site, mounts = {}, port = 0) {
    const server = createServer((request, response) => answer(request, response, site, mounts));
    const listen = (wanted) =>
        new Promise((resolve, reject) => {
            server.once('error', reject).listen(wanted, '127.0.0.1', () => {
                server.off('error', reject);
                resolve();
            });
        });
    await listen(port).catch((error) => {
        if (error.code !== 'EADDRINUSE') {
            throw error;
        }
        return listen(0);
    });
    return {
        address: `http://127.0.0.1:${server.address().port}/`,
        close: () =>
            new Promise((resolve) => {
                server.close(resolve);
                server.closeAllConnections?.();
            }),
    };
}

if (process.argv[1] === fileURLToPath(import.meta.url)) {
    const [site = 'build/web/site', port = '8080'] = process.argv.slice(2);
    process.stdout.write(`${(await serve(site, {}, Number(port))).address}\n`);
}
