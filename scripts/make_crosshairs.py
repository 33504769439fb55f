#!/usr/bin/env python3
"""Draws the Info panel's crosshair icon: a ring with a cross through it.

Writes into src/plugin/qzgp/InfoPal/resources/ (or the folder given as the first
argument) the PNG pictures of the normal and the selected state at 1x (17 x 17),
1.5x (26 x 26) and 2x (34 x 34), and the SVG picture of the normal state drawn for 2x.
Python standard library only: the PNG files are written with zlib and struct.
"""

import os
import struct
import sys
import zlib

# The icon is drawn on a 17-unit grid; larger pictures scale it.
UNITS = 17.0
CENTRE = 8.5
RING_RADIUS = 5.0
RING_WIDTH = 1.2
LINE_WIDTH = 1.0
# The cross lines stop short of the picture's edge.
LINE_REACH = 8.0

STATES = {
    "N": (200, 200, 200),  # normal: light grey on the dark panel
    "S": (77, 163, 255),  # selected: blue
}
SIZES = {
    "": 17,
    "_AT_3TO2X": 26,
    "_AT_2X": 34,
}
SUPERSAMPLE = 4


def covered(x, y):
    """Whether the point (x, y), in icon units, lies on the ring or on a cross line."""
    dx = x - CENTRE
    dy = y - CENTRE
    distance = (dx * dx + dy * dy) ** 0.5
    if abs(distance - RING_RADIUS) <= RING_WIDTH / 2:
        return True
    half = LINE_WIDTH / 2
    if abs(dx) <= half and abs(dy) <= LINE_REACH:
        return True
    if abs(dy) <= half and abs(dx) <= LINE_REACH:
        return True
    return False


def coverage(size):
    """Per pixel, the share of its area that the icon covers (0 to 1)."""
    scale = UNITS / size
    rows = []
    for py in range(size):
        row = []
        for px in range(size):
            hits = 0
            for sy in range(SUPERSAMPLE):
                for sx in range(SUPERSAMPLE):
                    x = (px + (sx + 0.5) / SUPERSAMPLE) * scale
                    y = (py + (sy + 0.5) / SUPERSAMPLE) * scale
                    hits += covered(x, y)
            row.append(hits / (SUPERSAMPLE * SUPERSAMPLE))
        rows.append(row)
    return rows


def chunk(kind, data):
    body = kind + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)


def png_bytes(size, colour):
    raw = bytearray()
    for row in coverage(size):
        raw.append(0)  # filter: none
        for share in row:
            raw.extend(colour)
            raw.append(int(round(share * 255)))
    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)  # 8-bit RGBA
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(bytes(raw), 9)) + chunk(b"IEND", b""))


def svg_text(colour):
    fill = "#%02X%02X%02X" % colour
    reach = LINE_REACH
    return (
        '<?xml version="1.0" encoding="UTF-8"?>\n'
        '<svg xmlns="http://www.w3.org/2000/svg" width="34" height="34" viewBox="0 0 17 17">\n'
        f'  <circle cx="{CENTRE}" cy="{CENTRE}" r="{RING_RADIUS}" fill="none" '
        f'stroke="{fill}" stroke-width="{RING_WIDTH}"/>\n'
        f'  <line x1="{CENTRE}" y1="{CENTRE - reach}" x2="{CENTRE}" y2="{CENTRE + reach}" '
        f'stroke="{fill}" stroke-width="{LINE_WIDTH}"/>\n'
        f'  <line x1="{CENTRE - reach}" y1="{CENTRE}" x2="{CENTRE + reach}" y2="{CENTRE}" '
        f'stroke="{fill}" stroke-width="{LINE_WIDTH}"/>\n'
        '</svg>\n')


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    default = os.path.join(here, "..", "src", "plugin", "qzgp", "InfoPal", "resources")
    folder = sys.argv[1] if len(sys.argv) > 1 else default
    os.makedirs(folder, exist_ok=True)
    for state, colour in STATES.items():
        for suffix, size in SIZES.items():
            name = f"SP_INFOCROSSHAIRS_SM_{state}_D{suffix}.png"
            with open(os.path.join(folder, name), "wb") as out:
                out.write(png_bytes(size, colour))
    with open(os.path.join(folder, "S_INFOCROSSHAIRS_SM_N_D_AT_2X.svg"), "w",
              encoding="utf-8", newline="\n") as out:
        out.write(svg_text(STATES["N"]))


if __name__ == "__main__":
    main()
