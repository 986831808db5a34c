// Files the writer made, changed as a damaged disk, an old copy or an attacker would, opened
// and played on: nothing may crash or leak, and a refused file leaves the board as it was.
//   open_and_play [FILES] [SEED]   (default 1000 files, seed 1)
#include <cstdio>
#include <cstdlib>
#include <random>

#include "files/puzzle_file.h"
#include "model/gdi_objects.h"
#include "model/puzzle.h"
#include "play/tray.h"
#include "resources/resource.h"
#include "tests/support/game.h"

using namespace fileformat;

namespace {

std::mt19937 random;
const auto pick = [](size_t n) { return static_cast<int>(random() % n); };

// A value a field might be changed to: near its own, or one that breaks things.
int32_t changed(int32_t value)
{
    static const int32_t extremes[] = {0,         -1,        1,     4,       8000,     -8000,
                                       32767,     -32768,    40000, 1000000, -1047892, -261641,
                                       INT32_MAX, INT32_MIN, 16384, 999,     1000};
    return pick(2) ? value + pick(21) - 10 : extremes[pick(sizeof extremes / 4)];
}

// A puzzle in play as the writer saves it: set pieces, groups on the board and in a tray.
PuzzleFileContents played(int columns, int rows, int shape, bool tray)
{
    game::make(240, 180, columns, rows, 3, shape, "picture200x200.bmp");
    for (int p = 0; p < thePuzzle.pieceCount; ++p)
        game::place(p, 150 + (p % 4) * 90, 120 + (p / 4) * 90);
    const POINT home = game::home(0);
    game::carry(0, home.x + 2, home.y);
    game::place(5, 600, 500);
    game::carry(6, 600 + 240 / columns, 500);
    if (tray) {
        HWND window = nullptr;
        thePuzzle.addTray(0, &window);
        game::carryInto(8, window, 10, 300);
        game::place(9, 700, 300);
        game::carry(10, 700 + 240 / columns, 300);
        game::carryInto(9, window, 10, 150);
    }
    return contentsOfPuzzle();
}

void mutate(PuzzleFileContents& c)
{
    for (int i = 1 + pick(3); i > 0; --i) {
        PieceRecord& piece = c.pieces[pick(c.pieces.size())];
        int32_t* fields[] = {&piece.x,      &piece.y,          &piece.groupId,
                             &piece.zIndex, &c.header.originX, &c.header.lastTrayId};
        const int kind = pick(9), among = kind ? 2 : 6;  // most often a place
        if (kind == 0 || kind > 6) {
            *fields[pick(among)] = changed(*fields[pick(among)]);
        } else if (kind == 1) {
            (pick(2) ? piece.isGrouped : piece.isSet) ^= 1;
        } else if (kind == 2) {
            (pick(2) ? piece.trayId : piece.knobLeft) = pick(3 + pick(2));
        } else if (kind == 3 && !c.trays.empty()) {
            TrayRecord& tray = c.trays[pick(c.trays.size())];
            int32_t* field[] = {&tray.id,        &tray.left,       &tray.top,
                                &tray.viewWidth, &tray.viewHeight, &tray.placement[pick(11)]};
            *field[pick(6)] = changed(*field[pick(6)]);
        } else if (kind == 4 && !c.groups.empty()) {
            c.groups[pick(c.groups.size())].id = changed(1);
        } else if (kind == 5 && piece.isGrouped) {  // a group member carried off alone
            piece.x += changed(0);
        } else if (kind == 6) {
            const char* paths[] = {"Z:\\no such folder\\gone.bmp", "C:\\windows\\win.ini", ""};
            c.picturePath = paths[pick(3)];
        }
    }
}

// Changes a few bytes where counts, lengths and the version tag lie, or cuts the file.
void damage(std::vector<uint8_t>& bytes)
{
    const size_t at = VersionTagSize + 4 * (4 + pick(8));  // counts, ids, cut, path
    const int32_t value = changed(0);
    const int how = pick(4);
    if (how == 0)
        bytes[pick(7)] ^= 1 << pick(8);
    else if (how == 1)
        bytes.resize(pick(bytes.size()));
    else if (how == 2)
        bytes.push_back(static_cast<uint8_t>(pick(256)));
    else if (at + 4 <= bytes.size())
        memcpy(bytes.data() + at, &value, 4);
}

// A piece carried, a join tried, a group carried, a tray opened and a piece put into it.
void playOn()
{
    const Piece* pieces = thePuzzle.pieces;
    const auto loose = [&](int p) { return p >= 0 && !pieces[p].isSet && !pieces[p].trayId; };
    int free = -1, grouped = -1;
    for (int p = 0; p < thePuzzle.pieceCount; ++p)
        if (loose(p))
            (pieces[p].isGrouped ? grouped : free) = p;
    if (free >= 0) {
        game::carry(free, 300, 400);
        if (loose(pieces[free].neighbourRight))
            game::carry(pieces[free].neighbourRight, game::cell(free).right + 2, 401);
    }
    if (grouped >= 0 && pieces[grouped].isGrouped)
        game::carry(grouped, 500, 200);
    game::command(IDM_ADD_TRAY);
    if (loose(free) && thePuzzle.lastTray)
        game::carryInto(free, thePuzzle.lastTray->window, 20, 200);
}

}  // namespace

