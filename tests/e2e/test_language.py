"""The language: chosen in the dialog at first start, switched at once in the dialog, used for
the title, the menus, the About box and the help of the run; not asked again once the player
ticks the box, and asked again after Reactivate Language Screen."""

import os
import sys
import time

from game import Game, Screen, wait_for, wait_for_focus, windows_named

exe, shots = sys.argv[1], sys.argv[2]
SPANISH_TITLE = "Convierta sus imágenes favoritas en puzzles"


def dialog_titled(title, timeout=30):
    """The dialog once it is up and has the keyboard."""
    found = wait_for(lambda: windows_named("^" + title + "$"), timeout, f"'{title}'")
    if not wait_for_focus(found):
        print(f"note: {title} up without the focus")  # the pause below still helps
    time.sleep(0.3)
    return found


def no_language_dialog():
    return not windows_named("^Select your language$") and not windows_named("^Seleccione su idioma$")


game = Game(exe, language_dialog=True, title=None)
try:
    dialog_titled("Select your language")
    Screen(os.path.join(shots, "language-english.png"))
    game.key("Down")                                   # Español, at once in the dialog's texts
    dialog_titled("Seleccione su idioma", 5)
    Screen(os.path.join(shots, "language-spanish.png"))
    game.key("Return")
    game.wait_for_main_window(SPANISH_TITLE)
    game.key("alt+a", "a")                             # &Ayuda, &Acerca de ToviraPuzzle
    dialog_titled("Acerca de Tovira ToviraPuzzle", 10)
    Screen(os.path.join(shots, "spanish-about.png"))
    game.key("Return")
    game.key("alt+a", "d", pause=2.0)                  # &Documentación de Ayuda
    dialog_titled("Wine Help", 20)
    Screen(os.path.join(shots, "spanish-help.png"))
    game.click(900, 700)                               # the keys back to the game's window
    assert game.setting("ToviraPuzzle\\Options", "TextLanguage") == "1"
    assert game.setting("ToviraPuzzle\\Options", "SupLangDlg") == "0"
    game.key("alt+p", "l")                             # Sa&lir
    assert game.process.wait(30) == 0
    wait_for(lambda: not windows_named("^Wine Help$"), 10, "the help to close with the program")
    game.close(keep_folder=True)

    # Asked again, in Spanish; the box ticked this time.
    game = Game(exe, folder=game.folder, keep_settings=True, title=None)
    dialog_titled("Seleccione su idioma")
    game.key("Tab", "space", "Return")
    game.wait_for_main_window(SPANISH_TITLE)
    assert game.setting("ToviraPuzzle\\Options", "SupLangDlg") == "1"
    game.key("alt+p", "l")
    assert game.process.wait(30) == 0
    game.close(keep_folder=True)

    # No dialog now; Reactivate Language Screen brings it back at the next start.
    game = Game(exe, folder=game.folder, keep_settings=True, title=SPANISH_TITLE)
    assert no_language_dialog()
    game.key("alt+o", "i")                             # Reactivar Pantalla &Idioma
    game.key("alt+p", "l")
    assert game.process.wait(30) == 0
    game.close(keep_folder=True)
    game = Game(exe, folder=game.folder, keep_settings=True, title=None)
    dialog_titled("Seleccione su idioma")
    game.key("Return")
    game.wait_for_main_window(SPANISH_TITLE)
    game.key("alt+p", "l")
    assert game.process.wait(30) == 0
    print("chose Spanish, ran in Spanish, suppressed and reactivated the language dialog")
finally:
    game.close()
