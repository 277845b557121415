#!/usr/bin/env python3
"""Draws the kit's images, so that each can be made again pixel by pixel: python3 draw_images.py [FOLDER]

A check box stands on a grid of 24 units: a square of 20 with a line of 1 unit and corners of radius 2; checked, it is
filled and carries a tick of 2 units with round ends. The names say the theme ("_light": dark on light) and the scale
("@2x": 48 pixels instead of 24). Colours are roles of Controls::ThemeManager.
"""

import math
import pathlib
import struct
import sys
import zlib

GRID = 24
SAMPLES = 8  # a pixel and direction
TICK = [(6.6, 12.6), (10.4, 16.4), (17.6, 8.0)]
LINE = 1
TICK_LINE = 2.0

# name: colours of the box's line, of its inside and of the tick (red, green, blue, alpha)
CLEAR = (0, 0, 0, 0)
IMAGES = {
    "checkbox_unchecked": ((0xAE, 0xC4, 0xD0, 255), (0x25, 0x2E, 0x35, 255), CLEAR),
    "checkbox_checked": ((0x63, 0xAC, 0xF6, 255), (0x2F, 0x53, 0x6C, 255), (255, 255, 255, 255)),
    "checkbox_unchecked_light": ((0x3C, 0x2A, 0x22, 191), (0xFA, 0xF6, 0xF3, 255), CLEAR),
    "checkbox_checked_light": ((0x15, 0x50, 0x8C, 255), (0x63, 0xAC, 0xF6, 255), (0x3C, 0x2A, 0x22, 255)),
}


def in_box(x, y, inset, radius):
    """Inside the square that begins `inset` units from the edge and has round corners."""
    low, high = inset + radius, GRID - inset - radius
    return math.hypot(x - min(max(x, low), high), y - min(max(y, low), high)) <= radius


def distance(x, y, start, end):
    (ax, ay), (bx, by) = start, end
    along = ((x - ax) * (bx - ax) + (y - ay) * (by - ay)) / ((bx - ax) ** 2 + (by - ay) ** 2)
    along = min(max(along, 0), 1)
    return math.hypot(x - ax - along * (bx - ax), y - ay - along * (by - ay))


def color_at(x, y, line, inside, tick):
    if not in_box(x, y, 2, 2):
        return CLEAR
    if not in_box(x, y, 2 + LINE, 2 - LINE):
        return line
    if any(distance(x, y, *points) <= TICK_LINE / 2 for points in zip(TICK, TICK[1:])):
        return tick if tick[3] else inside
    return inside


def pixel(column, row, scale, colors):
    """The mean of the samples, weighted by their alpha."""
    sums = [0, 0, 0, 0]
    for i in range(SAMPLES * SAMPLES):
        x = (column + (i % SAMPLES + 0.5) / SAMPLES) / scale
        y = (row + (i // SAMPLES + 0.5) / SAMPLES) / scale
        red, green, blue, alpha = color_at(x, y, *colors)
        for part, value in enumerate((red * alpha, green * alpha, blue * alpha, alpha)):
            sums[part] += value
    weight = sums[3] or 1
    means = [(value + weight // 2) // weight for value in sums[:3]]
    return bytes(means + [(sums[3] + SAMPLES * SAMPLES // 2) // (SAMPLES * SAMPLES)])


def chunk(name, data):
    return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))


def png(scale, colors):
    size = GRID * scale
    rows = b"".join(b"\0" + b"".join(pixel(column, row, scale, colors) for column in range(size)) for row in range(size))
    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b"")


def main(arguments):
    folder = pathlib.Path(arguments[0]) if arguments else pathlib.Path(__file__).parent
    for name, colors in IMAGES.items():
        for scale, suffix in ((1, ""), (2, "@2x")):
            (folder / f"{name}{suffix}.png").write_bytes(png(scale, colors))


if __name__ == "__main__":
    main(sys.argv[1:])
