// Making and clearing a puzzle, the stacking order, and what Make sets up around the pieces.
#include <gtest/gtest.h>

#include <cstring>

#include "model/gdi_objects.h"
#include "model/puzzle.h"
#include "tests/support/test_board.h"

namespace {

void expectConsistentStacking(const Puzzle& puzzle)
{
    std::vector<bool> seen(puzzle.pieceCount, false);
    for (int z = 0; z < puzzle.pieceCount; ++z) {
        const int p = puzzle.zOrder[z];
        ASSERT_GE(p, 0);
        ASSERT_LT(p, puzzle.pieceCount);
        ASSERT_FALSE(seen[p]) << "piece " << p << " twice in the stacking order";
        seen[p] = true;
        ASSERT_EQ(z, puzzle.pieces[p].zIndex);
    }
}

}  // namespace

TEST(Stacking, RaisingAndSendingMoveOnlyThatPiece)
{
    TestBoard board;
    Puzzle puzzle;
    puzzle.makePuzzle(board.inputs(200, 40, 5, 1, Rectangular, 1));
    puzzle.raiseToTop(1);
    EXPECT_EQ((std::vector<int>{0, 2, 3, 4, 1}),
              std::vector<int>(puzzle.zOrder, puzzle.zOrder + 5));
    expectConsistentStacking(puzzle);
    puzzle.sendToBottom(3);
    EXPECT_EQ((std::vector<int>{3, 0, 2, 4, 1}),
              std::vector<int>(puzzle.zOrder, puzzle.zOrder + 5));
    expectConsistentStacking(puzzle);
    puzzle.raiseToTop(1);  // already on top
    EXPECT_EQ((std::vector<int>{3, 0, 2, 4, 1}),
              std::vector<int>(puzzle.zOrder, puzzle.zOrder + 5));
    expectConsistentStacking(puzzle);
}

TEST(Clear, ReleasesEveryRegionAndSurfaceAndWhitensTheBoard)
{
    TestBoard board;
    Puzzle puzzle;
    const MakeInputs inputs = board.inputs(400, 300, 8, 6, Knobbed, 9);
    const long before = gdi::liveObjects();
    puzzle.makePuzzle(inputs);
    EXPECT_GT(gdi::liveObjects(), before);
    puzzle.scrollX = 30;
    puzzle.clear();
    EXPECT_EQ(before, gdi::liveObjects());
    EXPECT_FALSE(puzzle.made);
    EXPECT_EQ(nullptr, puzzle.pieces);
    EXPECT_EQ(0, puzzle.scrollX);
    EXPECT_EQ(48, puzzle.pieceCount);  // the cut is kept
    const Snapshot shot(board.boardDC, 0, 0, TestBoard::ClientWidth, TestBoard::ClientHeight);
    for (COLORREF colour : shot.pixels)
        ASSERT_EQ(RGB(255, 255, 255), colour);
}

TEST(Make, KeepsThePuzzleFileOnlyForTheSamePicture)
{
    TestBoard board;
    Puzzle puzzle;
    puzzle.makePuzzle(board.inputs(200, 200, 2, 2, Knobbed, 1, "Z:\\a.jpg"));
    strcpy(puzzle.puzzlePath, "Z:\\a.fpp");
    puzzle.makePuzzle(board.inputs(200, 200, 2, 2, Knobbed, 1, "Z:\\a.jpg"));
    EXPECT_STREQ("Z:\\a.fpp", puzzle.puzzlePath);
    puzzle.makePuzzle(board.inputs(200, 200, 2, 2, Knobbed, 1, "Z:\\b.jpg"));
    EXPECT_STREQ("", puzzle.puzzlePath);
    EXPECT_STREQ("Z:\\b.jpg", puzzle.picturePath);
}

TEST(Make, ShowsScrollBarsOnlyForAPuzzleLargerThanTheArea)
{
    TestBoard board;
    Puzzle puzzle;
    puzzle.makePuzzle(board.inputs(TestBoard::AreaWidth + 1, 300, 4, 3, Rectangular, 1));
    EXPECT_EQ(TestBoard::AreaWidth - GetSystemMetrics(SM_CXVSCROLL), puzzle.visibleWidth);
    EXPECT_EQ(300, puzzle.visibleHeight);
    EXPECT_TRUE(GetWindowLongA(board.hScrollBar, GWL_STYLE) & WS_VISIBLE);
    EXPECT_FALSE(GetWindowLongA(board.vScrollBar, GWL_STYLE) & WS_VISIBLE);
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    GetScrollInfo(board.hScrollBar, SB_CTL, &info);
    EXPECT_EQ(TestBoard::AreaWidth + 1, info.nMax);
    EXPECT_EQ(static_cast<UINT>(puzzle.visibleWidth), info.nPage);

    puzzle.makePuzzle(board.inputs(TestBoard::AreaWidth, 300, 4, 3, Rectangular, 1));
    EXPECT_EQ(TestBoard::AreaWidth, puzzle.visibleWidth);
    EXPECT_FALSE(GetWindowLongA(board.hScrollBar, GWL_STYLE) & WS_VISIBLE);
}

// One outline region per piece would pass the platform's default limit of 10,000 GDI
// objects per process long before a 100 x 100 puzzle was made.
TEST(Make, ALargePuzzleHoldsFewGdiObjects)
{
    TestBoard board;
    Puzzle puzzle;
    const MakeInputs inputs = board.inputs(2000, 1500, 100, 100, Knobbed, 4);
    const long before = gdi::liveObjects();
    puzzle.makePuzzle(inputs);
    EXPECT_EQ(10000, puzzle.pieceCount);
    EXPECT_LT(gdi::liveObjects() - before, 400);
}

TEST(NearHome, WithinFourPixelsOnBothAxes)
{
    Piece piece;
    piece.homeX = 300;
    piece.homeY = 200;
    EXPECT_TRUE(piece.isNearHome(304, 196));
    EXPECT_TRUE(piece.isNearHome(296, 204));
    EXPECT_FALSE(piece.isNearHome(305, 200));
    EXPECT_FALSE(piece.isNearHome(300, 195));
    piece.trayId = 1;
    EXPECT_FALSE(piece.isNearHome(300, 200));
    piece.trayId = 0;
    piece.isSet = true;
    EXPECT_FALSE(piece.isNearHome(300, 200));
}
