"""What a saved puzzle file says of its pieces and trays, for tests that need to know where
every piece lies, hidden or not."""

import struct

def pieces_in(fpp):
    """(x, y, right, bottom, set, tray) of every piece, from a saved puzzle file."""
    data = open(fpp, "rb").read()
    header = struct.unpack_from("<12i", data, 7)
    width, height, groups, trays, columns, rows, path = (header[2], header[3], header[4],
                                                         header[5], header[8], header[9],
                                                         header[11])
    at = 59 + path + 68 * trays + 24 * groups
    cell_w, cell_h = width // columns, height // rows
    boxes = []
    for _ in range(columns * rows):
        x, y, _z, knob, top, bottom, right, left, _g, tray = struct.unpack_from("<10i", data, at)
        is_set = data[at + 40]
        depth = 2 * knob
        w = cell_w + 1 + depth * ((left == 1) + (right == 1))
        h = cell_h + 1 + depth * ((top == 1) + (bottom == 1))
        boxes.append((x, y, x + w, y + h, is_set, tray))
        at += 44
    return boxes


def trays_in(fpp):
    """Screen rectangles of the trays' views."""
    data = open(fpp, "rb").read()
    header = struct.unpack_from("<12i", data, 7)
    at, rects = 59 + header[11], []
    for _ in range(header[5]):
        _id, left, top, w, h = struct.unpack_from("<5i", data, at)
        rects.append((left, top, left + w, top + h))
        at += 68
    return rects


def out_of_reach(fpp, game):
    """The loose pieces of the main window whose boxes miss its client area: none may."""
    left, top, right, bottom = game.client()
    width, height = right - left, bottom - top
    return [(p, box[:4]) for p, box in enumerate(pieces_in(fpp))
            if not box[4] and not box[5] and
            not (box[0] < width and box[1] < height and box[2] > 0 and box[3] > 0)]
