"""Open Image, the size dialog in pixels and in pieces, Make: the preview at the board's
top-left, the framed puzzle area, and 12 x 8 knobbed pieces scattered with their outlines,
none over the preview. Then a puzzle larger than the area gets scroll bars that scroll it."""

import os
import sys
import time

from game import Game, Screen, windows_path

exe, shots, pictures = sys.argv[1:4]
picture = windows_path(os.path.join(pictures, "picture2000x1500.jpg"))

game = Game(exe)
try:
    game.open_image(picture, 600, 400, 12, 8)
    time.sleep(0.5)
    before = Screen(os.path.join(shots, "opened.png"))
    # The preview at the board's top-left: 100 x 75 for a picture of 4 : 3, on white.
    rows = [y for y in range(55, 250) if before.pixel(50, y) != (255, 255, 255)]
    columns = [x for x in range(0, 300) if before.pixel(x, rows[0] + 10) != (255, 255, 255)]
    assert len(columns) == 100 and 70 <= len(rows) <= 75, (len(columns), len(rows))
    preview = (0, 55, 100, rows[-1] + 1)

    game.menu("p", "m")
    time.sleep(1.0)
    made = Screen(os.path.join(shots, "made-12x8.png"))
    frame = made.find_rectangle_frame(600, 400)
    for _ in range(5):  # pieces may hide a whole edge of the frame: shuffle them
        if frame:
            break
        game.menu("p", "f")
        time.sleep(0.5)
        made = Screen()
        frame = made.find_rectangle_frame(600, 400)
    assert frame, "no frame of the 600 x 400 puzzle area"

    # Nothing covers the preview: its pixels are as they were before Make.
    for y in range(preview[1], preview[3]):
        for x in range(preview[0], preview[2]):
            if before.pixel(x, y) != made.pixel(x, y):
                raise AssertionError(f"the preview changed at {x},{y}")

    # Pieces everywhere else: many non-white pixels outside the frame and the preview,
    # with black outline pixels among them.
    coloured = 0
    outline = 0
    for y in range(60, made.height - 10, 2):
        for x in range(120, made.width - 2, 2):
            p = made.pixel(x, y)
            if p != (255, 255, 255):
                coloured += 1
            if p == (0, 0, 0):
                outline += 1
    assert coloured > 20000, f"only {coloured} sampled piece pixels"
    assert outline > 500, f"only {outline} sampled outline pixels"

    # Larger than the puzzle area: scroll bars, and scrolling moves the pattern shown there.
    game.menu("p", "z")
    game.dialog("Enter Puzzle Size in pixels")
    game.answer_size_dialog(1400, 1000)
    game.menu("p", "m")
    time.sleep(1.0)
    # Show Pattern: its mnemonic is also Simple Interface's, so the item is reached by
    # moving down to it.
    game.key("alt+o", "Down", "Down", "Down", "Return")
    time.sleep(0.5)
    unscrolled = Screen(os.path.join(shots, "large-with-pattern.png"))
    # The horizontal bar along the bottom of the puzzle area: its thumb's edge is the first
    # long grey line there; a press on the track right of the thumb pages right.
    thumb = unscrolled.horizontal_scroll_bar(below=600)
    assert thumb and thumb[0] > 150, f"no scroll bar along the puzzle area's bottom: {thumb}"
    game.click(thumb[2] + 30, thumb[1] + 9)
    time.sleep(0.5)
    scrolled = Screen(os.path.join(shots, "large-scrolled.png"))
    # The pattern shows between the pieces that lie over the area, and moves with it.
    changed = sum(1 for y in range(150, 700, 2) for x in range(220, 1000, 2)
                  if unscrolled.pixel(x, y) != scrolled.pixel(x, y))
    assert changed > 10, f"scrolling changed only {changed} sampled pixels"

    assert game.exit_by_menu() == 0
    print("made a 12 x 8 knobbed puzzle and scrolled a larger one")
finally:
    game.close()
