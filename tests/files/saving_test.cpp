// A played puzzle saved and opened again; files refused, of another version, from a larger
// screen or naming a picture that moved; saves that fail, or that a killed save preceded.
#include <gtest/gtest.h>

#include "app/app_state.h"
#include "files/file_io.h"
#include "files/puzzle_file.h"
#include "model/puzzle.h"
#include "play/tray.h"
#include "resources/resource.h"
#include "tests/support/game.h"

using namespace fileformat;
using game::bytesOf, game::write;

namespace {

// The files, not folders, that pattern matches.
std::vector<std::string> filesLike(const std::string& pattern)
{
    std::vector<std::string> names;
    WIN32_FIND_DATAA found;
    HANDLE search = FindFirstFileA(pattern.c_str(), &found);
    for (bool more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileA(search, &found)) {
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            names.push_back(found.cFileName);
    }
    FindClose(search);
    return names;
}

// Writes half of what it is given, then reports a full disk.
BOOL WINAPI halfThenDiskFull(HANDLE file, LPCVOID data, DWORD size, LPDWORD written,
                             LPOVERLAPPED overlapped)
{
    WriteFile(file, data, size / 2, written, overlapped);
    SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

class Saving : public ::testing::Test {
protected:
    void SetUp() override
    {
        folder = game::folder() + "\\saving";
        CreateDirectoryA(folder.c_str(), nullptr);
        path = folder + "\\played.fpp";
    }
    void TearDown() override
    {
        setWriteFileFunction(nullptr);
        game::end();
    }

    // A 400 x 300 puzzle of 8 x 6 with piece 0 set, 9 and 10 joined on the board, 12 and 13
    // joined and carried with piece 20 into tray 2 (tray 1 closed), saved to path.
    void playAndSave(const char* picture = game::Pattern)
    {
        game::make(400, 300, 8, 6, 5, Knobbed, picture);
        const Piece& first = thePuzzle.pieces[0];
        game::carry(0, first.homeX, first.homeY);
        game::carry(10, 680, 440);
        game::carry(9, 628, 442);
        game::carry(13, 680, 290);
        game::carry(12, 630, 290);
        ASSERT_TRUE(thePuzzle.pieces[0].isSet && game::joined(9, 10) && game::joined(12, 13));
        thePuzzle.addTray(0);
        thePuzzle.addTray(0, &tray);
        ASSERT_TRUE(thePuzzle.closeTray(1));
        MoveWindow(tray, 150, 100, 180, 260, TRUE);
        game::carryInto(20, tray, 40, 150);
        game::carryInto(12, tray, 20, 30);
        ASSERT_EQ(2, thePuzzle.pieces[13].trayId);
        lstrcpyA(thePuzzle.puzzlePath, path.c_str());
        ASSERT_TRUE(writePuzzleFile());
    }

    // Opens path as the menu does, answering its dialogs; returns what they said.
    std::string open(std::vector<std::string> answers = {})
    {
        return game::answering([&] { openPuzzleCommand(path.c_str()); }, answers);
    }

    std::string folder, path;
    HWND tray = nullptr;
};

}  // namespace

// Opened again, the puzzle is as saved; a damaged copy is refused before anything changes
// (whatever the damage: file_bytes_test), and one of another version clears the board.
TEST_F(Saving, OpenedAgainAllIsBackAsSavedAndOtherFilesAreRefused)
{
    playAndSave();
    const std::vector<uint8_t> saved = game::kept(false);
    RECT window, again;
    GetWindowRect(tray, &window);
    thePuzzle.repaintRect(RECT{0, 0, 500, 500}, 2, nullptr);
    const Snapshot board = game::board();
    ASSERT_TRUE(thePuzzle.findTray(2, false));
    const Snapshot trayImage(thePuzzle.foundTray->imageDC, 0, 0, 150, 200);

    game::end();
    ASSERT_EQ(PuzzleFileLoaded, readPuzzleFile(path.c_str()));
    EXPECT_EQ(saved, game::kept(false));
    EXPECT_STREQ(path.c_str(), thePuzzle.puzzlePath);
    EXPECT_TRUE(board == game::board());
    ASSERT_TRUE(thePuzzle.findTray(2, false));
    EXPECT_TRUE(trayImage == Snapshot(thePuzzle.foundTray->imageDC, 0, 0, 150, 200));
    GetWindowRect(thePuzzle.foundTray->window, &again);
    EXPECT_TRUE(game::same(window, again));
    EXPECT_EQ(3, thePuzzle.addTray(0));  // ids go on from the saved ones

    std::vector<uint8_t> cut = bytesOf(path);
    cut.pop_back();
    write(path, cut);
    const std::vector<uint8_t> before = game::kept();
    const Snapshot shown = game::board();
    EXPECT_EQ("File error: Error reading file " + path + "\n", open());
    EXPECT_TRUE(before == game::kept() && shown == game::board());
    write(path, {'v', '0', '0', '1', '.', '1', 0});
    EXPECT_EQ("File error: File saved with a different version. Cannot be read.\n", open());
    EXPECT_TRUE(!thePuzzle.made && thePuzzle.trayCount == 0);
    for (COLORREF colour : game::board().pixels)
        ASSERT_EQ(RGB(255, 255, 255), colour);
}

TEST_F(Saving, AMovedPictureIsNamedAndFoundWithTheOpenDialog)
{
    const std::string mine = folder + "\\mine.bmp", moved = folder + "\\moved.bmp";
    CopyFileA(game::picture(game::Pattern).c_str(), mine.c_str(), FALSE);
    DeleteFileA(moved.c_str());
    playAndSave(mine.c_str());
    const std::vector<uint8_t> played = game::kept();
    ASSERT_TRUE(MoveFileA(mine.c_str(), moved.c_str()));
    const std::string asked = "File error: The picture of this puzzle cannot be opened: " + mine +
                              "\n\nIt may have been moved or renamed. Do you want to look for "
                              "it?\n";

    EXPECT_EQ(asked, open({"no"}));  // given up, nothing on the board changes
    EXPECT_EQ(played, game::kept());
    // Found, the puzzle opens with it, and its file names it from the next save on.
    EXPECT_EQ(asked, open({"yes", moved}));
    EXPECT_STREQ(moved.c_str(), thePuzzle.picturePath);
    EXPECT_TRUE(thePuzzle.pieceCount == 48 && game::boardAsRepainted());
    savePuzzleCommand(false);
    const std::vector<uint8_t> saved = bytesOf(path);
    EXPECT_NE(saved.end(), std::search(saved.begin(), saved.end(), moved.begin(), moved.end()));
}

TEST_F(Saving, APuzzleFromALargerScreenComesIntoReach)
{
    playAndSave();
    PuzzleFileContents large = contentsOfPuzzle();
    large.header.originX += 3000;  // the puzzle area, and piece 0 set in it
    large.pieces[0].x += 3000;
    large.pieces[30].x = large.pieces[30].y = 8000;    // a loose piece
    large.trays[0].left = large.trays[0].top = 20000;  // the tray
    write(path, encodePuzzleFile(large));
    ASSERT_EQ(PuzzleFileLoaded, readPuzzleFile(path.c_str()));

    const RECT view = thePuzzle.boardView();
    EXPECT_EQ(appState.defaultAreaOriginX, thePuzzle.originX);
    const Piece& set = thePuzzle.pieces[0];
    EXPECT_TRUE(set.isSet && set.x == set.homeX && set.homeX >= thePuzzle.originX);
    RECT shown, box = thePuzzle.pieces[30].getBounds(true, false, false);
    EXPECT_TRUE(IntersectRect(&shown, &box, &view));
    ASSERT_TRUE(thePuzzle.findTray(2, false));
    GetWindowRect(thePuzzle.foundTray->window, &box);
    MapWindowPoints(nullptr, thePuzzle.mainWindow, reinterpret_cast<POINT*>(&box), 2);
    EXPECT_TRUE(box.top >= view.top && box.top + GetSystemMetrics(SM_CYCAPTION) <= view.bottom);
    EXPECT_TRUE(box.left < view.right - 32 && box.right > view.left + 32);
}

TEST_F(Saving, ASaveReplacesTheFileWholeOrNotAtAllAndLeavesNothingBehind)
{
    playAndSave();
    const std::vector<uint8_t> previous = bytesOf(path);
    game::carry(30, 300, 200);
    setWriteFileFunction(halfThenDiskFull);
    EXPECT_EQ("File error: Unable to save file\n",
              game::answering([] { savePuzzleCommand(false); }));
    EXPECT_EQ(previous, bytesOf(path));
    setWriteFileFunction(nullptr);

    // What a killed save left is removed by the next save into the folder; nothing else is.
    for (const char* name : {"~tv1a2b3c4d.tmp", "~tv9f", "~tvshow.fpp"})
        write(folder + "\\" + name, {1, 2, 3});
    EXPECT_EQ("", game::answering([] { savePuzzleCommand(false); }));
    EXPECT_EQ(game::kept(), bytesOf(path));
    EXPECT_EQ(std::vector<std::string>{"~tvshow.fpp"}, filesLike(folder + "\\~tv*"));

    // Into the longest legal folder too: the file alone, nothing half-named beside it.
    std::string deep = folder;  // folders nested until the path is 253 characters long
    while (deep.size() < 253) {
        deep += "\\" + std::string(std::min<size_t>(60, 253 - deep.size() - 1), 'd');
        CreateDirectoryA(deep.c_str(), nullptr);
    }
    lstrcpyA(thePuzzle.puzzlePath, (deep + "\\a.fpp").c_str());
    EXPECT_TRUE(writePuzzleFile());
    EXPECT_EQ(game::kept(), bytesOf(deep + "\\a.fpp"));
    EXPECT_EQ(std::vector<std::string>{"a.fpp"}, filesLike(deep + "\\*"));
}
