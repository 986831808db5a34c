// What the board shows: a piece through its outline with the frame its state and the
// options call for, any part repainted as drawing every piece back to front paints it, the
// preview over the puzzle area, and the few GDI objects of a large puzzle.
#include <gtest/gtest.h>

#include <random>

#include "app/app_state.h"
#include "model/gdi_objects.h"
#include "model/puzzle.h"
#include "resources/resource.h"
#include "tests/support/allocations.h"
#include "tests/support/game.h"

namespace {

constexpr COLORREF White = RGB(255, 255, 255), Black = RGB(0, 0, 0);

class Painting : public ::testing::Test {
protected:
    void TearDown() override
    {
        game::end();
        options(true, false);  // as a first start has them
    }
    static void options(bool outline, bool setOutline)
    {
        game::window();
        if (appState.drawOutline != outline)
            game::command(IDM_DRAW_OUTLINE);
        if (appState.drawSetOutline != setOutline)
            game::command(IDM_DRAW_SET_OUTLINE);
    }
    // The pattern at its own size, so that pieces show its pixels as they are: 16 x 12 cells
    // of 64 (knobs of 8), every piece piled in the bottom-left corner, off the puzzle area.
    static void scene(bool outline, bool setOutline)
    {
        options(outline, setOutline);
        game::make(1024, 700, 16, 12);  // the picture drawn afresh when only the height changes
        game::make(1024, 768, 16, 12);
        for (int p = 0; p < thePuzzle.pieceCount; ++p) {
            const RECT at = game::cell(p);
            Piece& piece = thePuzzle.pieces[p];
            piece.moveTo(piece.x + 20 - at.left, piece.y + 560 - at.top, false);
        }
        thePuzzle.repaintRect(RECT{0, 0, thePuzzle.boardWidth, thePuzzle.boardHeight}, 0, nullptr);
    }
    // Carries p to its place, where it is set; the cell's top-left there.
    static POINT setAtHome(int p)
    {
        const POINT home = game::home(p);
        game::carry(p, home.x, home.y);
        EXPECT_TRUE(thePuzzle.pieces[p].isSet) << p;
        return home;
    }
};

}  // namespace

TEST_F(Painting, APieceShowsExactlyThePictureInsideItsOutlineFramedOnlyWithTheOutlineOption)
{
    const bool cases[][3] = {{true, false, true}, {false, true, false}, {false, false, false}};
    for (const auto& [outline, setOutline, framed] : cases) {
        scene(outline, setOutline);
        game::place(18, 650, 420);  // the cell at (128, 64) of the picture
        const Piece& piece = thePuzzle.pieces[18];
        auto in = [&](int x, int y) { return PtInRegion(piece.region, x - piece.x, y - piece.y); };
        const Snapshot shot(thePuzzle.boardDC, piece.x - 2, piece.y - 2, piece.width + 4,
                            piece.height + 4);
        for (int y = shot.top; y < shot.top + shot.height; ++y) {
            for (int x = shot.left; x < shot.left + shot.width; ++x) {
                const bool edge = !(in(x - 1, y) && in(x + 1, y) && in(x, y - 1) && in(x, y + 1));
                ASSERT_EQ(!in(x, y)        ? White
                          : edge && framed ? Black
                                           : patternColour(x - 522, y - 356),
                          shot.at(x, y))
                    << "options " << outline << setOutline << " at " << x - 650 << "," << y - 420;
            }
        }
    }
}

// Piece c set with some of its neighbours, then the options changed: black near each side of
// its cell, within the knobs' reach and short of the corners, is its frame there.
TEST_F(Painting, ASetPieceLosesItsFrameAlongEachSetNeighbourUnlessSetPiecesKeepTheirs)
{
    enum { Up = 1, Down = 2, Left = 4, Right = 8, All = 15 };
    const RECT bands[] = {{1, -16, 63, 17}, {1, 47, 63, 80}, {-16, 1, 17, 63}, {47, 1, 80, 63}};
    const int cases[][5] = {
        {18, true, false, Up, All - Up},     {18, true, false, Down, All - Down},
        {18, true, false, Left, All - Left}, {18, true, false, Right, All - Right},
        {18, true, false, All, 0},           {18, false, true, All, All},
        {18, false, false, All, 0},          {16, true, false, Up, All - Up}};
    for (const auto& [c, outline, setOutline, set, framed] : cases) {  // set, framed: sides
        scene(true, false);
        const POINT cell = setAtHome(c);
        const int neighbours[] = {c - 16, c + 16, c % 16 ? c - 1 : -1, c + 1};  // 16: the border
        for (int side = 0; side < 4; ++side) {
            if (set & 1 << side && neighbours[side] >= 0)
                setAtHome(neighbours[side]);
        }
        options(outline, setOutline);
        const Snapshot shot = game::board();
        for (int side = 0; side < 4; ++side) {
            if (neighbours[side] < 0)
                continue;
            const RECT& band = bands[side];
            int black = 0;
            for (int y = cell.y + band.top; y < cell.y + band.bottom; ++y)
                for (int x = cell.x + band.left; x < cell.x + band.right; ++x)
                    black += shot.at(x, y) == Black;
            EXPECT_EQ(framed & 1 << side ? 62 : 0, std::min(black, 62))
                << c << " options " << outline << setOutline << " set " << set << " side " << side;
        }
        EXPECT_TRUE(game::boardAsRepainted());
    }
}

