"""Where the platform or the player's input says no, the program says so and the board stays
as it was: a window shrunk and grown again keeps every piece reachable and the whole board
drawn; files that are no picture, unplayable sizes and a puzzle the process cannot hold each
end in one message; afterwards a normal puzzle is made and played."""

import os
import struct
import subprocess
import sys
import time

from cells import COLOURS, PREVIEW, body, stage
from game import Game, Screen, windows_path
from saved_puzzle import out_of_reach

exe, shots, pictures = sys.argv[1:4]
BOARD = (0, 60, 1024, 740)  # below the toolbar, above the bottom of the screen


def board_changes(before, after):
    left, top, right, bottom = BOARD
    return sum(1 for y in range(top, bottom, 2) for x in range(left, right, 2)
               if before.pixel(x, y) != after.pixel(x, y))


def refused(game, title, shot, then=("Return",)):
    """Waits for the message titled title, keeps a screenshot of it and answers it."""
    game.dialog(title)
    time.sleep(0.5)
    Screen(os.path.join(shots, shot))
    game.key(*then, pause=0.8)


def bad_pictures(folder):
    jpeg = open(os.path.join(pictures, "picture300x200.jpg"), "rb").read()
    files = {
        "empty.jpg": b"",
        "text.jpg": b"this is a letter, not a picture\r\n" * 20,
        "truncated.jpg": jpeg[:len(jpeg) // 3],
        # A header that claims 30000 x 30000 pixels, and no pixels after it.
        "huge.bmp": b"BM" + struct.pack("<IHHI", 54, 0, 0, 54) +
                    struct.pack("<IiiHHIIiiII", 40, 30000, 30000, 1, 24, 0, 0, 0, 0, 0, 0),
        "negative.bmp": b"BM" + struct.pack("<IHHI", 54, 0, 0, 54) +
                        struct.pack("<IiiHHIIiiII", 40, -20, 20, 1, 24, 0, 0, 0, 0, 0, 0),
    }
    for name, data in files.items():
        with open(os.path.join(folder, name), "wb") as f:
            f.write(data)
    return [os.path.join(folder, name) for name in files]


game = Game(exe)
try:
    game.open_image(windows_path(os.path.join(pictures, "cells.bmp")), 360, 240, 3, 2)
    game.menu("p", "m")
    time.sleep(1.0)

    # A smaller window brings the pieces lying outside it back in; grown again, the
    # whole board is drawn and a piece dropped at its far right stays there.
    game.resize_by(-336, -224)
    Screen(os.path.join(shots, "limits-shrunk.png"))
    fpp = os.path.join(game.folder, "limits.fpp")
    game.save_as(fpp)
    assert not out_of_reach(fpp, game), out_of_reach(fpp, game)
    game.resize_by(336, 224)
    # Scattered at random, the piece may lie partly under another: picked up by what shows.
    stage(game, 0, (880, 560))
    grown = Screen(os.path.join(shots, "limits-grown.png"))
    shown = grown.largest_component(COLOURS[0], region=(820, 480, 1024, 740))
    assert shown and shown[1] > 2000, f"the piece dropped at the far right is not shown: {shown}"
    game.key("alt+o", "d", pause=0.5)  # outlines off and on: the board drawn from scratch
    game.key("alt+o", "d", pause=0.5)
    assert board_changes(grown, Screen()) == 0, "the grown board was not the drawn one"

    # Files that are no picture: one message each, no size dialog, the board as it was.
    before = Screen()
    for i, path in enumerate(bad_pictures(game.folder)):
        game.menu("p", "o")
        game.dialog("Open")
        time.sleep(0.5)
        game.type(windows_path(path))
        game.key("Return", pause=1.0)
        refused(game, "File error", f"limits-not-a-picture-{i}.png")
        assert board_changes(before, Screen()) == 0, f"{path} changed the board"

    # Sizes whose pieces cannot be played are refused and the dialog stays for another try.
    game.menu("p", "z")
    game.dialog("Enter Puzzle Size in pixels")
    game.answer_size_dialog(0, 0)
    refused(game, "Input error", "limits-size-zero.png", then=("Return", "Escape"))
    game.menu("p", "n")
    game.dialog("Enter Number of Pieces")
    game.answer_size_dialog(500, 2)
    refused(game, "Input error", "limits-slivers.png", then=("Return", "Escape"))
    assert board_changes(before, Screen()) == 0, "a refused size changed the board"

    # A puzzle the process cannot hold: its address space is capped a little above what it
    # uses, so the 9999 x 9999 picture image cannot be made. Make is refused, nothing changes.
    pid = game.pid()
    with open(f"/proc/{pid}/status") as status:
        used = next(int(l.split()[1]) for l in status if l.startswith("VmSize:")) * 1024
    subprocess.run(["prlimit", f"--pid={pid}", f"--as={used + 200 * 2**20}:unlimited"], check=True)
    game.menu("p", "z")
    game.dialog("Enter Puzzle Size in pixels")
    game.answer_size_dialog(9999, 9999)
    game.menu("p", "m")
    refused(game, "System Error", "limits-too-large.png")
    assert board_changes(before, Screen()) == 0, "a refused Make changed the board"
    subprocess.run(["prlimit", f"--pid={pid}", "--as=unlimited:unlimited"], check=True)

    # And a normal puzzle is made and played as ever.
    game.menu("p", "z")
    game.dialog("Enter Puzzle Size in pixels")
    game.answer_size_dialog(360, 240)
    game.menu("p", "m")
    time.sleep(1.0)
    assert board_changes(before, Screen()) > 1000, "Make did not make a new puzzle"
    # Carried towards (700, 120): there, or joined to a neighbour on the way.
    start = Screen().largest_component(COLOURS[3], exclude=PREVIEW)
    stage(game, 3, (700, 120))
    assert body(Screen(os.path.join(shots, "limits-after.png")), 3)[0] != start[0], "not carried"

    assert game.exit_by_menu() == 0
    print("every refusal left the board as it was, and play went on")
finally:
    game.close()
