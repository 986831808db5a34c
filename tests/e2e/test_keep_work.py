"""Work kept across runs and mishaps: a puzzle played with real input and saved; the program
killed 40 s after a carry and offered the puzzle back, every piece where it lay; a crafted file
refused while the program goes on; a picture moved away found again with the open dialog; a
collection built, saved, reopened from its recent list, stepped through and made the default;
and in the next run the default collection, the options and the recent puzzle are back."""

import os
import shutil
import struct
import sys
import time

from game import Game, Screen, windows_named, windows_path
from puzzle_file import CELL, CELLS, write

exe, shots, pictures = sys.argv[1:4]
RED, LIME, BLUE, YELLOW, MAGENTA, CYAN = CELLS
ORIGIN = (240, 420)  # the puzzle area, in the main window's client area
SLOTS = [(620, 100), (800, 100), (620, 260), (800, 260), (560, 500), (820, 500)]
BOARD = (120, 60, 1024, 760)  # right of the tray column
TRAY = (0, 160, 80, 700)      # a tray's content under the preview, clear of its bars


def near(a, b, tolerance=2):
    return abs(a[0] - b[0]) <= tolerance and abs(a[1] - b[1]) <= tolerance


def shot(name):
    return Screen(os.path.join(shots, f"keep-{name}.png"))


def slot(i):
    """The middle of the piece the start file put in slot i."""
    return at(SLOTS[i][0] + 60, SLOTS[i][1] + 60)


game = Game(exe)
folder = game.folder
picture = os.path.join(folder, "mine.bmp")
shutil.copy(os.path.join(pictures, "cells.bmp"), picture)
start, kept = os.path.join(folder, "start.fpp"), os.path.join(folder, "kept.fpp")
write(start, picture, ORIGIN, [(x, y, 0, 0, 0) for x, y in SLOTS])
try:
    game.open_puzzle(start)
    # Where the client area lies on the screen: the red piece is where the file put it.
    red = shot("opened").box_of(RED, BOARD)
    dx, dy = red[0] - SLOTS[0][0], red[1] - SLOTS[0][1]

    def at(x, y):
        return x + dx, y + dy

    game.carry(slot(0), at(ORIGIN[0] + 62, ORIGIN[1] + 61))
    game.carry(slot(5), at(SLOTS[4][0] + CELL + 62, SLOTS[4][1] + 62))
    game.menu("p", "t")  # a tray under the preview, and yellow into it
    time.sleep(0.8)
    game.carry(slot(3), (50, 400))
    played = shot("played")
    assert near(played.box_of(RED, BOARD)[:2], at(*ORIGIN)), "red is not set at home"
    assert near(played.box_of(CYAN, BOARD)[:2], played.box_of(MAGENTA, BOARD)[2:3] +
                played.box_of(MAGENTA, BOARD)[1:2]), "cyan did not join magenta"
    assert played.count(YELLOW, TRAY) > 1000, "yellow is not in the tray"
    game.save_as(kept)

    # Killed 40 s after a carry: the next start offers the puzzle back, as it lay.
    game.carry(slot(1), at(700, 600))
    time.sleep(40)
    before = shot("before-kill")
    game.kill()
    game.close(keep_folder=True)
    game = Game(exe, folder=folder, keep_settings=True, title=None)
    game.dialog("Restore puzzle", 60)
    game.key("Return", pause=2.0)  # Yes, the default
    after = shot("restored")
    for region in BOARD, TRAY:
        assert before.differences(after, region, 1) == 0, f"{region} differs from before the kill"

    # A crafted file whose group lies a million pixels apart is refused; play goes on.
    data = bytearray(open(kept, "rb").read())
    path_length, trays, groups = struct.unpack_from("<i", data, 51)[0], data[27], data[23]
    cyan = 59 + path_length + 68 * trays + 24 * groups + 44 * 5
    struct.pack_into("<2i", data, cyan, -1047892, -261641)
    crafted = os.path.join(folder, "crafted.fpp")
    open(crafted, "wb").write(data)
    game.open_puzzle(crafted)
    game.dialog("File error")
    game.key("Return", pause=0.5)
    assert game.process.poll() is None and after.differences(shot("refused"), BOARD) == 0

    # The picture moved away: the player is told which, and finds it.
    moved = os.path.join(folder, "moved.bmp")
    os.rename(picture, moved)
    game.open_puzzle(kept)
    game.dialog("File error")
    game.key("Return", pause=0.5)  # Yes: look for it
    game.answer_file_dialog("Open", moved)
    found = shot("found")
    assert found.count(YELLOW, TRAY) > 1000 and found.count(CYAN, BOARD) > 3000
    game.save()
    assert windows_path(moved).encode() in open(kept, "rb").read()

    # A collection of two pictures, saved, closed, reopened from its recent list.
    game.menu("o", "d")  # no piece outlines, kept for the next run
    found = Screen()
    fpc = os.path.join(folder, "two.fpc")
    game.menu("c", "n")
    for name, size, pieces in (("cells.bmp", (360, 240), (3, 2)),
                               ("picture300x200.bmp", (300, 200), (6, 4))):
        game.menu("c", "i")
        game.answer_file_dialog("Open", os.path.join(pictures, name))
        game.answer_size_dialog("Enter Puzzle Size in pixels", *size)
        game.answer_size_dialog("Enter Number of Pieces", *pieces)
    game.menu("c", "s")
    game.answer_file_dialog("Save As", fpc)
    game.menu("c", "l")  # closed: the preview is white
    assert Screen().pixel(10 + dx, 40 + dy) == (255, 255, 255)
    game.key("alt+c", "c", "1", pause=0.8)
    assert Screen().pixel(10 + dx, 40 + dy) == RED, "the collection did not open at its first"
    game.menu("c", "x")
    assert Screen().pixel(10 + dx, 40 + dy) != RED
    game.menu("c", "p")
    game.menu("c", "d")              # the default collection from now on
    game.key("alt+o", "Return")      # the simple interface
    assert game.exit_by_menu() == 0
    game.close(keep_folder=True)

    # The next run: the default collection in the simple interface, the recent puzzle back.
    game = Game(exe, folder=folder, keep_settings=True)
    assert not windows_named("^Restore puzzle$"), "a clean exit left a puzzle to restore"
    assert Screen().pixel(10 + dx, 40 + dy) == RED
    game.menu("p", "o")  # Open Image is grayed in this interface
    time.sleep(1.0)
    assert windows_named("^Open$") == [], "Open Image ran in the simple interface"
    game.key("Escape", "Escape")
    game.key("alt+p", "u", "1", pause=1.5)
    assert found.differences(shot("reopened"), BOARD, 1) == 0
    assert game.exit_by_menu() == 0
    assert game.setting("Options", "Interface Type") == "0"
    assert game.setting("Options", "Outline") == "0"
    assert game.setting("Options", "Default Collection") == windows_path(fpc)
    assert game.setting("History", "PuzHist0") == windows_path(kept)
    assert game.setting("History", "ColHist0") == windows_path(fpc)
    print("played, killed and restored, refused a crafted file, found a moved picture, kept a "
          "collection and the options across runs")
finally:
    game.close()
