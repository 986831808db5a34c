// Trays: ids, titles, carrying pieces in and out, closing, scrolling and growing.
#include <gtest/gtest.h>

#include "app/app_state.h"
#include "app/scroll_view.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "play/piece_group.h"
#include "play/tray.h"
#include "tests/support/game_session.h"
#include "tests/support/play_helpers.h"

using play::placeCell;
using session::cellOf;

namespace {

class Trays : public play::Table {
protected:
    Tray& tray(int id)
    {
        EXPECT_TRUE(thePuzzle.findTray(id, false));
        return *thePuzzle.foundTray;
    }
    // A point of the tray's client area in main-window coordinates.
    POINT inMain(const Tray& t, int x, int y)
    {
        POINT p{x, y};
        MapWindowPoints(t.window, thePuzzle.mainWindow, &p, 1);
        return p;
    }
    // Carries piece p from the board so that its cell's top-left shows at (x, y) of the
    // tray, and drops it there.
    void carryIntoTray(int p, Tray& t, int x, int y)
    {
        const POINT target = inMain(t, x, y);
        play::pickUp(p);
        const RECT cell = cellOf(p);
        play::moveBy(target.x - cell.left, target.y - cell.top);
        play::dropIn(t.window, 5, 5);
    }
};

}  // namespace

TEST_F(Trays, IdsAreNeverReusedAndTitlesCarryThem)
{
    HWND first = nullptr;
    EXPECT_EQ(1, thePuzzle.addTray(0, &first));
    char title[64];
    GetWindowTextA(first, title, sizeof title);
    EXPECT_STREQ("Tray  1", title);
    HWND second = nullptr;
    EXPECT_EQ(2, thePuzzle.addTray(0, &second));
    // The same place, the second on top.
    RECT a, b;
    GetWindowRect(first, &a);
    GetWindowRect(second, &b);
    EXPECT_TRUE(EqualRect(&a, &b));
    EXPECT_EQ(second, GetWindow(first, GW_HWNDPREV));
    EXPECT_TRUE(thePuzzle.closeTray(1));
    EXPECT_FALSE(IsWindow(first));
    EXPECT_EQ(3, thePuzzle.addTray(0));
    EXPECT_EQ(3, thePuzzle.lastTrayId);
    EXPECT_EQ(2, thePuzzle.trayCount);
}

TEST_F(Trays, ATrayHoldingAPieceRefusesToCloseUntilItIsCarriedOut)
{
    HWND window = nullptr;
    thePuzzle.addTray(0, &window);
    Tray& t = tray(1);
    carryIntoTray(9, t, 10, 10);
    const Piece& piece = thePuzzle.pieces[9];
    ASSERT_EQ(1, piece.trayId);
    EXPECT_EQ(window, piece.window);
    EXPECT_EQ(t.imageDC, piece.targetDC);
    EXPECT_EQ(10, cellOf(9).left);
    EXPECT_EQ(1, t.pieces.count);

    SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(IsWindow(window));
    EXPECT_EQ(1, thePuzzle.trayCount);

    // Out again, onto the board; while it is carried the tray still cannot close.
    play::pickUp(9);
    SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(IsWindow(window));
    const POINT tl = inMain(t, cellOf(9).left, cellOf(9).top);
    play::moveBy(600 - tl.x, 450 - tl.y);
    play::dropIn(session::mainWindow(), 600, 450);
    EXPECT_EQ(0, piece.trayId);
    EXPECT_EQ(600, cellOf(9).left);
    EXPECT_EQ(450, cellOf(9).top);
    EXPECT_EQ(0, t.pieces.count);

    SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(0, thePuzzle.trayCount);
}

TEST_F(Trays, APieceInATrayIsNeverSetNorJoinedToTheBoard)
{
    thePuzzle.addTray(0);
    Tray& t = tray(1);
    // 8 on the board exactly where 9, in the tray, would join it if windows were ignored.
    carryIntoTray(9, t, 10, 10);
    placeCell(8, -40, 10);
    int n, x, y;
    EXPECT_FALSE(thePuzzle.findJoin(9, n, x, y));
    EXPECT_FALSE(thePuzzle.setIfNearHome(9));
    // Two neighbours in the same tray do join.
    carryIntoTray(10, t, 62, 11);
    EXPECT_TRUE(thePuzzle.pieces[10].isGrouped);
    EXPECT_EQ(thePuzzle.pieces[9].groupId, thePuzzle.pieces[10].groupId);
    EXPECT_EQ(1, thePuzzle.lastGroup->trayId);
}

