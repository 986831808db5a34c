"""Work kept across runs: a played puzzle saved through the common dialog, a collection of two
pictures built, saved, reopened from its recent list, stepped through and made the default;
then, in a second run, the default collection, the options and the recent puzzle are back, and
the puzzle shows every piece and the tray as it was left."""

import os
import sys
import time

from cells import CELL, COLOURS, PREVIEW, SLOTS, body, carry, near, stage_all
from game import Game, Screen, windows_named, windows_path

exe, shots, pictures = sys.argv[1:4]
cells_picture = windows_path(os.path.join(pictures, "cells.bmp"))
gradient_picture = windows_path(os.path.join(pictures, "picture300x200.bmp"))
RED = COLOURS[0]


# The board right of the tray column, and the tray's content clear of its caption and of its
# scroll bars (which bars a tray shows depends on its history, not on what it holds).
BOARD = (120, 60, 1024, 768)
TRAY_CONTENT = (0, 140, 95, 730)


def differing_pixels(a, b, region):
    left, top, right, bottom = region
    return sum(1 for y in range(top, bottom) for x in range(left, right)
               if a.pixel(x, y) != b.pixel(x, y))


def preview_is_cells(screen):
    return screen.pixel(10, 60) == RED


def type_into_file_dialog(game, title, path):
    game.dialog(title)
    time.sleep(0.5)
    game.type(path)
    game.key("Return", pause=1.0)


def add_image(game, picture, size, pieces):
    game.menu("c", "i")
    type_into_file_dialog(game, "Open", picture)
    game.dialog("Enter Puzzle Size in pixels")
    game.answer_size_dialog(*size)
    game.dialog("Enter Number of Pieces")
    game.answer_size_dialog(*pieces)


game = Game(exe)
folder = game.folder
fpp = os.path.join(folder, "kept.fpp")
fpc = os.path.join(folder, "two.fpc")
try:
    game.menu("o", "d")  # no piece outlines, kept for the next run
    game.open_image(cells_picture, 360, 240, 3, 2)
    game.menu("p", "m")
    time.sleep(1.0)
    stage_all(game)
    screen = Screen()
    for p, slot in enumerate(SLOTS):
        assert near(body(screen, p)[0], slot), f"piece {p} did not follow to its slot"
    fx, fy = screen.find_rectangle_frame(360, 240)
    carry(game, 0, fx + 1, fy - 1)                     # red set at home
    mx, my = SLOTS[4]
    carry(game, 5, mx + CELL + 3, my + 2)              # cyan joins magenta
    assert near(body(Screen(), 5)[0], (mx + CELL, my), 1)
    game.menu("p", "t")                                # a tray under the preview
    time.sleep(0.8)
    box, middle = body(Screen(), 3)
    game.click(*middle)                                # yellow carried into it
    game.move(50, 330, steps=8)
    game.click(50, 330, pause=0.8)
    before = Screen(os.path.join(shots, "keep-saved.png"))
    assert before.largest_component(COLOURS[3], region=(0, 140, 110, 700))[1] > 1000

    game.menu("p", "a")
    type_into_file_dialog(game, "Save As", windows_path(fpp))

    game.menu("c", "n")
    add_image(game, cells_picture, (360, 240), (3, 2))
    add_image(game, gradient_picture, (300, 200), (6, 4))
    game.menu("c", "s")
    type_into_file_dialog(game, "Save As", windows_path(fpc))
    game.menu("c", "l")                                # closed: the preview is white
    assert Screen().pixel(10, 60) == (255, 255, 255)
    game.key("alt+c", "c", "1", pause=0.8)             # reopened from the recent list
    assert preview_is_cells(Screen()), "the collection did not open at its first entry"
    game.menu("c", "x")
    assert not preview_is_cells(Screen(os.path.join(shots, "keep-next.png")))
    game.menu("c", "p")
    assert preview_is_cells(Screen())
    game.menu("c", "d")                                # the default collection from now on
    game.key("alt+o", "Return")                        # the simple interface
    assert game.exit_by_menu() == 0
    game.close(keep_folder=True)

    # The second run opens the default collection in the simple interface.
    game = Game(exe, folder=folder, keep_settings=True)
    assert preview_is_cells(Screen(os.path.join(shots, "keep-restarted.png")))
    game.menu("p", "o")                                # Open Image is grayed in this interface
    time.sleep(1.5)
    assert windows_named("^Open$") == [], "Open Image ran in the simple interface"
    game.key("Escape", "Escape")
    game.key("alt+p", "u", "1", pause=1.5)             # the puzzle from the recent list
    after = Screen(os.path.join(shots, "keep-restored.png"))
    for region in BOARD, TRAY_CONTENT:
        diff = differing_pixels(before, after, region)
        assert diff == 0, f"{diff} pixels of {region} differ from the saved game"

    assert game.exit_by_menu() == 0

    assert game.setting("ToviraPuzzle\\Options", "Interface Type") == "0"
    assert game.setting("ToviraPuzzle\\Options", "Outline") == "0"
    assert game.setting("ToviraPuzzle\\Options", "Default Collection") == windows_path(fpc)
    # Pictures added to a collection are not recent pictures.
    assert game.setting("ToviraPuzzle\\History", "PictHist0") == cells_picture
    assert game.setting("ToviraPuzzle\\History", "PuzHist0") == windows_path(fpp)
    assert game.setting("ToviraPuzzle\\History", "ColHist0") == windows_path(fpc)
    print("saved, restarted and restored the puzzle, the collection, the options and the lists")
finally:
    game.close()
