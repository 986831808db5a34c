// Times Make, a full-board repaint, a pick-up and a pointer move of a drag on puzzles of
// 10 x 10, 32 x 32 and 100 x 100 pieces cut from a 2000 x 1500 picture, and counts the GDI
// objects the process holds; then times saving and opening the 100 x 100 puzzle with trays
// and groups. With --large, the same on 10,000 to a million pieces cut from large pictures.
// Not a test: it prints figures.
#include <cstdio>
#include <cstring>
#include <string>
#include <windows.h>
#include <psapi.h>

#include "app/app_state.h"
#include "app/autosave.h"
#include "files/picture.h"
#include "files/puzzle_file.h"
#include "model/gdi_objects.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "play/tray.h"
#include "tests/support/game.h"

namespace {

double now()
{
    static LARGE_INTEGER frequency{};
    if (!frequency.QuadPart)
        QueryPerformanceFrequency(&frequency);
    LARGE_INTEGER count;
    QueryPerformanceCounter(&count);
    return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// The topmost free piece and a point of its cell's middle.
int topmostFree(POINT& point)
{
    for (int z = thePuzzle.pieceCount - 1; z >= 0; --z) {
        const int p = thePuzzle.zOrder[z];
        const Piece& piece = thePuzzle.pieces[p];
        if (piece.isSet || piece.trayId != 0)
            continue;
        const RECT cell = piece.getBounds(true, true, false);
        point = POINT{(cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2};
        if (piece.hitTest(thePuzzle.mainWindow, point.x, point.y) && point.y > 200)
            return p;
    }
    return -1;
}

struct Figures {
    double make, repaint, smallRepaint, pickUp, move, drop;
    long gdiObjects;
    DWORD guiResources;
};

Figures measure(int columns, int rows, int width = 2000, int height = 1500,
                const char* picture = "picture2000x1500.jpg", int makes = 3)
{
    Figures f{};
    constexpr int Repaints = 5, Moves = 400;
    // The picture is decoded before the clock starts: Make alone is timed.
    game::end();
    const std::string path = game::picture(picture);
    if (path != loadedPicturePath)
        thePicture.loadPreview(path.c_str());
    double start = now();
    for (int i = 0; i < makes; ++i)
        game::make(width, height, columns, rows, 1 + i, Knobbed, picture);
    f.make = (now() - start) / makes;
    f.gdiObjects = gdi::liveObjects();
    f.guiResources = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);

    const RECT board{thePuzzle.boardLeft, thePuzzle.boardTop,
                     thePuzzle.boardLeft + thePuzzle.boardWidth,
                     thePuzzle.boardTop + thePuzzle.boardHeight};
    start = now();
    const int repaints = makes == 1 ? 1 : Repaints;
    for (int i = 0; i < repaints; ++i)
        thePuzzle.repaintRect(board, 0, thePuzzle.mainWindow);
    f.repaint = (now() - start) / repaints;
    // A 64 x 64 repaint, as a slide or a join asks for, across the board.
    constexpr int SmallRepaints = 50;
    start = now();
    for (int i = 0; i < SmallRepaints; ++i) {
        const int x = board.left + (i * 97) % (thePuzzle.boardWidth - 64);
        const int y = board.top + (i * 61) % (thePuzzle.boardHeight - 64);
        thePuzzle.repaintRect(RECT{x, y, x + 64, y + 64}, 0, thePuzzle.mainWindow);
    }
    f.smallRepaint = (now() - start) / SmallRepaints;

    POINT at;
    if (topmostFree(at) < 0)
        return f;
    start = now();
    handleClick(thePuzzle.mainWindow, MAKELPARAM(at.x, at.y));
    f.pickUp = now() - start;
    start = now();
    for (int i = 0; i < Moves; ++i) {
        const int dx = (i / 50) % 2 ? -3 : 3;
        handleMouseMove(thePuzzle.mainWindow,
                        MAKELPARAM(thePuzzle.dragLastX + dx, thePuzzle.dragLastY + 1 - (i % 3)));
    }
    f.move = (now() - start) / Moves;
    start = now();
    handleClick(thePuzzle.mainWindow, MAKELPARAM(thePuzzle.dragLastX, thePuzzle.dragLastY));
    f.drop = now() - start;
    game::end();
    return f;
}

// A 100 x 100 puzzle in play: a hundred pieces set, a hundred pairs joined, three trays of
// fifty pieces each (ten of them joined pairs).
void playLargePuzzle()
{
    game::make(2000, 1500, 100, 100, 7, Knobbed, "picture2000x1500.jpg");
    Puzzle& z = thePuzzle;
    for (int p = 0; p < 100; ++p) {
        z.pieces[p].moveTo(z.pieces[p].homeX, z.pieces[p].homeY, false);
        z.pieces[p].markSet();
    }
    for (int row = 1; row <= 100 - 1; ++row) {
        const int pair[] = {row * 100 + 10, row * 100 + 11};
        // Joined pieces lie as their homes do.
        const Piece& left = z.pieces[pair[0]];
        Piece& right = z.pieces[pair[1]];
        right.moveTo(left.x + right.homeX - left.homeX, left.y + right.homeY - left.homeY, false);
        z.addToGroup(z.createGroup(0, 0), pair, 2);
    }
    for (int t = 0; t < 3; ++t) {
        HWND window = nullptr;
        const int id = z.addTray(0, &window);
        z.findTray(id, false);
        Tray* tray = z.foundTray;
        for (int k = 0; k < 50; ++k) {
            const int p = 200 + t * 1000 + k * 2 + (k % 5 == 0 ? 0 : 1);
            if (z.pieces[p].isGrouped)
                continue;
            z.pieces[p].moveTo(k * 3, k * 5, false);
            z.pieces[p].assignWindow(window, tray->imageDC, id);
            z.putInTray(id, p);
        }
    }
}

void measureFiles()
{
    playLargePuzzle();
    char folder[MAX_PATH];
    GetTempPathA(MAX_PATH, folder);
    lstrcpyA(thePuzzle.puzzlePath, folder);
    lstrcatA(thePuzzle.puzzlePath, "tovira-benchmark.fpp");
    char path[MAX_PATH];
    lstrcpyA(path, thePuzzle.puzzlePath);

    constexpr int Saves = 5, Opens = 3;
    double start = now();
    bool saved = true;
    for (int i = 0; i < Saves; ++i)
        saved = writePuzzleFile() && saved;
    const double save = (now() - start) / Saves;
    start = now();
    int result = 0;
    for (int i = 0; i < Opens; ++i)
        result |= readPuzzleFile(path);
    const double open = (now() - start) / Opens;
    // An autosave after a change, as the timer makes it.
    constexpr int Autosaves = 5;
    bool autosaved = true;
    start = now();
    for (int i = 0; i < Autosaves; ++i) {
        thePuzzle.noteChange();
        autosaved = AutosaveNow() && autosaved;
    }
    const double autosave = (now() - start) / Autosaves;
    std::printf("\n100x100 puzzle with %d trays and %d groups, %lu-byte file:\n",
                thePuzzle.trayCount, thePuzzle.groupCount,
                static_cast<unsigned long>(fileformat::encodedSize(contentsOfPuzzle())));
    std::printf("save %.1f ms%s, open (picture, make, restore, repaint) %.1f ms%s, autosave "
                "%.1f ms%s\n",
                save, saved ? "" : " (FAILED)", open, result == 0 ? "" : " (FAILED)", autosave,
                autosaved ? "" : " (FAILED)");
    DeleteFileA(path);
    MarkPuzzleSaved();
    game::end();
}

// Saving and opening again the puzzle on hand, as made: the times should grow with the
// number of pieces, no faster.
void measureSaveAndOpen(const char* name)
{
    char path[MAX_PATH];
    GetTempPathA(MAX_PATH, path);
    lstrcatA(path, "tovira-benchmark-large.fpp");
    lstrcpyA(thePuzzle.puzzlePath, path);
    double start = now();
    const bool saved = writePuzzleFile();
    const double save = now() - start;
    // Decoding the picture alone, which opening does once.
    start = now();
    checkPicture(thePuzzle.picturePath);
    const double decode = now() - start;
    forgetCheckedPicture();
    start = now();
    const int result = readPuzzleFile(path);
    const double open = now() - start;
    std::printf("%-9s save %8.1f ms%s   open %8.1f ms%s, of which %8.1f ms decode the picture\n",
                name, save, saved ? "" : " (FAILED)", open,
                result == PuzzleFileLoaded ? "" : " (FAILED)", decode);
    DeleteFileA(path);
}

}  // namespace

void printRow(const char* name, const Figures& f)
{
    std::printf("%-9s %10.1f %12.1f %10.2f %10.2f %10.2f %10.3f %12ld %14lu\n", name, f.make,
                f.repaint, f.smallRepaint, f.pickUp, f.drop, f.move, f.gdiObjects,
                static_cast<unsigned long>(f.guiResources));
}

// The jobs of the large puzzles, each from a fresh picture; the peak memory is the process's
// highest commit so far.
void measureLarge()
{
    struct Job {
        const char* picture;
        int width, height, columns, rows;
    };
    const Job jobs[] = {{"bench8000x6000.jpg", 8000, 6000, 125, 80},
                        {"bench4000x3000.jpg", 4000, 3000, 316, 316},
                        {"bench9999x9999.jpg", 9999, 9999, 999, 999}};
    std::printf("\n%-9s %10s %12s %10s %10s %10s %10s %12s %14s\n", "large", "make ms",
                "repaint ms", "64x64 ms", "pick-up ms", "drop ms", "move ms", "GDI objects",
                "peak MB");
    for (const Job& job : jobs) {
        Figures f = measure(job.columns, job.rows, job.width, job.height, job.picture, 1);
        PROCESS_MEMORY_COUNTERS memory{};
        memory.cb = sizeof memory;
        GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
        f.guiResources = static_cast<DWORD>(memory.PeakPagefileUsage >> 20);
        char name[16];
        std::snprintf(name, sizeof name, "%dx%d", job.columns, job.rows);
        printRow(name, f);
    }
    std::printf("\n");
    for (const Job& job : jobs) {
        char name[16];
        std::snprintf(name, sizeof name, "%dx%d", job.columns, job.rows);
        game::make(job.width, job.height, job.columns, job.rows, 1, Knobbed, job.picture);
        measureSaveAndOpen(name);
        game::end();
    }
}

int main(int argc, char** argv)
{
    HWND window = game::window();
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    std::printf("%-9s %10s %12s %10s %10s %10s %10s %12s %14s\n", "pieces", "make ms", "repaint ms",
                "64x64 ms", "pick-up ms", "drop ms", "move ms", "GDI objects", "GetGuiResources");
    const int sizes[][2] = {{10, 10}, {32, 32}, {100, 100}};
    for (const auto& size : sizes) {
        char name[16];
        std::snprintf(name, sizeof name, "%dx%d", size[0], size[1]);
        printRow(name, measure(size[0], size[1]));
    }
    measureFiles();
    if (argc > 1 && std::strcmp(argv[1], "--large") == 0)
        measureLarge();
    DestroyWindow(window);
    return 0;
}
