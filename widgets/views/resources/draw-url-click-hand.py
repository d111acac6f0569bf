#!/usr/bin/env python3
"""Writes URLClickHand.png (16x16) and URLClickHand@2x.png (32x32): a pointing
hand whose fingertip is the cursor's hot spot (5, 0). Pixel art, doubled for
the 2x copy so it stays crisp. Standard library only."""
import struct
import zlib

HAND = [
    "     ##         ",
    "    #..#        ",
    "    #..#        ",
    "    #..#        ",
    "    #..###      ",
    "    #..#..##    ",
    "    #..#..#.##  ",
    " ## #..#..#.#.# ",
    "#..##.......#.# ",
    "#...#.........# ",
    " #............# ",
    "  #...........# ",
    "  #..........#  ",
    "   #.........#  ",
    "    #.......#   ",
    "    #########   ",
]
COLOURS = {" ": (0, 0, 0, 0), "#": (0, 0, 0, 255), ".": (255, 255, 255, 255)}


def png(rows):
    height, width = len(rows), len(rows[0])
    raw = b"".join(b"\x00" + b"".join(bytes(COLOURS[c]) for c in row) for row in rows)

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF)

    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b"")


assert all(len(row) == 16 for row in HAND) and HAND[0][5] == "#"
with open("URLClickHand.png", "wb") as f:
    f.write(png(HAND))
doubled = [("".join(c * 2 for c in row)) for row in HAND for _ in range(2)]
with open("URLClickHand@2x.png", "wb") as f:
    f.write(png(doubled))
