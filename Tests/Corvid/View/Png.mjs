// The pixels of a PNG as browsers write them: 8 bits a channel, not interlaced.
import { inflateSync } from "node:zlib";

export function readPng(bytes) {
    const width = bytes.readUInt32BE(16);
    const height = bytes.readUInt32BE(20);
    const channels = bytes[25] === 6 ? 4 : 3;
    const parts = [];
    for (let at = 8; at < bytes.length; at += 12 + bytes.readUInt32BE(at))
        if (bytes.toString("latin1", at + 4, at + 8) === "IDAT")
            parts.push(bytes.subarray(at + 8, at + 8 + bytes.readUInt32BE(at)));
    const packed = inflateSync(Buffer.concat(parts));
    const stride = width * channels;
    const pixels = new Uint8Array(stride * height);
    for (let y = 0; y < height; ++y) {
        const filter = packed[y * (stride + 1)];
        for (let x = 0; x < stride; ++x) {
            const left = x >= channels ? pixels[y * stride + x - channels] : 0;
            const up = y > 0 ? pixels[(y - 1) * stride + x] : 0;
            const corner = x >= channels && y > 0 ? pixels[(y - 1) * stride + x - channels] : 0;
            pixels[y * stride + x] = packed[y * (stride + 1) + 1 + x] + predicted(filter, left, up, corner);
        }
    }
    return { width, height, channels, pixels };
}

function predicted(filter, left, up, corner) {
    if (filter === 4) {
        const [toLeft, toUp, toCorner] = [Math.abs(up - corner), Math.abs(left - corner), Math.abs(left + up - 2 * corner)];
        return toLeft <= toUp && toLeft <= toCorner ? left : toUp <= toCorner ? up : corner;
    }
    return [0, left, up, (left + up) >> 1][filter];
}

// Within a rectangle of the picture: the pixels, and how many colours they have.
export function cut(picture, { x, y, width, height }) {
    const rows = [];
    const colours = new Set();
    for (let row = Math.floor(y); row < Math.min(picture.height, y + height); ++row) {
        for (let column = Math.floor(x); column < Math.min(picture.width, x + width); ++column) {
            const at = (row * picture.width + column) * picture.channels;
            const colour = picture.pixels[at] << 16 | picture.pixels[at + 1] << 8 | picture.pixels[at + 2];
            rows.push(colour);
            colours.add(colour);
        }
    }
    return { pixels: rows, colourCount: colours.size };
}

export function differingShare(one, other) {
    return one.pixels.filter((colour, i) => colour !== other.pixels[i]).length / one.pixels.length;
}
