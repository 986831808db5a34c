// Carrying pieces and groups about the board and into and out of trays: what a press picks
// up, where the item goes and comes to rest, what it leaves behind on the board, and what a
// tray does with what it is given.
#include <gtest/gtest.h>

#include "app/app_state.h"
#include "app/scroll_view.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "play/piece_group.h"
#include "play/sounds.h"
#include "play/tray.h"
#include "resources/resource.h"
#include "tests/support/game.h"

namespace {

class Carrying : public ::testing::Test {
protected:
    static constexpr int X = 680, Y = 440;
    void SetUp() override { game::table(); }
    void TearDown() override { game::end(); }
    static Tray& newTray()
    {
        const int id = thePuzzle.addTray(0);
        EXPECT_TRUE(thePuzzle.findTray(id, false));
        return *thePuzzle.foundTray;
    }
    static void press(HWND window, int x, int y) { game::dropIn(window, x, y); }
};

}  // namespace

TEST_F(Carrying, APressPicksUpTheItemWithoutMovingItAndTheNextDropsItWhereItLies)
{
    press(thePuzzle.mainWindow, 900, 300);  // nothing there
    EXPECT_FALSE(dragState.dragging);
    game::place(9, X, Y);
    game::carry(10, X + 50, Y);
    game::carry(17, X, Y + 50);
    game::place(20, X - 200, Y);
    thePuzzle.raiseToTop(3);  // something else on top
    const RECT before = game::cell(10);
    appState.soundOn = true;
    game::pickUp(10);
    EXPECT_EQ(IDW_CLICK, lastSoundPlayed());
    ASSERT_TRUE(dragState.dragging);
    EXPECT_TRUE(game::same(before, game::cell(10)));
    // The whole group comes up, on top, in the order its members joined.
    int z = thePuzzle.pieceCount - 3;
    for (int member : {10, 9, 17})
        EXPECT_EQ(z++, thePuzzle.pieces[member].zIndex) << member;
    EXPECT_EQ(appState.crossCursor, GetCursor());
    // Dropped over another piece: it rests there, neither set nor joined.
    game::moveBy(-230, 10);
    game::drop();
    EXPECT_EQ(IDW_CLICK, lastSoundPlayed());
    EXPECT_FALSE(dragState.dragging);
    EXPECT_EQ(X - 230, game::cell(9).left);
    EXPECT_EQ(Y + 60, game::cell(17).top);
    EXPECT_EQ(X - 200, game::cell(20).left);
    game::carry(11, X - 230 + 100 + 2, Y + 10);  // a join snaps
    EXPECT_EQ(IDW_SNAP, lastSoundPlayed());
    appState.soundOn = false;
}

TEST_F(Carrying, AnItemNeverReachesTheToolbar)
{
    game::place(9, X, 200);
    game::pickUp(9);
    const int toolbar = appState.toolbarRect.bottom, grab = thePuzzle.grabOffsetY;
    for (int y : {toolbar - 5, toolbar + grab}) {  // over the toolbar; its top at its bottom
        SendMessageA(thePuzzle.mainWindow, WM_MOUSEMOVE, 0, MAKELPARAM(thePuzzle.dragLastX, y));
        EXPECT_EQ(appState.noCursor, GetCursor());
        EXPECT_EQ(200, game::cell(9).top);
    }
    SendMessageA(thePuzzle.mainWindow, WM_MOUSEMOVE, 0,
                 MAKELPARAM(thePuzzle.dragLastX, toolbar + grab + 1));
    EXPECT_EQ(toolbar + 1, thePuzzle.pieces[9].y);
    game::drop();
}

