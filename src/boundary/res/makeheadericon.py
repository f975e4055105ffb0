#!/usr/bin/env python3
"""Draws the module's 32x32 header icon (headericon.png): a person on a
rounded steel-blue tile. Pure Python (zlib) so it runs anywhere; supersampled
8x8 per pixel for smooth edges. Run it again after changing the shapes."""
import struct
import zlib

SIZE = 32
SS = 8


def inside_round_rect(x, y, l, t, r, b, rad):
    if x < l or x > r or y < t or y > b:
        return False
    cx = min(max(x, l + rad), r - rad)
    cy = min(max(y, t + rad), b - rad)
    return (x - cx) ** 2 + (y - cy) ** 2 <= rad * rad


def in_person(x, y):
    # Head.
    if (x - 16) ** 2 + (y - 11.5) ** 2 <= 5.0 ** 2:
        return True
    # Shoulders: the top of an ellipse, cut flat at the bottom.
    if y <= 26 and ((x - 16) / 9.5) ** 2 + ((y - 27.5) / 9.0) ** 2 <= 1.0 and y >= 18.5:
        return True
    return False


def lerp(a, b, t):
    return a + (b - a) * t


TOP = (0x4A, 0x7D, 0xB0)
BOTTOM = (0x2A, 0x52, 0x7E)
GLYPH = (0xFF, 0xFF, 0xFF)

rows = []
for py in range(SIZE):
    row = bytearray([0])
    for px in range(SIZE):
        acc = [0.0, 0.0, 0.0, 0.0]
        for sy in range(SS):
            for sx in range(SS):
                x = px + (sx + 0.5) / SS
                y = py + (sy + 0.5) / SS
                if not inside_round_rect(x, y, 1, 1, 31, 31, 6):
                    continue
                if in_person(x, y):
                    c = GLYPH
                else:
                    t = (y - 1) / 30
                    c = tuple(lerp(TOP[i], BOTTOM[i], t) for i in range(3))
                acc[0] += c[0]
                acc[1] += c[1]
                acc[2] += c[2]
                acc[3] += 1
        n = acc[3]
        if n == 0:
            row += bytes([0, 0, 0, 0])
        else:
            row += bytes([round(acc[0] / n), round(acc[1] / n), round(acc[2] / n), round(255 * n / (SS * SS))])
    rows.append(bytes(row))


def chunk(kind, data):
    c = struct.pack(">I", len(data)) + kind + data
    return c + struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF)


png = b"\x89PNG\r\n\x1a\n"
png += chunk(b"IHDR", struct.pack(">IIBBBBB", SIZE, SIZE, 8, 6, 0, 0, 0))
png += chunk(b"IDAT", zlib.compress(b"".join(rows), 9))
png += chunk(b"IEND", b"")
with open(__file__.rsplit("/", 1)[0] + "/headericon.png" if "/" in __file__ else "headericon.png", "wb") as f:
    f.write(png)
