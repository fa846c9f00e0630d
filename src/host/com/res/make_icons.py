#!/usr/bin/env python3
"""Draws the pictures Vireo.dll carries as resources: a0.ico, the sender nobody knows (a white
question mark on a grey disc, over a figure's shoulders at 32 x 32); a1.ico .. a9.ico, the nine
pictures a user can choose (a white figure on a disc of its own colour, with one of three hair
shapes, so that neighbours differ even to someone who cannot tell their colours apart); and
attach.ico, a paper clip.

The chat board shows them at 32 x 32 and the user properties dialog at 16 x 16, so each file
holds both sizes, each drawn for its own size rather than scaled. 32 bits with alpha; the edges
are smoothed by sampling every pixel on a grid. Drawing them here keeps binary files out of the
repository; the output depends on nothing but this file.

usage: make_icons.py OUTPUT_FOLDER [--preview SHEET.png]
"""
import math
import os
import struct
import sys
import zlib

SIZES = (32, 16)
WHITE = (255, 255, 255, 255)

# Nine hues far enough apart to tell at a glance, each dark enough to carry a white figure.
USER_COLOURS = (
    (211, 47, 47),  # red
    (239, 108, 0),  # orange
    (190, 145, 0),  # gold
    (56, 142, 60),  # green
    (0, 137, 150),  # teal
    (30, 100, 210),  # blue
    (110, 60, 190),  # violet
    (200, 30, 130),  # magenta
    (120, 84, 60),  # brown
)


# --- shapes: functions of a point in the unit square (0,0 top left .. 1,1 bottom right) ---

def disc(cx, cy, r):
    return lambda x, y: (x - cx) ** 2 + (y - cy) ** 2 <= r * r


def ellipse(cx, cy, rx, ry):
    return lambda x, y: ((x - cx) / rx) ** 2 + ((y - cy) / ry) ** 2 <= 1


def segment_distance(x, y, x0, y0, x1, y1):
    dx, dy = x1 - x0, y1 - y0
    t = max(0.0, min(1.0, ((x - x0) * dx + (y - y0) * dy) / (dx * dx + dy * dy)))
    return math.hypot(x - x0 - t * dx, y - y0 - t * dy)


def arc_distance(x, y, cx, cy, r, start, sweep):
    """Distance to the arc from angle `start` turning `sweep` (>= 0) radians; y grows
    downwards, so the arc turns clockwise on the screen."""
    turned = (math.atan2(y - cy, x - cx) - start) % (2 * math.pi)
    if turned <= sweep:
        return abs(math.hypot(x - cx, y - cy) - r)
    ends = (start, start + sweep)
    return min(math.hypot(x - cx - r * math.cos(a), y - cy - r * math.sin(a)) for a in ends)


def stroke(pieces, width):
    """A line of the given width along segments ('line', x0, y0, x1, y1) and arcs
    ('arc', cx, cy, r, start, sweep)."""
    def inside(x, y):
        for kind, *p in pieces:
            d = segment_distance(x, y, *p) if kind == "line" else arc_distance(x, y, *p)
            if d <= width / 2:
                return True
        return False
    return inside


def render(layers, size, grid=6):
    """layers: (shape, colour) pairs, later ones on top; colour may be a function of y.
    -> pixels[y][x] = (r, g, b, a), colour not premultiplied, as .ico files store it."""
    pixels = []
    for py in range(size):
        row = []
        for px in range(size):
            total = [0.0, 0.0, 0.0, 0.0]
            for sy in range(grid):
                for sx in range(grid):
                    x, y = (px + (sx + 0.5) / grid) / size, (py + (sy + 0.5) / grid) / size
                    for shape, colour in reversed(layers):
                        if shape(x, y):
                            r, g, b, a = colour(y) if callable(colour) else colour
                            total[0] += r * a
                            total[1] += g * a
                            total[2] += b * a
                            total[3] += a
                            break
            alpha = total[3] / (grid * grid)
            if total[3] == 0:
                row.append((0, 0, 0, 0))
            else:
                row.append(tuple(round(c / total[3]) for c in total[:3]) + (round(alpha),))
        pixels.append(row)
    return pixels


# --- the pictures ---

def shade(colour, factor):
    return tuple(max(0, min(255, round(c * factor))) for c in colour)


def background(colour):
    """A disc lighter at the top than at the bottom: a flat disc looks like a hole."""
    def at(y):
        return shade(colour, 1.18 - 0.3 * y) + (255,)
    return disc(0.5, 0.5, 0.48), at


