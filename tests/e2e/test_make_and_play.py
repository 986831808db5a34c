"""Make and play with real input: the toolbar, a piece set, two joined, a tray, scrolling."""

from game import CELL, CELLS, CELLS_PICTURE, LOOSE, MIDDLES, Game, Screen, click, key

OPEN_IMAGE, MAKE, ADD_TRAY = (15, 35), (130, 35), (270, 35)  # toolbar buttons, on the screen
TRAY = (50, 400)  # in the trays' column, client coordinates

game = Game()
click(*OPEN_IMAGE)
game.open_image(CELLS_PICTURE, (360, 240), (3, 2))
click(*MAKE, pause=1.0)
assert all(Screen("made").count(c, (110, 60, 1024, 760)) > 200 for c in CELLS)
origin = game.save(f"{game.folder}/made.fpp")[0]
# Made, its pieces lie at random, some maybe buried: the play is on it laid out as known.
game.open_cells_puzzle(f"{game.folder}/laid.fpp", CELLS_PICTURE, origin)
click(*ADD_TRAY, pause=0.8)
game.carry(game.at(*MIDDLES[3]), game.at(*TRAY))  # yellow
game.carry(game.at(*MIDDLES[0]), game.at(origin[0] + 63, origin[1] + 58))  # red, near its place
game.carry(game.at(*MIDDLES[5]), game.at(LOOSE[4][0] + CELL + 63, LOOSE[4][1] + 62))  # cyan
pieces = game.save()[1]
assert pieces[0].set and pieces[0].cell == origin, "red is not set at its place"
assert pieces[5].cell == (LOOSE[4][0] + CELL, LOOSE[4][1]), "cyan did not join magenta"
assert pieces[3].tray == 1, "yellow is not in the tray"
game.carry(game.at(*TRAY), game.at(700, 150))  # and out again
assert game.save()[1][3].tray == 0, "yellow did not leave the tray"

# Larger than its area: a press on the scroll bar at the board's bottom pages the pattern.
game.make((1400, 1000), (12, 8))
key("alt+o", "Down", "Down", "Down", "Return")  # Show Pattern
unscrolled = Screen("large")
click(*game.at(760, 726), pause=0.8)
area = (origin[0] + 10, origin[1] + 10, 1000, 730)
assert unscrolled.differences(Screen("large-scrolled"), area, 3) > 10, "the pattern is still"
game.exit_by_menu()
