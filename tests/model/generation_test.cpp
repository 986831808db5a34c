// Cutting the grid, the side kinds and the scattering, with the seeded generator.
#include <gtest/gtest.h>

#include <vector>

#include "model/puzzle.h"
#include "model/random.h"
#include "tests/support/test_board.h"

namespace {

KnobKind opposite(KnobKind kind)
{
    return kind == Out ? In : Out;
}

}  // namespace

TEST(Grid, LeftoverPixelsWidenTheFirstColumnsAndRows)
{
    TestBoard board;
    Puzzle puzzle;
    puzzle.makePuzzle(board.inputs(101, 95, 10, 10, Rectangular, 7));
    ASSERT_TRUE(puzzle.made);
    EXPECT_EQ(11, puzzle.pieces[0].width);
    for (int column = 1; column < 10; ++column)
        EXPECT_EQ(10, puzzle.pieces[column].width) << "column " << column;
    for (int row = 0; row < 10; ++row)
        EXPECT_EQ(row < 5 ? 10 : 9, puzzle.pieces[row * 10].height) << "row " << row;

    // The cells follow one another without gaps and end exactly at the puzzle's edges.
    for (int p = 0; p < puzzle.pieceCount; ++p) {
        const Piece& piece = puzzle.pieces[p];
        if (piece.neighbourRight >= 0) {
            EXPECT_EQ(piece.homeX + piece.width, puzzle.pieces[piece.neighbourRight].homeX);
        }
        if (piece.neighbourDown >= 0) {
            EXPECT_EQ(piece.homeY + piece.height, puzzle.pieces[piece.neighbourDown].homeY);
        }
        EXPECT_EQ(puzzle.originX + piece.sourceX, piece.homeX);
        EXPECT_EQ(puzzle.originY + piece.sourceY, piece.homeY);
    }
    EXPECT_EQ(puzzle.originX + 101, puzzle.pieces[9].homeX + puzzle.pieces[9].width);
    EXPECT_EQ(puzzle.originY + 95, puzzle.pieces[90].homeY + puzzle.pieces[90].height);
}

TEST(Grid, KnobSizeComesFromTheBaseCellHeight)
{
    TestBoard board;
    Puzzle puzzle;
    puzzle.makePuzzle(board.inputs(101, 95, 10, 10, Knobbed, 7));
    for (int p = 0; p < puzzle.pieceCount; ++p)
        EXPECT_EQ(1, puzzle.pieces[p].knobSize);  // 95 / 10 = 9, 9 / 8 = 1, every row

    puzzle.makePuzzle(board.inputs(600, 400, 12, 8, Knobbed, 7));
    EXPECT_EQ(6, puzzle.pieces[0].knobSize);  // base height 50
}

TEST(Grid, CellsBelowEightPixelsHighGetKnobsWithoutSize)
{
    TestBoard board;
    Puzzle puzzle;
    puzzle.makePuzzle(board.inputs(70, 70, 10, 10, Knobbed, 3));
    int knobbedSides = 0;
    for (int p = 0; p < puzzle.pieceCount; ++p) {
        const Piece& piece = puzzle.pieces[p];
        EXPECT_EQ(0, piece.knobSize);
        knobbedSides += (piece.knobTop != Flat) + (piece.knobLeft != Flat);
        // The outline is the plain cell, and so is the box.
        EXPECT_EQ(7, piece.width);
        EXPECT_EQ(7, piece.height);
        RECT box;
        EXPECT_EQ(SIMPLEREGION, GetRgnBox(piece.region, &box));
        EXPECT_EQ(0, box.left);
        EXPECT_EQ(7, box.right);
    }
    EXPECT_EQ(2 * 9 * 10, knobbedSides);
}

