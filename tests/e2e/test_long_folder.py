"""Started from a folder whose path is 250 characters long, the program makes its Puz and
Col folders there, opens its guide from there and exits cleanly."""

import os
import shutil
import sys
import tempfile
import time

from game import Game, Screen, wait_for, windows_named

exe, shots = sys.argv[1:3]

base = tempfile.mkdtemp(prefix="tovira-long-")
# "Z:" and the Unix path make the Windows path: 250 characters in all.
folder = os.path.join(base, "x" * (250 - len("Z:") - len(base) - 1))
os.mkdir(folder)
assert len("Z:" + folder) == 250

game = Game(exe, folder=folder)
try:
    assert os.path.isdir(os.path.join(folder, "Puz")) and os.path.isdir(os.path.join(folder, "Col"))
    game.menu("h", "h")
    wait_for(lambda: windows_named("^Wine Help$"), 20, "the guide")
    time.sleep(1.5)
    help_shown = Screen(os.path.join(shots, "long-folder-help.png"))
    # The guide's contents: its chapters are green links.
    links = sum(1 for y in range(100, 400, 2) for x in range(0, 500, 2)
                if help_shown.pixel(x, y)[1] > 90 and max(help_shown.pixel(x, y)[0::2]) < 60)
    assert links > 100, f"the guide's contents are not shown ({links} link pixels)"
    game.click(900, 700)  # the keys back to the game's window
    assert game.exit_by_menu() == 0
    wait_for(lambda: not windows_named("^Wine Help$"), 10, "the guide to close with the program")
    print("ran, opened its guide and exited from a folder of 250 characters")
finally:
    game.close()
    shutil.rmtree(base, ignore_errors=True)
