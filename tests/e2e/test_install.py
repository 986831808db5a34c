"""The release on a fresh Wine prefix: the silent installer puts the program, its help, its
shortcut and its uninstall entry in place; the program started from the shortcut makes its Puz
and Col folders there and opens its help; the silent uninstaller removes what it installed and
keeps the player's saved puzzle and settings; the portable archive runs alike."""

import getpass
import os
import shutil
import subprocess
import sys
import tempfile
import zipfile

from game import TITLE, click, focus, press, run, wait_for, windows_named

exe, shots, pictures, arch = sys.argv[1:5]
root = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))
prefix = os.path.join(os.path.dirname(exe), "wineprefix-install")
os.environ["WINEPREFIX"] = prefix
os.environ["WINEDLLOVERRIDES"] = os.environ.get("WINEDLLOVERRIDES", "") + ";winemenubuilder.exe=d"
wine = os.environ.get("WINE", "wine")
wineserver = os.environ.get("WINESERVER", "wineserver")
UNINSTALL_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\ToviraPuzzle"
HELP_FILES = [f"ToviraPuzzle{l}.{e}" for l in ("", "Es") for e in ("hlp", "cnt", "chm")]


def registry(key, name):
    found = [l.split(None, 2) for l in run(wine, "reg", "query", key, "/v", name).splitlines()]
    return next((f[2].strip() for f in found if len(f) == 3 and f[0] == name), None)


def start_and_check(folder, start):
    """Starts the program, answers the language dialog of a first start, checks its working
    folders in folder, opens its help and exits by the menu."""
    start()
    language = wait_for(lambda: windows_named("^Select your language$"), 120, "the program")
    focus(language)
    press("Return")
    wait_for(lambda: windows_named("^" + TITLE + "$"), 30, "the main window")
    for name in ("Puz", "Col"):
        assert os.path.isdir(os.path.join(folder, name)), f"no {name} folder in {folder}"
    click(702, 35, pause=2.0)  # Help
    wait_for(lambda: windows_named("^Wine Help$"), 30, "the help")
    click(900, 700)
    press("alt+p", "x")
    wait_for(lambda: not windows_named("^" + TITLE + "$"), 30, "the program to exit")
    wait_for(lambda: not windows_named("^Wine Help$"), 10, "the help to close")


shutil.rmtree(prefix, ignore_errors=True)
log = open(os.path.join(shots, "install.log"), "w")
packages = tempfile.mkdtemp(prefix="tovira-packages-")
try:
    made = subprocess.run(["bash", os.path.join(root, "scripts", "package.sh"), arch,
                           os.path.dirname(exe), packages], capture_output=True, text=True)
    assert made.returncode == 0, made.stderr
    setup, archive = made.stdout.split()
    run(wine, "wineboot", "-i")
    # One server for the rest of the test: a server started afresh boots the prefix again
    # first, and the shortcut's program once waited two minutes behind that.
    run(wineserver, "-w")
    for command in ([wineserver, "-p"], [wine, "cmd", "/c", "exit"]):
        subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=120)

    subprocess.run([wine, setup, "/S"], check=True, capture_output=True)
    user = os.path.join(prefix, "drive_c", "users", getpass.getuser())
    installed = os.path.join(user, "AppData", "Local", "Programs", "ToviraPuzzle")
    shortcut = os.path.join(user, "AppData", "Roaming", "Microsoft", "Windows", "Start Menu",
                            "Programs", "ToviraPuzzle", "ToviraPuzzle.lnk")
    for name in ["ToviraPuzzle.exe", "uninstall.exe"] + HELP_FILES:
        assert os.path.isfile(os.path.join(installed, name)), f"{name} not installed"
    assert os.path.isfile(shortcut), "no Start-menu shortcut"
    assert registry(UNINSTALL_KEY, "DisplayVersion") == "1.0.0"
    assert registry(UNINSTALL_KEY, "Publisher") == "Tovira Software"
    assert registry(UNINSTALL_KEY, "DisplayIcon").endswith("ToviraPuzzle.exe,0")

    start_and_check(installed, lambda: subprocess.Popen(
        [wine, "start", "/unix", shortcut], stdin=subprocess.DEVNULL, stdout=log,
        stderr=subprocess.STDOUT, env=dict(os.environ, WINEDEBUG="err+all")))
    saved = os.path.join(installed, "Puz", "saved.fpp")
    open(saved, "wb").write(b"v001.0\0")

    run(wine, os.path.join(installed, "uninstall.exe"), "/S")
    wait_for(lambda: not os.path.exists(os.path.join(installed, "uninstall.exe")), 60,
             "the uninstaller")
    for name in ["ToviraPuzzle.exe"] + HELP_FILES:
        assert not os.path.exists(os.path.join(installed, name)), f"{name} left behind"
    assert not os.path.exists(shortcut), "the shortcut is left"
    assert registry(UNINSTALL_KEY, "DisplayVersion") is None, "the uninstall entry is left"
    assert os.path.isfile(saved), "the player's saved puzzle was removed"
    assert registry(r"HKCU\Software\Tovira Software\ToviraPuzzle\Options", "SupLangDlg") == "0"

    unpacked = tempfile.mkdtemp(prefix="tovira-portable-")  # runs where it is unpacked
    zipfile.ZipFile(archive).extractall(unpacked)
    folder = os.path.join(unpacked, "ToviraPuzzle-1.0.0")
    start_and_check(folder, lambda: subprocess.Popen(
        [wine, os.path.join(folder, "ToviraPuzzle.exe")], cwd=folder, stdin=subprocess.DEVNULL,
        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
    shutil.rmtree(unpacked, ignore_errors=True)
    print(f"installed, ran, uninstalled keeping the saved puzzle; ran the portable archive "
          f"({os.path.getsize(setup)} and {os.path.getsize(archive)} bytes)")
finally:
    shutil.rmtree(packages, ignore_errors=True)
    subprocess.run([wineserver, "-k"], capture_output=True)