def shoulders(top=0.6):
    # Broad at the top, cut flat at the bottom, the lower corners rounded by a disc inside the
    # background's: shoulders running into the edge would read, on the board's white page, as a
    # bite out of the disc.
    body = ellipse(0.5, top + 0.33, 0.3, 0.33)
    rim = disc(0.5, 0.5, 0.405)
    return lambda x, y: body(x, y) and rim(x, y) and y <= 0.88


HEAD = disc(0.5, 0.36, 0.16)


def figure(colour, style):
    """style 0: no hair drawn; 1: long hair, falling on both sides of the face to the
    shoulders; 2: short hair swept to one side. The hair is a dark shade of the disc's colour."""
    hair = shade(colour, 0.45) + (255,)
    cap = disc(0.5, 0.35, 0.18)
    layers = []
    if style == 1:
        mane = ellipse(0.5, 0.43, 0.21, 0.24)
        layers.append((lambda x, y: cap(x, y) or (mane(x, y) and y >= 0.35 and
                                                  (y < 0.48 or abs(x - 0.5) > 0.09)), hair))
    layers += [(HEAD, WHITE), (shoulders(), WHITE)]
    if style in (1, 2):
        # A fringe higher on one side than the other; long hair parts the other way.
        tilt = 0.06 if style == 2 else -0.07
        layers.append((lambda x, y: cap(x, y) and y <= 0.295 + tilt * (x - 0.5) / 0.18, hair))
    return layers


def user(number):
    colour = USER_COLOURS[number - 1]
    return [background(colour)] + figure(colour, (number - 1) % 3)


def question_mark(cy, r, width, stem_end, dot_y):
    """The hook (centred on 0.5, cy), its turn down into the stem, the stem to stem_end, and the
    dot."""
    end = math.radians(70)
    hook = stroke([("arc", 0.5, cy, r, math.radians(190), math.radians(240)),
                   ("line", 0.5 + r * math.cos(end), cy + r * math.sin(end), 0.5, cy + r + 0.03),
                   ("line", 0.5, cy + r + 0.03, 0.5, stem_end)], width)
    dot = disc(0.5, dot_y, width * 0.6)
    return lambda x, y: hook(x, y) or dot(x, y)


def unknown_user(size):
    grey = background((150, 150, 150))
    if size < 32:
        # Sixteen pixels hold a question mark or a figure, not both: the mark says more.
        return [grey, (question_mark(0.33, 0.16, 0.14, 0.6, 0.79), WHITE)]
    # A question mark in place of the head; the shoulders sit lower to make room for it.
    return [grey, (question_mark(0.25, 0.095, 0.1, 0.4, 0.54), WHITE), (shoulders(0.65), WHITE)]


def paper_clip(size):
    """A clip of four evenly spaced legs lying on the diagonal: the long outer loop, and inside
    it the loop that ends in the middle. Drawn upright in its own units, then turned."""
    a = 1.0
    legs = (-a, -a / 3, a / 3, a)
    # At 16 the clip is shorter for its width, or its legs would crowd into one grey patch.
    top, bottom, inner_top = 0.0, (4.7 if size >= 32 else 3.3), 1.0
    path = [
        ("line", legs[0], bottom * 0.74, legs[0], top),
        ("arc", 0, top, a, math.pi, math.pi),  # over the top, left to right
        ("line", legs[3], top, legs[3], bottom),
        ("arc", a / 3, bottom, 2 * a / 3, 0, math.pi),  # under the bottom, back to the left
        ("line", legs[1], bottom, legs[1], inner_top),
        ("arc", 0, inner_top, a / 3, math.pi, math.pi),
        ("line", legs[2], inner_top, legs[2], bottom * 0.64),
    ]
    # Turned by 45 degrees, neighbouring legs lie `apart` pixel diagonals from each other and
    # every leg runs through pixel centres: the straight wire stays sharp.
    apart = 3 if size < 32 else 5
    pixels_per_unit = 1.5 * apart / math.sqrt(2)
    scale = size / pixels_per_unit
    thick = (0.85 if size < 32 else 1.7) / pixels_per_unit
    wire = stroke(path, thick)
    c = math.sqrt(0.5)
    mid = (top - a + bottom + 2 * a / 3) / 2
    # With an odd spacing the legs sit half a diagonal off the centres unless moved across.
    across = (apart % 2) * 0.5 / (math.sqrt(2) * pixels_per_unit)

    def to_clip(x, y):
        u, v = (x - 0.5) * scale, (y - 0.5) * scale
        return u * c + v * c + across, -u * c + v * c + mid

    return [(lambda x, y: wire(*to_clip(x, y)), (70, 82, 105, 255))]


def pictures():
    """name -> {size: pixels}"""
    out = {"a0.ico": {s: render(unknown_user(s), s) for s in SIZES}}
    for n in range(1, 10):
        out[f"a{n}.ico"] = {s: render(user(n), s) for s in SIZES}
    out["attach.ico"] = {s: render(paper_clip(s), s) for s in SIZES}
    return out


