"""A game played with the mouse alone on a 3 x 2 puzzle whose pieces have pure colours:
pieces carried, one set at home, two joined and carried as one, the group set at home, and a
tray that takes a piece, refuses to close while it holds it, gives it back and closes."""

import os
import sys
import time

from cells import CELL, COLOURS, PREVIEW, SLOTS, body, carry, near, stage_all
from game import Game, Screen, windows_path

exe, shots, pictures = sys.argv[1:4]

game = Game(exe)
try:
    game.open_image(windows_path(os.path.join(pictures, "cells.bmp")), 360, 240, 3, 2)
    game.menu("p", "m")
    time.sleep(1.0)
    Screen(os.path.join(shots, "play-made.png"))

    stage_all(game)
    screen = Screen(os.path.join(shots, "play-staged.png"))
    for p, slot in enumerate(SLOTS):
        assert near(body(screen, p)[0], slot), f"piece {p} did not follow to its slot"
    frame = screen.find_rectangle_frame(360, 240)
    assert frame, "no frame of the puzzle area"
    fx, fy = frame

    # Red, the top-left piece, dropped 1 pixel off its home: set there for good.
    carry(game, 0, fx + 1, fy - 1)
    screen = Screen()
    assert near(body(screen, 0)[0], (fx, fy)), body(screen, 0)
    box, middle = body(screen, 0)
    game.click(*middle)                       # a set piece cannot be picked up
    game.move(middle[0] + 150, middle[1] + 200, steps=4)
    game.click(middle[0] + 150, middle[1] + 200)
    assert near(body(Screen(), 0)[0], (fx, fy)), "the set piece moved"

    # Cyan dropped 3 pixels right of and 2 below its place beside magenta: they join.
    mx, my = SLOTS[4]
    carry(game, 5, mx + CELL + 3, my + 2)
    screen = Screen(os.path.join(shots, "play-joined.png"))
    assert near(body(screen, 5)[0], (mx + CELL, my), 1), body(screen, 5)
    # Carried by magenta, cyan comes along.
    carry(game, 4, mx - 60, my + 40)
    screen = Screen(os.path.join(shots, "play-group.png"))
    assert near(body(screen, 4)[0], (mx - 60, my + 40))
    assert near(body(screen, 5)[0], (mx - 60 + CELL, my + 40)), "cyan did not move with magenta"

    # The group dropped near home: both pieces set.
    carry(game, 4, fx + CELL - 2, fy + CELL + 1)
    screen = Screen(os.path.join(shots, "play-group-set.png"))
    assert near(body(screen, 4)[0], (fx + CELL, fy + CELL))
    assert near(body(screen, 5)[0], (fx + 2 * CELL, fy + CELL))

    # A tray, under the preview; yellow carried into it.
    game.menu("p", "t")
    time.sleep(0.8)
    with_tray = Screen(os.path.join(shots, "play-tray-empty.png"))
    caption_y = next(y for y in range(130, 200) if with_tray.pixel(50, y) != (255, 255, 255))
    caption = with_tray.pixel(50, caption_y + 6)
    assert caption != (255, 255, 255), "no tray under the preview"
    inside = (50, caption_y + 150)
    box, middle = body(with_tray, 3)
    game.click(*middle)
    game.move(*inside, steps=8)
    game.click(*inside, pause=0.8)
    screen = Screen(os.path.join(shots, "play-tray.png"))
    in_tray = screen.largest_component(COLOURS[3], region=(0, caption_y, 110, screen.height - 10))
    assert in_tray and in_tray[1] > 1000, "yellow is not in the tray"
    assert screen.largest_component(COLOURS[3], region=(600, 60, 1024, 700)) is None, \
        "yellow stayed on the board"

    # The close box of a tray holding a piece does nothing. It is the last caption button;
    # the window is at least as wide as its caption needs.
    right = 1 + max(x for x in range(0, 200) if screen.pixel(x, caption_y + 6) != (255, 255, 255))
    close_box = (right - 11, caption_y + 2)
    game.click(*close_box, pause=0.8)
    screen = Screen(os.path.join(shots, "play-tray-refused.png"))
    assert screen.pixel(50, caption_y + 6) == caption, "the tray closed while holding a piece"

    # Carried out onto the board, then the tray closes.
    game.click(*in_tray[2])
    game.move(800, 600, steps=8)
    game.click(800, 600, pause=0.8)
    screen = Screen(os.path.join(shots, "play-tray-emptied.png"))
    out = screen.largest_component(COLOURS[3], region=(200, 60, 1024, 757))
    assert out and out[1] > 3000, "yellow did not come out of the tray"
    game.click(*close_box, pause=0.8)
    screen = Screen(os.path.join(shots, "play-tray-closed.png"))
    assert screen.pixel(50, caption_y + 6) != caption, "the empty tray did not close"

    assert game.exit_by_menu() == 0
    print("set a piece, joined and carried a group, set it, used and closed a tray")
finally:
    game.close()
