#pragma once
// Saving the puzzle in progress to a puzzle file (.fpp) and restoring it from one: the
// picture is loaded again from its path, the puzzle made again, and every knob, place,
// stacking position, set piece, group and tray put back.

enum PuzzleFileResult {
    PuzzleFileLoaded = 0,
    PuzzleFileOtherVersion = 1,  // empty, or another version tag
    PuzzleFileUnreadable = 2,    // cannot be opened
    PuzzleFileRejected = 3,      // damaged or inconsistent: nothing was changed
};

// Writes the made puzzle to its puzzlePath; the previous file survives any failure.
bool writePuzzleFile();
int readPuzzleFile(const char* path);

// "Open Saved Puzzle": the path from the prompt, or in the simple interface the current
// picture's own puzzle file.
void openPuzzleCommand();
// An entry of the recent puzzles, or any given file.
void openPuzzleCommand(const char* path);
void savePuzzleCommand(bool saveAs);
