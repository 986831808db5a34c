"""Drives the real ToviraPuzzle.exe under Wine on the test display: starts it, sends real
input with xdotool, and reads the screen with ImageMagick's import."""

import os
import re
import shutil
import subprocess
import tempfile
import time

TITLE = "Turn your favorite images into jigsaw puzzles"
ROOT_KEY = "HKCU\\Software\\Tovira Software"
SETTINGS_KEY = ROOT_KEY + "\\ToviraPuzzle\\"
WINE = os.environ.get("WINE", "wine")


def run(*args):
    return subprocess.run(list(map(str, args)), capture_output=True, text=True, timeout=300,
                          stdin=subprocess.DEVNULL).stdout


def xdotool(*args):
    return run("xdotool", *args)


def windows_named(pattern):
    """The shown windows whose title matches (Wine keeps hidden ones of the same name)."""
    return xdotool("search", "--onlyvisible", "--name", pattern).split()


def wait_for(predicate, timeout=30.0, what="condition"):
    deadline = time.time() + timeout
    while time.time() < deadline:
        value = predicate()
        if value:
            return value
        time.sleep(0.1)
    raise AssertionError(f"timed out waiting for {what}")


def focus(windows):
    """Waits for one of the windows to have the keyboard; without a window manager nothing
    hands it over at times (and keys sent before are lost), so then it is given."""
    for attempt in range(2):
        try:
            return wait_for(lambda: xdotool("getwindowfocus").strip() in windows, 2.0 - attempt)
        except AssertionError:
            xdotool("windowfocus", windows[0])
    return False


def press(*keys, pause=0.3):
    for k in keys:
        xdotool("key", k)
        time.sleep(pause)


def click(x, y, pause=0.3):
    """A press and release held briefly, as caption buttons' tracking loops need."""
    xdotool("mousemove", x, y)
    time.sleep(0.1)
    xdotool("mousedown", 1)
    time.sleep(0.08)
    xdotool("mouseup", 1)
    time.sleep(pause)


def windows_path(path):
    return "Z:" + path.replace("/", "\\")


class Screen:
    """The display's pixels, once two shots in a row agree (the program may still be drawing
    what the last input asked for)."""

    def __init__(self, path=None, settle=True):
        grab = ["import", "-window", "root", "-depth", "8", "ppm:-"]
        raw = subprocess.run(grab, capture_output=True, check=True).stdout
        for _ in range(30 if settle else 0):
            time.sleep(0.1)
            again = subprocess.run(grab, capture_output=True, check=True).stdout
            if again == raw:
                break
            raw = again
        match = re.match(rb"P6\s+(\d+)\s+(\d+)\s+\d+\s", raw)
        self.width = int(match.group(1))
        self.data = raw[match.end():]
        if path:
            subprocess.run(["convert", "ppm:-", path], input=raw, check=True)

    def pixel(self, x, y):
        i = 3 * (y * self.width + x)
        return tuple(self.data[i:i + 3])

    def where(self, test, region, step=2):
        left, top, right, bottom = region
        return [(x, y) for y in range(top, bottom, step) for x in range(left, right, step)
                if test(x, y)]

    def differences(self, other, region, step=2):
        return len(self.where(lambda x, y: self.pixel(x, y) != other.pixel(x, y), region, step))

    def count(self, colour, region):
        return len(self.where(lambda x, y: self.pixel(x, y) == colour, region))

    def box_of(self, colour, region):
        """The box of a colour's pixels in region, to within the two pixels sampled."""
        xs, ys = zip(*self.where(lambda x, y: self.pixel(x, y) == colour, region))
        return (min(xs), min(ys), max(xs) + 1, max(ys) + 1)


