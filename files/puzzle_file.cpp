#include "files/puzzle_file.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <unordered_map>
#include <vector>
#include <windows.h>

#include "app/app_state.h"
#include "app/autosave.h"
#include "app/history.h"
#include "app/make_command.h"
#include "files/file_io.h"
#include "files/file_prompt.h"
#include "files/make_parameters.h"
#include "files/message.h"
#include "files/picture.h"
#include "files/puzzle_format.h"
#include "model/memory_budget.h"
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

bool restoreTray(Puzzle& puzzle, const TrayRecord& t)
{
    HWND window = nullptr;
    if (puzzle.addTray(t.id, &window) == 0)
        return false;
    RECT r{t.left, t.top, t.left + t.viewWidth, t.top + t.viewHeight};
    MapWindowPoints(HWND_DESKTOP, appState.mainWindow, reinterpret_cast<POINT*>(&r), 2);
    MoveWindow(window, r.left, r.top, r.right - r.left, r.bottom - r.top, TRUE);
    if (!puzzle.findTray(t.id, false))
        return false;
    memcpy(&puzzle.foundTray->placement, t.placement, PlacementSize);
    SetWindowPlacement(window, &puzzle.foundTray->placement);
    return true;
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
    // Before isSet, since a set piece does not move; a set piece lies at its home, which the
    // puzzle area's place on this screen decides. Not drawn: the whole board and every tray
    // are repainted once all pieces are back.
    piece.moveTo(r.isSet ? piece.homeX : r.x, r.isSet ? piece.homeY : r.y, false);
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

bool restoreTrayContents(Puzzle& puzzle, const PuzzleFileContents& c)
{
    for (int i = 0; i < puzzle.pieceCount; ++i) {
        const int trayId = c.pieces[i].trayId;
        if (trayId == 0 || !puzzle.findTray(trayId, false))
            continue;
        puzzle.pieces[i].assignWindow(puzzle.foundTray->window, puzzle.foundTray->imageDC, trayId);
        puzzle.putInTray(trayId, i, false);  // each tray grows once, when all are in
    }
    bool fits = true;
    for (const TrayRecord& t : c.trays)
        fits = puzzle.fitTrayToContents(t.id) && fits;
    return fits;
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

// The puzzle area where the file puts it, unless that lies beyond this screen's board (a
// puzzle saved on a larger screen): then where this screen puts it.
POINT reachableOrigin(const PuzzleFileHeader& h)
{
    const int shownWidth = std::min(h.width, appState.areaWidth);
    const int shownHeight = std::min(h.height, appState.areaHeight);
    const RECT& board = appState.boardRect;
    if (h.originX >= board.left && h.originY >= appState.paintOriginY &&
        h.originX + shownWidth <= board.right && h.originY + shownHeight <= board.bottom)
        return POINT{h.originX, h.originY};
    return POINT{appState.defaultAreaOriginX, appState.defaultAreaOriginY};
}

// Puts the contents on the board in place of any puzzle there. False when the platform or
// the memory failed part-way; throws std::bad_alloc.
bool restorePuzzle(const PuzzleFileContents& c)
{
    Puzzle& puzzle = thePuzzle;
    const PuzzleFileHeader& h = c.header;
    puzzle.clear();
    if (thePicture.loadPreview(c.picturePath.c_str()) == PictureTooLarge)
        return false;
    appState.pictureLoaded = true;
    const POINT origin = reachableOrigin(h);
    appState.areaOriginX = origin.x;
    appState.areaOriginY = origin.y;
    makeParameters.width = h.width;
    makeParameters.height = h.height;
    makeParameters.columns = h.columns;
    makeParameters.rows = h.rows;
    makeParameters.shapeMode = Rectangular;
    const MakeResult made = makeWithProgress();
    makeParameters.shapeMode = Knobbed;
    if (made != MakeResult::Made)
        return false;

    for (const TrayRecord& t : c.trays) {
        if (!restoreTray(puzzle, t))
            return false;
    }
    for (int i = 0; i < puzzle.pieceCount; ++i)
        restorePiece(puzzle, i, c.pieces[i], h.shapeMode);
    restoreGroups(puzzle, c);
    puzzle.lastTrayId = h.lastTrayId;
    puzzle.lastGroupId = h.lastGroupId;
    if (!restoreTrayContents(puzzle, c))
        return false;
    puzzle.placesChanged();
    // Pieces and trays a larger screen left beyond this one come into view.
    puzzle.bringIntoView(puzzle.boardView());
    repaintRestored(puzzle);
    return true;
}

// The memory a puzzle of these contents takes beyond what the puzzle on hand gives back.
std::uint64_t memoryAsked(const PuzzleFileContents& c)
{
    const PuzzleFileHeader& h = c.header;
    const std::uint64_t asked =
        makeFootprint(h.width, h.height, h.columns * h.rows, appState.boardImageWidth,
                      appState.boardImageHeight) +
        bitmapBytes(appState.previewBoxWidth, appState.boardImageHeight) * c.trays.size();
    const Puzzle& now = thePuzzle;
    const std::uint64_t freed = now.made
                                    ? makeFootprint(now.width, now.height, now.pieceCount,
                                                    now.boardImageWidth, now.boardImageHeight) +
                                          static_cast<std::uint64_t>(now.trayImagesBytes())
                                    : 0;
    return asked > freed ? asked - freed : 0;
}

}  // namespace

PuzzleFileContents contentsOfPuzzle()
{
    return contentsOf(thePuzzle);
}

int openPuzzleContents(PuzzleFileContents& c)
{
    char picture[MAX_PATH];
    lstrcpynA(picture, c.picturePath.c_str(), MAX_PATH);
    if (!findPicture(picture))
        return PuzzleFileCancelled;
    c.picturePath = picture;
    if (!processCanHold(memoryAsked(c))) {
        forgetCheckedPicture();
        return PuzzleFileLowResources;
    }

    // What is on the board now, to put back should the new puzzle fail part-way.
    const bool hadPuzzle = thePuzzle.made;
    PuzzleFileContents previous;
    char previousPath[MAX_PATH];
    lstrcpynA(previousPath, thePuzzle.puzzlePath, MAX_PATH);
    if (hadPuzzle)
        previous = contentsOf(thePuzzle);

    bool restored = false;
    try {
        restored = restorePuzzle(c);
    } catch (const std::bad_alloc&) {
    }
    if (restored)
        return PuzzleFileLoaded;
    thePuzzle.clear();
    forgetCheckedPicture();
    if (hadPuzzle && checkPicture(previous.picturePath.c_str()) == PictureCheck::Shows) {
        try {
            if (restorePuzzle(previous))
                lstrcpynA(thePuzzle.puzzlePath, previousPath, MAX_PATH);
            else
                thePuzzle.clear();
        } catch (const std::bad_alloc&) {
            thePuzzle.clear();
        }
    }
    return PuzzleFileLowResources;
}

void reportPuzzleFileResult(int result, const char* path)
{
    switch (result) {
    case PuzzleFileOtherVersion:
        showMessage(appState.instance, appState.mainWindow, IDS_OTHER_VERSION, IDS_FILE_ERROR,
                    MB_OK);
        break;
    case PuzzleFileUnreadable:
    case PuzzleFileRejected:
        showMessage(appState.instance, appState.mainWindow, IDS_ERROR_READING, IDS_FILE_ERROR,
                    MB_OK, path);
        break;
    case PuzzleFileLowResources:
        reportLowResources();
        break;
    default:  // loaded, or the player chose to stop
        break;
    }
}

bool writePuzzleFile()
{
    return writeFileSafely(thePuzzle.puzzlePath, encodePuzzleFile(contentsOf(thePuzzle)));
}

int readPuzzleFile(const char* path)
{
    std::vector<uint8_t> bytes;
    PuzzleFileContents contents;
    Decoded decoded = Decoded::Malformed;
    try {
        const FileRead read = readWholeFile(path, bytes, MaxFileSize);
        if (read == FileRead::CannotOpen)
            return PuzzleFileUnreadable;
        if (read == FileRead::Read)
            decoded = decodePuzzleFile(bytes.data(), bytes.size(), contents);
    } catch (const std::bad_alloc&) {
        return PuzzleFileLowResources;
    }
    // A damaged file, or one holding more than play can, is refused before anything changes.
    if (decoded == Decoded::Malformed)
        return PuzzleFileRejected;
    if (decoded == Decoded::OtherVersion || !contents.hasPuzzle) {
        thePuzzle.clear();
        if (decoded == Decoded::OtherVersion)
            return PuzzleFileOtherVersion;
        lstrcpynA(thePuzzle.puzzlePath, path, MAX_PATH);
        MarkPuzzleSaved();
        return PuzzleFileLoaded;
    }

    const std::string picture = contents.picturePath;
    const int result = openPuzzleContents(contents);
    if (result == PuzzleFileLoaded) {
        lstrcpynA(thePuzzle.puzzlePath, path, MAX_PATH);
        // A picture found elsewhere is the puzzle's from now on: its file is out of date.
        if (contents.picturePath == picture)
            MarkPuzzleSaved();
    }
    return result;
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
    reportPuzzleFileResult(readPuzzleFile(copy), copy);
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
    bool written = false;
    try {
        written = writePuzzleFile();
    } catch (const std::bad_alloc&) {
        // The puzzle is as it was; the file on disk too.
        reportLowResources();
        return;
    }
    if (written)
        MarkPuzzleSaved();
    else
        showMessage(appState.instance, appState.mainWindow, IDS_UNABLE_TO_SAVE, IDS_FILE_ERROR,
                    MB_OK);
}
