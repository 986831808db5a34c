#pragma once
// Saving the puzzle in progress to a puzzle file (.fpp) and restoring it from one: the
// picture is loaded again from its path, the puzzle made again, and every knob, place,
// stacking position, set piece, group and tray put back.
#include "files/puzzle_format.h"

enum PuzzleFileResult {
    PuzzleFileLoaded = 0,
    PuzzleFileOtherVersion = 1,  // empty, or another version tag
    PuzzleFileUnreadable = 2,    // cannot be opened
    PuzzleFileRejected = 3,      // damaged, inconsistent or more than play can hold
    PuzzleFileCancelled = 4,     // its picture is missing and the player did not find it
    PuzzleFileLowResources = 5,  // the memory or the platform failed: the puzzle on hand stays
};

// Writes the made puzzle to its puzzlePath; the previous file survives any failure.
bool writePuzzleFile();
// Everything but a file of another version leaves the puzzle on hand as it was unless the
// result is PuzzleFileLoaded.
int readPuzzleFile(const char* path);

// The made puzzle as the file holds it.
fileformat::PuzzleFileContents contentsOfPuzzle();
// Puts a puzzle read from a file (or kept for recovery) on the board, asking the player to
// find its picture when it is missing; the result as readPuzzleFile's. The new puzzle has no
// file name; a picture found elsewhere is its picture from now on.
int openPuzzleContents(fileformat::PuzzleFileContents& contents);

// "Open Saved Puzzle": the path from the prompt, or in the simple interface the current
// picture's own puzzle file.
void openPuzzleCommand();
// An entry of the recent puzzles, or any given file.
void openPuzzleCommand(const char* path);
void savePuzzleCommand(bool saveAs);
// Reports a result of readPuzzleFile or openPuzzleContents to the player.
void reportPuzzleFileResult(int result, const char* path);
