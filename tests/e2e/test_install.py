"""The release on a fresh Wine prefix: silent install and uninstall, the shortcut, the archive."""

import atexit, getpass, os, shutil, subprocess, zipfile

from game import ARCH, EXE, SHOTS, TITLE, WINE, WINESERVER, dialog, key, open_help, registry
from game import run, scratch, wait_for, windows_named

prefix = os.path.join(os.path.dirname(EXE), "wineprefix-install")
os.environ.update(WINEPREFIX=prefix, WINEDLLOVERRIDES=os.environ.get("WINEDLLOVERRIDES", "") +
                  ";winemenubuilder.exe=d")
UNINSTALL_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\ToviraPuzzle"
FILES = [f"ToviraPuzzle{n}" for n in ".hlp .cnt .chm Es.hlp Es.cnt Es.chm .exe".split()]


def start_and_check(folder, *command, cwd=None):
    subprocess.Popen(command, cwd=cwd, stdin=subprocess.DEVNULL, stdout=log,
                     stderr=subprocess.STDOUT, env=dict(os.environ, WINEDEBUG="err+all"))
    dialog("Select your language", "Return", timeout=120)
    dialog(TITLE, timeout=30)
    open_help(folder)
    key("alt+p", "x")
    wait_for(lambda: not windows_named(TITLE) and not windows_named("Wine Help"), 30, "the exit")


shutil.rmtree(prefix, ignore_errors=True)
log = open(os.path.join(SHOTS, "install.log"), "w")
packages = scratch("tovira-packages-")
atexit.register(subprocess.run, [WINESERVER, "-k"], capture_output=True)
package = os.path.join(os.path.dirname(__file__), "..", "..", "scripts", "package.sh")
setup, archive = subprocess.run(["bash", package, ARCH, os.path.dirname(EXE), packages],
                                stdout=subprocess.PIPE, text=True, check=True).stdout.split()
run(WINE, "wineboot", "-i")
# One server to the end: a new one boots the prefix again, once for two minutes.
run(WINESERVER, "-w")
for command in ([WINESERVER, "-p"], [WINE, "cmd", "/c", "exit"]):
    subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL, timeout=120)

subprocess.run([WINE, setup, "/S"], check=True, capture_output=True)
data = f"{prefix}/drive_c/users/{getpass.getuser()}/AppData"
installed = f"{data}/Local/Programs/ToviraPuzzle"
shortcut = f"{data}/Roaming/Microsoft/Windows/Start Menu/Programs/ToviraPuzzle/ToviraPuzzle.lnk"
placed = [shortcut] + [f"{installed}/{name}" for name in FILES + ["uninstall.exe"]]
assert not (missing := [p for p in placed if not os.path.isfile(p)]), missing
assert registry("DisplayVersion", UNINSTALL_KEY) == "1.0.0"
assert registry("Publisher", UNINSTALL_KEY) == "Tovira Software"
assert registry("DisplayIcon", UNINSTALL_KEY).endswith("ToviraPuzzle.exe,0")

start_and_check(installed, WINE, "start", "/unix", shortcut)
open(saved := f"{installed}/Puz/saved.fpp", "wb").write(b"v001.0\0")
run(WINE, placed[-1], "/S")  # the uninstaller
wait_for(lambda: not os.path.exists(placed[-1]), 60, "the uninstaller")
assert not (left := [p for p in placed if os.path.exists(p)]), left
assert registry("DisplayVersion", UNINSTALL_KEY) is None, "the uninstall entry is left"
assert os.path.isfile(saved), "the player's saved puzzle was removed"
assert registry("SupLangDlg") == "0", "the player's settings were removed"

zipfile.ZipFile(archive).extractall(packages)  # runs where it is unpacked
folder = os.path.join(packages, "ToviraPuzzle-1.0.0")
start_and_check(folder, WINE, os.path.join(folder, "ToviraPuzzle.exe"), cwd=folder)
