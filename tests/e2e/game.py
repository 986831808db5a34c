"""Drives the real ToviraPuzzle.exe under Wine on the test display: starts it, sends real
input with xdotool, and reads the screen with ImageMagick's import."""

import os
import re
import shutil
import subprocess
import tempfile
import time

TITLE = "Turn your favorite images into jigsaw puzzles"
SETTINGS_KEY = "HKCU\\Software\\Tovira Software"
WINE = os.environ.get("WINE", "wine")


def xdotool(*args):
    return subprocess.run(["xdotool", *map(str, args)], capture_output=True, text=True).stdout


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


def focus(windows, timeout=2.0):
    """Waits until one of the windows has the keyboard. Without a window manager nothing
    hands it over at times (and keys sent before are lost), so then it is given."""
    def focused():
        return xdotool("getwindowfocus").strip() in windows
    try:
        return wait_for(focused, timeout, "the focus")
    except AssertionError:
        xdotool("windowfocus", windows[0])
        try:
            return wait_for(focused, 1.0, "the focus given")
        except AssertionError:
            return False


def press(*keys, pause=0.3):
    for k in keys:
        xdotool("key", k)
        time.sleep(pause)


def click(x, y, pause=0.3):
    """A press and release held briefly as a hand does: caption buttons act only on a release
    their tracking loop sees."""
    xdotool("mousemove", x, y)
    time.sleep(0.1)
    xdotool("mousedown", "1")
    time.sleep(0.08)
    xdotool("mouseup", "1")
    time.sleep(pause)


def windows_path(path):
    return "Z:" + path.replace("/", "\\")


class Screen:
    """A screenshot of the whole display, taken once two shots in a row agree (the program
    may still be drawing what the last input asked for)."""

    def __init__(self, path=None, settle=True):
        raw = self.grab()
        for _ in range(30 if settle else 0):
            time.sleep(0.1)
            again = self.grab()
            if again == raw:
                break
            raw = again
        match = re.match(rb"P6\s+(\d+)\s+(\d+)\s+(\d+)\s", raw)
        self.width, self.height = int(match.group(1)), int(match.group(2))
        self.data = raw[match.end():]
        if path:
            subprocess.run(["convert", "ppm:-", path], input=raw, check=True)

    @staticmethod
    def grab():
        return subprocess.run(["import", "-window", "root", "-depth", "8", "ppm:-"],
                              capture_output=True, check=True).stdout

    def pixel(self, x, y):
        i = 3 * (y * self.width + x)
        return tuple(self.data[i:i + 3])

    def differences(self, other, region, step=2):
        left, top, right, bottom = region
        return sum(1 for y in range(top, bottom, step) for x in range(left, right, step)
                   if self.pixel(x, y) != other.pixel(x, y))

    def count(self, colour, region, step=2):
        left, top, right, bottom = region
        return sum(1 for y in range(top, bottom, step) for x in range(left, right, step)
                   if self.pixel(x, y) == colour)

    def box_of(self, colour, region=None):
        """The bounding box of the pixels of a colour in region, or None."""
        left, top, right, bottom = region or (0, 0, self.width, self.height)
        xs, ys = [], []
        for y in range(top, bottom, 2):
            for x in range(left, right, 2):
                if self.pixel(x, y) == colour:
                    xs.append(x)
                    ys.append(y)
        return (min(xs), min(ys), max(xs) + 1, max(ys) + 1) if xs else None


