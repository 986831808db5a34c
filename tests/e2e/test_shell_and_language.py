"""The shell and its language: Spanish chosen in the dialog of a first start and used at once
by the dialog, then by the title, the About box and the help; the toolbar's buttons in both
interfaces, its tooltips after about a second, and its Exit button; the dialog not asked again
once ticked off, and asked again after Reactivate Language Screen."""

import os
import sys
import time

from game import Game, Screen, wait_for, windows_named, xdotool

exe, shots = sys.argv[1:3]
SPANISH = "Convierta sus imágenes favoritas en puzzles"
BUTTON, GAP, ROW = 28, 32, 35  # the toolbar's buttons: width, gaps, the middle of their row
ADVANCED = list(range(1000, 1021))
SIMPLE = [1001, 1002, 1003, 1006, 1007, 1015, 1016, 1017, 1018, 1019, 1020]
GAP_AFTER = {1002, 1008, 1016, 1019}
TIP = (255, 255, 226)  # a tooltip's background


def centre(button, shown):
    """Where button's middle lies with the buttons shown laid out from the left."""
    x = 1
    for b in shown:
        if b == button:
            return x + BUTTON // 2, ROW
        x += BUTTON + (GAP if b in GAP_AFTER else 0)


def icons(screen, shown):
    """Whether every button shown has a picture: pixels other than its face near its middle."""
    def drawn(b):
        cx, cy = centre(b, shown)
        face = screen.pixel(cx - 12, cy)
        return any(screen.pixel(x, y) != face for x in range(cx - 8, cx + 8, 2)
                   for y in range(cy - 8, cy + 8, 2))
    return all(drawn(b) for b in shown)


def tip_after(x):
    """Seconds until a tooltip shows near x, below the buttons."""
    start = time.time()
    wait_for(lambda: any(Screen(settle=False).pixel(px, ROW + 20) == TIP
                         for px in range(x, x + 40, 2)), 5, "a tooltip")
    return time.time() - start


def restart(game, **options):
    game.close(keep_folder=True)
    return Game(exe, folder=game.folder, keep_settings=True, **options)


game = Game(exe, language_dialog=True, title=None)
try:
    game.dialog("Select your language", 60)
    game.key("Down")  # Español: the dialog speaks it at once
    game.dialog("Seleccione su idioma", 5)
    Screen(os.path.join(shots, "language-spanish.png"))
    game.key("Return")
    game.wait_for_main_window(SPANISH)
    game.key("alt+a", "a")  # &Ayuda, &Acerca de
    game.dialog("Acerca de Tovira ToviraPuzzle", 10)
    game.key("Return")
    game.key("alt+a", "d", pause=2.0)  # &Documentación de Ayuda
    game.dialog("Wine Help", 20)
    Screen(os.path.join(shots, "spanish-help.png"))
    game.click(900, 700)  # the keys back to the game's window
    assert game.setting("Options", "TextLanguage") == "1"
    assert game.setting("Options", "SupLangDlg") == "0"
    game.key("alt+p", "l")  # Sa&lir
    assert game.process.wait(30) == 0
    wait_for(lambda: not windows_named("^Wine Help$"), 10, "the help to close with the program")

    # Asked again, in Spanish; ticked off this time.
    game = restart(game, title=None)
    game.dialog("Seleccione su idioma", 60)
    game.key("Tab", "space", "Return")
    game.wait_for_main_window(SPANISH)
    assert game.setting("Options", "SupLangDlg") == "1"
    screen = Screen(os.path.join(shots, "toolbar-advanced.png"))
    assert icons(screen, ADVANCED), "a button of the advanced interface has no picture"
    game.key("alt+o", "Return", pause=0.8)  # the simple interface
    assert icons(Screen(os.path.join(shots, "toolbar-simple.png")), SIMPLE)
    game.key("alt+o", "a", pause=0.8)  # back to the advanced one
    x, y = centre(1000, ADVANCED)
    xdotool("mousemove", x, y)
    first = tip_after(x)
    assert 0.7 < first < 2.5, f"the first tip came after {first:.2f} s"
    game.key("alt+o", "i")  # Reactivar Pantalla &Idioma
    game.click(*centre(1019, ADVANCED))  # Salir, from the toolbar
    assert game.process.wait(30) == 0

    game = restart(game, title=None)
    game.dialog("Seleccione su idioma", 60)
    game.key("Return")
    game.wait_for_main_window(SPANISH)
    game.key("alt+p", "l")
    assert game.process.wait(30) == 0
    print("chose Spanish, ran in it, laid out the toolbar both ways, timed a tip, exited from "
          "the toolbar, suppressed and reactivated the language dialog")
finally:
    game.close()
