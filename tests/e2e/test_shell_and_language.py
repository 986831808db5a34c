"""The shell in Spanish chosen at a first start, the toolbar, and the language dialog's return."""

import time

from game import Game, Screen, click, dialog, key, registry, run, wait_for

SPANISH = "Convierta sus imágenes favoritas en puzzles"
BUTTON, GAP, ROW = 28, 32, 35  # the toolbar's buttons: width, gaps, the middle of their row
ADVANCED = list(range(1000, 1021))
SIMPLE = [1001, 1002, 1003, 1006, 1007, 1015, 1016, 1017, 1018, 1019, 1020]
GAP_AFTER = {1002, 1008, 1016, 1019}

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
middles = {}  # each button's, laid out from the left
for name, shown, keys in ("advanced", ADVANCED, "Return"), ("simple", SIMPLE, "a"):
    screen, x = Screen(f"toolbar-{name}"), 1 + BUTTON // 2
    for b in shown:
        assert any(screen.pixel(x + dx, ROW + dy) != screen.pixel(x - 12, ROW)
                   for dx in range(-8, 8, 2) for dy in range(-8, 8, 2)), f"{name} {b} is blank"
        middles[name, b], x = x, x + BUTTON + GAP * (b in GAP_AFTER)
    key("alt+o", keys, pause=0.8)  # to the simple interface, and back
run("xdotool", "mousemove", x := middles["advanced", 1000], ROW)
hovered = time.time()
wait_for(lambda: any(Screen(settle=False).pixel(px, ROW + 20) == (255, 255, 226)
                     for px in range(x, x + 40, 2)), 5, "a tooltip")  # its background
assert 0.7 < (took := time.time() - hovered) < 2.5, f"the first tip came after {took:.2f} s"
key("alt+o", "i")  # Reactivar Pantalla &Idioma
click(middles["advanced", 1019], ROW)  # Salir, from the toolbar
assert game.process.wait(30) == 0

game = game.restart(title=None)
dialog("Seleccione su idioma", "Return", timeout=60)
dialog(SPANISH, timeout=60)
game.exit_by_menu("l")