TEST_F(Trays, AnItemStickingOutRightGrowsTheContentAndScrollingShiftsIt)
{
    thePuzzle.addTray(0);
    Tray& t = tray(1);
    const int view = t.viewWidth;
    carryIntoTray(9, t, view - 20, 40);
    const Piece& piece = thePuzzle.pieces[9];
    const int right = piece.x + piece.width;
    EXPECT_TRUE(t.hasHScroll);
    EXPECT_EQ(right, t.contentWidth);
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    GetScrollInfo(t.window, SB_HORZ, &info);
    EXPECT_EQ(right, info.nMax);

    const int before = piece.x;
    ScrollView(t.window, t.scrollX, SB_LINEDOWN, SB_HORZ, t.id, 0);
    EXPECT_EQ(1, t.scrollX);
    EXPECT_EQ(before - 1, piece.x);
    ScrollView(t.window, t.scrollX, SB_PAGEDOWN, SB_HORZ, t.id, 0);
    EXPECT_EQ(static_cast<int>(info.nMax - info.nPage), t.scrollX);  // stops at the end
    EXPECT_EQ(before - t.scrollX, piece.x);
    ScrollView(t.window, t.scrollX, SB_THUMBTRACK, SB_HORZ, t.id, 0);  // nothing moves
    EXPECT_EQ(before - t.scrollX, piece.x);
    ScrollView(t.window, t.scrollX, SB_TOP, SB_HORZ, t.id, 0);
    EXPECT_EQ(before, piece.x);
}

TEST_F(Trays, AnItemLeftOfTheContentBecomesItsNewOrigin)
{
    thePuzzle.addTray(0);
    Tray& t = tray(1);
    carryIntoTray(9, t, -15, 40);
    const Piece& piece = thePuzzle.pieces[9];
    EXPECT_EQ(piece.x, t.contentLeft);
    EXPECT_EQ(-piece.x, t.scrollX);
    EXPECT_EQ(-piece.x, t.appliedScrollX);
    EXPECT_TRUE(t.hasHScroll);
    SCROLLINFO info{sizeof info, SIF_POS, 0, 0, 0, 0, 0};
    GetScrollInfo(t.window, SB_HORZ, &info);
    EXPECT_EQ(-piece.x, info.nPos);
}

TEST_F(Trays, EnlargingAScrolledTrayUntilTheBarGoesBringsTheContentsBack)
{
    thePuzzle.addTray(0);
    Tray& t = tray(1);
    carryIntoTray(9, t, t.viewWidth - 20, 40);
    ScrollView(t.window, t.scrollX, SB_PAGEDOWN, SB_HORZ, t.id, 0);
    const int scrolled = t.scrollX;
    ASSERT_GT(scrolled, 0);
    const int x = thePuzzle.pieces[9].x;
    RECT frame;
    GetWindowRect(t.window, &frame);
    MapWindowPoints(nullptr, session::mainWindow(), reinterpret_cast<POINT*>(&frame), 2);
    // Content never shrinks, and each bar takes room from the other direction: the window
    // must outgrow the content both ways before the bars go.
    MoveWindow(t.window, frame.left, frame.top, frame.right - frame.left + 300,
               frame.bottom - frame.top + 60, TRUE);
    EXPECT_FALSE(t.hasHScroll);
    EXPECT_EQ(0, t.scrollX);
    EXPECT_EQ(x + scrolled, thePuzzle.pieces[9].x);
}

TEST_F(Trays, AGroupCarriedIntoATrayBringsAllItsMembersDrawnAsARepaintDrawsThem)
{
    thePuzzle.applyOutlineOptions(true, false);  // a group shows one outline round it all
    placeCell(9, 600, 450);
    play::carryCellTo(10, 650, 450);
    thePuzzle.addTray(0);
    Tray& t = tray(1);
    // Sticking out on the right: the tray's image grows while the members arrive.
    const HDC before = t.imageDC;
    carryIntoTray(9, t, t.viewWidth - 30, 20);
    EXPECT_NE(before, t.imageDC);
    for (int p : {9, 10})
        EXPECT_EQ(t.imageDC, thePuzzle.pieces[p].targetDC) << p;
    EXPECT_EQ(2, t.pieces.count);
    EXPECT_EQ(1, thePuzzle.pieces[10].trayId);
    EXPECT_EQ(1, thePuzzle.firstGroup->trayId);
    EXPECT_EQ(t.viewWidth - 30 + 50, cellOf(10).left);
    EXPECT_EQ(thePuzzle.firstGroup->x, thePuzzle.firstGroup->bounds.left);
    const RECT view{0, 0, t.viewWidth, t.viewHeight};
    const Snapshot arrived(t.imageDC, 0, 0, t.viewWidth, t.viewHeight);
    thePuzzle.repaintRect(view, 1, nullptr);
    EXPECT_TRUE(arrived == Snapshot(t.imageDC, 0, 0, t.viewWidth, t.viewHeight));
}
