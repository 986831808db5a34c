// Drawing pieces through their outlines, the frame rules, the repaint's occlusion pass,
// the pattern and scrolling, on real memory DCs.
#include <gtest/gtest.h>

#include <algorithm>

#include "model/puzzle.h"
#include "tests/support/test_board.h"

namespace {

constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Black = RGB(0, 0, 0);
constexpr COLORREF Sentinel = RGB(1, 2, 3);

bool inOutline(const Piece& piece, int dx, int dy)
{
    return PtInRegion(piece.region, dx, dy) != FALSE;
}

// A pixel of the outline with a neighbour outside it: where the frame lies.
bool onBorder(const Piece& piece, int dx, int dy)
{
    return inOutline(piece, dx, dy) &&
           (!inOutline(piece, dx - 1, dy) || !inOutline(piece, dx + 1, dy) ||
            !inOutline(piece, dx, dy - 1) || !inOutline(piece, dx, dy + 1));
}

void drawWhole(Piece& piece, bool up = false, bool down = false, bool left = false,
               bool right = false, int offsetX = 0, int offsetY = 0)
{
    piece.draw(piece.getBounds(true, false, false), offsetX, offsetY, up, down, left, right);
}

// Makes a knobbed 6 x 4 puzzle on a board filled with the sentinel colour.
struct DrawingBoard {
    TestBoard board;
    Puzzle puzzle;
    explicit DrawingBoard(unsigned seed = 21)
    {
        puzzle.makePuzzle(board.inputs(300, 200, 6, 4, Knobbed, seed));
        fill(board.boardDC, TestBoard::ClientWidth, TestBoard::ClientHeight, Sentinel);
    }
    // An inner piece, with knobs on every side.
    Piece& inner() { return puzzle.pieces[1 * 6 + 2]; }
};

}  // namespace

TEST(Draw, ChangesOnlyThePixelsInsideTheOutlineAndShowsThePictureThere)
{
    DrawingBoard d;
    Piece& piece = d.inner();
    piece.moveTo(400, 300, false);
    drawWhole(piece);
    const Snapshot shot(d.board.boardDC, 390, 290, piece.width + 20, piece.height + 20);
    for (int y = 290; y < 310 + piece.height; ++y) {
        for (int x = 390; x < 410 + piece.width; ++x) {
            const int dx = x - piece.x, dy = y - piece.y;
            const bool inside = dx >= 0 && dy >= 0 && dx < piece.width && dy < piece.height &&
                                inOutline(piece, dx, dy);
            const COLORREF expected =
                inside ? patternColour(piece.sourceX + dx, piece.sourceY + dy) : Sentinel;
            ASSERT_EQ(expected, shot.at(x, y)) << x << "," << y;
        }
    }
}

TEST(Draw, AFreePieceIsFramedAlongItsWholeOutlineOnlyWithTheOutlineOption)
{
    DrawingBoard d;
    Piece& piece = d.inner();
    piece.moveTo(400, 300, false);
    piece.drawOutline = true;
    drawWhole(piece);
    Snapshot framed(d.board.boardDC, 400, 300, piece.width, piece.height);
    piece.drawOutline = false;
    piece.drawSetOutline = true;  // concerns set pieces only
    drawWhole(piece);
    Snapshot plain(d.board.boardDC, 400, 300, piece.width, piece.height);
    int border = 0;
    for (int dy = 0; dy < piece.height; ++dy) {
        for (int dx = 0; dx < piece.width; ++dx) {
            if (!inOutline(piece, dx, dy))
                continue;
            const COLORREF picture = patternColour(piece.sourceX + dx, piece.sourceY + dy);
            ASSERT_EQ(picture, plain.at(400 + dx, 300 + dy));
            if (onBorder(piece, dx, dy)) {
                ASSERT_EQ(Black, framed.at(400 + dx, 300 + dy)) << dx << "," << dy;
                ++border;
            } else {
                ASSERT_EQ(picture, framed.at(400 + dx, 300 + dy)) << dx << "," << dy;
            }
        }
    }
    EXPECT_GT(border, 2 * (piece.width + piece.height) - 8);
}

