#pragma once
// The program's real main window, created once per test process and never shown, with a
// picture shown and a seeded puzzle made from it: what the play tests act on.
#include <string>
#include <windows.h>

#include "model/piece.h"

namespace session {

// The tests keep their options and history here, away from the player's.
constexpr const char* TestSettingsKey = "Software\\Tovira Software\\ToviraPuzzle Tests";

// Creates the main window on first use (running the real start-up sequence).
HWND mainWindow();

std::string picture(const char* name);

// Shows the picture and makes a w x h puzzle of columns x rows pieces with a fixed seed.
void makePuzzle(int w, int h, int columns, int rows, unsigned seed = 5, int shapeMode = Knobbed,
                const char* pictureName = "picture2000x1500.jpg");

// Ends any drag and clears the puzzle.
void end();

inline LPARAM at(int x, int y)
{
    return MAKELPARAM(x, y);
}

// Moves every free piece of the main window to (x, y), out of the way.
void moveFreePiecesTo(int x, int y);

// The cell of piece p (its bounding box without tabs) where it lies.
RECT cellOf(int p);

}  // namespace session
