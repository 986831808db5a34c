// The puzzle, collection and recovery files byte for byte and the damage their readers refuse;
// a played puzzle saved and opened again, files refused or moved, and saves that fail.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <functional>

#include "app/app_state.h"
#include "app/autosave.h"
#include "files/file_io.h"
#include "files/puzzle_file.h"
#include "files/recovery_format.h"
#include "model/play_limits.h"
#include "model/puzzle.h"
#include "play/tray.h"
#include "tests/app/scenario.h"
#include "tests/support/game.h"
#include "tests/support/sample_files.h"

using namespace fileformat;
using game::bytesOf, game::write;

namespace {

using Bytes = std::vector<uint8_t>;
using Fields = std::vector<int32_t>;
using Changes = std::vector<std::pair<const char*, std::function<void(Bytes&)>>>;
constexpr size_t HeaderAt = VersionTagSize, PathAt = HeaderAt + HeaderSize;
constexpr size_t TrayAt = PathAt + 10, GroupAt = TrayAt + 68, PiecesAt = GroupAt + 24;
const auto pieceAt = [](int i) { return PiecesAt + i * PieceRecordSize; };
const auto putInt32 = [](Bytes& b, size_t at, int32_t v) { memcpy(&b[at], &v, 4); };

Fields fieldsAt(const Bytes& bytes, size_t at, size_t count)
{
    Fields fields(count);
    memcpy(fields.data(), &bytes[at], 4 * count);
    return fields;
}

Decoded decode(const Bytes& bytes)
{
    PuzzleFileContents read;
    return decodePuzzleFile(bytes.data(), bytes.size(), read);
}

// Each change of good bytes is refused by read.
template <typename Contents>
void expectRefused(Decoded (*read)(const uint8_t*, size_t, Contents&), const Bytes& good,
                   const Changes& changes)
{
    for (const auto& [what, change] : changes) {
        Bytes bytes = good;
        change(bytes);
        Contents contents;
        EXPECT_EQ(Decoded::Malformed, read(bytes.data(), bytes.size(), contents)) << what;
    }
}

// The names of the files, not folders, in folder that begin with prefix.
std::vector<std::string> filesIn(const std::string& folder, const std::string& prefix = "")
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.is_regular_file() && entry.path().filename().string().rfind(prefix, 0) == 0)
            names.push_back(entry.path().filename().string());
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
    void SetUp() override { CreateDirectoryA(folder.c_str(), nullptr); }
    void TearDown() override { game::end(); }

    // A 400 x 300 puzzle of 8 x 6 with piece 0 set, 9 and 10 joined on the board, 12 and 13
    // joined and carried with piece 20 into tray 2 (tray 1 closed), saved to path.
    void playAndSave(const char* picture = game::Pattern)
    {
        game::make(400, 300, 8, 6, 5, Knobbed, picture);
        const POINT home = game::home(0);
        game::carry(0, home.x, home.y);
        game::carry(10, 680, 440);
        game::carry(9, 628, 442);
        game::carry(13, 680, 290);
        game::carry(12, 630, 290);
        HWND tray = nullptr;
        thePuzzle.addTray(0);
        thePuzzle.addTray(0, &tray);
        ASSERT_TRUE(thePuzzle.closeTray(1));
        MoveWindow(tray, 150, 100, 180, 260, TRUE);
        game::carryInto(20, tray, 40, 150);
        game::carryInto(12, tray, 20, 30);
        ASSERT_TRUE(thePuzzle.pieces[0].isSet && game::joined(9, 10) && game::joined(12, 13) &&
                    thePuzzle.pieces[13].trayId == 2);
        lstrcpyA(thePuzzle.puzzlePath, path.c_str());
        ASSERT_TRUE(writePuzzleFile());
    }

    // Opens path as the menu does, answering its dialogs; returns what they said.
    std::string open(std::vector<std::string> answers = {})
    {
        return game::answering([&] { openPuzzleCommand(path.c_str()); }, answers);
    }

    const std::string folder = game::folder() + "\\saving", path = folder + "\\played.fpp";
};

}  // namespace

