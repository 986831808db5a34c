"""Puzzle files read and written as the program does, so that a test knows where every piece
lies (or puts it there) and where to click."""

import struct

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


def pieces_in(path):
    """(x, y, right, bottom, set, tray) of every piece of a saved puzzle file."""
    data = open(path, "rb").read()
    header = struct.unpack_from("<12i", data, 7)
    width, height, groups, trays, columns, rows, shape, path_length = (
        header[2], header[3], header[4], header[5], header[8], header[9], header[10], header[11])
    at = 59 + path_length + 68 * trays + 24 * groups
    boxes = []
    for i in range(columns * rows):
        x, y, _z, knob, top, bottom, right, left, _g, tray = struct.unpack_from("<10i", data, at)
        depth = 2 * knob if shape == 2 else 0
        w = width // columns + (i % columns < width % columns)
        h = height // rows + (i // columns < height % rows)
        w += depth * ((left == 1) + (right == 1))
        h += depth * ((top == 1) + (bottom == 1))
        boxes.append((x, y, x + w, y + h, data[at + 40], tray))
        at += 44
    return boxes


def out_of_reach(path, client):
    """The loose pieces of the main window whose boxes miss its client area (w, h)."""
    return [p for p, box in enumerate(pieces_in(path)) if not box[4] and not box[5] and
            not (box[0] < client[0] and box[1] < client[1] and box[2] > 0 and box[3] > 0)]
