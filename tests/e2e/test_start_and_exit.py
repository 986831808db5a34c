"""The program starts maximised with its menu, board and title, and exits cleanly."""

import os
import sys

from game import Game, Screen

exe, shots = sys.argv[1], sys.argv[2]
game = Game(exe)
try:
    screen = Screen(os.path.join(shots, "started.png"))
    # Maximised on the 1024 x 768 display: the white board reaches the bottom right.
    assert screen.pixel(screen.width - 10, screen.height - 40) == (255, 255, 255), \
        screen.pixel(screen.width - 10, screen.height - 40)
    code = game.exit_by_menu()
    assert code == 0, f"exit code {code}"
    print("started, showed the board and exited with 0")
finally:
    game.close()
