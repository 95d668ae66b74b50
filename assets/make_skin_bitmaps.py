#!/usr/bin/env python3
"""Draws the four button faces of the program as 24-bit BMP files.

Run from this folder: python3 make_skin_bitmaps.py. The build copies the *.bmp files of this folder
beside the executable. Corners are cut with the mask colour magenta (255, 0, 255), which the skin
button turns into its window shape. The faces are dark, so that every built-in button text colour
(olive 138 142 034 in both default columns) stays readable; the hover face is lighter with a
green edge that matches the display's default green.
"""
import struct

MASK = (255, 0, 255)
RADIUS = 4


def lerp(a, b, t):
    return tuple(round(a[i] + (b[i] - a[i]) * t) for i in range(3))


def inside(x, y, w, h, r):
    """True when (x, y) lies inside the rounded rectangle (pixel centres)."""
    cx = min(max(x + 0.5, r), w - r)
    cy = min(max(y + 0.5, r), h - r)
    return (x + 0.5 - cx) ** 2 + (y + 0.5 - cy) ** 2 <= r * r


def on_edge(x, y, w, h, r):
    """A pixel of the outline: inside, but a neighbour is outside."""
    if not inside(x, y, w, h, r):
        return False
    return any(not inside(x + dx, y + dy, w, h, r) or not (0 <= x + dx < w and 0 <= y + dy < h)
               for dx, dy in ((1, 0), (-1, 0), (0, 1), (0, -1)))


def face(w, h, hover):
    top, bottom = ((92, 96, 104), (40, 42, 48)) if hover else ((70, 72, 78), (26, 27, 30))
    edge = (0, 150, 0) if hover else (12, 12, 14)
    shine = (150, 156, 166) if hover else (112, 116, 124)
    pixels = []
    for y in range(h):
        row = []
        for x in range(w):
            if not inside(x, y, w, h, RADIUS):
                row.append(MASK)
            elif on_edge(x, y, w, h, RADIUS):
                row.append(edge)
            elif y == 1 or (y == 2 and 2 < x < w - 3):
                row.append(lerp(shine, top, 0.0 if y == 1 else 0.5))
            else:
                # A soft bend: light from above, darker towards the lower third.
                t = (y - 2) / max(1, h - 4)
                row.append(lerp(top, bottom, min(1.0, t * 1.15)))
        pixels.append(row)
    return pixels


def write_bmp(path, pixels):
    h = len(pixels)
    w = len(pixels[0])
    stride = (w * 3 + 3) & ~3
    data = bytearray()
    for row in reversed(pixels):  # bottom-up rows
        line = bytearray()
        for r, g, b in row:
            line += bytes((b, g, r))
        line += b"\0" * (stride - len(line))
        data += line
    header = struct.pack("<2sIHHI", b"BM", 54 + len(data), 0, 0, 54)
    info = struct.pack("<IiiHHIIiiII", 40, w, h, 1, 24, 0, len(data), 2835, 2835, 0, 0)
    with open(path, "wb") as f:
        f.write(header + info + data)


if __name__ == "__main__":
    for w in (129, 86):
        write_bmp(f"Button{w}x22.bmp", face(w, 22, False))
        write_bmp(f"Button{w}x22over.bmp", face(w, 22, True))
