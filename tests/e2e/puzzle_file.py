"""Puzzle files read and written as the program does, so that a test knows where every piece
lies (or puts it there) and where to click."""

import struct
from collections import namedtuple

from game import windows_path

# The cells picture: six cells of 120 x 120 in pure colours, 3 across and 2 down, each the
# colour of its piece on the screen.
CELLS = [(255, 0, 0), (0, 255, 0), (0, 0, 255), (255, 255, 0), (255, 0, 255), (0, 255, 255)]
CELL = 120


def write(path, picture, origin, pieces, groups=(), trays=(), size=(360, 240), grid=(3, 2)):
    """A rectangular puzzle file. pieces: (x, y, set, tray, group) in piece order, stacked in
    that order; groups: (id, tray); trays: (id, left, top, width, height) on the screen."""
    picture = windows_path(picture).encode()
    data = b"v001.0\0" + struct.pack(
        "<12iBBxx", origin[0], origin[1], size[0], size[1], len(groups), len(trays),
        max([t[0] for t in trays], default=0), max([g[0] for g in groups], default=0),
        grid[0], grid[1], 1, len(picture), 0, 1) + picture
    for t in trays:
        left, top, w, h = t[1:]
        data += struct.pack("<6i", t[0], left, top, w, h, 0)
        data += struct.pack("<11i", 44, 0, 1, -1, -1, -1, -1, left, top, left + w, top + h)
    for g in groups:
        data += struct.pack("<6i", g[0], 0, 0, 0, 0, g[1])
    for z, (x, y, is_set, tray, group) in enumerate(pieces):
        data += struct.pack("<10iBBBx", x, y, z, 0, 0, 0, 0, 0, group, tray, is_set, 1,
                            1 if group else 0)
    with open(path, "wb") as f:
        f.write(data)


Piece = namedtuple("Piece", "box cell z set tray")


def read(path):
    """The puzzle area's origin and every piece of a saved puzzle file: its box, its cell's
    top-left (both in its window's coordinates), its place in the stacking order, whether it
    is set, and its tray."""
    data = open(path, "rb").read()
    header = struct.unpack_from("<12i", data, 7)
    width, height, groups, trays, columns, rows, shape, path_length = header[2:6] + header[8:12]
    at = 59 + path_length + 68 * trays + 24 * groups
    pieces = []
    for i in range(columns * rows):
        x, y, z, knob, top, bottom, right, left, _g, tray = struct.unpack_from("<10i", data, at)
        depth = 2 * knob if shape == 2 else 0
        w = width // columns + (i % columns < width % columns)
        h = height // rows + (i // columns < height % rows)
        cell = (x + depth * (left == 1), y + depth * (top == 1))
        w += depth * ((left == 1) + (right == 1))
        h += depth * ((top == 1) + (bottom == 1))
        pieces.append(Piece((x, y, x + w, y + h), cell, z, data[at + 40], tray))
        at += 44
    return header[:2], pieces


def out_of_reach(path, client):
    """The loose pieces of the main window whose boxes miss its client area (w, h)."""
    return [p for p, piece in enumerate(read(path)[1]) if not piece.set and not piece.tray and
            not (piece.box[0] < client[0] and piece.box[1] < client[1] and piece.box[2] > 0 and
                 piece.box[3] > 0)]
