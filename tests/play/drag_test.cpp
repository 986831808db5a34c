// Picking up, carrying and dropping: what moves, what is drawn, cursors, stale drags.
#include <gtest/gtest.h>

#include <vector>

#include "app/app_state.h"
#include "app/commands.h"
#include "app/scroll_view.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "play/piece_group.h"
#include "play/tray.h"
#include "resources/resource.h"
#include "tests/support/game_session.h"
#include "tests/support/play_helpers.h"

using play::placeCell;
using play::sameRect;
using session::cellOf;

namespace {

class Dragging : public play::Table {};

constexpr int X = play::TableX, Y = play::TableY;

}  // namespace

TEST_F(Dragging, APressWithNothingToPickUpDoesNothing)
{
    handleClick(session::mainWindow(), session::at(900, 300));  // empty board
    EXPECT_FALSE(dragState.dragging);

    session::end();
    handleClick(session::mainWindow(), session::at(300, 300));  // no puzzle
    EXPECT_FALSE(dragState.dragging);
}

TEST_F(Dragging, PickingUpDoesNotMoveTheItem)
{
    placeCell(9, X, Y);
    const RECT before = cellOf(9);
    play::pickUp(9);
    ASSERT_TRUE(dragState.dragging);
    EXPECT_EQ(9, dragState.draggedPiece);
    EXPECT_TRUE(sameRect(before, cellOf(9)));
    EXPECT_EQ((before.left + before.right) / 2, thePuzzle.dragLastX);
    EXPECT_EQ((before.top + before.bottom) / 2, thePuzzle.dragLastY);
    EXPECT_EQ(thePuzzle.pieceCount - 1, thePuzzle.pieces[9].zIndex);
    EXPECT_EQ(appState.crossCursor, GetCursor());
    play::drop();
}

TEST_F(Dragging, PickingUpAMemberLiftsTheWholeGroupOnTopInMemberOrder)
{
    placeCell(9, X, Y);
    play::carryCellTo(10, X + 50, Y);
    play::carryCellTo(17, X, Y + 50);
    ASSERT_EQ(1, thePuzzle.groupCount);
    thePuzzle.raiseToTop(3);  // something else on top
    play::pickUp(10);
    std::vector<int> members(3);
    thePuzzle.firstGroup->members.copyTo(members.data());
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(thePuzzle.pieceCount - 3 + i, thePuzzle.pieces[members[i]].zIndex);
    play::moveBy(-30, 25);
    play::drop();
    EXPECT_EQ(X - 30, cellOf(9).left);
    EXPECT_EQ(Y + 25, cellOf(17).top - 50);
    EXPECT_EQ(X + 20, cellOf(10).left);
}

TEST_F(Dragging, TheSecondPressDropsEvenOnAnotherPiece)
{
    placeCell(20, X, Y);
    placeCell(9, X + 200, Y);
    play::pickUp(9);
    play::moveBy(-180, 10);
    play::drop();  // over piece 20
    EXPECT_FALSE(dragState.dragging);
    EXPECT_EQ(X + 20, cellOf(9).left);
    EXPECT_EQ(X, cellOf(20).left);
}

TEST_F(Dragging, MovesThatWouldReachTheToolbarAreRefused)
{
    placeCell(9, X, 200);
    play::pickUp(9);
    const RECT before = cellOf(9);
    const int toolbarBottom = appState.toolbarRect.bottom;
    // The pointer over the toolbar, and the item's top edge at the toolbar's bottom edge.
    handleMouseMove(session::mainWindow(), session::at(thePuzzle.dragLastX, toolbarBottom - 5));
    EXPECT_EQ(appState.noCursor, GetCursor());
    const int grab = thePuzzle.grabOffsetY;
    handleMouseMove(session::mainWindow(), session::at(thePuzzle.dragLastX, toolbarBottom + grab));
    EXPECT_EQ(appState.noCursor, GetCursor());
    EXPECT_TRUE(sameRect(before, cellOf(9)));
    // One pixel lower is allowed.
    handleMouseMove(session::mainWindow(),
                    session::at(thePuzzle.dragLastX, toolbarBottom + grab + 1));
    EXPECT_EQ(appState.crossCursor, GetCursor());
    EXPECT_EQ(toolbarBottom + 1, thePuzzle.pieces[9].y);
    play::drop();
}

// Scrolling the puzzle area while an item is carried must not print the item into the
// board image.
TEST_F(Dragging, ARepaintDuringADragLeavesNoTrace)
{
    session::makePuzzle(1000, 700, 10, 7);  // larger than the area: the area scrolls
    session::moveFreePiecesTo(20, 600);
    ASSERT_GT(thePuzzle.width, thePuzzle.visibleWidth);
    placeCell(33, 400, 300);
    play::pickUp(33);
    play::moveBy(60, 20);
    ScrollView(appState.hScrollBar, thePuzzle.scrollX, SB_PAGEDOWN, SB_CTL, 0, 0);
    EXPECT_GT(thePuzzle.scrollX, 0);
    play::moveBy(150, 90);
    play::drop();
    EXPECT_TRUE(play::boardIsAsRepainted());
}

// What lies beneath a carried item is restored from a copy of the board, which must hold
// the piece dropped just before though nothing repainted there since.
TEST_F(Dragging, CarryingOverThePieceDroppedLastLeavesIt)
{
    placeCell(20, X + 150, Y);
    play::carryCellTo(9, X, Y);
    play::pickUp(20);
    play::moveBy(-150, 10);
    play::moveBy(-100, 80);
    play::drop();
    EXPECT_TRUE(play::boardIsAsRepainted());
}

TEST_F(Dragging, ScrollingATrayWhileCarryingOnTheBoardLeavesNoTrace)
{
    HWND window = nullptr;
    thePuzzle.addTray(0, &window);
    thePuzzle.findTray(1, false);
    Tray& tray = *thePuzzle.foundTray;
    thePuzzle.moveToWindow(30, window, tray.imageDC, 1);
    thePuzzle.pieces[30].moveTo(tray.viewWidth - 20, thePuzzle.pieces[30].y, false);  // sticks out
    thePuzzle.growTrayToFit(30);
    placeCell(20, X, Y);
    play::pickUp(20);
    play::moveBy(10, 10);
    ScrollView(window, tray.scrollX, SB_LINEDOWN, SB_HORZ, tray.id, 0);
    ASSERT_EQ(1, tray.scrollX);
    play::moveBy(10, 10);
    play::moveBy(10, 10);
    play::drop();
    EXPECT_TRUE(play::boardIsAsRepainted());
}

TEST_F(Dragging, WithoutAPuzzleTheBoardsBarsMoveNothing)
{
    session::makePuzzle(1500, 1000, 10, 10);
    thePuzzle.clear();
    ScrollView(appState.hScrollBar, thePuzzle.scrollX, SB_LINEDOWN, SB_CTL, 0, 0);
    EXPECT_EQ(0, thePuzzle.scrollX);
}

TEST_F(Dragging, ACommandEndsADragFirst)
{
    placeCell(9, X, Y);
    play::pickUp(9);
    play::moveBy(30, 30);
    RouteCommand(session::mainWindow(), IDM_SHUFFLE, 0);
    EXPECT_FALSE(dragState.dragging);
    EXPECT_EQ(nullptr, thePuzzle.dragImageDC);
    EXPECT_EQ(nullptr, thePuzzle.dragMaskDC);
    // The next press picks up again instead of dropping a stale item.
    play::pickUp(9);
    EXPECT_TRUE(dragState.dragging);
    EXPECT_EQ(9, dragState.draggedPiece);
    play::drop();
}