class Game:
    """The program under Wine in a folder of its own (its Puz and Col go there). A new game
    starts with the settings of a first start unless keep_settings is given."""

    def __init__(self, exe, folder=None, keep_settings=False, language_dialog=False,
                 title=TITLE):
        self.exe = exe
        self.folder = folder or tempfile.mkdtemp(prefix="tovira-e2e-")
        # The help files live beside the program, in the folder it starts in.
        for name in os.listdir(os.path.dirname(exe)):
            if name.startswith("ToviraPuzzle") and name[-4:] in (".hlp", ".cnt", ".chm"):
                shutil.copy(os.path.join(os.path.dirname(exe), name), self.folder)
        if not keep_settings:
            subprocess.run([WINE, "reg", "delete", SETTINGS_KEY, "/f"], capture_output=True,
                           stdin=subprocess.DEVNULL)
            if not language_dialog:
                self.set_setting("Options", "SupLangDlg", "1")
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
        found = wait_for(lambda: windows_named("^" + re.escape(title) + "$"), 60, "the window")
        self.window = found[0]
        focus(found)
        time.sleep(0.5)

    def geometry(self):
        out = xdotool("getwindowgeometry", self.window)
        return tuple(map(int, re.search(r"Position: (-?\d+),(-?\d+)", out).groups() +
                         re.search(r"Geometry: (\d+)x(\d+)", out).groups()))

    def at(self, x, y):
        """Where client point (x, y) of the main window shows on the screen: the frame, caption
        and menu bar of this Wine setup take 4 pixels left, 42 above, 4 right and 4 below."""
        wx, wy, _, _ = self.geometry()
        return x + wx + 4, y + wy + 42

    def client_size(self):
        _, _, w, h = self.geometry()
        return w - 8, h - 46

    def set_setting(self, leaf, name, value):
        subprocess.run([WINE, "reg", "add", SETTINGS_KEY + "\\ToviraPuzzle\\" + leaf, "/v", name,
                        "/t", "REG_SZ", "/d", value, "/f"], capture_output=True,
                       stdin=subprocess.DEVNULL)

    def setting(self, leaf, name):
        """A value under the program's registry key, or None."""
        out = subprocess.run([WINE, "reg", "query", SETTINGS_KEY + "\\ToviraPuzzle\\" + leaf,
                              "/v", name], capture_output=True, text=True,
                             stdin=subprocess.DEVNULL).stdout
        match = re.search(re.escape(name) + r"\s+REG_SZ\s*(.*)", out)
        return match.group(1).strip() if match else None

    def key(self, *keys, pause=0.3):
        press(*keys, pause=pause)

    def type(self, text):
        xdotool("type", "--delay", "20", text)

    def click(self, x, y, pause=0.3):
        click(x, y, pause)

    def move(self, x, y, steps=6):
        """Moves the pointer to (x, y) in steps from where it is, as a hand would."""
        at = xdotool("getmouselocation")
        cx, cy = (int(re.search(p, at).group(1)) for p in (r"x:(\d+)", r"y:(\d+)"))
        for i in range(1, steps + 1):
            xdotool("mousemove", cx + (x - cx) * i // steps, cy + (y - cy) * i // steps)
            time.sleep(0.05)
        time.sleep(0.2)

    def carry(self, start, end):
        """Picks up what lies at start and drops it with its grip point at end."""
        self.click(*start)
        self.move(*end)
        self.click(*end, pause=0.6)

    def menu(self, mnemonic, item):
        self.key("alt+" + mnemonic, item)

    def dialog(self, title, timeout=20):
        try:
            found = wait_for(lambda: windows_named("^" + re.escape(title) + "$"), timeout,
                             f"the dialog '{title}'")
        except AssertionError:
            Screen(os.path.join(tempfile.gettempdir(), "tovira-no-dialog.png"), settle=False)
            raise
        focus(found)
        time.sleep(0.3)
        return found[0]

    def answer_file_dialog(self, title, path):
        self.dialog(title)
        self.type(windows_path(path))
        self.key("Return", pause=1.0)

    def answer_size_dialog(self, title, first, second):
        """Types both values into the size-and-pieces dialog and presses OK."""
        self.dialog(title)
        self.key("ctrl+a")
        self.type(str(first))
        self.key("Tab", "ctrl+a")
        self.type(str(second))
        self.key("Return", pause=0.8)

    def open_image(self, path, width, height, columns, rows):
        self.menu("p", "o")
        self.answer_file_dialog("Open", path)
        self.answer_size_dialog("Enter Puzzle Size in pixels", width, height)
        self.answer_size_dialog("Enter Number of Pieces", columns, rows)

    def open_puzzle(self, path):
        self.menu("p", "p")
        self.answer_file_dialog("Open", path)

    def save_as(self, path):
        self.menu("p", "a")
        self.answer_file_dialog("Save As", path)

    def save(self):
        """Saves the puzzle to its own file again, without a dialog."""
        self.menu("p", "s")
        time.sleep(0.5)

    def resize_by(self, dx, dy):
        """Sizes the window from its right and bottom edges with the system menu's Size and the
        arrow keys, in steps of 8 pixels: the first arrow picks the edge."""
        for pick, less, more, change in (("Right", "Left", "Right", dx), ("Down", "Up", "Down", dy)):
            if change // 8:
                self.key("alt+space", "s", pause=0.5)
                self.key(pick)
                self.key(*([less if change < 0 else more] * (abs(change) // 8)), pause=0.04)
                self.key("Return", pause=0.8)

    def exit_by_menu(self, timeout=30):
        self.menu("p", "x")
        return self.process.wait(timeout)

    def kill(self):
        """Ends the program as a crash or a power cut would: no shutdown runs."""
        for pid in subprocess.run(["pgrep", "-f", "ToviraPuzzle"], capture_output=True,
                                  text=True).stdout.split():
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
