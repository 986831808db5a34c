// The cut: cells, knobs and facing sides, outlines that tile the puzzle, where Make scatters the
// pieces and what it sets up around them; which piece a press finds, and the stacking order.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "app/app_state.h"
#include "files/picture.h"
#include "model/puzzle.h"
#include "resources/resource.h"
#include "tests/support/game.h"

namespace {

struct Cut : ::testing::Test {
    void TearDown() override { game::end(); }
};

int pieceAt(HWND window, int x, int y)
{
    int found = -1;
    return thePuzzle.pieceAt(window, x, y, found) ? found : -1;
}

}  // namespace

// The first w % columns columns and h % rows rows are a pixel larger, so that the cells tile
// the puzzle; knobs take an eighth of the base cell height, each tab growing the box by twice
// that. The outlines at home overlap nowhere and cover the puzzle. Across every inner side a
// tab meets a socket and each piece knows the other as its neighbour; the border is flat.
TEST_F(Cut, CellsAndOutlinesTileThePuzzleKnobsFollowTheBaseCellHeightAndFacingSidesFit)
{
    const int cuts[][5] = {{101, 95, 10, 10, 1}, {253, 41, 7, 1, 5}, {41, 253, 1, 7, 4},
                           {123, 77, 1, 1, 9},   {800, 64, 2, 1, 8}, {70, 70, 10, 10, 0},
                           {251, 167, 7, 5, 4}};
    auto fit = [](KnobKind a, KnobKind b) { return a != b && a > Flat && b > Flat; };
    int tabs = 0, sockets = 0;  // both kinds occur, not one side's always
    for (const auto& [w, h, columns, rows, knob] : cuts) {
        game::make(w, h, columns, rows);
        SCOPED_TRACE(testing::Message() << w << "x" << h << " in " << columns << "x" << rows);
        HRGN all = CreateRectRgn(0, 0, 0, 0), piece = CreateRectRgn(0, 0, 0, 0);
        HRGN both = CreateRectRgn(0, 0, 0, 0);
        for (int p = 0; p < columns * rows; ++p) {
            const int row = p / columns, column = p % columns;
            const bool right = column + 1 < columns, below = row + 1 < rows;
            const int cellW = w / columns + (column < w % columns);
            const int cellH = h / rows + (row < h % rows);
            const int left =
                thePuzzle.originX + column * (w / columns) + std::min(column, w % columns);
            const int top = thePuzzle.originY + row * (h / rows) + std::min(row, h % rows);
            const Piece& at = thePuzzle.pieces[p];
            RECT cell = at.getBounds(false, true, false);
            OffsetRect(&cell, at.homeX, at.homeY);
            const int across = (at.knobLeft == Out) + (at.knobRight == Out);
            const int down = (at.knobTop == Out) + (at.knobBottom == Out);
            EXPECT_TRUE(game::same(RECT{left, top, left + cellW, top + cellH}, cell) &&
                        at.knobSize == knob && at.width == cellW + 2 * knob * across &&
                        at.height == cellH + 2 * knob * down)
                << "piece " << p;
            EXPECT_TRUE((row || at.knobTop == Flat) && (column || at.knobLeft == Flat) &&
                        (right ? fit(at.knobRight, thePuzzle.pieces[p + 1].knobLeft)
                               : at.knobRight == Flat) &&
                        (below ? fit(at.knobBottom, thePuzzle.pieces[p + columns].knobTop)
                               : at.knobBottom == Flat) &&
                        at.neighbourLeft == (column ? p - 1 : -1) &&
                        at.neighbourUp == (row ? p - columns : -1) &&
                        at.neighbourRight == (right ? p + 1 : -1) &&
                        at.neighbourDown == (below ? p + columns : -1))
                << "piece " << p;
            tabs += (at.knobBottom == Out) + (at.knobRight == Out);
            sockets += (at.knobBottom == In) + (at.knobRight == In);
            CombineRgn(piece, at.region, nullptr, RGN_COPY);
            OffsetRgn(piece, at.homeX, at.homeY);
            EXPECT_EQ(NULLREGION, CombineRgn(both, all, piece, RGN_AND)) << "piece " << p;
            CombineRgn(all, all, piece, RGN_OR);
        }
        SetRectRgn(piece, thePuzzle.originX, thePuzzle.originY, thePuzzle.originX + w,
                   thePuzzle.originY + h);
        EXPECT_TRUE(EqualRgn(all, piece));
        for (HRGN region : {all, piece, both})
            DeleteObject(region);
    }
    EXPECT_GT(tabs, 150);
    EXPECT_GT(sockets, 150);
}

