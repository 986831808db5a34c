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


def xdotool(*args):
    return subprocess.run(["xdotool", *map(str, args)], capture_output=True, text=True).stdout


def windows_named(pattern):
    return xdotool("search", "--name", pattern).split()


def wait_for(predicate, timeout=30.0, what="condition"):
    deadline = time.time() + timeout
    while time.time() < deadline:
        value = predicate()
        if value:
            return value
        time.sleep(0.1)
    raise AssertionError(f"timed out waiting for {what}")


def wait_for_focus(windows, timeout=2.0):
    """Waits until one of the windows has the keyboard: a window that opens as the program
    starts may be mapped a moment before it gets the focus, and keys sent then are lost.
    Without a window manager nothing hands the focus over at times, so then it is given."""
    def focused():
        return xdotool("getwindowfocus").strip() in windows
    try:
        return wait_for(focused, timeout, "the focus")
    except AssertionError:
        xdotool("windowfocus", windows[0])
        try:
            return wait_for(focused, 1.0, "the focus")
        except AssertionError:
            return False


def press(*keys, pause=0.3):
    for k in keys:
        xdotool("key", k)
        time.sleep(pause)


def click(x, y, pause=0.3):
    """A press and release of the left button at (x, y), held briefly as a hand does:
    caption buttons act only on a release that their tracking loop sees."""
    xdotool("mousemove", x, y)
    time.sleep(0.1)
    xdotool("mousedown", "1")
    time.sleep(0.08)
    xdotool("mouseup", "1")
    time.sleep(pause)


class Screen:
    """A screenshot of the whole display, pixel by pixel."""

    def __init__(self, path=None, settle=True):
        # The program may still be drawing what the last input asked for: wait until two
        # shots in a row agree.
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

    @classmethod
    def now(cls):
        """The screen as it is this moment, without waiting for it to settle."""
        return cls(settle=False)

    @staticmethod
    def grab():
        return subprocess.run(["import", "-window", "root", "-depth", "8", "ppm:-"],
                              capture_output=True, check=True).stdout

    def pixel(self, x, y):
        i = 3 * (y * self.width + x)
        return tuple(self.data[i:i + 3])

    def find_rectangle_frame(self, w, h, colour=(0, 0, 0), run=60):
        """Top-left of a one-pixel frame of exactly w x h, found from the long straight
        stretches of its edges that pieces lying over it leave visible."""
        rows, columns = set(), set()
        for y in range(self.height):
            length = 0
            for x in range(self.width):
                length = length + 1 if self.pixel(x, y) == colour else 0
                if length == run:
                    rows.add(y)
        for x in range(self.width):
            length = 0
            for y in range(self.height):
                length = length + 1 if self.pixel(x, y) == colour else 0
                if length == run:
                    columns.add(x)
        tops = [y for y in sorted(rows) if y + h - 1 in rows]
        lefts = [x for x in sorted(columns) if x + w - 1 in columns]
        if not tops or not lefts:
            return None
        return lefts[0], tops[0]

    def horizontal_scroll_bar(self, below=400):
        """(left, top, right) of the topmost long grey line below a row: the top edge of a
        horizontal scroll bar's thumb."""
        for y in range(below, self.height):
            run_colour, run_start, length = None, 0, 0
            for x in range(self.width):
                p = self.pixel(x, y)
                if p == run_colour:
                    length += 1
                else:
                    run_colour, run_start, length = p, x, 1
                grey = p[0] == p[1] == p[2] and 60 < p[0] < 230
                if grey and length >= 300 and (x + 1 == self.width or self.pixel(x + 1, y) != p):
                    return run_start, y, x + 1
        return None

    def largest_component(self, colour, region=None, tolerance=8, exclude=None):
        """The largest 4-connected area of a colour, pixels in `exclude` left out, as
        (bounding box (left, top, right, bottom), size, a pixel of it near its middle);
        None when the colour is nowhere."""
        left, top, right, bottom = region or (0, 0, self.width, self.height)
        ex = exclude or (0, 0, 0, 0)
        w = self.width
        data = self.data

        def matches(x, y):
            if ex[0] <= x < ex[2] and ex[1] <= y < ex[3]:
                return False
            i = 3 * (y * w + x)
            return (abs(data[i] - colour[0]) <= tolerance and abs(data[i + 1] - colour[1]) <= tolerance
                    and abs(data[i + 2] - colour[2]) <= tolerance)

        seen = set()
        best = None
        for y in range(top, bottom, 3):
            for x in range(left, right, 3):
                if (x, y) in seen or not matches(x, y):
                    continue
                stack = [(x, y)]
                seen.add((x, y))
                box = [x, y, x + 1, y + 1]
                size = 0
                pixels = []
                while stack:
                    cx, cy = stack.pop()
                    size += 1
                    pixels.append((cx, cy))
                    box = [min(box[0], cx), min(box[1], cy), max(box[2], cx + 1), max(box[3], cy + 1)]
                    for nx, ny in ((cx + 1, cy), (cx - 1, cy), (cx, cy + 1), (cx, cy - 1)):
                        if left <= nx < right and top <= ny < bottom and (nx, ny) not in seen \
                                and matches(nx, ny):
                            seen.add((nx, ny))
                            stack.append((nx, ny))
                if best is None or size > best[1]:
                    mx = sum(p[0] for p in pixels) / size
                    my = sum(p[1] for p in pixels) / size
                    middle = min(pixels, key=lambda p: (p[0] - mx) ** 2 + (p[1] - my) ** 2)
                    best = (tuple(box), size, middle)
        return best


