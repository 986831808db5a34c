"""Where the platform says no, the program says so and goes on: started from a folder whose
path is 250 characters long it makes its folders and opens its guide there; a window shrunk
and grown again keeps every piece reachable and the board drawn; a puzzle the process cannot
hold ends in one message with the board as it was, and a puzzle is made afterwards."""

import os
import shutil
import subprocess
import sys
import tempfile
import time

from game import Game, Screen, wait_for, windows_named
from puzzle_file import out_of_reach

exe, shots, pictures = sys.argv[1:4]
BOARD = (0, 60, 1024, 740)
HELP_BUTTON = (702, 35)


base = tempfile.mkdtemp(prefix="tovira-long-")
# "Z:" and the Unix path make the Windows path: 250 characters in all.
folder = os.path.join(base, "x" * (250 - len("Z:") - len(base) - 1))
os.mkdir(folder)
game = Game(exe, folder=folder)
try:
    assert all(os.path.isdir(os.path.join(folder, name)) for name in ("Puz", "Col"))

    game.open_image(os.path.join(pictures, "cells.bmp"), 360, 240, 3, 2)
    game.menu("p", "m")
    time.sleep(1.0)
    # A smaller window brings the pieces lying outside it back in; grown again, the whole
    # board is drawn as a repaint draws it.
    game.resize_by(-336, -224)
    fpp = os.path.join(base, "limits.fpp")  # the long folder leaves no room for a name
    game.save_as(fpp)
    assert not out_of_reach(fpp, game.geometry()[2:]), "a piece is out of reach"
    game.resize_by(336, 224)
    grown = Screen(os.path.join(shots, "limits-grown.png"))
    game.key("alt+o", "d", pause=0.5)  # outlines off and on: the board drawn from scratch
    game.key("alt+o", "d", pause=0.5)
    assert grown.differences(Screen(), BOARD) == 0, "the grown board was not the drawn one"

    before = Screen()
    # A puzzle the process cannot hold: its address space capped a little above what it
    # uses, the 9999 x 9999 picture image cannot be made, and Make is refused.
    pid = next(int(p) for p in subprocess.run(["pgrep", "-f", "ToviraPuzzle"], capture_output=True,
                                              text=True).stdout.split()
               if open(f"/proc/{p}/comm").read().startswith("ToviraPuzzle"))
    with open(f"/proc/{pid}/status") as status:
        used = next(int(l.split()[1]) for l in status if l.startswith("VmSize:")) * 1024
    subprocess.run(["prlimit", f"--pid={pid}", f"--as={used + 200 * 2**20}:unlimited"], check=True)
    game.menu("p", "z")
    game.answer_size_dialog("Enter Puzzle Size in pixels", 9999, 9999)
    game.menu("p", "m")
    game.dialog("System Error")
    game.key("Return", pause=0.8)
    assert before.differences(Screen(), BOARD) == 0, "a refused Make changed the board"
    subprocess.run(["prlimit", f"--pid={pid}", "--as=unlimited:unlimited"], check=True)

    # And a puzzle is made and played as ever.
    game.menu("p", "z")
    game.answer_size_dialog("Enter Puzzle Size in pixels", 360, 240)
    game.menu("p", "m")
    time.sleep(1.0)
    assert before.differences(Screen(), BOARD) > 1000, "Make did not make a new puzzle"
    game.click(*HELP_BUTTON, pause=2.0)  # the guide, from the long folder
    wait_for(lambda: windows_named("^Wine Help$"), 20, "the guide")
    game.click(900, 700)  # the keys back to the game's window
    assert game.exit_by_menu() == 0
    wait_for(lambda: not windows_named("^Wine Help$"), 10, "the guide to close with the program")
    print("ran from a long folder, and every refusal left the board as it was")
finally:
    game.close()
    shutil.rmtree(base, ignore_errors=True)
