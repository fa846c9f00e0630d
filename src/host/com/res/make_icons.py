#!/usr/bin/env python3
"""Writes the small icons Vireo.dll carries as resources: a0.ico .. a9.ico, the ten frames of
the busy animation (a ring of dots with one lit, turning a tenth per frame), and attach.ico (a
paper clip). 16x16, 32 bits with alpha: each file is about 1 KB, and drawing them here keeps
binary files out of the repository.

usage: make_icons.py OUTPUT_FOLDER
"""
import math
import os
import struct
import sys

SIZE = 16


def ico(pixels):
    """pixels[y][x] = (r, g, b, a), top row first -> bytes of a one-image .ico file."""
    xor = b"".join(struct.pack("<4B", b, g, r, a) for row in reversed(pixels) for (r, g, b, a) in row)
    and_mask = bytes(4 * SIZE)  # rows padded to 32 bits; transparency comes from the alpha
    header = struct.pack("<IiiHHIIiiII", 40, SIZE, 2 * SIZE, 1, 32, 0, len(xor) + len(and_mask), 0, 0, 0, 0)
    image = header + xor + and_mask
    return struct.pack("<HHH", 0, 1, 1) + struct.pack("<BBBBHHII", SIZE, SIZE, 0, 0, 1, 32, len(image), 22) + image


def blank():
    return [[(0, 0, 0, 0)] * SIZE for _ in range(SIZE)]


def disc(pixels, cx, cy, radius, colour):
    for y in range(SIZE):
        for x in range(SIZE):
            if (x + 0.5 - cx) ** 2 + (y + 0.5 - cy) ** 2 <= radius ** 2:
                pixels[y][x] = colour


def frame(lit):
    pixels = blank()
    for i in range(10):
        angle = 2 * math.pi * i / 10 - math.pi / 2
        colour = (0, 90, 200, 255) if i == lit else (150, 170, 200, 255)
        disc(pixels, 8 + 5.5 * math.cos(angle), 8 + 5.5 * math.sin(angle), 1.6 if i == lit else 1.1, colour)
    return pixels


def paper_clip():
    pixels = blank()
    wire = (90, 90, 100, 255)
    for x0, x1, y0, y1 in ((4, 11, 1, 14), (6, 9, 3, 11)):  # two nested open loops
        for y in range(y0, y1 + 1):
            pixels[y][x0] = pixels[y][x1] = wire
        for x in range(x0, x1 + 1):
            pixels[y0][x] = wire
    for x in range(4, 12):
        pixels[14][x] = wire
    for y in range(11, 15):
        pixels[y][9] = (0, 0, 0, 0) if y < 14 else wire
    return pixels


def main():
    out = sys.argv[1]
    os.makedirs(out, exist_ok=True)
    images = {f"a{i}.ico": frame(i) for i in range(10)}
    images["attach.ico"] = paper_clip()
    for name, pixels in images.items():
        data = ico(pixels)
        path = os.path.join(out, name)
        # Rewritten only when different, so an unchanged icon does not relink the DLL.
        if not os.path.exists(path) or open(path, "rb").read() != data:
            with open(path, "wb") as f:
                f.write(data)


if __name__ == "__main__":
    main()