class Game:
    """The program under Wine in a folder of its own (its Puz and Col go there), with the
    settings of a first start unless keep_settings is given."""

    def __init__(self, exe, folder=None, keep_settings=False, language_dialog=False,
                 title=TITLE):
        self.folder = folder or tempfile.mkdtemp(prefix="tovira-e2e-")
        for name in os.listdir(os.path.dirname(exe)):  # the help files live beside it
            if name.startswith("ToviraPuzzle") and name[-4:] in (".hlp", ".cnt", ".chm"):
                shutil.copy(os.path.join(os.path.dirname(exe), name), self.folder)
        if not keep_settings:
            run(WINE, "reg", "delete", ROOT_KEY, "/f")
            if not language_dialog:
                run(WINE, "reg", "add", SETTINGS_KEY + "Options", "/v", "SupLangDlg", "/t",
                    "REG_SZ", "/d", "1", "/f")
        self.log = open(os.path.join(self.folder, "wine.log"), "a")
        self.process = subprocess.Popen([WINE, exe], cwd=self.folder, stdout=self.log,
                                        stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL)
        try:
            if title:
                self.wait_for_main_window(title)
        except BaseException:
            self.close(keep_folder=True)
            raise

    def wait_for_main_window(self, title=TITLE):
        self.window = self.dialog(title, 60)

    def setting(self, leaf, name):
        """A value under the program's registry key, or None."""
        out = run(WINE, "reg", "query", SETTINGS_KEY + leaf, "/v", name)
        match = re.search(re.escape(name) + r"\s+REG_SZ\s*(.*)", out)
        return match.group(1).strip() if match else None

    def geometry(self):
        """The client area's top-left on the screen, and its size: the frame, caption and menu
        bar of this Wine setup take 4 pixels left, 42 above, 4 right and 4 below."""
        out = xdotool("getwindowgeometry", self.window)
        x, y, w, h = [int(v) for v in re.search(r"Position: (-?\d+),(-?\d+)", out).groups() +
                      re.search(r"Geometry: (\d+)x(\d+)", out).groups()]
        return x + 4, y + 42, w - 8, h - 46

    def at(self, x, y):
        """Where client point (x, y) of the main window shows on the screen."""
        return x + self.geometry()[0], y + self.geometry()[1]

    def key(self, *keys, pause=0.3):
        press(*keys, pause=pause)

    def click(self, x, y, pause=0.3):
        click(x, y, pause)

    def carry(self, start, end, steps=6):
        """Picks up what lies at start, moves it as a hand would, and drops it at end."""
        self.click(*start)
        for i in range(1, steps + 1):
            xdotool("mousemove", start[0] + (end[0] - start[0]) * i // steps,
                    start[1] + (end[1] - start[1]) * i // steps)
            time.sleep(0.05)
        self.click(*end, pause=0.6)

    def menu(self, mnemonic, item):
        self.key("alt+" + mnemonic, item)

    def dialog(self, title, timeout=20):
        """The window of that title once it is up and has the keyboard."""
        try:
            found = wait_for(lambda: windows_named("^" + re.escape(title) + "$"), timeout,
                             f"the window '{title}'")
        except AssertionError:
            Screen(os.path.join(tempfile.gettempdir(), "tovira-no-window.png"), settle=False)
            raise
        focus(found)
        time.sleep(0.3)
        return found[0]

    def answer_file_dialog(self, title, path):
        self.dialog(title)
        xdotool("type", "--delay", 20, windows_path(path))
        self.key("Return", pause=1.0)

    def answer_size_dialog(self, title, first, second):
        self.dialog(title)
        for keys, value in ((["ctrl+a"], first), (["Tab", "ctrl+a"], second)):
            self.key(*keys)
            xdotool("type", "--delay", 20, value)
        self.key("Return", pause=0.8)

    def open_image(self, path, width, height, columns, rows):
        self.menu("p", "o")
        self.answer_file_dialog("Open", path)
        self.answer_size_dialog("Enter Puzzle Size in pixels", width, height)
        self.answer_size_dialog("Enter Number of Pieces", columns, rows)

    def open_puzzle(self, path):
        self.menu("p", "p")
        self.answer_file_dialog("Open", path)

    def save(self):
        self.menu("p", "s")
        time.sleep(0.5)

    def save_as(self, path):
        self.menu("p", "a")
        self.answer_file_dialog("Save As", path)

    def resize_by(self, dx, dy):
        """Sizes the window with the system menu's Size and the arrow keys, 8 pixels a key:
        the first arrow picks the edge."""
        for pick, less, more, change in (("Right", "Left", "Right", dx), ("Down", "Up", "Down", dy)):
            self.key("alt+space", "s", pick, pause=0.4)
            self.key(*([less if change < 0 else more] * (abs(change) // 8)), pause=0.04)
            self.key("Return", pause=0.8)

    def exit_by_menu(self, timeout=30):
        self.menu("p", "x")
        return self.process.wait(timeout)

    def kill(self):
        """Ends the program as a crash or a power cut would: no shutdown runs."""
        for pid in run("pgrep", "-f", "ToviraPuzzle").split():
            with open(f"/proc/{pid}/comm") as comm:
                if comm.read().startswith("ToviraPuzzle"):
                    os.kill(int(pid), 9)
        self.process.wait(10)

    def close(self, keep_folder=False):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait(10)
        self.log.close()
        if not keep_folder:
            shutil.rmtree(self.folder, ignore_errors=True)