TEST(Draw, ASetPieceLosesItsFrameOnlyAlongSetNeighbours)
{
    DrawingBoard d;
    Piece& piece = d.inner();
    piece.isSet = true;
    piece.x = piece.homeX;
    piece.y = piece.homeY;
    piece.drawOutline = true;
    piece.drawSetOutline = false;
    drawWhole(piece, false, false, false, true);  // only the right neighbour is set
    const Snapshot shot(d.board.boardDC, piece.x, piece.y, piece.width, piece.height);
    const RECT cell = piece.getBounds(false, true, false);
    const int k2 = 2 * piece.knobSize;
    // The cell's corners lie on the frame of the crossing sides, which stays.
    EXPECT_EQ(Black, shot.at(piece.x + cell.left, piece.y + cell.top + k2 + 2));
    // The left side keeps its line; the right side, knob zone and all, shows the picture.
    bool rightFramed = false;
    for (int dy = cell.top + 1; dy < cell.bottom - 1; ++dy) {
        for (int dx = cell.right - 1 - k2; dx < piece.width; ++dx) {
            if (inOutline(piece, dx, dy) && shot.at(piece.x + dx, piece.y + dy) == Black)
                rightFramed = true;
        }
    }
    EXPECT_FALSE(rightFramed);
    int leftBlack = 0;
    for (int dy = cell.top; dy < cell.bottom; ++dy) {
        for (int dx = 0; dx < cell.left + k2 + 1; ++dx)
            leftBlack += onBorder(piece, dx, dy) && shot.at(piece.x + dx, piece.y + dy) == Black;
    }
    EXPECT_GT(leftBlack, cell.bottom - cell.top - 2);

    // With "Draw Set Piece Outline" every set piece keeps its whole outline.
    piece.drawSetOutline = true;
    drawWhole(piece, true, true, true, true);
    const Snapshot whole(d.board.boardDC, piece.x, piece.y, piece.width, piece.height);
    for (int dy = 0; dy < piece.height; ++dy) {
        for (int dx = 0; dx < piece.width; ++dx) {
            if (onBorder(piece, dx, dy)) {
                ASSERT_EQ(Black, whole.at(piece.x + dx, piece.y + dy)) << dx << "," << dy;
            }
        }
    }

    // With both options off no piece has a frame.
    piece.drawOutline = piece.drawSetOutline = false;
    drawWhole(piece);
    const Snapshot none(d.board.boardDC, piece.x, piece.y, piece.width, piece.height);
    for (int dy = 0; dy < piece.height; ++dy) {
        for (int dx = 0; dx < piece.width; ++dx) {
            if (inOutline(piece, dx, dy)) {
                ASSERT_NE(Black, none.at(piece.x + dx, piece.y + dy));
            }
        }
    }
}

