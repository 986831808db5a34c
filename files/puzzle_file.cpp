#include "files/puzzle_file.h"

#include <cstring>
#include <unordered_map>
#include <vector>
#include <windows.h>

#include "app/app_state.h"
#include "app/history.h"
#include "app/make_command.h"
#include "files/file_io.h"
#include "files/file_prompt.h"
#include "files/make_parameters.h"
#include "files/message.h"
#include "files/picture.h"
#include "files/puzzle_format.h"
#include "model/puzzle.h"
#include "play/piece_group.h"
#include "play/tray.h"
#include "resources/resource.h"

using namespace fileformat;

static_assert(sizeof(WINDOWPLACEMENT) == PlacementSize, "the file holds the 32-bit layout");

namespace {

PieceRecord recordOf(const Piece& piece)
{
    PieceRecord r;
    r.x = piece.x;
    r.y = piece.y;
    r.zIndex = piece.zIndex;
    r.knobSize = piece.knobSize;
    r.knobTop = piece.knobTop;
    r.knobBottom = piece.knobBottom;
    r.knobRight = piece.knobRight;
    r.knobLeft = piece.knobLeft;
    r.groupId = piece.groupId;
    r.trayId = piece.trayId;
    r.isSet = piece.isSet;
    r.isVisible = piece.isVisible;
    r.isGrouped = piece.isGrouped;
    return r;
}

PuzzleFileContents contentsOf(const Puzzle& puzzle)
{
    PuzzleFileContents c;
    c.hasPuzzle = true;
    PuzzleFileHeader& h = c.header;
    h.originX = puzzle.originX;
    h.originY = puzzle.originY;
    h.width = puzzle.width;
    h.height = puzzle.height;
    h.lastTrayId = puzzle.lastTrayId;
    h.lastGroupId = puzzle.lastGroupId;
    h.columns = puzzle.columns;
    h.rows = puzzle.rows;
    h.shapeMode = puzzle.shapeMode;
    h.drawOutline = puzzle.drawOutline;
    c.picturePath = puzzle.picturePath;
    for (const Tray* tray = puzzle.trayCount ? puzzle.firstTray : nullptr; tray;
         tray = tray->next) {
        TrayRecord t;
        t.id = tray->id;
        t.left = tray->left;
        t.top = tray->top;
        t.viewWidth = tray->viewWidth;
        t.viewHeight = tray->viewHeight;
        memcpy(t.placement, &tray->placement, PlacementSize);
        c.trays.push_back(t);
    }
    for (const PieceGroup* g = puzzle.groupCount ? puzzle.firstGroup : nullptr; g; g = g->next)
        c.groups.push_back(GroupRecord{g->id, g->x, g->y, g->width, g->height, g->trayId});
    c.pieces.reserve(puzzle.pieceCount);
    for (int i = 0; i < puzzle.pieceCount; ++i)
        c.pieces.push_back(recordOf(puzzle.pieces[i]));
    return c;
}

void restoreTray(Puzzle& puzzle, const TrayRecord& t)
{
    HWND window = nullptr;
    puzzle.addTray(t.id, &window);
    if (!window)
        return;
    RECT r{t.left, t.top, t.left + t.viewWidth, t.top + t.viewHeight};
    MapWindowPoints(HWND_DESKTOP, appState.mainWindow, reinterpret_cast<POINT*>(&r), 2);
    MoveWindow(window, r.left, r.top, r.right - r.left, r.bottom - r.top, TRUE);
    if (!puzzle.findTray(t.id, false))
        return;
    memcpy(&puzzle.foundTray->placement, t.placement, PlacementSize);
    SetWindowPlacement(window, &puzzle.foundTray->placement);
}

void restorePiece(Puzzle& puzzle, int i, const PieceRecord& r, int fileShapeMode)
{
    Piece& piece = puzzle.pieces[i];
    if (fileShapeMode != Rectangular) {
        // The puzzle was made with rectangular pieces: give this one its saved knobs.
        puzzle.shapeMode = fileShapeMode;
        piece.knobSize = r.knobSize;
        piece.knobTop = static_cast<KnobKind>(r.knobTop);
        piece.knobBottom = static_cast<KnobKind>(r.knobBottom);
        piece.knobRight = static_cast<KnobKind>(r.knobRight);
        piece.knobLeft = static_cast<KnobKind>(r.knobLeft);
        piece.x = piece.sourceX;
        piece.y = piece.sourceY;
        piece.buildShape(puzzle.originX, puzzle.originY);
    }
    // Before isSet, since a set piece does not move. Not drawn: the whole board and every
    // tray are repainted once all pieces are back.
    piece.moveTo(r.x, r.y, false);
    piece.isSet = r.isSet;
    piece.isVisible = r.isVisible;
    piece.zIndex = r.zIndex;
    puzzle.zOrder[r.zIndex] = i;
}

// Each group gets all its members at once, in piece order, as a piece-by-piece restore
// would give them; a group the file does not define leaves its pieces ungrouped.
void restoreGroups(Puzzle& puzzle, const PuzzleFileContents& c)
{
    std::unordered_map<int, std::vector<int>> members;
    for (int i = 0; i < puzzle.pieceCount; ++i) {
        if (c.pieces[i].isGrouped)
            members[c.pieces[i].groupId].push_back(i);
    }
    for (const GroupRecord& g : c.groups) {
        puzzle.createGroup(g.id, g.trayId);
        const std::vector<int>& list = members[g.id];
        puzzle.addToGroup(g.id, list.data(), static_cast<int>(list.size()));
    }
}

void restoreTrayContents(Puzzle& puzzle, const PuzzleFileContents& c)
{
    for (int i = 0; i < puzzle.pieceCount; ++i) {
        const int trayId = c.pieces[i].trayId;
        if (trayId == 0 || !puzzle.findTray(trayId, false))
            continue;
        puzzle.pieces[i].assignWindow(puzzle.foundTray->window, puzzle.foundTray->imageDC, trayId);
        puzzle.putInTray(trayId, i, false);  // each tray grows once, when all are in
    }
    for (const TrayRecord& t : c.trays)
        puzzle.fitTrayToContents(t.id);
}

void repaintRestored(Puzzle& puzzle)
{
    for (Tray* tray = puzzle.trayCount ? puzzle.firstTray : nullptr; tray; tray = tray->next) {
        RECT client;
        if (!tray->window || !GetClientRect(tray->window, &client))
            continue;
        puzzle.repaintRect(client, tray->id, nullptr);
        InvalidateRect(tray->window, nullptr, FALSE);
    }
    // Also removes what restoring drew on the board for pieces that then went into trays.
    puzzle.repaintRect(RECT{0, 0, appState.boardImageWidth, appState.boardImageHeight}, 0, nullptr);
    RedrawWindow(appState.mainWindow, &appState.boardRect, nullptr, RDW_INVALIDATE);
}

void restorePuzzle(const char* path, const PuzzleFileContents& c)
{
    Puzzle& puzzle = thePuzzle;
    const PuzzleFileHeader& h = c.header;
    thePicture.loadPreview(c.picturePath.c_str());
    appState.pictureLoaded = true;
    appState.areaOriginX = h.originX;
    appState.areaOriginY = h.originY;
    makeParameters.width = h.width;
    makeParameters.height = h.height;
    makeParameters.columns = h.columns;
    makeParameters.rows = h.rows;
    makeParameters.shapeMode = Rectangular;
    makeCommand();
    if (!puzzle.made)
        return;

    for (const TrayRecord& t : c.trays)
        restoreTray(puzzle, t);
    for (int i = 0; i < puzzle.pieceCount; ++i)
        restorePiece(puzzle, i, c.pieces[i], h.shapeMode);
    restoreGroups(puzzle, c);
    puzzle.lastTrayId = h.lastTrayId;
    puzzle.lastGroupId = h.lastGroupId;
    restoreTrayContents(puzzle, c);
    puzzle.placesChanged();
    repaintRestored(puzzle);
    lstrcpynA(puzzle.puzzlePath, path, MAX_PATH);
}

void reportReadFailure(int result, const char* path)
{
    if (result == PuzzleFileOtherVersion)
        showMessage(appState.instance, appState.mainWindow, IDS_OTHER_VERSION, IDS_FILE_ERROR,
                    MB_OK);
    else if (result != PuzzleFileLoaded)
        showMessage(appState.instance, appState.mainWindow, IDS_ERROR_READING, IDS_FILE_ERROR,
                    MB_OK, path);
}

}  // namespace

