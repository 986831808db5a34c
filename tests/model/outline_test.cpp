// Piece outlines tiling the puzzle, which piece a press finds, and the stacking order.
#include <gtest/gtest.h>

#include <vector>

#include "model/puzzle.h"
#include "tests/support/game.h"

namespace {

class Outline : public ::testing::Test {
protected:
    void TearDown() override { game::end(); }
};

int pieceAt(HWND window, int x, int y)
{
    int found = -1;
    return thePuzzle.pieceAt(window, x, y, found) ? found : -1;
}

}  // namespace

// No piece at home overlaps another, and together they cover the puzzle and nothing else:
// each tab fills its neighbour's socket exactly.
TEST_F(Outline, PiecesAtHomeTileThePuzzleExactly)
{
    const int cuts[][5] = {{300, 200, 6, 4, 3}, {251, 167, 7, 5, 17}, {90, 301, 2, 5, 8}};
    for (const auto& [w, h, columns, rows, seed] : cuts) {
        game::make(w, h, columns, rows, seed);
        HRGN all = CreateRectRgn(0, 0, 0, 0), piece = CreateRectRgn(0, 0, 0, 0);
        HRGN both = CreateRectRgn(0, 0, 0, 0);
        for (int p = 0; p < thePuzzle.pieceCount; ++p) {
            CombineRgn(piece, thePuzzle.pieces[p].region, nullptr, RGN_COPY);
            OffsetRgn(piece, thePuzzle.pieces[p].homeX, thePuzzle.pieces[p].homeY);
            EXPECT_EQ(NULLREGION, CombineRgn(both, all, piece, RGN_AND))
                << w << "x" << h << ": " << p;
            CombineRgn(all, all, piece, RGN_OR);
        }
        SetRectRgn(piece, thePuzzle.originX, thePuzzle.originY, thePuzzle.originX + w,
                   thePuzzle.originY + h);
        EXPECT_TRUE(EqualRgn(all, piece)) << w << "x" << h;
        for (HRGN region : {all, piece, both})
            DeleteObject(region);
    }
}

// A press finds the topmost free piece of its window whose outline holds the point: the
// box's right and bottom edges and a socket are outside it; a set piece is passed through.
TEST_F(Outline, APressFindsTheTopmostFreePieceOfItsWindow)
{
    game::make(500, 100, 5, 1, 5, Rectangular);  // cells of 100
    HWND board = thePuzzle.mainWindow, tray = nullptr;
    const int homeX = thePuzzle.pieces[4].homeX, homeY = thePuzzle.pieces[4].homeY;
    game::place(3, homeX + 50, homeY);  // free, under where 4 is then set
    game::carry(4, homeX, homeY);
    ASSERT_TRUE(thePuzzle.pieces[4].isSet);
    thePuzzle.addTray(0, &tray);
    game::carryInto(0, tray, 10, 10);
    game::place(1, 600, 400);
    game::place(2, 650, 450);  // over 1's bottom-right quarter
    const int presses[][4] = {{0, 600, 400, 1},  {0, 699, 449, 1},  {0, 700, 420, -1},
                              {0, 620, 500, -1}, {0, 599, 420, -1}, {0, 620, 399, -1},
                              {0, 699, 499, 2},  {0, 749, 549, 2},  {0, 750, 500, -1},
                              {1, 10, 10, 0},    {1, 109, 109, 0},  {1, 110, 50, -1}};
    for (const auto& [inTray, x, y, piece] : presses)  // board or tray, where, what is found
        EXPECT_EQ(piece, pieceAt(inTray ? tray : board, x, y)) << inTray << ": " << x << "," << y;
    // Over the set piece, the free one beneath it; where only the set piece lies, none.
    EXPECT_EQ(3, pieceAt(board, homeX + 60, homeY + 50));
    EXPECT_EQ(-1, pieceAt(board, homeX + 20, homeY + 50));
    thePuzzle.raiseToTop(1);
    EXPECT_EQ(1, pieceAt(board, 699, 499));

    // Inner piece 8 of cells of 50, knobs of 6, alone: a press on the middle of each side of
    // its cell, moved out onto a tab, finds it; one into a socket does not.
    game::make(300, 200, 6, 4);
    for (int p = 0; p < thePuzzle.pieceCount; ++p)
        game::place(p, p == 8 ? 600 : 20, p == 8 ? 400 : 560);
    const Piece& inner = thePuzzle.pieces[8];
    const int sides[][5] = {{inner.knobTop, 25, 0, 0, -1},
                            {inner.knobBottom, 25, 49, 0, 1},
                            {inner.knobLeft, 0, 25, -1, 0},
                            {inner.knobRight, 49, 25, 1, 0}};
    for (const auto& [kind, x, y, outX, outY] : sides) {
        const int reach = kind == Out ? 6 : 0;
        EXPECT_EQ(kind == Out ? 8 : -1,
                  pieceAt(board, 600 + x + reach * outX, 400 + y + reach * outY))
            << "side " << outX << "," << outY;
    }
}

TEST_F(Outline, RaisingAndLoweringKeepTheStackingOrderWhole)
{
    game::make(250, 50, 5, 1);
    const struct {
        bool raise;
        int piece;
        std::vector<int> order;  // bottom first
    } steps[] = {{true, 1, {0, 2, 3, 4, 1}}, {false, 3, {3, 0, 2, 4, 1}},
                 {true, 1, {3, 0, 2, 4, 1}}, {false, 3, {3, 0, 2, 4, 1}},
                 {true, 3, {0, 2, 4, 1, 3}}, {false, 1, {1, 0, 2, 4, 3}},
                 {true, 0, {1, 2, 4, 3, 0}}};
    for (const auto& step : steps) {
        step.raise ? thePuzzle.raiseToTop(step.piece) : thePuzzle.sendToBottom(step.piece);
        ASSERT_EQ(step.order, std::vector<int>(thePuzzle.zOrder, thePuzzle.zOrder + 5))
            << (step.raise ? "raised " : "lowered ") << step.piece;
        for (int z = 0; z < 5; ++z)
            ASSERT_EQ(z, thePuzzle.pieces[thePuzzle.zOrder[z]].zIndex);
    }
}
