"""The README's first command on a fresh clone, without a display: scripts/run.sh builds the
game, starts it on a virtual display and keeps it running there until the player quits; a
second run starts it again at once."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

source = sys.argv[4]
TITLE = "^Turn your favorite images into jigsaw puzzles$"


def on(display, *args):
    return subprocess.run(["xdotool", *args], capture_output=True, text=True,
                          env={**os.environ, "DISPLAY": display}).stdout


def run_once(clone, shot):
    env = {k: v for k, v in os.environ.items()
           if k != "DISPLAY" and not k.startswith(("WINE", "TOVIRA_"))}
    run = subprocess.Popen(["bash", "scripts/run.sh"], cwd=clone, env=env, text=True,
                           stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                           stdin=subprocess.DEVNULL)
    display = None
    for line in run.stdout:
        match = re.search(r"running on Xvfb (:\d+)", line)
        if match:
            display = match.group(1)
            break
    assert display, "run.sh did not say which display it runs on"
    # The first start asks for the language; the main window is up behind the question.
    deadline = time.time() + 180
    while not on(display, "search", "--onlyvisible", "--name", TITLE):
        assert run.poll() is None, f"run.sh ended with {run.returncode} before the window"
        assert time.time() < deadline, "no main window on the virtual display"
        time.sleep(2)
        on(display, "key", "Return")
    time.sleep(3)
    assert run.poll() is None, "the game did not stay up"
    subprocess.run(["import", "-window", "root", shot], check=True,
                   env={**os.environ, "DISPLAY": display})
    on(display, "search", "--onlyvisible", "--name", TITLE, "windowfocus")  # no window manager
    on(display, "key", "alt+p")
    time.sleep(0.5)
    on(display, "key", "x")
    assert run.wait(60) == 0, f"run.sh ended with {run.returncode}"
    run.stdout.close()


clone = tempfile.mkdtemp(prefix="tovira-clone-")
try:
    subprocess.run(["git", "clone", "-q", source, clone], check=True)
    run_once(clone, os.path.join(sys.argv[2], "run-first.png"))
    run_once(clone, os.path.join(sys.argv[2], "run-second.png"))
    print("run.sh kept the game up on a virtual display, twice")
finally:
    shutil.rmtree(clone, ignore_errors=True)
