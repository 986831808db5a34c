"""Make and play with real input: Open Image and Make from the toolbar with both size
dialogs, then a piece set at its place, two joined, one carried into a tray and out again;
and a puzzle larger than its area, whose pattern scrolls with a click on its scroll bar."""

import os
import sys
import time

from game import Game, Screen
from puzzle_file import CELL, CELLS, read

exe, shots, pictures = sys.argv[1:4]
RED, LIME, BLUE, YELLOW, MAGENTA, CYAN = CELLS
OPEN_IMAGE, MAKE, ADD_TRAY = (15, 35), (130, 35), (270, 35)  # toolbar buttons, on the screen
BOARD = (110, 60, 1024, 760)


def grip(pieces, p):
    """A point of piece p's cell that no piece above it covers, client coordinates."""
    x0, y0 = pieces[p].cell
    above = [q.box for q in pieces if q.z > pieces[p].z and not q.tray]
    for y in range(y0 + 15, y0 + CELL - 15, 10):
        for x in range(x0 + 15, x0 + CELL - 15, 10):
            if not any(b[0] <= x < b[2] and b[1] <= y < b[3] for b in above):
                return x, y
    raise AssertionError(f"piece {p} lies buried")


def carry(game, pieces, p, cell):
    """Carries piece p so that its cell's top-left comes to cell (client coordinates)."""
    x, y = grip(pieces, p)
    to = (x + cell[0] - pieces[p].cell[0], y + cell[1] - pieces[p].cell[1])
    game.carry(game.at(x, y), game.at(*to))


game = Game(exe)
try:
    game.click(*OPEN_IMAGE)
    game.answer_file_dialog("Open", os.path.join(pictures, "cells.bmp"))
    game.answer_size_dialog("Enter Puzzle Size in pixels", 360, 240)
    game.answer_size_dialog("Enter Number of Pieces", 3, 2)
    game.click(*MAKE, pause=1.0)
    made = Screen(os.path.join(shots, "made.png"))
    assert all(made.count(c, BOARD) > 200 for c in CELLS), "a piece is missing"

    # Where every piece lies, from a save.
    fpp = os.path.join(game.folder, "made.fpp")
    game.save_as(fpp)
    origin, pieces = read(fpp)
    carry(game, pieces, 0, (origin[0] + 3, origin[1] - 2))    # red, near its place
    carry(game, pieces, 4, (560, 560))                         # magenta, out of the way
    game.save()
    origin, pieces = read(fpp)
    carry(game, pieces, 5, (560 + CELL + 3, 560 + 2))          # cyan, beside magenta
    game.click(*ADD_TRAY, pause=0.8)
    game.save()
    origin, pieces = read(fpp)
    game.carry(game.at(*grip(pieces, 3)), game.at(50, 400))    # yellow into the tray
    played = Screen(os.path.join(shots, "played.png"))
    game.save()
    _, pieces = read(fpp)
    assert pieces[0].set and pieces[0].cell == origin, "red is not set at its place"
    assert pieces[5].cell == (560 + CELL, 560), "cyan did not join magenta"
    assert pieces[3].tray == 1 and played.count(YELLOW, (0, 130, 100, 760)) > 1000
    game.carry(game.at(50, 400), game.at(700, 150))            # and out again
    game.save()
    assert read(fpp)[1][3].tray == 0, "yellow did not leave the tray"

    # A puzzle larger than its area gets a scroll bar along the area's bottom, at the board's
    # bottom; a press on its track pages the area, and the pattern shown there moves with it.
    game.menu("p", "z")
    game.answer_size_dialog("Enter Puzzle Size in pixels", 1400, 1000)
    game.menu("p", "n")
    game.answer_size_dialog("Enter Number of Pieces", 12, 8)
    game.menu("p", "m")
    time.sleep(1.0)
    game.key("alt+o", "Down", "Down", "Down", "Return")        # Show Pattern
    area = (origin[0] + 10, origin[1] + 10, 1000, 730)
    unscrolled = Screen(os.path.join(shots, "large.png"))
    game.click(*game.at(760, 726), pause=0.8)
    scrolled = Screen(os.path.join(shots, "large-scrolled.png"))
    assert unscrolled.differences(scrolled, area, 3) > 10, "the pattern did not scroll"
    assert game.exit_by_menu() == 0
    print("made, set, joined, carried into a tray and out, and scrolled a large puzzle")
finally:
    game.close()