class Game:
    """The program running under Wine in a folder of its own (its Puz and Col go there).
    A new game starts with the settings of a first run unless keep_settings is given."""

    def __init__(self, exe, folder=None, keep_settings=False, language_dialog=False,
                 title=TITLE):
        self.folder = folder or tempfile.mkdtemp(prefix="tovira-e2e-")
        self.wine = os.environ.get("WINE", "wine")
        # The help files live beside the program, in the folder it starts in.
        for name in os.listdir(os.path.dirname(exe)):
            if name.startswith("ToviraPuzzle") and name[-4:] in (".hlp", ".cnt", ".chm"):
                shutil.copy(os.path.join(os.path.dirname(exe), name), self.folder)
        if not keep_settings:
            subprocess.run([self.wine, "reg", "delete", SETTINGS_KEY, "/f"],
                           capture_output=True, stdin=subprocess.DEVNULL)
            if not language_dialog:
                self.set_setting("ToviraPuzzle\\Options", "SupLangDlg", "1")
        self.log = open(os.path.join(self.folder, "wine.log"), "a")
        self.process = subprocess.Popen([self.wine, exe], cwd=self.folder, stdout=self.log,
                                        stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL)
        if title:
            self.wait_for_main_window(title)

    def wait_for_main_window(self, title=TITLE):
        found = wait_for(lambda: windows_named("^" + re.escape(title) + "$"), 60, "the main window")
        self.window = found[0]
        if not wait_for_focus(found):
            print("note: the main window is up without the focus")
        time.sleep(0.5)

    def set_setting(self, key, name, value):
        subprocess.run([self.wine, "reg", "add", SETTINGS_KEY + "\\" + key, "/v", name, "/t",
                        "REG_SZ", "/d", value, "/f"], capture_output=True, stdin=subprocess.DEVNULL)

    def setting(self, key, name):
        """A value under the program's registry key, or None."""
        out = subprocess.run([self.wine, "reg", "query", SETTINGS_KEY + "\\" + key, "/v", name],
                             capture_output=True, text=True, stdin=subprocess.DEVNULL).stdout
        match = re.search(re.escape(name) + r"\s+REG_SZ\s*(.*)", out)
        return match.group(1).strip() if match else None

    def key(self, *keys, pause=0.3):
        press(*keys, pause=pause)

    def type(self, text):
        xdotool("type", "--delay", "20", text)

    def click(self, x, y, pause=0.3):
        click(x, y, pause)

    def move(self, x, y, steps=1, pause=0.2):
        """Moves the pointer to (x, y), in steps from where it is, as a hand would."""
        location = xdotool("getmouselocation")
        cx = int(re.search(r"x:(\d+)", location).group(1))
        cy = int(re.search(r"y:(\d+)", location).group(1))
        for i in range(1, steps + 1):
            xdotool("mousemove", cx + (x - cx) * i // steps, cy + (y - cy) * i // steps)
            time.sleep(0.05)
        time.sleep(pause)

    def menu(self, mnemonic, item):
        self.key("alt+" + mnemonic, item)

    def dialog(self, title, timeout=20):
        return wait_for(lambda: windows_named("^" + re.escape(title) + "$"), timeout,
                        f"the dialog '{title}'")[0]

    def answer_size_dialog(self, first, second):
        """Types both values into the open size-and-pieces dialog and presses OK."""
        self.key("ctrl+a")
        self.type(str(first))
        self.key("Tab", "ctrl+a")
        self.type(str(second))
        self.key("Return", pause=0.8)

    def open_image(self, windows_path, width, height, columns, rows):
        self.menu("p", "o")
        self.dialog("Open")
        time.sleep(0.5)
        self.type(windows_path)
        self.key("Return", pause=1.0)
        self.dialog("Enter Puzzle Size in pixels")
        self.answer_size_dialog(width, height)
        self.dialog("Enter Number of Pieces")
        self.answer_size_dialog(columns, rows)


    def geometry(self):
        """(x, y, width, height) of the main window, frame included."""
        out = xdotool("getwindowgeometry", self.window)
        x, y = map(int, re.search(r"Position: (-?\d+),(-?\d+)", out).groups())
        w, h = map(int, re.search(r"Geometry: (\d+)x(\d+)", out).groups())
        return x, y, w, h

    def client(self):
        """The client area in screen coordinates: the frame, caption and menu bar of this
        Wine setup take 4 pixels left, 42 above, 4 right and 4 below."""
        x, y, w, h = self.geometry()
        return x + 4, y + 42, x + w - 4, y + h - 4

    def save_as(self, path):
        self.menu("p", "a")
        self.dialog("Save As")
        time.sleep(0.5)
        self.type(windows_path(path))
        self.key("Return", pause=1.0)

    def resize_by(self, dx, dy):
        """Sizes the window from its right and bottom edges with the system menu's Size and
        the arrow keys, in steps of 8 pixels: the first arrow picks the edge."""
        for pick, less, more, change in (("Right", "Left", "Right", dx), ("Down", "Up", "Down", dy)):
            if change // 8 == 0:
                continue
            self.key("alt+space", "s", pause=0.5)
            self.key(pick, pause=0.3)
            self.key(*([less if change < 0 else more] * (abs(change) // 8)), pause=0.04)
            self.key("Return", pause=0.8)

    def pid(self):
        """The process id of the program itself (not of Wine's loader)."""
        for pid in subprocess.run(["pgrep", "-f", "ToviraPuzzle"], capture_output=True,
                                  text=True).stdout.split():
            with open(f"/proc/{pid}/comm") as comm:
                if comm.read().startswith("ToviraPuzzle"):
                    return int(pid)
        raise AssertionError("the program's process is not running")

    def exit_by_menu(self, timeout=30):
        self.menu("p", "x")
        return self.process.wait(timeout)

    def close(self, keep_folder=False):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait(10)
        self.log.close()
        if not keep_folder:
            shutil.rmtree(self.folder, ignore_errors=True)


def windows_path(path):
    return "Z:" + path.replace("/", "\\")
