// The cut: cells, knobs and the kinds of facing sides, where Make scatters the pieces, and
// what it sets up around them.
#include <gtest/gtest.h>

#include <cstring>

#include "app/app_state.h"
#include "files/picture.h"
#include "model/puzzle.h"
#include "resources/resource.h"
#include "tests/support/game.h"

namespace {

class Cut : public ::testing::Test {
protected:
    void TearDown() override { game::end(); }
};

}  // namespace

// The first w % columns columns and h % rows rows are a pixel larger, so that the cells tile
// the puzzle; knobs take an eighth of the base cell height, and each tab grows the box by
// twice that.
TEST_F(Cut, CellsTileThePuzzleAndKnobsFollowTheBaseCellHeight)
{
    const int cuts[][5] = {{101, 95, 10, 10, 1}, {253, 41, 7, 1, 5}, {41, 253, 1, 7, 4},
                           {123, 77, 1, 1, 9},   {800, 64, 2, 1, 8}, {70, 70, 10, 10, 0}};
    for (const auto& [w, h, columns, rows, knob] : cuts) {
        game::make(w, h, columns, rows);
        for (int row = 0, top = thePuzzle.originY; row < rows; ++row) {
            const int cellH = h / rows + (row < h % rows);
            for (int column = 0, left = thePuzzle.originX; column < columns; ++column) {
                const int cellW = w / columns + (column < w % columns);
                const Piece& piece = thePuzzle.pieces[row * columns + column];
                RECT at = piece.getBounds(false, true, false);
                OffsetRect(&at, piece.homeX, piece.homeY);
                const int across = (piece.knobLeft == Out) + (piece.knobRight == Out);
                const int down = (piece.knobTop == Out) + (piece.knobBottom == Out);
                EXPECT_TRUE(game::same(RECT{left, top, left + cellW, top + cellH}, at) &&
                            piece.knobSize == knob && piece.width == cellW + 2 * knob * across &&
                            piece.height == cellH + 2 * knob * down)
                    << w << "x" << h << " in " << columns << "x" << rows << ": " << row << ","
                    << column;
                left += cellW;
            }
            top += cellH;
        }
    }
}

// Across every inner side a tab meets a socket; the border is flat.
TEST_F(Cut, FacingSidesFitAndTheBorderIsFlat)
{
    auto fit = [](KnobKind a, KnobKind b) {
        return (a == Out && b == In) || (a == In && b == Out);
    };
    const int grids[][3] = {{5, 1, 1}, {1, 5, 1}, {1, 1, 1}, {7, 5, 20}};  // and how many seeds
    int tabs = 0, sockets = 0;  // both kinds occur, not one side's always
    for (const auto& [columns, rows, seeds] : grids) {
        for (int seed = 1; seed <= seeds; ++seed) {
            game::make(140, 100, columns, rows, seed);
            for (int p = 0; p < thePuzzle.pieceCount; ++p) {
                const Piece* piece = &thePuzzle.pieces[p];
                const int row = p / columns, column = p % columns;
                EXPECT_TRUE((row || piece->knobTop == Flat) &&
                            (column || piece->knobLeft == Flat) &&
                            (column + 1 < columns ? fit(piece->knobRight, piece[1].knobLeft)
                                                  : piece->knobRight == Flat) &&
                            (row + 1 < rows ? fit(piece->knobBottom, piece[columns].knobTop)
                                            : piece->knobBottom == Flat))
                    << columns << "x" << rows << " seed " << seed << " piece " << p;
                tabs += (piece->knobBottom == Out) + (piece->knobRight == Out);
                sockets += (piece->knobBottom == In) + (piece->knobRight == In);
            }
        }
    }
    EXPECT_GT(tabs, 200);
    EXPECT_GT(sockets, 200);
}

TEST_F(Cut, PiecesAreScatteredOnTheBoardAndNeverOverThePreview)
{
    for (unsigned seed : {1u, 2u, 3u}) {
        game::make(400, 300, 16, 12, seed, Rectangular);
        const Puzzle& z = thePuzzle;
        const RECT board{z.boardLeft, z.boardTop, z.boardWidth, z.boardHeight};
        const RECT preview{z.previewX, z.previewY, z.previewX + z.previewWidth,
                           z.previewY + z.previewHeight};
        for (int p = 0; p < z.pieceCount; ++p) {
            const RECT at = game::cell(p);
            RECT over, on;
            EXPECT_TRUE(!IntersectRect(&over, &at, &preview) && IntersectRect(&on, &at, &board) &&
                        game::same(on, at))
                << "seed " << seed << " piece " << p;
        }
    }
    // No place right of or below the preview can hold a piece this large: it goes just
    // beyond the preview's bottom-right corner.
    RECT client;
    GetClientRect(game::window(), &client);
    game::make(client.right - 50, client.bottom - appState.paintOriginY - 50, 1, 1, 5, Rectangular);
    EXPECT_EQ(thePuzzle.previewX + thePuzzle.previewWidth + 5, game::cell(0).left);
    EXPECT_EQ(thePuzzle.previewY + thePuzzle.previewHeight + 5, game::cell(0).top);
}

TEST_F(Cut, MakeKeepsThePuzzleFileOnlyForTheSamePicture)
{
    game::make(200, 200, 2, 2);
    strcpy(thePuzzle.puzzlePath, "Z:\\kept.fpp");
    game::command(IDM_MAKE);
    EXPECT_STREQ("Z:\\kept.fpp", thePuzzle.puzzlePath);
    thePicture.loadPreview(game::picture("picture300x200.bmp").c_str());
    game::command(IDM_MAKE);
    ASSERT_TRUE(thePuzzle.made);
    EXPECT_STREQ("", thePuzzle.puzzlePath);
}

TEST_F(Cut, ScrollBarsShowOnlyForAPuzzleLargerThanTheArea)
{
    const int w = appState.areaWidth, h = appState.areaHeight;
    const int sizes[][2] = {{w, h}, {w + 1, 300}, {300, h + 1}, {w + 1, h + 1}};
    for (const auto& [width, height] : sizes) {
        game::make(width, height, 4, 3, 5, Rectangular);
        SCOPED_TRACE(testing::Message() << width << "x" << height);  // a bar takes from the area
        const bool across = width > w, down = height > h;
        EXPECT_EQ(across, (GetWindowLongA(appState.hScrollBar, GWL_STYLE) & WS_VISIBLE) != 0);
        EXPECT_EQ(down, (GetWindowLongA(appState.vScrollBar, GWL_STYLE) & WS_VISIBLE) != 0);
        EXPECT_EQ(across ? w - GetSystemMetrics(SM_CXVSCROLL) : width, thePuzzle.visibleWidth);
        EXPECT_EQ(down ? h - GetSystemMetrics(SM_CYHSCROLL) : height, thePuzzle.visibleHeight);
    }
}