TEST_F(Carrying, WhateverHappensDuringACarryItLeavesNoTraceOnTheBoard)
{
    // Each picks an item up, and something happens while it is carried.
    const struct {
        const char* what;
        std::function<void()> meanwhile;
    } cases[] = {
        {"the piece dropped just before, crossed", [] { game::pickUp(20); }},
        {"the puzzle area scrolled",
         [] {
             game::make(1000, 700, 10, 7);  // larger than the area
             game::place(20, X + 150, Y);
             game::pickUp(20);
             game::moveBy(-60, 20);
             ScrollView(appState.hScrollBar, thePuzzle.scrollX, SB_PAGEDOWN, SB_CTL, 0, 0);
             EXPECT_GT(thePuzzle.scrollX, 0);
         }},
        {"a tray scrolled",
         [] {
             Tray& tray = newTray();
             game::carryInto(30, tray.window, tray.viewWidth - 20, 50);  // sticks out
             game::pickUp(20);
             ScrollView(tray.window, tray.scrollX, SB_LINEDOWN, SB_HORZ, tray.id, 0);
             EXPECT_EQ(1, tray.scrollX);
         }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        SetUp();
        game::place(20, X + 150, Y);
        game::carry(9, X, Y);
        c.meanwhile();
        game::moveBy(-150, 10);
        game::moveBy(-100, 80);
        game::drop();
        EXPECT_TRUE(game::boardAsRepainted());
    }
}

TEST_F(Carrying, ACommandPutsTheCarriedItemDownFirst)
{
    game::place(9, X, Y);
    game::pickUp(9);
    game::moveBy(30, 30);
    game::command(IDM_SHUFFLE);
    EXPECT_FALSE(dragState.dragging);
    EXPECT_EQ(nullptr, thePuzzle.dragImageDC);
    game::pickUp(9);  // the next press picks up again, not drops a stale item
    EXPECT_TRUE(dragState.dragging);
    game::drop();
}

TEST_F(Carrying, ATrayTakesItemsWhereTheyShowAndGivesThemBack)
{
    Tray& tray = newTray();
    EXPECT_EQ(1, tray.id);
    char title[64];
    GetWindowTextA(tray.window, title, sizeof title);
    EXPECT_STREQ("Tray  1", title);
    game::place(9, 600, 450);
    game::carry(10, 650, 450);
    game::carryInto(9, tray.window, 10, 20);
    for (int p : {9, 10})
        EXPECT_EQ(1, thePuzzle.pieces[p].trayId) << p;
    EXPECT_EQ(10, game::cell(9).left);
    EXPECT_EQ(60, game::cell(10).left);
    EXPECT_EQ(1, thePuzzle.firstGroup->trayId);
    // Drawn there as a repaint draws it: the group whole, with one outline.
    const Snapshot arrived(tray.imageDC, 0, 0, tray.viewWidth, tray.viewHeight);
    thePuzzle.repaintRect(RECT{0, 0, tray.viewWidth, tray.viewHeight}, 1, nullptr);
    EXPECT_TRUE(arrived == Snapshot(tray.imageDC, 0, 0, tray.viewWidth, tray.viewHeight));

    // In a tray, a piece is neither set nor joined to one on the board lying where it shows.
    POINT at{10 - 50, 20};
    MapWindowPoints(tray.window, thePuzzle.mainWindow, &at, 1);
    game::place(8, at.x, at.y);
    int n, x, y;
    EXPECT_FALSE(thePuzzle.findJoin(9, n, x, y));
    // Holding pieces, it refuses to close, even while they are carried out; empty, it closes.
    SendMessageA(tray.window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(1, thePuzzle.trayCount);
    HWND window = tray.window;
    game::pickUp(9);
    SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(1, thePuzzle.trayCount);
    const RECT carried = game::cell(9);
    POINT target{carried.left, carried.top};
    MapWindowPoints(window, thePuzzle.mainWindow, &target, 1);
    game::moveBy(600 - target.x, 400 - target.y);
    game::dropIn(thePuzzle.mainWindow, 600, 400);
    EXPECT_EQ(0, thePuzzle.pieces[10].trayId);
    EXPECT_EQ(600, game::cell(9).left);
    EXPECT_EQ(400, game::cell(9).top);
    SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(0, thePuzzle.trayCount);
    EXPECT_EQ(2, thePuzzle.addTray(0));  // ids are never reused
}

TEST_F(Carrying, ATrayGrowsForWhatSticksOutAndScrollsToIt)
{
    Tray& tray = newTray();
    const int view = tray.viewWidth;
    game::carryInto(9, tray.window, view - 20, 40);
    const Piece& piece = thePuzzle.pieces[9];
    EXPECT_TRUE(tray.hasHScroll);
    EXPECT_EQ(piece.x + piece.width, tray.contentWidth);
    const int before = piece.x;
    ScrollView(tray.window, tray.scrollX, SB_LINEDOWN, SB_HORZ, tray.id, 0);
    EXPECT_EQ(before - 1, piece.x);
    ScrollView(tray.window, tray.scrollX, SB_PAGEDOWN, SB_HORZ, tray.id, 0);
    EXPECT_EQ(tray.contentWidth - view, tray.scrollX);                          // stops at the end
    ScrollView(tray.window, tray.scrollX, SB_THUMBTRACK, SB_HORZ, tray.id, 0);  // nothing moves
    EXPECT_EQ(before - tray.scrollX, piece.x);
    // Scrolled, the content grows from where the view shows it.
    game::carryInto(11, tray.window, view - 10, 100);
    const Piece& right = thePuzzle.pieces[11];
    EXPECT_EQ(tray.scrollX + right.x + right.width, tray.contentWidth);
    ScrollView(tray.window, tray.scrollX, SB_TOP, SB_HORZ, tray.id, 0);
    EXPECT_EQ(before, piece.x);

    // Left of the content, an item makes its edge the content's new origin.
    game::carryInto(17, tray.window, -15, 200);
    EXPECT_EQ(thePuzzle.pieces[17].x, tray.contentLeft);
    EXPECT_EQ(-thePuzzle.pieces[17].x, tray.scrollX);
    // Enlarged until the bar goes, the tray shows its contents from the start again.
    RECT frame;
    GetWindowRect(tray.window, &frame);
    MapWindowPoints(nullptr, thePuzzle.mainWindow, reinterpret_cast<POINT*>(&frame), 2);
    MoveWindow(tray.window, frame.left, frame.top, frame.right - frame.left + 300,
               frame.bottom - frame.top + 60, TRUE);
    EXPECT_FALSE(tray.hasHScroll);
    EXPECT_EQ(0, tray.scrollX);

    // Beyond what a tray may hold, the drop is refused and the item stays in hand.
    game::pickUp(20);
    game::moveBy(MaxTrayContentSide + 100, 0);
    EXPECT_EQ("System Error: Problems creating puzzle. System low in resources\n",
              game::answering([&] { game::dropIn(tray.window, 5, 5); }));
    EXPECT_TRUE(dragState.dragging);
    EXPECT_EQ(0, thePuzzle.pieces[20].trayId);
    EXPECT_EQ(3, tray.pieces.count);  // 9, 11 and 17 as they were
}