bool writePuzzleFile()
{
    return writeFileSafely(thePuzzle.puzzlePath, encodePuzzleFile(contentsOf(thePuzzle)));
}

int readPuzzleFile(const char* path)
{
    std::vector<uint8_t> bytes;
    const FileRead read = readWholeFile(path, bytes, MaxFileSize);
    if (read == FileRead::CannotOpen)
        return PuzzleFileUnreadable;
    PuzzleFileContents contents;
    const Decoded decoded = read == FileRead::TooLarge
                                ? Decoded::Malformed
                                : decodePuzzleFile(bytes.data(), bytes.size(), contents);
    // A damaged file is refused before anything changes.
    if (decoded == Decoded::Malformed)
        return PuzzleFileRejected;
    if (thePuzzle.made)
        thePuzzle.clear();
    if (decoded == Decoded::OtherVersion)
        return PuzzleFileOtherVersion;

    if (contents.hasPuzzle)
        restorePuzzle(path, contents);
    else
        lstrcpynA(thePuzzle.puzzlePath, path, MAX_PATH);
    makeParameters.shapeMode = Knobbed;
    return PuzzleFileLoaded;
}

void openPuzzleCommand()
{
    char path[MAX_PATH] = {};
    if (appState.interfaceType != AdvancedInterface) {
        if (thePuzzle.puzzlePath[0])
            lstrcpynA(path, thePuzzle.puzzlePath, MAX_PATH);
        else
            AutoPuzzlePath(appState.autoPuzzleFolder, loadedPicturePath, ".fpp", path);
    } else if (chooseFile(appState.mainWindow, path, OpenPrompt, PuzzleFile)) {
        AddRecent(appState.recent[RecentPuzzles], path, RecentPuzzles);
    }
    if (path[0])
        openPuzzleCommand(path);
}

