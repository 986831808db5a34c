"""The 3 x 2 puzzle of pure colours that the end-to-end tests play: every piece is found on
the screen by its colour and carried with real input."""

from game import Screen

COLOURS = [(255, 0, 0), (0, 255, 0), (0, 0, 255), (255, 255, 0), (255, 0, 255), (0, 255, 255)]
CELL = 120
PREVIEW = (0, 40, 110, 125)  # the preview shows every colour small: never a piece
# Where each piece waits, clear of the puzzle area, of the preview and of one another.
SLOTS = [(640, 90), (830, 90), (640, 280), (830, 280), (640, 470), (830, 470)]


def body(screen, p):
    """Bounding box and a middle pixel of piece p's body, the largest area of its colour."""
    found = screen.largest_component(COLOURS[p], exclude=PREVIEW)
    assert found and found[1] > 3000, f"piece {p} not found on the board: {found}"
    return found[0], found[2]


def carry(game, p, x, y, drop_at=None):
    """Picks p up by its body and carries it so that its body's top-left comes to (x, y);
    drops it there, or with a press at drop_at."""
    box, middle = body(Screen(), p)
    game.click(*middle)
    game.move(middle[0] + x - box[0], middle[1] + y - box[1], steps=6)
    game.click(*(drop_at or (middle[0] + x - box[0], middle[1] + y - box[1])), pause=0.6)


def near(a, b, tolerance=2):
    return abs(a[0] - b[0]) <= tolerance and abs(a[1] - b[1]) <= tolerance


def stage(game, p, slot):
    """Carries p to its slot. Where pieces lie scattered, a tab of a neighbour showing p's
    colour may touch p's body and widen what is seen of it, and another piece may hide part
    of it: it is picked up by what shows, and carried again until it lies whole at its slot."""
    for _ in range(4):
        seen = Screen().largest_component(COLOURS[p], exclude=PREVIEW)
        assert seen and seen[1] > 1200, f"piece {p} not found on the board: {seen}"
        if seen[1] > 3000 and near(seen[0], slot):
            return
        box, middle = seen[0], seen[2]
        game.click(*middle)
        game.move(middle[0] + slot[0] - box[0], middle[1] + slot[1] - box[1], steps=6)
        game.click(middle[0] + slot[0] - box[0], middle[1] + slot[1] - box[1], pause=0.6)


def stage_all(game):
    """Carries every piece to its slot, the most visible first (those lying on top of others
    go before them), but never onto a piece still waiting."""
    waiting = set(range(6))
    while waiting:
        screen = Screen()
        seen = {p: screen.largest_component(COLOURS[p], exclude=PREVIEW) for p in waiting}
        order = sorted(waiting, key=lambda q: seen[q][1] if seen[q] else 0, reverse=True)

        def blocks(p):
            """Whether another waiting piece lies where p is to go, and would be buried."""
            sx, sy = SLOTS[p]
            return any(q != p and seen[q] and seen[q][0][0] < sx + CELL + 30 and
                       seen[q][0][2] > sx - 30 and seen[q][0][1] < sy + CELL + 30 and
                       seen[q][0][3] > sy - 30 for q in waiting)

        p = next((q for q in order if seen[q] and seen[q][1] > 3000 and not blocks(q)), order[0])
        stage(game, p, SLOTS[p])
        waiting.remove(p)
