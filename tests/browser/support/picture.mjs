// A screenshot as pixels.

/** Runs in the page: the pixels of a PNG file as text of bytes. */
async function decodeInPage(base64) {
    const bytes = Uint8Array.from(atob(base64), (letter) => letter.charCodeAt(0));
    const bitmap = await createImageBitmap(new Blob([bytes], { type: 'image/png' }));
    const context = new OffscreenCanvas(bitmap.width, bitmap.height).getContext('2d');
    context.drawImage(bitmap, 0, 0);
    const { data } = context.getImageData(0, 0, bitmap.width, bitmap.height);
    let text = '';
    for (let i = 0; i < data.length; i += 32768) {
        text += String.fromCharCode(...data.subarray(i, i + 32768));
    }
    return { width: bitmap.width, height: bitmap.height, scale: devicePixelRatio, pixels: btoa(text) };
}

/** Pixels with places in points. */
export class Picture {
    static async decode(page, png) {
        const { pixels, ...size } = await page.evaluate(decodeInPage, png.toString('base64'));
        return Object.assign(new Picture(), size, { pixels: Buffer.from(pixels, 'base64') });
    }

    /** The colour at a point, [red, green, blue]. */
    at(x, y) {
        const column = Math.floor(x * this.scale);
        const row = Math.floor(y * this.scale);
        return [...this.pixels.subarray(4 * (row * this.width + column)).subarray(0, 3)];
    }

    /**
     * Where a colour is found within a rectangle [left, top, right, bottom], by default the whole picture: the middle
     * and the edges of all such pixels, in points, and how many they are.
     */
    find(color, [left, top, right, bottom] = [0, 0, this.width / this.scale, this.height / this.scale], tolerance = 60) {
        const found = { count: 0, x: 0, y: 0, left: Infinity, top: Infinity, right: -Infinity, bottom: -Infinity };
        const [firstRow, lastRow] = [Math.round(top * this.scale), Math.round(bottom * this.scale)];
        const [firstColumn, lastColumn] = [Math.round(left * this.scale), Math.round(right * this.scale)];
        for (let row = firstRow; row < lastRow; ++row) {
            for (let column = firstColumn; column < lastColumn; ++column) {
                const offset = 4 * (row * this.width + column);
                if (color.every((part, i) => Math.abs(part - this.pixels[offset + i]) <= tolerance)) {
                    found.count += 1;
                    found.x += column + 0.5;
                    found.y += row + 0.5;
                    found.left = Math.min(found.left, column);
                    found.top = Math.min(found.top, row);
                    found.right = Math.max(found.right, column + 1);
                    found.bottom = Math.max(found.bottom, row + 1);
                }
            }
        }
        for (const key of ['left', 'top', 'right', 'bottom']) {
            found[key] /= this.scale;
        }
        found.x /= found.count * this.scale;
        found.y /= found.count * this.scale;
        return found;
    }
}

/** True when two colours differ by at most `tolerance` in each part. */
export const isNear = (color, wanted, tolerance = 12) =>
    color.every((part, i) => Math.abs(part - wanted[i]) <= tolerance);
