"""The toolbar: its buttons in both interfaces, tooltips after a second and the next one sooner,
and real clicks on Open Image, Make, Shuffle, Add Tray and Exit."""

import os
import sys
import time

from cells import COLOURS
from game import Game, Screen, wait_for, windows_path

exe, shots, pictures = sys.argv[1:4]
BUTTON = 28            # width of a button, in pixels
GAP = 32
ROW = 35               # the middle of the buttons' row
TIP = (255, 255, 226)  # the tooltip's background
ADVANCED = list(range(1000, 1021))
SIMPLE = [1001, 1002, 1003, 1006, 1007, 1015, 1016, 1017, 1018, 1019, 1020]
GAP_AFTER = {1002, 1008, 1016, 1019}


def centre(button, shown=ADVANCED):
    """Where button's middle is when the buttons shown are laid out."""
    x = 1
    for b in shown:
        if b == button:
            return x + BUTTON // 2, ROW
        x += BUTTON + (GAP if b in GAP_AFTER else 0)
    raise ValueError(button)


def icons_at(screen, shown):
    """Whether every shown button has a picture on it: some pixels neither face nor white."""
    for b in shown:
        cx, cy = centre(b, shown)
        face = screen.pixel(cx - 12, cy)
        if not any(screen.pixel(x, y) != face for x in range(cx - 8, cx + 8) for y in range(cy - 8, cy + 8)):
            return False
    return True


def tip_shown(near_x):
    screen = Screen.now()
    return any(screen.pixel(x, ROW + 20) == TIP for x in range(near_x, near_x + 40))


def seconds_until_tip(x):
    start = time.time()
    wait_for(lambda: tip_shown(x), 5, "a tooltip")
    return time.time() - start


game = Game(exe)
try:
    screen = Screen(os.path.join(shots, "toolbar-advanced.png"))
    assert icons_at(screen, ADVANCED)
    game.key("alt+o", "Return", pause=0.8)             # the simple interface
    screen = Screen(os.path.join(shots, "toolbar-simple.png"))
    assert icons_at(screen, SIMPLE)
    game.key("alt+o", "a", pause=0.8)                  # back to the advanced interface

    # A tooltip over a button, after about a second: the buttons pass the pointer on to it.
    x, y = centre(1000)
    game.move(x, y, pause=0)
    first = seconds_until_tip(x)
    Screen(os.path.join(shots, "toolbar-tip.png"))
    assert 0.7 < first < 2.5, f"first tip after {first:.2f} s"
    game.move(500, 400)

    game.click(*centre(1000))                          # Open Image
    game.dialog("Open")
    time.sleep(0.5)
    game.type(windows_path(os.path.join(pictures, "cells.bmp")))
    game.key("Return", pause=1.0)
    game.dialog("Enter Puzzle Size in pixels")
    game.answer_size_dialog(360, 240)
    game.dialog("Enter Number of Pieces")
    game.answer_size_dialog(3, 2)
    game.click(*centre(1003), pause=1.0)               # Make
    made = Screen(os.path.join(shots, "toolbar-made.png"))
    # Six pieces of 120 x 120 on the board, some lying over others.
    shown = [made.largest_component(c, region=(150, 60, 1024, 768)) for c in COLOURS]
    assert sum(found[1] for found in shown if found) > 30000, [f and f[1] for f in shown]
    game.click(*centre(1007), pause=1.0)               # Shuffle
    assert Screen().data != made.data, "Shuffle moved nothing"
    game.click(*centre(1008), pause=1.0)               # Add Tray: under the preview
    assert Screen().pixel(50, 140) != (255, 255, 255), "no tray"
    assert game.exit_by_menu() == 0
    game.close()

    game = Game(exe)                                   # Exit, where no help window covers it
    game.click(*centre(1019))
    assert game.process.wait(30) == 0
    print("buttons shown in both interfaces, tooltips timed, five buttons clicked")
finally:
    game.close()