# --- the .ico file ---

def ico(images):
    """images: {size: pixels} -> a .ico file holding each, largest first. Each image is a
    BITMAPINFOHEADER (height doubled: the colour rows, then the mask rows), the BGRA rows bottom
    first, then the 1-bit mask rows, each padded to 32 bits; the mask marks the fully
    transparent pixels for painters that ignore alpha."""
    bodies = []
    for size in sorted(images, reverse=True):
        pixels = images[size]
        xor = b"".join(struct.pack("<4B", b, g, r, a) for row in reversed(pixels) for (r, g, b, a) in row)
        stride = (size + 31) // 32 * 4
        mask = bytearray()
        for row in reversed(pixels):
            bits = bytearray(stride)
            for x, (_, _, _, a) in enumerate(row):
                if a == 0:
                    bits[x // 8] |= 0x80 >> (x % 8)
            mask += bits
        header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, len(xor) + len(mask), 0, 0, 0, 0)
        bodies.append((size, header + xor + bytes(mask)))
    offset = 6 + 16 * len(bodies)
    directory = struct.pack("<HHH", 0, 1, len(bodies))
    for size, body in bodies:
        directory += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(body), offset)
        offset += len(body)
    return directory + b"".join(body for _, body in bodies)


def read_ico(data):
    """The inverse of ico(), reading by the directory as Windows does: {size: pixels}."""
    reserved, kind, count = struct.unpack_from("<HHH", data)
    assert (reserved, kind) == (0, 1), "not an icon"
    images = {}
    for i in range(count):
        w, h, _, _, _, bits, length, offset = struct.unpack_from("<BBBBHHII", data, 6 + 16 * i)
        hsize, bw, bh = struct.unpack_from("<Iii", data, offset)
        assert bits == 32 and (bw, bh) == (w, 2 * h) and offset + length <= len(data)
        rows = []
        for y in range(h):
            start = offset + hsize + (h - 1 - y) * w * 4
            rows.append([(data[p + 2], data[p + 1], data[p], data[p + 3]) for p in range(start, start + 4 * w, 4)])
        images[w] = rows
    return images


# --- a contact sheet for looking at them ---

def png(width, height, rgb_rows):
    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))
    raw = b"".join(b"\0" + bytes(row) for row in rgb_rows)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))


def contact_sheet(files, per_row=6):
    """A cell a picture, `per_row` cells a row: 32 x 32 magnified 4 times, 16 x 16 magnified 4
    times, then both at their real size on white and on a dark grey."""
    cell, gap = 128, 8
    rows = (len(files) + per_row - 1) // per_row
    cell_height = cell + gap + 64 + gap + 32 + gap
    width = per_row * (cell + gap) + gap
    height = gap + rows * cell_height
    canvas = [[240] * (3 * width) for _ in range(height)]

    def put(images, size, left, top, zoom, back):
        for y in range(size * zoom):
            for x in range(size * zoom):
                r, g, b, a = images[size][y // zoom][x // zoom]
                for c, value in enumerate((r, g, b)):
                    canvas[top + y][3 * (left + x) + c] = round((value * a + back[c] * (255 - a)) / 255)

    for i, name in enumerate(sorted(files)):
        images = read_ico(files[name])
        left, top = gap + i % per_row * (cell + gap), gap + i // per_row * cell_height
        put(images, 32, left, top, 4, (255, 255, 255))
        put(images, 16, left, top + cell + gap, 4, (255, 255, 255))
        for j, back in enumerate(((255, 255, 255), (60, 60, 60))):
            put(images, 32, left + j * 64, top + cell + 64 + 2 * gap, 1, back)
            put(images, 16, left + j * 64 + 40, top + cell + 64 + 2 * gap, 1, back)
    return png(width, height, canvas)


def main():
    args = sys.argv[1:]
    preview = None
    if "--preview" in args:
        at = args.index("--preview")
        preview = args[at + 1]
        del args[at:at + 2]
    if len(args) != 1:
        sys.exit(__doc__)
    out = args[0]
    os.makedirs(out, exist_ok=True)
    files = {name: ico(images) for name, images in pictures().items()}
    for name, data in files.items():
        path = os.path.join(out, name)
        # Rewritten only when different, so an unchanged icon does not relink the DLL.
        if not os.path.exists(path) or open(path, "rb").read() != data:
            with open(path, "wb") as f:
                f.write(data)
    if preview:
        with open(preview, "wb") as f:
            f.write(contact_sheet(files))


if __name__ == "__main__":
    main()
