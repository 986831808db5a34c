// Saving a played puzzle and restoring it; refused files and failed saves change nothing.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "app/app_state.h"
#include "files/file_io.h"
#include "files/puzzle_file.h"
#include "model/puzzle.h"
#include "play/piece_group.h"
#include "play/tray.h"
#include "tests/support/game_session.h"
#include "tests/support/modal_driver.h"
#include "tests/support/play_helpers.h"

namespace {

std::vector<char> bytesOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::vector<char>(std::istreambuf_iterator<char>(file), {});
}

// Everything the file keeps, in one comparable list of numbers.
std::vector<int> keptState()
{
    const Puzzle& z = thePuzzle;
    std::vector<int> s{z.columns,    z.rows,        z.width,     z.height,    z.shapeMode,
                       z.lastTrayId, z.lastGroupId, z.trayCount, z.groupCount};
    for (int i = 0; i < z.pieceCount; ++i) {
        const Piece& p = z.pieces[i];
        s.insert(s.end(), {p.x, p.y, p.width, p.height, p.zIndex, p.knobSize, p.knobTop,
                           p.knobBottom, p.knobRight, p.knobLeft, p.isSet, p.isGrouped,
                           p.isGrouped ? p.groupId : 0, p.trayId, p.homeX, p.homeY});
    }
    for (const Tray* t = z.firstTray; z.trayCount && t; t = t->next) {
        RECT r;
        GetWindowRect(t->window, &r);
        s.insert(s.end(),
                 {t->id, int(r.left), int(r.top), int(r.right), int(r.bottom), t->pieces.count});
    }
    for (const PieceGroup* g = z.firstGroup; z.groupCount && g; g = g->next)
        s.insert(s.end(), {g->id, g->trayId, g->x, g->y, g->width, g->height, g->members.count});
    return s;
}

// What the message boxes shown while action runs said, each answered with OK.
std::string messagesDuring(const std::function<void()>& action)
{
    std::string seen;
    ModalDriver driver([&](HWND box) {
        seen += messageOf(box);
        PostMessageA(box, WM_COMMAND, IDOK, 0);
    });
    action();
    return seen;
}

class PuzzleFiles : public play::Table {
protected:
    void SetUp() override
    {
        play::Table::SetUp();
        char temp[MAX_PATH];
        GetTempPathA(MAX_PATH, temp);
        folder = std::string(temp) + "tovira-files";
        CreateDirectoryA(folder.c_str(), nullptr);
        path = folder + "\\played.fpp";
        DeleteFileA(path.c_str());
    }
    void TearDown() override
    {
        setWriteFileFunction(nullptr);
        thePuzzle.puzzlePath[0] = '\0';  // the next puzzle of this picture has no file
        DeleteFileA(path.c_str());
        RemoveDirectoryA(folder.c_str());
        play::Table::TearDown();
    }

    // Sets piece 0, joins 9 and 10 on the board, joins 12 and 13 and puts them with piece 20
    // into tray 2 (tray 1 was closed), and saves.
    void playAndSave()
    {
        const RECT cell = session::cellOf(0);
        const Piece& first = thePuzzle.pieces[0];
        play::carryCellTo(0, first.homeX + cell.left - first.x + 1,
                          first.homeY + cell.top - first.y);
        ASSERT_TRUE(thePuzzle.pieces[0].isSet);
        play::carryCellTo(10, play::TableX, play::TableY);
        play::carryCellTo(9, play::TableX - 52, play::TableY + 2);
        play::carryCellTo(13, play::TableX, play::TableY - 150);
        play::carryCellTo(12, play::TableX - 50, play::TableY - 150);
        ASSERT_TRUE(thePuzzle.pieces[9].isGrouped && thePuzzle.pieces[12].isGrouped);

        thePuzzle.addTray(0);
        HWND trayWindow = nullptr;
        thePuzzle.addTray(0, &trayWindow);
        ASSERT_TRUE(thePuzzle.closeTray(1));
        MoveWindow(trayWindow, 150, 100, 180, 260, TRUE);
        carryIntoTray(20, trayWindow, 40, 150);
        carryIntoTray(12, trayWindow, 20, 30);
        ASSERT_EQ(2, thePuzzle.pieces[13].trayId);
        ASSERT_EQ(2, thePuzzle.pieces[20].trayId);

        lstrcpyA(thePuzzle.puzzlePath, path.c_str());
        ASSERT_TRUE(writePuzzleFile());
    }

