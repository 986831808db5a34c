"""The shell and its language: Spanish chosen in the dialog of a first start and used at once
by the dialog, then by the title, the About box and the help; the toolbar's buttons in both
interfaces, its tooltips after about a second, and its Exit button; the dialog not asked again
once ticked off, and asked again after Reactivate Language Screen."""

import time

from game import Game, Screen, click, dialog, key, registry, run, wait_for

SPANISH = "Convierta sus imágenes favoritas en puzzles"
BUTTON, GAP, ROW = 28, 32, 35  # the toolbar's buttons: width, gaps, the middle of their row
ADVANCED = list(range(1000, 1021))
SIMPLE = [1001, 1002, 1003, 1006, 1007, 1015, 1016, 1017, 1018, 1019, 1020]
GAP_AFTER = {1002, 1008, 1016, 1019}


def centre(button, shown):
    """Where button's middle lies with the buttons shown laid out from the left."""
    before = shown[:shown.index(button)]
    return 1 + BUTTON * len(before) + GAP * len(GAP_AFTER & set(before)) + BUTTON // 2, ROW


game = Game(language_dialog=True, title=None)
dialog("Select your language", "Down", timeout=60)  # Español: the dialog speaks it at once
dialog("Seleccione su idioma", "Return", timeout=5)
dialog(SPANISH, "alt+a", "a", timeout=60)  # &Ayuda, &Acerca de
dialog("Acerca de Tovira ToviraPuzzle", "Return", timeout=10)
key("alt+a", "d", pause=2.0)  # &Documentación de Ayuda
dialog("Wine Help")
Screen("spanish-help")
click(900, 700)  # the keys back to the game's window
dialog(SPANISH)
game.exit_by_menu("l")  # Sa&lir

# Asked again, in Spanish; ticked off this time.
game = game.restart(title=None)
dialog("Seleccione su idioma", "Tab", "space", "Return", timeout=60)
dialog(SPANISH, timeout=60)
assert registry("SupLangDlg") == "1"
# Each interface's buttons have pictures: pixels other than the face near each middle.
for name, shown, keys in ("advanced", ADVANCED, "Return"), ("simple", SIMPLE, "a"):
    screen = Screen(f"toolbar-{name}")
    for b in shown:
        cx, cy = centre(b, shown)
        assert any(screen.pixel(cx + dx, cy + dy) != screen.pixel(cx - 12, cy)
                   for dx in range(-8, 8, 2) for dy in range(-8, 8, 2)), f"{name} {b} is blank"
    key("alt+o", keys, pause=0.8)  # to the simple interface, and back
x, y = centre(1000, ADVANCED)
run("xdotool", "mousemove", x, y)
hovered = time.time()
wait_for(lambda: any(Screen(settle=False).pixel(px, ROW + 20) == (255, 255, 226)
                     for px in range(x, x + 40, 2)), 5, "a tooltip")  # its background
assert 0.7 < (took := time.time() - hovered) < 2.5, f"the first tip came after {took:.2f} s"
key("alt+o", "i")  # Reactivar Pantalla &Idioma
click(*centre(1019, ADVANCED))  # Salir, from the toolbar
assert game.process.wait(30) == 0

game = game.restart(title=None)
dialog("Seleccione su idioma", "Return", timeout=60)
dialog(SPANISH, timeout=60)
game.exit_by_menu("l")