TEST_F(Painting, AnyPartRepaintsAsDrawingEveryPieceBackToFront)
{
    for (unsigned seed = 0; seed < 4; ++seed) {
        std::mt19937 random(seed);
        auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
        // Larger than the area, so that it scrolls, and of enough pieces that a small part
        // shows few: cells of 50, knobs of 6.
        options(seed & 1, seed & 2);
        game::make(900, 700, 18, 14, seed);
        setAtHome(0);  // in the corner that scrolling cuts at the area's edges
        setAtHome(1);
        for (int i = 0; i < 40; ++i)  // piles over the area and beside it, below its top
            game::place(2 + below(250), 100 + below(750), 200 + below(360));
        game::place(40, 300, 450);
        game::carry(41, 350, 450);
        game::place(30, 600, 200);
        game::carry(48, 600, 250);
        ASSERT_EQ(2, thePuzzle.groupCount);
        const int sx = 15 + below(20), sy = sx - 3 - below(10);
        const int x0 = thePuzzle.originX, y0 = thePuzzle.originY;
        const COLORREF top = GetPixel(appState.boardDC, x0 + 40, y0 + sy + 1);  // of piece 0
        SendMessageA(game::window(), WM_HSCROLL, MAKEWPARAM(SB_THUMBPOSITION, sx), 0);
        SendMessageA(game::window(), WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, sy), 0);
        ASSERT_TRUE(thePuzzle.scrollX == sx && thePuzzle.scrollY == sy);
        // Scrolled further one way than the other, set pieces still fill the area's top row.
        EXPECT_EQ(top, GetPixel(appState.boardDC, x0 + 40 - sx, y0 + 1));
        setAtHome(2);  // scrolled

        // Short of memory for finding what shows, a repaint draws every piece in turn.
        for (int i = 0; i < 9; ++i) {  // the whole board, then small parts
            const int x = i ? below(900) : 0, y = thePuzzle.boardTop + (i ? below(550) : 0);
            const int w = i ? 10 + below(200) : thePuzzle.boardWidth;
            const int h = i ? 10 + below(150) : thePuzzle.boardHeight - y;
            thePuzzle.repaintRect(RECT{x, y, x + w, y + h}, 0, nullptr);
            const Snapshot repainted(thePuzzle.boardDC, x, y, w, h);
            allocations::failAfter(0);
            thePuzzle.repaintRect(RECT{x, y, x + w, y + h}, 0, nullptr);
            ASSERT_TRUE(allocations::stop());
            EXPECT_TRUE(repainted == Snapshot(thePuzzle.boardDC, x, y, w, h))
                << "seed " << seed << " at " << x << "," << y << " " << w << "x" << h;
        }
        // At the end of the bar, a step further scrolls no more.
        SendMessageA(game::window(), WM_VSCROLL, SB_BOTTOM, 0);
        const int bottom = thePuzzle.scrollY;
        SendMessageA(game::window(), WM_VSCROLL, SB_LINEDOWN, 0);
        EXPECT_EQ(bottom, thePuzzle.scrollY);
    }
}

TEST_F(Painting, ThePreviewShowsOverThePuzzleAreasFrame)
{
    // A puzzle area whose left edge runs down through the preview, as a file may place it.
    const POINT kept{appState.areaOriginX, appState.areaOriginY};
    appState.areaOriginX = 40;
    appState.areaOriginY = appState.paintOriginY + 30;
    game::make(300, 200, 6, 4);
    appState.areaOriginX = kept.x;
    appState.areaOriginY = kept.y;
    const Puzzle& z = thePuzzle;
    const Snapshot preview(z.previewDC, 0, 0, z.previewWidth, z.previewHeight);
    for (const char* when : {"made", "repainted"}) {
        const Snapshot shot = game::board();
        for (int y = z.originY; y < z.previewY + z.previewHeight; ++y)
            ASSERT_EQ(preview.at(40 - z.previewX, y - z.previewY), shot.at(40, y)) << when << y;
        thePuzzle.repaintRect(RECT{0, 0, z.boardWidth, z.boardHeight}, 0, nullptr);
    }
}

// One outline per piece would pass the platform's default limit of 10,000 GDI objects per
// process long before a 100 x 100 puzzle was made.
TEST_F(Painting, AHundredByAHundredPuzzleHoldsFewGdiObjectsAndClearReleasesThemAll)
{
    game::make(2000, 1500, 2, 2);  // the picture drawn at this size; other outlines
    game::end();
    const long before = gdi::liveObjects();
    game::make(2000, 1500, 100, 100);  // cells of 20 x 15
    EXPECT_LT(gdi::liveObjects() - before, 400);
    setAtHome(0);
    setAtHome(1);
    game::place(240, 600, 450);
    game::carry(241, 620, 450);
    HWND tray = nullptr;
    thePuzzle.addTray(0, &tray);
    game::carryInto(2, tray, 10, 10);
    game::pickUp(3);  // still carried
    game::end();
    EXPECT_EQ(before, gdi::liveObjects());
}
