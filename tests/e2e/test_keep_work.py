"""Work kept across runs and mishaps: a kill, a crafted file, a moved picture, a collection."""

import os, shutil, struct, time

from game import (CELL, CELLS, CELLS_PICTURE, LOOSE, MIDDLES, PICTURES, Game, Screen, dialog,
                  key, windows_named)

RED, YELLOW, CYAN, WHITE = CELLS[0], CELLS[3], CELLS[5], (255, 255, 255)
ORIGIN = (240, 420)  # the puzzle area, in the main window's client area
BOARD = (120, 60, 1024, 760)  # right of the tray column
TRAY = (0, 160, 80, 700)      # a tray's content under the preview, clear of its bars

game = Game()
picture, moved, start, kept, crafted, fpc = (os.path.join(game.folder, name) for name in (
    "mine.bmp", "moved.bmp", "start.fpp", "kept.fpp", "crafted.fpp", "two.fpc"))
shutil.copy(CELLS_PICTURE, picture)
game.open_cells_puzzle(start, picture, ORIGIN)
Screen("keep-opened")
game.carry(game.at(*MIDDLES[0]), game.at(ORIGIN[0] + 62, ORIGIN[1] + 61))
game.carry(game.at(*MIDDLES[5]), game.at(LOOSE[4][0] + CELL + 62, LOOSE[4][1] + 62))
key("alt+p", "t", pause=1.1)  # a tray under the preview, and yellow into it
game.carry(game.at(*MIDDLES[3]), (50, 400))
pieces = game.save(kept)[1]
assert pieces[0].set and pieces[0].cell == ORIGIN, "red is not set at home"
assert pieces[5].cell == (LOOSE[4][0] + CELL, LOOSE[4][1]), "cyan did not join magenta"

# Killed 40 s after a carry: the next start offers the puzzle back, as it lay.
game.carry(game.at(*MIDDLES[1]), game.at(700, 600))
time.sleep(40)
before, preview = Screen("keep-before-kill"), game.at(10, 40)
os.kill(game.pid(), 9)  # as a crash or a power cut would: no shutdown runs
game = game.restart(title=None)
dialog("Restore puzzle", "Return", timeout=60, pause=2.0)  # Yes, the default
after = Screen("keep-restored")
for region in BOARD, TRAY:
    assert before.differences(after, region, 1) == 0, f"{region} differs from before the kill"

# A crafted file whose group lies a million pixels apart is refused; play goes on.
data = bytearray(open(kept, "rb").read())
struct.pack_into("<2i", data, pieces[5].at, -1047892, -261641)
open(crafted, "wb").write(data)
game.open_puzzle(crafted)
dialog("File error", "Return", pause=0.5)
assert game.process.poll() is None and after.differences(Screen("keep-refused"), BOARD) == 0

# The picture moved away: the player is told which, and finds it (the next run reopens it).
os.rename(picture, moved)
game.open_puzzle(kept)
dialog("File error", "Return", pause=0.5)  # Yes: look for it
game.answer("Open", moved)
found = Screen("keep-found")
assert found.count(YELLOW, TRAY) > 1000 and found.count(CYAN, BOARD) > 3000
game.save()

# A collection of two pictures, saved, closed, reopened from its recent list.
key("alt+o", "d")  # no piece outlines, kept for the next run
found = Screen()
key("alt+c", "n")
for path, size, grid in ((CELLS_PICTURE, (360, 240), (3, 2)),
                         (os.path.join(PICTURES, "picture300x200.bmp"), (300, 200), (6, 4))):
    key("alt+c", "i")
    game.open_image(path, size, grid)
key("alt+c", "s")
game.answer("Save As", fpc)
# Closed, the preview is white; reopened, red, its first picture's; next, another.
for keys, colour, shown in ("l", WHITE, True), ("c1", RED, True), ("x", RED, False):
    key("alt+c", *keys, pause=0.8)
    assert (Screen().pixel(*preview) == colour) == shown, f"the preview after alt+c, {keys}"
key("alt+c", "p", "alt+c", "d")  # back, and the default collection from now on
key("alt+o", "Return")           # the simple interface
game.exit_by_menu()

# The next run: the default collection in the simple interface, the recent puzzle back.
game = game.restart()
assert not windows_named("Restore puzzle"), "a clean exit left a puzzle to restore"
assert Screen().pixel(*preview) == RED
key("alt+p", "o", pause=1.3)  # Open Image is grayed in this interface
assert windows_named("Open") == [], "Open Image ran in the simple interface"
key("Escape", "Escape", "alt+p", "u", "1", pause=1.5)  # the recent puzzle
assert found.differences(Screen("keep-reopened"), BOARD, 1) == 0
game.exit_by_menu()
