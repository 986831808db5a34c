"""The release on a fresh Wine prefix: the silent installer puts the program, its help, its
shortcut and its uninstall entry in place; the program started from the shortcut makes its Puz
and Col folders there and opens its help; the silent uninstaller removes what it installed and
keeps the player's saved puzzle and settings; the portable archive runs alike."""

import atexit
import getpass
import os
import shutil
import subprocess
import tempfile
import zipfile

from game import ARCH, EXE, SHOTS, TITLE, WINE, dialog, key, open_help, registry, run, wait_for
from game import windows_named

prefix = os.path.join(os.path.dirname(EXE), "wineprefix-install")
os.environ.update(WINEPREFIX=prefix, WINEDLLOVERRIDES=os.environ.get("WINEDLLOVERRIDES", "") +
                  ";winemenubuilder.exe=d")
wineserver = os.environ.get("WINESERVER", "wineserver")
UNINSTALL_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\ToviraPuzzle"
FILES = [f"ToviraPuzzle{l}.{e}" for l in ("", "Es") for e in ("hlp", "cnt", "chm")]
FILES += ["ToviraPuzzle.exe", "uninstall.exe"]


def start_and_check(folder, *command, cwd=None):
    """Starts the program, answers a first start's language dialog, checks it and exits."""
    subprocess.Popen(command, cwd=cwd, stdin=subprocess.DEVNULL, stdout=log,
                     stderr=subprocess.STDOUT, env=dict(os.environ, WINEDEBUG="err+all"))
    dialog("Select your language", "Return", timeout=120)
    dialog(TITLE, timeout=30)
    open_help(folder)
    key("alt+p", "x")
    wait_for(lambda: not windows_named(TITLE) and not windows_named("Wine Help"), 30, "the exit")


shutil.rmtree(prefix, ignore_errors=True)
log = open(os.path.join(SHOTS, "install.log"), "w")
packages = tempfile.mkdtemp(prefix="tovira-packages-")
atexit.register(subprocess.run, [wineserver, "-k"], capture_output=True)
atexit.register(shutil.rmtree, packages, True)
package = os.path.join(os.path.dirname(__file__), "..", "..", "scripts", "package.sh")
setup, archive = subprocess.run(["bash", package, ARCH, os.path.dirname(EXE), packages],
                                stdout=subprocess.PIPE, text=True, check=True).stdout.split()
run(WINE, "wineboot", "-i")
# One server for the rest of the test: a server started afresh boots the prefix again
# first, and the shortcut's program once waited two minutes behind that.
run(wineserver, "-w")
for command in ([wineserver, "-p"], [WINE, "cmd", "/c", "exit"]):
    subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL, timeout=120)

subprocess.run([WINE, setup, "/S"], check=True, capture_output=True)
user = os.path.join(prefix, "drive_c", "users", getpass.getuser())
installed = f"{user}/AppData/Local/Programs/ToviraPuzzle"
shortcut = (f"{user}/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/ToviraPuzzle/"
            "ToviraPuzzle.lnk")
placed = [shortcut] + [os.path.join(installed, name) for name in FILES]
assert not (missing := [p for p in placed if not os.path.isfile(p)]), missing
assert registry("DisplayVersion", UNINSTALL_KEY) == "1.0.0"
assert registry("Publisher", UNINSTALL_KEY) == "Tovira Software"
assert registry("DisplayIcon", UNINSTALL_KEY).endswith("ToviraPuzzle.exe,0")

start_and_check(installed, WINE, "start", "/unix", shortcut)
saved = os.path.join(installed, "Puz", "saved.fpp")
open(saved, "wb").write(b"v001.0\0")
run(WINE, os.path.join(installed, "uninstall.exe"), "/S")
wait_for(lambda: not os.path.exists(placed[-1]), 60, "the uninstaller")
assert not (left := [p for p in placed if os.path.exists(p)]), left
assert registry("DisplayVersion", UNINSTALL_KEY) is None, "the uninstall entry is left"
assert os.path.isfile(saved), "the player's saved puzzle was removed"
assert registry("SupLangDlg") == "0", "the player's settings were removed"

zipfile.ZipFile(archive).extractall(packages)  # runs where it is unpacked
folder = os.path.join(packages, "ToviraPuzzle-1.0.0")
start_and_check(folder, WINE, os.path.join(folder, "ToviraPuzzle.exe"), cwd=folder)