int main(int argc, char** argv)
{
    const int files = argc > 1 ? std::atoi(argv[1]) : 1000;
    random.seed(argc > 2 ? std::atoi(argv[2]) : 1);
    game::window();
    const PuzzleFileContents seeds[] = {
        played(4, 3, Knobbed, true), played(3, 2, Rectangular, false), played(5, 4, Knobbed, true)};
    game::end();
    const long objects = gdi::liveObjects();
    const std::string path = game::folder() + "\\mutated.fpp";
    int outcomes[PuzzleFileLowResources + 1] = {};
    const char* fault = nullptr;  // the first ends the run
    for (int i = 0; i < files && !fault; ++i) {
        PuzzleFileContents c = seeds[pick(3)];
        mutate(c);
        std::vector<uint8_t> bytes = encodePuzzleFile(c);
        if (pick(4) == 0)
            damage(bytes);
        game::write(path, bytes);
        const std::vector<uint8_t> before = game::kept();
        const Snapshot board = game::board();
        int result = -1;
        // The missing picture is looked for and not found; any other message is answered.
        const std::string said = game::answering([&] {
            result = readPuzzleFile(path.c_str());
            if (result == PuzzleFileLoaded && thePuzzle.made)  // not a tag alone
                playOn();
        });
        if (said.find("System low in resources") != std::string::npos)
            fault = "an exception reached the player";
        else if (result >= PuzzleFileUnreadable && result <= PuzzleFileCancelled &&
                 (before != game::kept() || !(board == game::board())))
            fault = "a refused file changed the board";
        else if (result == PuzzleFileLoaded && !game::boardAsRepainted())
            fault = "the board is not what a repaint draws";
        else
            ++outcomes[result];
        if (i % 50 == 49 || i == files - 1 || fault) {
            game::end();
            if (!fault && gdi::liveObjects() != objects)
                fault = "GDI objects leaked";
        }
        if (fault)  // the run ends here: the file stays
            std::printf("file %d: %s (kept in %s)\n%s", i, fault, path.c_str(), said.c_str());
    }
    std::printf("open_and_play: %d files: %d opened and played, %d refused, %d of another "
                "version, %d with a picture not found, %d short of memory; %d failures\n",
                files, outcomes[PuzzleFileLoaded], outcomes[PuzzleFileRejected],
                outcomes[PuzzleFileOtherVersion], outcomes[PuzzleFileCancelled],
                outcomes[PuzzleFileLowResources], fault ? 1 : 0);
    return fault ? 1 : 0;
}