TEST(Grid, FacingSidesAreComplementaryAndBordersFlat)
{
    TestBoard board;
    // A row, a column and a single piece, then thirty cuts of 7 x 5.
    struct Cut {
        int columns, rows;
        unsigned seed;
    };
    std::vector<Cut> cuts{{5, 1, 11}, {1, 5, 11}, {1, 1, 11}};
    for (unsigned seed = 1; seed <= 30; ++seed)
        cuts.push_back({7, 5, seed});
    int tabs = 0, sockets = 0;  // both kinds are drawn, not one side's always
    for (const Cut& cut : cuts) {
        Puzzle puzzle;
        const int columns = cut.columns, rows = cut.rows;
        puzzle.makePuzzle(board.inputs(140, 100, columns, rows, Knobbed, cut.seed));
        for (int p = 0; p < puzzle.pieceCount; ++p) {
            const Piece& piece = puzzle.pieces[p];
            const int row = p / columns, column = p % columns;
            EXPECT_EQ(row == 0 ? -1 : p - columns, piece.neighbourUp);
            EXPECT_EQ(row == rows - 1 ? -1 : p + columns, piece.neighbourDown);
            EXPECT_EQ(column == 0 ? -1 : p - 1, piece.neighbourLeft);
            EXPECT_EQ(column == columns - 1 ? -1 : p + 1, piece.neighbourRight);
            const KnobKind top = row == 0 ? Flat : opposite(puzzle.pieces[p - columns].knobBottom);
            const KnobKind left = column == 0 ? Flat : opposite(puzzle.pieces[p - 1].knobRight);
            EXPECT_EQ(top, piece.knobTop);
            EXPECT_EQ(left, piece.knobLeft);
            EXPECT_TRUE(row < rows - 1 || piece.knobBottom == Flat);
            EXPECT_TRUE(column < columns - 1 || piece.knobRight == Flat);
            tabs += piece.knobBottom == Out;
            sockets += piece.knobBottom == In;
        }
    }
    EXPECT_GT(tabs, 0);
    EXPECT_GT(sockets, 0);
}

TEST(Placement, NeverCoversThePreviewAndStaysOnTheBoard)
{
    Puzzle puzzle;
    puzzle.boardLeft = 0;
    puzzle.boardTop = 31;
    puzzle.boardWidth = 1000;
    puzzle.boardHeight = 700;
    puzzle.previewX = 0;
    puzzle.previewY = 31;
    puzzle.previewWidth = 100;
    puzzle.previewHeight = 67;
    seedRandom(99);
    for (int i = 0; i < 5000; ++i) {
        const POINT place = puzzle.randomPosition(50, 40);
        EXPECT_TRUE(place.x >= 100 || place.y >= 31 + 67) << place.x << "," << place.y;
        EXPECT_GE(place.x, 0);
        EXPECT_LT(place.x, 1000 - 50);
        EXPECT_GE(place.y, 31);
        EXPECT_LT(place.y, 700 - 40);
    }
}

TEST(Placement, FallsBackBesideThePreviewAfter500Tries)
{
    Puzzle puzzle;
    puzzle.boardLeft = 0;
    puzzle.boardTop = 31;
    puzzle.boardWidth = 150;  // 150 - 60 < 100 and 130 - 40 < 31 + 67: no try can succeed
    puzzle.boardHeight = 130;
    puzzle.previewX = 0;
    puzzle.previewY = 31;
    puzzle.previewWidth = 100;
    puzzle.previewHeight = 67;
    seedRandom(5);
    const POINT place = puzzle.randomPosition(60, 40);
    EXPECT_EQ(105, place.x);
    EXPECT_EQ(31 + 67 + 5, place.y);

    // Exactly two numbers per try were drawn.
    const int next = nextRandom();
    seedRandom(5);
    for (int i = 0; i < 1000; ++i)
        nextRandom();
    EXPECT_EQ(nextRandom(), next);
}

TEST(Generation, NoPiecesMeansNothingIsMade)
{
    TestBoard board;
    Puzzle puzzle;
    puzzle.makePuzzle(board.inputs(300, 200, 0, 4, Knobbed, 1));
    EXPECT_FALSE(puzzle.made);
    EXPECT_EQ(nullptr, puzzle.pieces);
    EXPECT_EQ(nullptr, puzzle.zOrder);
}
