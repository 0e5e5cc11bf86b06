#!/usr/bin/env python3
"""Draws the program's icon: two sheets side by side, their lines banded in the colours of a comparison.

    resources/merivane_icon.py            writes resources/merivane.ico

The icon is kept beside its drawing so that a build needs no Python.
"""
import os
import struct
import zlib

SIZES = (16, 20, 24, 32, 40, 48, 64, 256)
INK, PAPER = (0x2B, 0x3A, 0x55), (0xFF, 0xFF, 0xFF)
LEFT, RIGHT, CHANGED, LINE = (0x7F, 0xC0, 0x7F), (0xF0, 0xB0, 0x50), (0x5A, 0x9B, 0xE0), (0xC4, 0xCC, 0xD8)


def rectangles():
    """(colour, left, top, right, bottom) on a grid of 32, painted in order."""
    yield INK, 1, 2, 15.5, 30
    yield INK, 16.5, 2, 31, 30
    yield PAPER, 2.5, 3.5, 14, 28.5
    yield PAPER, 18, 3.5, 29.5, 28.5
    for left, own in ((4, LEFT), (19.5, RIGHT)):
        right = left + 8.5
        yield LINE, left, 6, right, 8.5
        yield own, left, 10.5, right, 15
        yield LINE, left, 17, right - 2, 19.5
    # A changed line runs through both sheets and the gap between them.
    yield CHANGED, 4, 21.5, 28, 26.5


def draw(size, samples=4):
    """Rows of (r, g, b, a) from the top, each pixel the mean of samples x samples points."""
    areas = list(rectangles())
    rows = []
    for y in range(size):
        row = []
        for x in range(size):
            total = [0, 0, 0, 0]
            for sample in range(samples * samples):
                px = (x + (sample % samples + 0.5) / samples) * 32 / size
                py = (y + (sample // samples + 0.5) / samples) * 32 / size
                for colour, left, top, right, bottom in reversed(areas):
                    if left <= px < right and top <= py < bottom:
                        total = [t + c for t, c in zip(total, colour + (255,))]
                        break
            covered = total[3] / 255
            row.append(tuple(round(t / covered) for t in total[:3]) + (round(total[3] / samples**2),)
                       if covered else (0, 0, 0, 0))
        rows.append(row)
    return rows


def bitmap(rows):
    size = len(rows)
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, 0, 0, 0, 0, 0)
    pixels = b"".join(struct.pack("4B", b, g, r, a) for row in reversed(rows) for r, g, b, a in row)
    mask = bytes((size + 31) // 32 * 4 * size)
    return header + pixels + mask


def png(rows):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    size = len(rows)
    raw = b"".join(b"\0" + b"".join(bytes(pixel) for pixel in row) for row in rows)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))


def main():
    images = [(size, (png if size == 256 else bitmap)(draw(size))) for size in SIZES]
    offset = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 1, len(images))
    for size, data in images:
        directory += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "merivane.ico"), "wb") as file:
        file.write(directory + b"".join(data for _, data in images))


if __name__ == "__main__":
    main()
