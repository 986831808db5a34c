"""Drives ToviraPuzzle.exe under Wine on the test display, and reads its screen and files."""

import atexit, collections, os, re, shutil, struct, subprocess, sys, tempfile, time

EXE, SHOTS, PICTURES, ARCH = sys.argv[1:5]  # as CTest gives them to every flow
TITLE = "Turn your favorite images into jigsaw puzzles"
ROOT_KEY = "HKCU\\Software\\Tovira Software"
OPTIONS_KEY = ROOT_KEY + "\\ToviraPuzzle\\Options"
WINE, WINESERVER = (os.environ.get(name, name.lower()) for name in ("WINE", "WINESERVER"))
# cells.bmp: six cells of 120 x 120 in pure colours, 3 across and 2 down, as its pieces show.
CELLS_PICTURE = os.path.join(PICTURES, "cells.bmp")
CELLS = [(255, 0, 0), (0, 255, 0), (0, 0, 255), (255, 255, 0), (255, 0, 255), (0, 255, 255)]
CELL = 120
# Top-lefts of the cells' pieces laid loose, red to cyan: clear of where red goes and the trays.
LOOSE = [(620, 100), (800, 100), (620, 260), (800, 260), (560, 500), (820, 500)]
MIDDLES = [(x + CELL // 2, y + CELL // 2) for x, y in LOOSE]  # where to grip them
SIZE, PIECES = "Enter Puzzle Size in pixels", "Enter Number of Pieces"  # the two size dialogs
Piece = collections.namedtuple("Piece", "box cell z set tray at")


def run(*args):
    return subprocess.run(list(map(str, args)), capture_output=True, text=True, timeout=300,
                          stdin=subprocess.DEVNULL).stdout


def scratch(prefix):
    folder = tempfile.mkdtemp(prefix=prefix)
    atexit.register(shutil.rmtree, folder, True)  # after the programs started later have ended
    return folder


def windows_named(title):
    """The shown windows of that title (Wine keeps hidden ones of the same name)."""
    return run("xdotool", "search", "--onlyvisible", "--name", "^" + re.escape(title) + "$").split()


def wait_for(predicate, timeout=30.0, what=None):
    """The predicate's first true value in time; if what is named, a miss fails with a shot."""
    deadline = time.time() + timeout
    while not (value := predicate()) and time.time() < deadline:
        time.sleep(0.1)
    if not value and what:
        Screen("timed-out", settle=False)
        raise AssertionError(f"timed out waiting for {what}")
    return value


def key(*keys, pause=0.3):
    for k in keys:
        run("xdotool", "key", k)
        time.sleep(pause)


def click(x, y, pause=0.3):
    """A press and release held briefly, as caption buttons' tracking loops need."""
    run("xdotool", "mousemove", x, y, "sleep", 0.1, "mousedown", 1, "sleep", 0.08, "mouseup", 1)
    time.sleep(pause)


def dialog(title, *keys, timeout=20, pause=0.3):
    """Keys to that window once it has the keyboard, handing it over as no window manager does."""
    found = wait_for(lambda: windows_named(title), timeout, f"the window '{title}'")
    for wait in 2.0, 1.0:
        if wait_for(lambda: run("xdotool", "getwindowfocus").strip() in found, wait):
            break
        run("xdotool", "windowfocus", found[0])
    time.sleep(0.3)
    key(*keys, pause=pause)
    return found[0]


def open_help(folder):
    """Checks the Puz and Col folders where the program runs, and opens its help."""
    assert all(os.path.isdir(os.path.join(folder, name)) for name in ("Puz", "Col")), folder
    click(702, 35, pause=2.0)
    wait_for(lambda: windows_named("Wine Help"), 30, "the help")
    click(900, 700)  # the keys back to the program


def registry(name, path=OPTIONS_KEY):
    match = re.search(r"REG_\w+[ \t]+(.*)", run(WINE, "reg", "query", path, "/v", name))
    return match.group(1).strip() if match else None


def read_puzzle(path):
    """The puzzle area's origin and its pieces, in client coordinates; at is the file offset."""
    data = open(path, "rb").read()
    header = struct.unpack_from("<12i", data, 7)
    width, height, groups, trays, across, down, shape, path_length = header[2:6] + header[8:12]
    at = 59 + path_length + 68 * trays + 24 * groups
    pieces = []
    for i in range(across * down):
        x, y, z, knob, top, bottom, right, left, _g, tray = struct.unpack_from("<10i", data, at)
        depth = 2 * knob if shape == 2 else 0
        w = width // across + (i % across < width % across) + depth * ((left == 1) + (right == 1))
        h = height // down + (i // across < height % down) + depth * ((top == 1) + (bottom == 1))
        cell = (x + depth * (left == 1), y + depth * (top == 1))
        pieces.append(Piece((x, y, x + w, y + h), cell, z, data[at + 40], tray, at))
        at += 44
    return header[:2], pieces


class Screen:
    """The display's pixels once two shots agree (drawing may be under way); kept if named."""

    def __init__(self, name=None, settle=True):
        grab = ["import", "-window", "root", "-depth", "8", "ppm:-"]
        raw = subprocess.run(grab, capture_output=True, check=True).stdout
        for _ in range(30 if settle else 0):
            time.sleep(0.1)
            if raw == (raw := subprocess.run(grab, capture_output=True, check=True).stdout):
                break  # the new shot is the last one again
        match = re.match(rb"P6\s+(\d+)\s+(\d+)\s+\d+\s", raw)
        self.width, self.data = int(match.group(1)), raw[match.end():]
        if name:
            subprocess.run(["convert", "ppm:-", f"{SHOTS}/{name}.png"], input=raw, check=True)

    def pixel(self, x, y):
        i = 3 * (y * self.width + x)
        return tuple(self.data[i:i + 3])

    def differences(self, other, region, step=2):
        left, top, right, bottom = region
        return sum(self.pixel(x, y) != other.pixel(x, y) for y in range(top, bottom, step)
                   for x in range(left, right, step))

    def count(self, colour, region):
        left, top, right, bottom = region
        return sum(self.pixel(x, y) == colour for y in range(top, bottom, 2)
                   for x in range(left, right, 2))


class Game:
    """The program in a folder of its own, with a first start's settings unless kept."""

    def __init__(self, folder=None, keep_settings=False, language_dialog=False, title=TITLE):
        self.folder = folder or scratch("tovira-e2e-")
        for name in os.listdir(os.path.dirname(EXE)):  # the help files live beside it
            if name.startswith("ToviraPuzzle") and name[-4:] in (".hlp", ".cnt", ".chm"):
                shutil.copy(os.path.join(os.path.dirname(EXE), name), self.folder)
        if not keep_settings:
            run(WINE, "reg", "delete", ROOT_KEY, "/f")
            if not language_dialog:
                run(WINE, "reg", "add", OPTIONS_KEY, "/v", "SupLangDlg", "/d", "1", "/f")
        log = open(f"{SHOTS}/wine.log", "a")
        self.process = subprocess.Popen([WINE, EXE], cwd=self.folder, stdin=subprocess.DEVNULL,
                                        stdout=log, stderr=subprocess.STDOUT)
        atexit.register(self.close)  # however the test ends
        self.window = title and dialog(title, timeout=60)

    def restart(self, **options):
        self.close()
        return Game(folder=self.folder, keep_settings=True, **options)

    def geometry(self):
        """The client area on the screen, inside this Wine's frame, caption and menu bar."""
        out = run("xdotool", "getwindowgeometry", "--shell", self.window)
        g = {name: int(value) for name, value in (v.split("=") for v in out.split())}
        return g["X"] + 4, g["Y"] + 42, g["WIDTH"] - 8, g["HEIGHT"] - 46

    def at(self, x, y):
        return tuple(a + b for a, b in zip((x, y), self.geometry()))

    def carry(self, start, end, steps=6):
        """Picks up what lies at start and drops it at end, moving as a hand would."""
        click(*start)
        for i in range(1, steps + 1):
            run("xdotool", "mousemove", *(a + (b - a) * i // steps for a, b in zip(start, end)))
            time.sleep(0.05)
        click(*end, pause=0.6)

    def answer(self, title, *fields):
        """Types over each field, Tab between them, a Unix path as Wine's drive Z: has it."""
        dialog(title)
        for i, text in enumerate(fields):
            key(*["Tab"] * (i > 0), "ctrl+a")
            run("xdotool", "type", "--delay", 20, re.sub("^/", "Z:/", str(text)).replace("/", "\\"))
        key("Return", pause=1.0)

    def open_image(self, path, size, pieces):
        """Answers the dialogs of Open Image or Insert Image."""
        for title, fields in ("Open", [path]), (SIZE, size), (PIECES, pieces):
            self.answer(title, *fields)

    def make(self, size=None, pieces=None):
        for item, fields, title in ("z", size, SIZE), ("n", pieces, PIECES):
            if fields:
                key("alt+p", item)
                self.answer(title, *fields)
        key("alt+p", "m")
        time.sleep(1.0)

    def open_puzzle(self, path):
        key("alt+p", "p")
        self.answer("Open", path)
        self.path = path

    def open_cells_puzzle(self, path, picture, origin, slots=LOOSE):
        """Writes and opens the cells puzzle at origin, its pieces loose at slots, in order."""
        name = ("Z:" + picture.replace("/", "\\")).encode()
        header = struct.pack("<12iBBxx", *origin, 360, 240, 0, 0, 0, 0, 3, 2, 1, len(name), 0, 1)
        loose = [struct.pack("<10iBBBx", x, y, z, *[0] * 8, 1, 0) for z, (x, y) in enumerate(slots)]
        open(path, "wb").write(b"v001.0\0" + header + name + b"".join(loose))
        self.open_puzzle(path)

    def save(self, path=None):
        """Saves, as path if given, and reads back the origin and pieces the program wrote."""
        key("alt+p", "a" if path else "s", pause=0.8)
        if path:
            self.answer("Save As", path)
            self.path = path
        return read_puzzle(self.path)

    def exit_by_menu(self, item="x"):
        """Exits by the Puzzle menu (Salir is its l in Spanish); the help goes with it."""
        key("alt+p", item)
        assert self.process.wait(30) == 0
        wait_for(lambda: not windows_named("Wine Help"), 10, "the help to close with the program")

    def pid(self):
        """The program's own process, whichever Wine process started it."""
        return next(int(p) for p in run("pgrep", "-f", "ToviraPuzzle").split()
                    if open(f"/proc/{p}/comm").read().startswith("ToviraPuzzle"))

    def close(self):
        self.process.kill()  # nothing if it has ended
        self.process.wait(10)
