// Piece outlines, bounding boxes and hit testing, on real GDI regions.
#include <gtest/gtest.h>

#include "model/gdi_objects.h"
#include "model/memory_dc.h"
#include "model/puzzle.h"
#include "model/shape_cache.h"
#include "tests/support/test_board.h"

namespace {

// A lone piece cut from a w0 x h0 cell at (cellX, cellY) of the puzzle.
void cut(Piece& piece, int w0, int h0, int k, KnobKind top, KnobKind bottom, KnobKind right,
         KnobKind left, int cellX = 40, int cellY = 30)
{
    piece.x = cellX;
    piece.y = cellY;
    piece.width = w0;
    piece.height = h0;
    piece.knobSize = k;
    piece.knobTop = top;
    piece.knobBottom = bottom;
    piece.knobRight = right;
    piece.knobLeft = left;
    piece.buildShape(200, 100);
}

bool inRegion(const Piece& piece, int px, int py)
{
    return PtInRegion(piece.region, px - piece.homeX, py - piece.homeY) != FALSE;
}

bool equal(const RECT& a, const RECT& b)
{
    return EqualRect(&a, &b) != FALSE;
}

}  // namespace

TEST(Shape, TabsOnEverySideGrowTheBoxOnEverySide)
{
    Piece piece;
    cut(piece, 60, 40, 5, Out, Out, Out, Out);
    EXPECT_EQ(60 + 4 * 5, piece.width);
    EXPECT_EQ(40 + 4 * 5, piece.height);
    EXPECT_EQ(40 - 10, piece.x);
    EXPECT_EQ(30 - 10, piece.y);
    EXPECT_EQ(piece.x, piece.sourceX);
    EXPECT_EQ(200 + piece.x, piece.homeX);
    EXPECT_EQ(100 + piece.y, piece.homeY);

    // The round ends reach the box on every side (the inscribed circle may stop one pixel
    // short of the box's excluded right and bottom edges).
    RECT box;
    GetRgnBox(piece.region, &box);
    EXPECT_EQ(0, box.left);
    EXPECT_EQ(0, box.top);
    EXPECT_GE(box.right, 79);
    EXPECT_LE(box.right, 80);
    EXPECT_GE(box.bottom, 59);
    EXPECT_LE(box.bottom, 60);
    // The tab's round end reaches the box edge in the middle of each side.
    EXPECT_TRUE(PtInRegion(piece.region, 40, 0));
    EXPECT_TRUE(PtInRegion(piece.region, 0, 30));
    EXPECT_FALSE(PtInRegion(piece.region, 0, 0));
    EXPECT_TRUE(equal(RECT{10, 10, 70, 50}, piece.getBounds(false, true, false)));
}

TEST(Shape, SocketsKeepTheCellAsTheBox)
{
    Piece piece;
    cut(piece, 60, 40, 5, In, In, In, Flat);
    EXPECT_EQ(60, piece.width);
    EXPECT_EQ(40, piece.height);
    EXPECT_EQ(40, piece.x);
    // The socket's rounded end points into the piece.
    EXPECT_FALSE(PtInRegion(piece.region, 30, 0));
    EXPECT_FALSE(PtInRegion(piece.region, 30, 8));
    EXPECT_TRUE(PtInRegion(piece.region, 30, 11));

    EXPECT_TRUE(equal(RECT{0, 0, 60, 40}, piece.getBounds(false, true, false)));
    EXPECT_TRUE(equal(RECT{0, 10, 50, 30}, piece.getBounds(false, false, true)));
    EXPECT_TRUE(equal(RECT{40, 40, 90, 60}, piece.getBounds(true, false, true)));
}

// Every pixel of the puzzle belongs to exactly one piece lying at home, and no pixel
// outside it to any: each tab covers exactly the pixels of its neighbour's socket.
TEST(Shape, PiecesAtHomeTileThePuzzleExactly)
{
    TestBoard board;
    for (unsigned seed : {3u, 17u}) {
        Puzzle puzzle;
        puzzle.makePuzzle(board.inputs(240, 160, 6, 4, Knobbed, seed));
        for (int py = puzzle.originY - 15; py < puzzle.originY + 175; ++py) {
            for (int px = puzzle.originX - 15; px < puzzle.originX + 255; ++px) {
                int covering = 0;
                for (int p = 0; p < puzzle.pieceCount; ++p)
                    covering += inRegion(puzzle.pieces[p], px, py);
                const bool inside = px >= puzzle.originX && px < puzzle.originX + 240 &&
                                    py >= puzzle.originY && py < puzzle.originY + 160;
                ASSERT_EQ(inside ? 1 : 0, covering) << "pixel " << px << "," << py;
            }
        }
    }
}

TEST(HitTest, TheRightAndBottomEdgesOfTheBoxMiss)
{
    TestBoard board;
    Puzzle puzzle;
    puzzle.makePuzzle(board.inputs(200, 100, 2, 1, Rectangular, 1));
    Piece& piece = puzzle.pieces[0];
    piece.moveTo(500, 300, false);
    EXPECT_TRUE(piece.hitTest(board.window, 500, 300));
    EXPECT_TRUE(piece.hitTest(board.window, 599, 399));
    EXPECT_FALSE(piece.hitTest(board.window, 600, 350));
    EXPECT_FALSE(piece.hitTest(board.window, 550, 400));
    EXPECT_FALSE(piece.hitTest(board.window, 499, 350));
}

TEST(PieceAt, FindsTheTopmostFreePieceOfTheWindow)
{
    TestBoard board;
    Puzzle puzzle;
    puzzle.makePuzzle(board.inputs(300, 100, 3, 1, Rectangular, 1));
    for (int p = 0; p < 3; ++p)
        puzzle.pieces[p].moveTo(500 + 10 * p, 300, false);
    int found = -1;
    ASSERT_TRUE(puzzle.pieceAt(board.window, 530, 350, found));
    EXPECT_EQ(2, found);

    puzzle.raiseToTop(0);
    ASSERT_TRUE(puzzle.pieceAt(board.window, 530, 350, found));
    EXPECT_EQ(0, found);

    puzzle.pieces[0].isSet = true;
    ASSERT_TRUE(puzzle.pieceAt(board.window, 530, 350, found));
    EXPECT_EQ(2, found);

    puzzle.pieces[2].window = board.hScrollBar;
    ASSERT_TRUE(puzzle.pieceAt(board.window, 530, 350, found));
    EXPECT_EQ(1, found);

    EXPECT_FALSE(puzzle.pieceAt(board.window, 505, 350, found));  // only the set piece
    EXPECT_FALSE(puzzle.pieceAt(board.window, 900, 650, found));
}
