"""Random play with a fixed seed and a fixed number of steps, with real input: pieces carried
on the board and into and out of trays, menu commands, window sizes and new makes. After
every step the program must be running and no loose piece may lie where it can neither be
seen nor reached; after every clearing of the puzzle its GDI objects must be back at the
level of the first one.

    monkey.py exe shots pictures [steps] [seed]"""

import os
import random
import re
import sys
import time

os.environ["WINEDEBUG"] = "+debugstr"  # the program reports its GDI level after each clear

from cells import COLOURS, PREVIEW  # noqa: E402
from game import Game, Screen, windows_named, windows_path  # noqa: E402
from saved_puzzle import out_of_reach, trays_in  # noqa: E402

exe, shots, pictures = sys.argv[1:4]
steps = int(sys.argv[4]) if len(sys.argv) > 4 else 30
seed = int(sys.argv[5]) if len(sys.argv) > 5 else 1
MESSAGES = "^(File error|Input error|System Error)$"
rng = random.Random(seed)


class Monkey:
    def __init__(self):
        self.game = Game(exe)
        self.fpp = os.path.join(self.game.folder, "monkey.fpp")
        self.levels = []

    def save(self):
        self.game.menu("p", "s")
        time.sleep(0.6)

    def carry(self, into_tray=False):
        p = rng.randrange(6)
        seen = Screen().largest_component(COLOURS[p], exclude=PREVIEW)
        if not seen or seen[1] < 400:
            return
        left, top, right, bottom = self.game.client()
        trays = trays_in(self.fpp)
        if into_tray and trays:
            t = rng.choice(trays)
            target = ((t[0] + t[2]) // 2, (t[1] + t[3]) // 2)
        else:
            target = (rng.randrange(left + 10, right - 10), rng.randrange(top + 70, bottom - 10))
        self.game.click(*seen[2])
        self.game.move(*target, steps=4)
        self.game.click(*target, pause=0.5)

    def resize(self):
        _, _, w, h = self.game.geometry()
        dx = max(min(rng.randrange(-400, 400), 1032 - w), 420 - w)
        dy = max(min(rng.randrange(-300, 300), 780 - h), 360 - h)
        self.game.resize_by(dx, dy)

    def step(self):
        action = rng.choices(["carry", "tray", "shuffle", "hidden", "outline", "pattern",
                              "add tray", "make", "resize"],
                             [40, 10, 5, 5, 5, 3, 6, 8, 18])[0]
        if action == "carry":
            self.carry()
        elif action == "tray":
            self.carry(into_tray=True)
        elif action == "shuffle":
            self.game.menu("p", "f")
        elif action == "hidden":
            self.game.menu("p", "h")
        elif action == "outline":
            self.game.menu("o", "d")
        elif action == "pattern":
            self.game.key("alt+o", "Down", "Down", "Down", "Return")
        elif action == "add tray":
            if len(trays_in(self.fpp)) < 3:
                self.game.menu("p", "t")
        elif action == "make":
            self.game.menu("p", "m")
            time.sleep(0.5)
        elif action == "resize":
            self.resize()
        time.sleep(0.3)
        return action

    def check(self, n, action):
        assert self.game.process.poll() is None, f"step {n} ({action}): the program ended"
        assert not windows_named(MESSAGES), f"step {n} ({action}): a message came up"
        self.save()
        lost = out_of_reach(self.fpp, self.game)
        assert not lost, f"step {n} ({action}): loose pieces out of reach: {lost}"
        with open(os.path.join(self.game.folder, "wine.log"), errors="replace") as log:
            self.levels = [int(m) for m in
                           re.findall(r"ToviraPuzzle: (\d+) GDI objects after clearing", log.read())]
        assert not self.levels or max(self.levels) <= self.levels[0], \
            f"step {n} ({action}): GDI objects after clearing grew: {self.levels}"

    def run(self):
        self.game.open_image(windows_path(os.path.join(pictures, "cells.bmp")), 360, 240, 3, 2)
        self.game.menu("p", "m")
        time.sleep(1.0)
        self.game.save_as(self.fpp)
        actions = {}
        for n in range(1, steps + 1):
            action = self.step()
            actions[action] = actions.get(action, 0) + 1
            self.check(n, action)
        Screen(os.path.join(shots, "monkey-end.png"))
        assert self.game.exit_by_menu() == 0
        return actions


monkey = Monkey()
try:
    done = monkey.run()
    print(f"{steps} steps with seed {seed}: {done}; GDI objects after each clear: "
          f"{monkey.levels}")
finally:
    monkey.game.close()
