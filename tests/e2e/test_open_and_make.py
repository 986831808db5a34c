"""Open Image, the size dialogs in pixels and in pieces, Make: a puzzle larger than the puzzle
area gets a scroll bar along the area's bottom, and a real click on its track scrolls the
pattern shown there."""

import os
import sys
import time

from game import Game, Screen, windows_path

exe, shots, pictures = sys.argv[1:4]
picture = windows_path(os.path.join(pictures, "picture2000x1500.jpg"))

game = Game(exe)
try:
    game.open_image(picture, 1400, 1000, 12, 8)
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
    print("made a puzzle larger than its area and scrolled it")
finally:
    game.close()