void openPuzzleCommand(const char* path)
{
    // The path may be the puzzle's own, which reading replaces.
    char copy[MAX_PATH];
    lstrcpynA(copy, path, MAX_PATH);
    reportReadFailure(readPuzzleFile(copy), copy);
}

void savePuzzleCommand(bool saveAs)
{
    Puzzle& puzzle = thePuzzle;
    if (saveAs) {
        char path[MAX_PATH];
        if (!chooseFile(appState.mainWindow, path, SavePrompt, PuzzleFile))
            return;
        lstrcpynA(puzzle.puzzlePath, path, MAX_PATH);
        AddRecent(appState.recent[RecentPuzzles], path, RecentPuzzles);
    }
    if (!puzzle.made)
        return;
    if (!puzzle.puzzlePath[0]) {
        if (appState.interfaceType != AdvancedInterface) {
            AutoPuzzlePath(appState.autoPuzzleFolder, puzzle.picturePath, ".fpp",
                           puzzle.puzzlePath);
        } else if (chooseFile(appState.mainWindow, puzzle.puzzlePath, SavePrompt, PuzzleFile)) {
            AddRecent(appState.recent[RecentPuzzles], puzzle.puzzlePath, RecentPuzzles);
        }
    }
    if (!puzzle.puzzlePath[0])
        return;
    if (!writePuzzleFile())
        showMessage(appState.instance, appState.mainWindow, IDS_UNABLE_TO_SAVE, IDS_FILE_ERROR,
                    MB_OK);
}
