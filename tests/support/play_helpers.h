#pragma once
// Carrying pieces the way the player does: a press on the piece, pointer moves, a press to
// drop, through the same handlers the window procedures call.
#include <gtest/gtest.h>
#include <windows.h>

#include "tests/support/test_board.h"

namespace play {

// A 400 x 300 puzzle of 8 x 6 pieces of 50 x 50 (knobs of 6), every free piece piled in the
// bottom-left corner: far from every home and from the places around (TableX, TableY).
class Table : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
};
constexpr int TableX = 680, TableY = 440;

// Moves piece p (not dragging) so that its cell's top-left lies at (x, y), on top.
void placeCell(int p, int x, int y);

// Press on the middle of p's cell in its window.
void pickUp(int p);
// Pointer moves of the carried item by (dx, dy), in its window's coordinates.
void moveBy(int dx, int dy);
// Press at the pointer's place in the carried item's window, or in another window at
// (x, y) of that window.
void drop();
void dropIn(HWND window, int x, int y);

// Picks p up, carries it so that its cell's top-left comes to (x, y), and drops it.
void carryCellTo(int p, int x, int y);

inline bool sameRect(const RECT& a, const RECT& b)
{
    return EqualRect(&a, &b) != FALSE;
}

// The main window's board image as it is, and as a repaint from scratch makes it.
Snapshot boardImage();
Snapshot freshBoardImage();
// Whether the board image is as it is and as a repaint makes it alike (taken in that order).
bool boardIsAsRepainted();

}  // namespace play
