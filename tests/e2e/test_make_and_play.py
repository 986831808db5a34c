"""Make and play with real input: the toolbar, a piece set, two joined, a tray, scrolling."""

from game import CELL, CELLS, CELLS_PICTURE, Game, Screen, click, key

OPEN_IMAGE, MAKE, ADD_TRAY = (15, 35), (130, 35), (270, 35)  # toolbar buttons, on the screen
TRAY = (50, 400)  # in the trays' column, client coordinates


def grip(p, spots=()):
    """From a save: a point of piece p's solid core (clear of its sockets) that no piece above
    nor spot covers, right of the trays' column, and its cell's top-left; None if none."""
    pieces = game.save()[1]
    (x0, y0), above = pieces[p].cell, [q.box for q in pieces if q.z > pieces[p].z and not q.tray]
    return next((((x, y), (x0, y0)) for y in range(y0 + 35, y0 + CELL - 30, 10)
                 for x in range(max(x0 + 35, 130), x0 + CELL - 30, 10)
                 if not any(b[0] <= x < b[2] and b[1] <= y < b[3] for b in (*above, *spots))), None)


game = Game()
click(*OPEN_IMAGE)
game.open_image(CELLS_PICTURE, (360, 240), (3, 2))
click(*MAKE, pause=1.0)
assert all(Screen("made").count(c, (110, 60, 1024, 760)) > 200 for c in CELLS)
origin = game.save(f"{game.folder}/made.fpp")[0]
# Scattered at random, a piece may lie buried, or where another is to go: scattered again.
spots = [(origin[0] - 30, origin[1] - 30, origin[0] + 150, origin[1] + 150), (530, 530, 830, 710)]
while not all(grip(p, spots) for p in (0, 3, 4, 5)):
    game.make()
click(*ADD_TRAY, pause=0.8)
# Each piece by its grip, to bring its cell's top-left to cell, or into the tray.
for p, cell in ((3, None),                            # yellow, before others can cover it
                (0, (origin[0] + 3, origin[1] - 2)),  # red, near its place
                (4, (560, 560)),                      # magenta, out of the way
                (5, (560 + CELL + 3, 560 + 2))):      # cyan, beside magenta
    assert (found := grip(p)), f"piece {p} lies buried"
    (x, y), (x0, y0) = found
    game.carry(game.at(x, y), game.at(*(cell and (x + cell[0] - x0, y + cell[1] - y0) or TRAY)))
pieces = game.save()[1]
assert pieces[0].set and pieces[0].cell == origin, "red is not set at its place"
assert pieces[5].cell == (560 + CELL, 560), "cyan did not join magenta"
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