TEST(Repaint, ASocketZoneIsNotSolidSoThePiecesBeneathAreListed)
{
    DrawingBoard d;
    Puzzle& puzzle = d.puzzle;
    Piece& top = d.inner();
    // Find a side of the inner piece with a socket and put another piece under it.
    ASSERT_TRUE(top.knobTop == In || top.knobBottom == In || top.knobLeft == In ||
                top.knobRight == In);
    for (int p = 0; p < puzzle.pieceCount; ++p)
        puzzle.pieces[p].moveTo(0, 650, false);
    top.moveTo(500, 300, false);
    Piece& beneath = puzzle.pieces[0];
    puzzle.sendToBottom(0);
    puzzle.raiseToTop(8);
    const RECT cell = top.getBounds(true, true, false);
    const int k = top.knobSize;
    RECT zone;
    if (top.knobTop == In)
        zone = RECT{cell.left + 2, cell.top, cell.right - 2, cell.top + k};
    else if (top.knobLeft == In)
        zone = RECT{cell.left, cell.top + 2, cell.left + k, cell.bottom - 2};
    else if (top.knobRight == In)
        zone = RECT{cell.right - k, cell.top + 2, cell.right, cell.bottom - 2};
    else
        zone = RECT{cell.left + 2, cell.bottom - k, cell.right - 2, cell.bottom};
    beneath.moveTo(zone.left - 10, zone.top - 10, false);
    std::vector<int> list;
    const RECT rest = puzzle.occlusionPass(zone, 0, list);
    EXPECT_FALSE(IsRectEmpty(&rest));
    const RECT below = beneath.getBounds(true, false, false);
    EXPECT_NE(list.end(), std::find(list.begin(), list.end(), 0))
        << "zone " << zone.left << "," << zone.top << "," << zone.right << "," << zone.bottom
        << " beneath " << below.left << "," << below.top << "," << below.right << ","
        << below.bottom << " listed " << list.size();
}

TEST(Repaint, SetPiecesScrollWithThePuzzleAreaAndStayInsideIt)
{
    TestBoard board;
    Puzzle puzzle;
    // Larger than the area, so that the area scrolls.
    puzzle.makePuzzle(board.inputs(1000, 700, 10, 7, Knobbed, 2));
    for (int p = 0; p < puzzle.pieceCount; ++p)
        puzzle.pieces[p].moveTo(0, 650, false);
    Piece& set = puzzle.pieces[1];  // top row, second column
    set.x = set.homeX;
    set.y = set.homeY;
    set.isSet = true;
    Piece& free = puzzle.pieces[20];
    free.moveTo(20, 200, false);

    // Scroll so that the puzzle area's left edge cuts through the set piece.
    puzzle.scrollX = set.homeX - puzzle.originX + set.width / 2;
    const RECT board0{0, 0, TestBoard::ClientWidth, TestBoard::ClientHeight};
    puzzle.repaintRect(board0, 0, nullptr);
    const RECT area = puzzle.getPuzzleArea(false);
    const int shownLeft = set.homeX - puzzle.scrollX;
    const Snapshot shot(board.boardDC, 0, 0, TestBoard::ClientWidth, TestBoard::ClientHeight);
    const int row = set.homeY + set.height / 2;
    // Left of the area nothing of it shows; inside, it shows where the scroll puts it.
    for (int x = shownLeft; x < area.left; ++x)
        ASSERT_EQ(White, shot.at(x, row)) << x;
    const int dx = area.left + 3 - shownLeft;
    EXPECT_EQ(patternColour(set.sourceX + dx, set.sourceY + set.height / 2),
              shot.at(area.left + 3, row));
    // The free piece is where it lies, whatever the scroll.
    EXPECT_EQ(patternColour(free.sourceX + free.width / 2, free.sourceY + free.height / 2),
              shot.at(20 + free.width / 2, 200 + free.height / 2));
}

TEST(Pattern, ToggledTwiceLeavesTheBackgroundAsItWas)
{
    DrawingBoard d;
    const int w = GetSystemMetrics(SM_CXSCREEN), h = GetSystemMetrics(SM_CYSCREEN);
    const Snapshot before(d.board.backgroundDC, 0, 0, w, h);
    d.puzzle.refreshPattern(true);
    const Snapshot shown(d.board.backgroundDC, 0, 0, w, h);
    d.puzzle.refreshPattern(true);
    EXPECT_FALSE(before == shown);
    EXPECT_TRUE(before == Snapshot(d.board.backgroundDC, 0, 0, w, h));
    // The pattern is the outline of every piece at its correct place.
    const Piece& piece = d.inner();
    const RECT cell = piece.getBounds(false, true, false);
    EXPECT_EQ(Black, shown.at(piece.homeX + cell.left, piece.homeY + cell.top + 1));
}