    // Carries p over the tray so that its cell's top-left shows at (x, y) there, and drops it.
    static void carryIntoTray(int p, HWND tray, int x, int y)
    {
        POINT target{x, y};
        MapWindowPoints(tray, thePuzzle.mainWindow, &target, 1);
        play::pickUp(p);
        const RECT cell = session::cellOf(p);
        play::moveBy(target.x - cell.left, target.y - cell.top);
        play::dropIn(tray, 5, 5);
    }

    std::string folder, path;
};

}  // namespace

TEST_F(PuzzleFiles, ARestoredPuzzleShowsEveryPieceGroupAndTrayAsSaved)
{
    playAndSave();
    const std::vector<int> saved = keptState();
    const Snapshot board = play::freshBoardImage();
    ASSERT_TRUE(thePuzzle.findTray(2, false));
    const Tray& before = *thePuzzle.foundTray;
    // As a repaint draws it: a group dropped into a tray is drawn there without its outline
    // until the tray is next repainted.
    thePuzzle.repaintRect(RECT{0, 0, before.viewWidth, before.viewHeight}, 2, nullptr);
    const int viewWidth = before.viewWidth, viewHeight = before.viewHeight;
    const Snapshot tray(before.imageDC, 0, 0, viewWidth, viewHeight);

    session::end();
    ASSERT_EQ(PuzzleFileLoaded, readPuzzleFile(path.c_str()));
    EXPECT_EQ(saved, keptState());
    EXPECT_STREQ(path.c_str(), thePuzzle.puzzlePath);
    EXPECT_TRUE(board == play::boardImage());
    ASSERT_TRUE(thePuzzle.findTray(2, false));
    EXPECT_TRUE(tray == Snapshot(thePuzzle.foundTray->imageDC, 0, 0, viewWidth, viewHeight));
    // Ids go on from the saved ones.
    EXPECT_EQ(3, thePuzzle.addTray(0));
}

TEST_F(PuzzleFiles, RefusedFilesLeaveTheBoardAndOtherVersionsAreNamed)
{
    playAndSave();
    std::vector<char> bytes = bytesOf(path);
    bytes.pop_back();  // cut inside the last piece
    std::ofstream(path, std::ios::binary).write(bytes.data(), bytes.size());
    const std::vector<int> before = keptState();
    EXPECT_EQ("File error: Error reading file " + path,
              messagesDuring([&] { openPuzzleCommand(path.c_str()); }));
    EXPECT_TRUE(thePuzzle.made);
    EXPECT_EQ(before, keptState());

    std::ofstream(path, std::ios::binary).write("v001.1\0", 7);
    EXPECT_EQ("File error: File saved with a different version. Cannot be read.",
              messagesDuring([&] { openPuzzleCommand(path.c_str()); }));
    EXPECT_FALSE(thePuzzle.made);
}

namespace {

// Writes half of what it is given, then reports a full disk.
BOOL WINAPI halfThenDiskFull(HANDLE file, LPCVOID data, DWORD size, LPDWORD written,
                             LPOVERLAPPED overlapped)
{
    WriteFile(file, data, size / 2, written, overlapped);
    SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

}  // namespace

TEST_F(PuzzleFiles, ASaveThatFailsPartWayKeepsThePreviousFile)
{
    playAndSave();
    const std::vector<char> previous = bytesOf(path);
    play::carryCellTo(30, play::TableX - 200, play::TableY - 300);
    setWriteFileFunction(halfThenDiskFull);
    EXPECT_EQ("File error: Unable to save file", messagesDuring([] { savePuzzleCommand(false); }));
    EXPECT_EQ(previous, bytesOf(path));
    // Nothing is left behind but the file itself.
    WIN32_FIND_DATAA found;
    HANDLE search = FindFirstFileA((folder + "\\*.tmp").c_str(), &found);
    EXPECT_EQ(INVALID_HANDLE_VALUE, search);
    if (search != INVALID_HANDLE_VALUE)
        FindClose(search);
}
