"""Where the platform says no, the program says so and goes on: folder, window and memory."""

import os, subprocess

from game import CELLS_PICTURE, Game, Screen, dialog, key, open_help, scratch

BOARD = (0, 60, 1024, 740)


def resize_by(dx, dy):
    """Sizes the window by the system menu's Size, 8 pixels an arrow; the first picks the edge."""
    for less, more, change in (("Left", "Right", dx), ("Up", "Down", dy)):
        key("alt+space", "s", more, pause=0.4)
        key(*([less if change < 0 else more] * (abs(change) // 8)), pause=0.04)
        key("Return", pause=0.8)


base = scratch("tovira-long-")
# "Z:" and the Unix path make the Windows path: 250 characters in all.
os.mkdir(folder := os.path.join(base, "x" * (250 - len("Z:") - len(base) - 1)))
game = Game(folder=folder)
key("alt+p", "o")
game.open_image(CELLS_PICTURE, (360, 240), (3, 2))
game.make()
# A smaller window brings pieces back in; grown again, the board is drawn as a repaint would.
resize_by(-336, -224)
w, h = game.geometry()[2:]  # the save goes beside the long folder, which has no room for a name
assert all(p.set or p.tray or p.box[0] < w and p.box[1] < h and p.box[2] > 0 < p.box[3]
           for p in game.save(f"{base}/limits.fpp")[1]), "a piece is out of reach"
resize_by(336, 224)
grown = Screen("limits-grown")
key("alt+o", "d", "alt+o", "d", pause=0.5)  # outlines off and on: drawn from scratch
assert grown.differences(Screen(), BOARD) == 0, "the grown board was not the drawn one"

# With its address space capped a little above what it uses, no 9999 x 9999 picture is made.
before, pid = Screen(), game.pid()
used = 1024 * next(int(l.split()[1]) for l in open(f"/proc/{pid}/status") if l[:7] == "VmSize:")
subprocess.run(["prlimit", f"--pid={pid}", f"--as={used + 200 * 2**20}:unlimited"], check=True)
game.make((9999, 9999))
dialog("System Error", "Return", pause=0.8)
assert before.differences(Screen(), BOARD) == 0, "a refused Make changed the board"
subprocess.run(["prlimit", f"--pid={pid}", "--as=unlimited:unlimited"], check=True)
game.make((360, 240))  # and a puzzle is made as ever
assert before.differences(Screen(), BOARD) > 1000, "Make did not make a new puzzle"
open_help(folder)  # its folders and its guide, from the long folder
game.exit_by_menu()
