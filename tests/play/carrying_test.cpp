// Carrying pieces and groups over the board and through trays, and what a drop fits: set at
// its place, or joined to a true neighbour within four pixels on both axes, one join a drop.
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
    void SetUp() override { game::table(1); }
    void TearDown() override { game::end(); }
};
using Dropping = Carrying;

}  // namespace

TEST_F(Carrying, APressPicksUpTheItemAsItLiesTheNextDropsItThereACommandPutsItDown)
{
    game::dropIn(thePuzzle.mainWindow, 900, 300);  // nothing there
    EXPECT_FALSE(dragState.dragging);
    game::place(9, X, Y);
    game::carry(10, X + 50, Y);
    game::carry(17, X, Y + 50);
    game::place(20, X - 200, Y);
    thePuzzle.raiseToTop(3);  // something else on top
    const RECT before = game::cell(10);
    appState.soundOn = true;
    game::pickUp(10);
    ASSERT_TRUE(dragState.dragging && game::same(before, game::cell(10)));
    EXPECT_TRUE(lastSoundPlayed() == IDW_CLICK && GetCursor() == appState.crossCursor);
    // The whole group comes up, on top, in the order its members joined.
    int z = thePuzzle.pieceCount - 3;
    for (int member : {10, 9, 17})
        EXPECT_EQ(z++, thePuzzle.pieces[member].zIndex) << member;
    // Dropped over another piece: it rests there, neither set nor joined.
    game::moveBy(-230, 10);
    game::drop();
    EXPECT_TRUE(!dragState.dragging && lastSoundPlayed() == IDW_CLICK);
    EXPECT_TRUE(game::cell(9).left == X - 230 && game::cell(17).top == Y + 60 &&
                game::cell(20).left == X - 200);
    game::carry(11, X - 230 + 100 + 2, Y + 10);  // a join snaps
    EXPECT_EQ(IDW_SNAP, lastSoundPlayed());
    appState.soundOn = false;

    // Over the toolbar, or with its top at the toolbar's bottom, it stays; a pixel lower, it goes.
    game::place(30, X, 200);
    game::pickUp(30);
    const int toolbar = appState.toolbarRect.bottom, grab = thePuzzle.grabOffsetY;
    const int top = thePuzzle.pieces[30].y;
    for (int y : {toolbar - 5, toolbar + grab, toolbar + grab + 1}) {
        SendMessageA(thePuzzle.mainWindow, WM_MOUSEMOVE, 0, MAKELPARAM(thePuzzle.dragLastX, y));
        const bool below = y > toolbar + grab;
        EXPECT_EQ(below ? toolbar + 1 : top, thePuzzle.pieces[30].y);
        EXPECT_EQ(below ? appState.crossCursor : appState.noCursor, GetCursor());
    }
    game::command(IDM_SHUFFLE);
    EXPECT_TRUE(!dragState.dragging && thePuzzle.dragImageDC == nullptr);
    game::pickUp(30);  // the next press picks up again, not drops a stale item
    EXPECT_TRUE(dragState.dragging);
}

TEST_F(Carrying, WhateverHappensDuringACarryItLeavesNoTraceOnTheBoard)
{
    const std::function<void()> meanwhile[] = {
        [] { game::pickUp(20); },  // the piece dropped just before, crossed
        [] {
            game::make(1000, 700, 10, 7);  // larger than the area, scrolled
            game::place(20, X + 150, Y);
            game::pickUp(20);
            game::moveBy(-60, 20);
            ScrollView(appState.hScrollBar, thePuzzle.scrollX, SB_PAGEDOWN, SB_CTL, 0, 0);
            EXPECT_GT(thePuzzle.scrollX, 0);
        },
        [] {
            thePuzzle.addTray(0);
            Tray& tray = *thePuzzle.lastTray;
            game::carryInto(30, tray.window, tray.viewWidth - 20, 50);  // sticks out
            game::pickUp(20);
            ScrollView(tray.window, tray.scrollX, SB_LINEDOWN, SB_HORZ, tray.id, 0);
            EXPECT_EQ(1, tray.scrollX);
        },
    };
    for (const auto& happen : meanwhile) {
        SCOPED_TRACE(&happen - meanwhile);
        SetUp();
        game::place(20, X + 150, Y);
        game::carry(9, X, Y);
        happen();
        game::moveBy(-150, 10);
        game::moveBy(-100, 80);
        game::drop();
        EXPECT_TRUE(game::boardAsRepainted());
    }
}