TEST(PuzzleFileBytes, LaidOutFieldByFieldReadBackTheSameAndRefusedDamaged)
{
    // A tag of 7, a header of 52, a path of 10, a tray of 68, a group of 24, 4 pieces of 44.
    const Bytes bytes = encodePuzzleFile(samples::puzzle(true));
    ASSERT_EQ(245u + 68 + 24, bytes.size());
    EXPECT_EQ(0, memcmp(bytes.data(), "v001.0\0", 7));
    EXPECT_EQ((Fields{204, 153, 200, 160, 1, 1, 2, 3, 2, 2, 2, 10}), fieldsAt(bytes, HeaderAt, 12));
    // Never adjusted to the image in a puzzle file; outlined.
    EXPECT_TRUE(bytes[HeaderAt + 48] == 0 && bytes[HeaderAt + 49] == 1);
    EXPECT_EQ(0, memcmp(bytes.data() + PathAt, "C:\\cat.jpg", 10));
    // A tray: id, place, view, an unused field, then its placement, length first; a group.
    EXPECT_EQ((Fields{2, 5, 180, 100, 400, 0, 44}), fieldsAt(bytes, TrayAt, 7));
    EXPECT_EQ((Fields{3, 10, 20, 200, 90, 2}), fieldsAt(bytes, GroupAt, 6));
    // The last piece: place, z, knob, the knobs in the order top, bottom, right, left, group,
    // tray, then the flags set, visible, grouped.
    EXPECT_EQ((Fields{150, 353, 1, 10, 1, 0, 0, 2, 3, 2}), fieldsAt(bytes, pieceAt(3), 10));
    EXPECT_EQ((Bytes{0, 1, 1, 0}), Bytes(bytes.end() - 4, bytes.end()));
    PuzzleFileContents read;
    Bytes changed = bytes;
    changed[6] = 'x';  // the seventh byte is not examined
    ASSERT_EQ(Decoded::Ok, decodePuzzleFile(changed.data(), changed.size(), read));
    EXPECT_EQ(bytes, encodePuzzleFile(read));
    // The tag alone is a file without a puzzle; less, another version.
    EXPECT_EQ(Decoded::Ok, decodePuzzleFile(bytes.data(), VersionTagSize, read));
    EXPECT_FALSE(read.hasPuzzle);
    EXPECT_EQ(Decoded::OtherVersion, decode({}));
    // Damage, and what play could not hold.
    const Changes damage = {
        {"cut inside the header", [](auto& b) { b.resize(HeaderAt + 30); }},
        {"cut inside the last piece", [](auto& b) { b.pop_back(); }},
        {"a byte after the last record", [](auto& b) { b.push_back(0); }},
        {"a path of 260", [](auto& b) { putInt32(b, HeaderAt + 44, 260); }},
        {"a negative tray count", [](auto& b) { putInt32(b, HeaderAt + 20, -1); }},
        {"an absurd group count", [](auto& b) { putInt32(b, HeaderAt + 16, 0x7fffffff); }},
        {"1000 columns", [](auto& b) { putInt32(b, HeaderAt + 32, 1000); }},
        {"no rows", [](auto& b) { putInt32(b, HeaderAt + 36, 0); }},
        {"shape 3", [](auto& b) { putInt32(b, HeaderAt + 40, 3); }},
        {"a zIndex repeated", [](auto& b) { putInt32(b, pieceAt(2) + 8, 2); }},  // piece 0's
        {"a zIndex out of range", [](auto& b) { putInt32(b, pieceAt(2) + 8, 4); }},
        {"a piece in a missing tray", [](auto& b) { putInt32(b, pieceAt(2) + 36, 9); }},
        {"a tray id above the last", [](auto& b) { putInt32(b, HeaderAt + 24, 0); }},
        {"group id 0", [](auto& b) { putInt32(b, GroupAt, 0); }},
        {"knob kind 3", [](auto& b) { putInt32(b, pieceAt(2) + 16, 3); }},
        {"a knob too large for the cell", [](auto& b) { putInt32(b, pieceAt(2) + 12, 99); }},
        {"flag 2", [](auto& b) { b[pieceAt(2) + 40] = 2; }},
        {"a group of one piece", [](auto& b) { b[pieceAt(3) + 42] = 0; }},
        {"a set piece in a tray", [](auto& b) { putInt32(b, PiecesAt + 36, 2); }},
        {"a set piece away from home", [](auto& b) { putInt32(b, PiecesAt, 205); }},
        {"a placement of another size", [](auto& b) { putInt32(b, TrayAt + 24, 40); }},
        {"a member one pixel off", [](auto& b) { putInt32(b, pieceAt(3), 151); }},  // joined: 150
        {"a loose piece beyond reach", [](auto& b) { putInt32(b, pieceAt(2), 40000); }},
        {"a tray beyond reach", [](auto& b) { putInt32(b, TrayAt + 4, 1000000); }},
        {"a tray too large to grow", [](auto& b) { putInt32(b, pieceAt(2) + 4, 17000); }},
        {"an area beyond reach", [](auto& b) { putInt32(b, HeaderAt, -40000); }},
    };
    expectRefused(decodePuzzleFile, bytes, damage);
    // Trays or groups of one id; the images of many trays together beyond what trays hold.
    for (bool trays : {true, false}) {
        PuzzleFileContents twice = samples::puzzle(true);
        trays ? twice.trays.push_back(twice.trays[0]) : twice.groups.push_back(twice.groups[0]);
        EXPECT_EQ(Decoded::Malformed, decode(encodePuzzleFile(twice))) << trays;
    }
    // A piece at (8000, 8000) makes a tray's image of some 256 MB: one tray may, two may not.
    PuzzleFileContents crowded = samples::puzzle(false);
    for (int t : {1, 2}) {
        crowded.trays.push_back(samples::puzzle(true).trays[0]);
        crowded.header.lastTrayId = crowded.trays.back().id = crowded.pieces[t].trayId = t;
        crowded.pieces[t].x = crowded.pieces[t].y = 8000;
        EXPECT_EQ(t == 1 ? Decoded::Ok : Decoded::Malformed, decode(encodePuzzleFile(crowded)));
    }
    // Pieces 1 and 3 end at the widest a tray may grow, then a pixel beyond it.
    for (int beyond : {0, 1}) {
        PuzzleFileContents wide = samples::puzzle(true);
        wide.header.width = 201;
        wide.pieces[1].x = MaxTrayContentSide - 120 + beyond;  // a cell of 100, a tab of 20
        wide.pieces[3].x = wide.pieces[1].x + 20;
        EXPECT_EQ(beyond ? Decoded::Malformed : Decoded::Ok, decode(encodePuzzleFile(wide)));
    }
}