TEST_F(Cut, MakeScattersOnTheBoardOffThePreviewAndKeepsThePuzzleFileOnlyForTheSamePicture)
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

    game::make(200, 200, 2, 2);
    strcpy(thePuzzle.puzzlePath, "Z:\\kept.fpp");
    game::command(IDM_MAKE);
    EXPECT_STREQ("Z:\\kept.fpp", thePuzzle.puzzlePath);
    thePicture.loadPreview(game::picture("picture300x200.bmp").c_str());
    game::command(IDM_MAKE);
    ASSERT_TRUE(thePuzzle.made);
    EXPECT_STREQ("", thePuzzle.puzzlePath);
}

// A bar takes from the area; scrolled, the pattern of outlines moves with the area.
TEST_F(Cut, ScrollBarsShowOnlyForAPuzzleLargerThanTheArea)
{
    const int w = appState.areaWidth, h = appState.areaHeight;
    const int sizes[][2] = {{w, h}, {w + 1, 300}, {300, h + 1}, {w + 1, h + 1}};
    for (const auto& [width, height] : sizes) {
        game::make(width, height, 4, 3, 5, Rectangular);
        SCOPED_TRACE(testing::Message() << width << "x" << height);
        const bool across = width > w, down = height > h;
        EXPECT_EQ(across, (GetWindowLongA(appState.hScrollBar, GWL_STYLE) & WS_VISIBLE) != 0);
        EXPECT_EQ(down, (GetWindowLongA(appState.vScrollBar, GWL_STYLE) & WS_VISIBLE) != 0);
        EXPECT_EQ(across ? w - GetSystemMetrics(SM_CXVSCROLL) : width, thePuzzle.visibleWidth);
        EXPECT_EQ(down ? h - GetSystemMetrics(SM_CYHSCROLL) : height, thePuzzle.visibleHeight);
    }
    game::command(IDM_PATTERN);
    SendMessageA(game::window(), WM_HSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 40), 0);
    SendMessageA(game::window(), WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 30), 0);
    const Piece& first = thePuzzle.pieces[0];  // its bottom-right corner, where four cells meet
    EXPECT_EQ(RGB(0, 0, 0), GetPixel(appState.backgroundDC, first.homeX + first.width - 40,
                                     first.homeY + first.height - 30));
    game::command(IDM_PATTERN);
}

// A press finds the topmost free piece of its window whose outline holds the point: the
// box's right and bottom edges and a socket are outside it; a set piece is passed through.
TEST_F(Cut, APressFindsTheTopmostFreePieceOfItsWindow)
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

TEST_F(Cut, RaisingAndLoweringKeepTheStackingOrderWhole)
{
    game::make(250, 50, 5, 1);
    const std::tuple<bool, int, std::vector<int>> steps[] = {
        {true, 1, {0, 2, 3, 4, 1}},  {false, 3, {3, 0, 2, 4, 1}}, {true, 1, {3, 0, 2, 4, 1}},
        {false, 3, {3, 0, 2, 4, 1}}, {true, 3, {0, 2, 4, 1, 3}},  {false, 1, {1, 0, 2, 4, 3}},
        {true, 0, {1, 2, 4, 3, 0}}};
    for (const auto& [raise, piece, bottomFirst] : steps) {
        raise ? thePuzzle.raiseToTop(piece) : thePuzzle.sendToBottom(piece);
        ASSERT_EQ(bottomFirst, std::vector<int>(thePuzzle.zOrder, thePuzzle.zOrder + 5))
            << (raise ? "raised " : "lowered ") << piece;
        for (int z = 0; z < 5; ++z)
            ASSERT_EQ(z, thePuzzle.pieces[thePuzzle.zOrder[z]].zIndex);
    }
}