TEST_F(Carrying, ATrayTakesItemsWhereTheyShowAndGivesThemBack)
{
    thePuzzle.addTray(0);
    const Tray& tray = *thePuzzle.lastTray;
    char title[64];
    GetWindowTextA(tray.window, title, sizeof title);
    EXPECT_STREQ("Tray  1", title);
    // Under the preview, down to the board's bottom.
    const RECT box = game::box(tray.window);
    EXPECT_TRUE(box.top == thePuzzle.previewY + thePuzzle.previewHeight &&
                box.bottom == thePuzzle.boardHeight);
    game::place(9, 600, 450);
    game::carry(10, 650, 450);
    // 8 on the board where 9 fits against it in the tray's coordinates: no join across windows.
    game::place(8, 10 - 50, 20);
    game::carryInto(9, tray.window, 10, 20);
    EXPECT_FALSE(game::joined(8, 9));
    EXPECT_TRUE(thePuzzle.pieces[9].trayId == 1 && thePuzzle.pieces[10].trayId == 1 &&
                thePuzzle.firstGroup->trayId == 1);
    EXPECT_TRUE(game::cell(9).left == 10 && game::cell(9).top == 20 && game::cell(10).left == 60);
    // Drawn there as a repaint draws it: the group whole, with one outline.
    const Snapshot arrived(tray.imageDC, 0, 0, tray.viewWidth, tray.viewHeight);
    thePuzzle.repaintRect(RECT{0, 0, tray.viewWidth, tray.viewHeight}, 1, nullptr);
    EXPECT_TRUE(arrived == Snapshot(tray.imageDC, 0, 0, tray.viewWidth, tray.viewHeight));

    // Holding pieces it refuses to close, and it ignores the command during a carry; empty,
    // it closes.
    SendMessageA(tray.window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(1, thePuzzle.trayCount);
    game::pickUp(9);
    SendMessageA(tray.window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(1, thePuzzle.trayCount);
    POINT at{600, 400};
    MapWindowPoints(thePuzzle.mainWindow, tray.window, &at, 1);
    game::moveBy(at.x - 10, at.y - 20);
    game::dropIn(thePuzzle.mainWindow, 600, 400);
    EXPECT_TRUE(thePuzzle.pieces[10].trayId == 0 && game::cell(9).left == 600 &&
                game::cell(9).top == 400);
    SendMessageA(tray.window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(0, thePuzzle.trayCount);
    EXPECT_EQ(2, thePuzzle.addTray(0));  // ids are never reused
}

TEST_F(Carrying, ATrayGrowsForWhatSticksOutScrollsToItAndRefusesTooMuch)
{
    thePuzzle.addTray(0);
    Tray& tray = *thePuzzle.lastTray;
    const int view = tray.viewWidth;
    game::place(8, X, Y);
    game::carry(9, X + 50, Y);
    game::carryInto(9, tray.window, view - 20, 40);  // with 8, on its left
    const Piece& piece = thePuzzle.pieces[9];
    const PieceGroup& group = *thePuzzle.firstGroup;
    EXPECT_TRUE(tray.hasHScroll && tray.contentWidth == piece.x + piece.width);
    const int before = piece.x, groupTop = group.y;
    ScrollView(tray.window, tray.scrollX, SB_LINEDOWN, SB_HORZ, tray.id, 0);
    EXPECT_TRUE(before - 1 == piece.x && groupTop == group.y);
    ScrollView(tray.window, tray.scrollX, SB_PAGEDOWN, SB_HORZ, tray.id, 0);  // to the end
    EXPECT_EQ(tray.contentWidth - view, tray.scrollX);
    ScrollView(tray.window, tray.scrollX, SB_THUMBTRACK, SB_HORZ, tray.id, 0);  // nothing moves
    EXPECT_EQ(before - tray.scrollX, piece.x);
    // Scrolled, the content grows from where the view shows it.
    game::carryInto(11, tray.window, view - 10, 100);
    const Piece& right = thePuzzle.pieces[11];
    EXPECT_EQ(tray.scrollX + right.x + right.width, tray.contentWidth);
    ScrollView(tray.window, tray.scrollX, SB_TOP, SB_HORZ, tray.id, 0);
    EXPECT_EQ(before, piece.x);
    // Left of the content, an item makes its edge the content's new origin, and 11 stays within.
    game::carryInto(17, tray.window, -15, 200);
    EXPECT_TRUE(tray.contentLeft == thePuzzle.pieces[17].x && tray.scrollX == -tray.contentLeft &&
                tray.scrollX + right.x + right.width == tray.contentWidth);
    // Enlarged until the bar goes, the tray shows its contents from the start again.
    RECT frame;
    GetWindowRect(tray.window, &frame);
    SetWindowPos(tray.window, nullptr, 0, 0, frame.right - frame.left + 300,
                 frame.bottom - frame.top + 60, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_TRUE(!tray.hasHScroll && tray.scrollX == 0);

    game::pickUp(20);
    game::moveBy(MaxTrayContentSide + 100, 0);
    EXPECT_EQ("System Error: Problems creating puzzle. System low in resources\n",
              game::answering([&] { game::dropIn(tray.window, 5, 5); }));
    // Still in hand, and the tray holds 8, 9, 11 and 17 as they were.
    EXPECT_TRUE(dragState.dragging && thePuzzle.pieces[20].trayId == 0 && tray.pieces.count == 4);
}

TEST_F(Dropping, WithinFourPixelsAPieceJoinsANeighbourOnEverySideOrIsSetAtHome)
{
    // Piece 18 of this cut has a socket on every side, and each neighbour dropped against it
    // a tab on the side it is measured from as well: every tab takes part in a snap.
    const int targets[][3] = {{10, 0, -50}, {26, 0, 50}, {17, -50, 0}, {19, 50, 0}, {20, 0, 0}};
    const int offsets[][2] = {{4, -4}, {-4, 4}, {0, 4}, {5, 0}, {0, 5}, {-5, -1}, {3, -5}};
    for (const auto& [piece, x, y] : targets) {  // where it belongs against 18; 20 at home
        for (const auto& [dx, dy] : offsets) {
            SCOPED_TRACE(testing::Message() << piece << " off by " << dx << "," << dy);
            SetUp();
            game::place(18, X, Y);
            const POINT to = piece == 20 ? game::home(20) : POINT{X + x, Y + y};
            game::carry(piece, to.x + dx, to.y + dy);
            const bool within = std::abs(dx) <= 4 && std::abs(dy) <= 4;
            EXPECT_EQ(within, piece == 20 ? thePuzzle.pieces[20].isSet : game::joined(18, piece));
            // Fitted, the cell lies exactly in place, without gap or overlap; else where dropped.
            EXPECT_EQ(to.x + (within ? 0 : dx), game::cell(piece).left);
            EXPECT_EQ(to.y + (within ? 0 : dy), game::cell(piece).top);
            EXPECT_EQ(X, game::cell(18).left);  // the resting piece stays
        }
    }
}

TEST_F(Dropping, AGroupJoinsByAnyMemberOnceADropAndNearHomeIsSetRatherThanJoined)
{
    game::place(9, X - 120, Y);
    game::carry(10, X - 70, Y);  // 9 and 10
    game::place(12, X + 60, Y + 30);
    game::carry(11, X + 10, Y + 30);  // 11 and 12, 11 left of 12
    const RECT resting11 = game::cell(11), resting12 = game::cell(12);
    const int dropped = thePuzzle.pieces[9].groupId;
    game::carry(9, X + 10 - 100 - 3, Y + 30 + 2);  // 10 within 3 pixels of 11's left
    EXPECT_EQ(1, thePuzzle.groupCount);
    for (int p : {9, 10, 11, 12})
        EXPECT_EQ(dropped, thePuzzle.pieces[p].groupId) << p;
    EXPECT_TRUE(game::same(resting11, game::cell(11)) && game::same(resting12, game::cell(12)));
    EXPECT_EQ(game::cell(11).left, game::cell(10).right);
    // At most one join a drop: 13 between 12 and 14, both where it belongs; one side wins.
    game::place(14, game::cell(12).right + 50, Y + 30);
    game::carry(13, game::cell(12).right + 2, Y + 30);
    EXPECT_NE(game::joined(13, 12), game::joined(13, 14));

    // 8 lies free where it belongs: the group brought near home could join it, and is set
    // instead, whole, and is a group no more; between set pieces no line is left.
    const POINT home8 = game::home(8), home9 = game::home(9);
    game::place(8, home8.x, home8.y);
    game::carry(9, home9.x + 3, home9.y - 2);
    EXPECT_FALSE(thePuzzle.pieces[8].isGrouped);
    for (int p : {9, 10, 11, 12})
        EXPECT_TRUE(thePuzzle.pieces[p].isSet && !thePuzzle.pieces[p].isGrouped) << p;
    EXPECT_TRUE(game::boardAsRepainted());
    game::pickUp(9);  // set for good: a press finds nothing to pick up
    EXPECT_FALSE(dragState.dragging);
}