TEST(CollectionFileBytes, EntriesLaidOutAndDamageRefused)
{
    const std::vector<CollectionFileEntry> entries = samples::collection();
    const Bytes bytes = encodeCollectionFile(entries);
    // Paths of 12 and 20 characters: 7 + (52 + 12) + (52 + 20).
    ASSERT_EQ(143u, bytes.size());
    EXPECT_EQ((Fields{0, 0, 640, 480, 0, 0, 0, 0, 8, 6, 0, 12}), fieldsAt(bytes, HeaderAt, 12));
    EXPECT_EQ(1, bytes[HeaderAt + 48]);
    EXPECT_EQ(0, memcmp(bytes.data() + PathAt, entries[0].picturePath.data(), 12));
    EXPECT_EQ(1200, fieldsAt(bytes, PathAt + 12 + 8, 1)[0]);
    std::vector<CollectionFileEntry> read;
    ASSERT_EQ(Decoded::Ok, decodeCollectionFile(bytes.data(), bytes.size(), read));
    EXPECT_EQ(bytes, encodeCollectionFile(read));
    EXPECT_EQ(Decoded::Ok, decodeCollectionFile(bytes.data(), VersionTagSize, read));
    EXPECT_TRUE(read.empty());
    expectRefused(decodeCollectionFile, bytes,
                  {{"cut inside an entry", [](auto& b) { b.pop_back(); }},
                   {"a path of 260", [](auto& b) { putInt32(b, HeaderAt + 44, 260); }},
                   {"1000 rows", [](auto& b) { putInt32(b, HeaderAt + 36, 1000); }},
                   {"adjust flag 2", [](auto& b) { b[HeaderAt + 48] = 2; }}});
}

TEST(RecoveryFileBytes, ThePlayersFileNameThenThePuzzleFile)
{
    RecoveryContents kept{"C:\\My puzzles\\cat.fpp", samples::puzzle(true)};
    const Bytes bytes = encodeRecoveryFile(kept), puzzle = encodePuzzleFile(kept.puzzle);
    EXPECT_EQ(0, memcmp(bytes.data(), "tvrec01\0", 8));
    EXPECT_EQ(21, fieldsAt(bytes, RecoveryTagSize, 1)[0]);
    EXPECT_TRUE(std::equal(puzzle.begin(), puzzle.end(), bytes.end() - puzzle.size()));
    RecoveryContents read;
    ASSERT_EQ(Decoded::Ok, decodeRecoveryFile(bytes.data(), bytes.size(), read));
    EXPECT_EQ(bytes, encodeRecoveryFile(read));
    const size_t tagAlone = bytes.size() - puzzle.size() + VersionTagSize;
    expectRefused(decodeRecoveryFile, bytes,
                  {{"cut", [](auto& b) { b.pop_back(); }},
                   {"another tag", [](auto& b) { b[0] = 'x'; }},
                   {"a path too long", [](auto& b) { putInt32(b, RecoveryTagSize, 300); }},
                   {"no puzzle", [=](auto& b) { b.resize(tagAlone); }}});
}

// Opened again, the puzzle is as saved; a damaged copy, or a moved picture given up, changes
// nothing; found, the picture is the puzzle's; a file of another version clears the board.
TEST_F(Saving, OpenedAgainAllIsBackAsSavedAndOtherFilesAreRefused)
{
    const std::string mine = folder + "\\mine.bmp", moved = folder + "\\moved.bmp";
    CopyFileA(game::picture(game::Pattern).c_str(), mine.c_str(), FALSE);
    playAndSave(mine.c_str());
    const std::vector<uint8_t> saved = game::kept(false);  // trays as the player sees them
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
    EXPECT_EQ(3, thePuzzle.addTray(0));  // ids go on from the saved ones
    const std::vector<uint8_t> whole = bytesOf(path), before = game::kept();
    const Snapshot shown = game::board();
    write(path, {whole.begin(), whole.end() - 1});  // cut short
    EXPECT_EQ("File error: Error reading file " + path + "\n", open());
    EXPECT_TRUE(before == game::kept() && shown == game::board());
    write(path, whole);
    ASSERT_TRUE(MoveFileExA(mine.c_str(), moved.c_str(), MOVEFILE_REPLACE_EXISTING));
    EXPECT_EQ(scenario::pictureGone(mine), open({"no"}));
    EXPECT_TRUE(before == game::kept() && shown == game::board());
    // Found, the puzzle opens with it, unsaved: its file names it from the next save on.
    EXPECT_EQ(scenario::pictureGone(mine), open({"yes", moved}));
    EXPECT_STREQ(moved.c_str(), thePuzzle.picturePath);
    EXPECT_TRUE(thePuzzle.pieceCount == 48 && game::boardAsRepainted());
    EXPECT_TRUE(HasUnsavedChanges());
    savePuzzleCommand(false);
    EXPECT_EQ(game::kept(), bytesOf(path));  // naming the picture found
    write(path, {'v', '0', '0', '1', '.', '1', 0});
    EXPECT_EQ("File error: File saved with a different version. Cannot be read.\n", open());
    EXPECT_TRUE(!thePuzzle.made && thePuzzle.trayCount == 0);
    for (COLORREF colour : game::board().pixels)
        ASSERT_EQ(RGB(255, 255, 255), colour);
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
    box = game::box(thePuzzle.foundTray->window);
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
    EXPECT_EQ(std::vector<std::string>{"~tvshow.fpp"}, filesIn(folder, "~tv"));
    // Into the longest legal folder too: the file alone, nothing half-named beside it.
    std::string deep = folder;  // folders nested until the path is 253 characters long
    while (deep.size() < 253) {
        deep += "\\" + std::string(std::min<size_t>(60, 253 - deep.size() - 1), 'd');
        CreateDirectoryA(deep.c_str(), nullptr);
    }
    lstrcpyA(thePuzzle.puzzlePath, (deep + "\\a.fpp").c_str());
    EXPECT_TRUE(writePuzzleFile());
    EXPECT_EQ(game::kept(), bytesOf(deep + "\\a.fpp"));
    EXPECT_EQ(std::vector<std::string>{"a.fpp"}, filesIn(deep));
}
