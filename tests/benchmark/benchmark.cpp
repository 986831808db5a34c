// Times Make, a full-board repaint, a pick-up and a pointer move of a drag on puzzles of
// 10 x 10, 32 x 32 and 100 x 100 pieces cut from a 2000 x 1500 picture, and counts the GDI
// objects the process holds; then times saving and opening the 100 x 100 puzzle with trays
// and groups. Not a test: it prints figures.
#include <cstdio>
#include <windows.h>

#include "app/app_state.h"
#include "files/puzzle_file.h"
#include "model/gdi_objects.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "play/tray.h"
#include "tests/support/game_session.h"

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
    double make, repaint, pickUp, move;
    long gdiObjects;
    DWORD guiResources;
};

Figures measure(int columns, int rows)
{
    Figures f{};
    constexpr int Makes = 3, Repaints = 5, Moves = 400;
    double start = now();
    for (int i = 0; i < Makes; ++i)
        session::makePuzzle(2000, 1500, columns, rows, 1 + i);
    f.make = (now() - start) / Makes;
    f.gdiObjects = gdi::liveObjects();
    f.guiResources = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);

    const RECT board{thePuzzle.boardLeft, thePuzzle.boardTop,
                     thePuzzle.boardLeft + thePuzzle.boardWidth,
                     thePuzzle.boardTop + thePuzzle.boardHeight};
    start = now();
    for (int i = 0; i < Repaints; ++i)
        thePuzzle.repaintRect(board, 0, thePuzzle.mainWindow);
    f.repaint = (now() - start) / Repaints;

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
    handleClick(thePuzzle.mainWindow, MAKELPARAM(thePuzzle.dragLastX, thePuzzle.dragLastY));
    session::end();
    return f;
}

// A 100 x 100 puzzle in play: a hundred pieces set, a hundred pairs joined, three trays of
// fifty pieces each (ten of them joined pairs).
void playLargePuzzle()
{
    session::makePuzzle(2000, 1500, 100, 100, 7);
    Puzzle& z = thePuzzle;
    for (int p = 0; p < 100; ++p) {
        z.pieces[p].moveTo(z.pieces[p].homeX, z.pieces[p].homeY, false);
        z.pieces[p].isSet = true;
    }
    for (int row = 1; row <= 100 - 1; ++row) {
        const int pair[] = {row * 100 + 10, row * 100 + 11};
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
    std::printf("\n100x100 puzzle with %d trays and %d groups, %lu-byte file:\n",
                thePuzzle.trayCount, thePuzzle.groupCount,
                static_cast<unsigned long>(59 + lstrlenA(thePuzzle.picturePath) +
                                           68 * thePuzzle.trayCount + 24 * thePuzzle.groupCount +
                                           44 * thePuzzle.pieceCount));
    std::printf("save %.1f ms%s, open (picture, make, restore, repaint) %.1f ms%s\n", save,
                saved ? "" : " (FAILED)", open, result == 0 ? "" : " (FAILED)");
    DeleteFileA(path);
    session::end();
}

}  // namespace

int main()
{
    HWND window = session::mainWindow();
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    std::printf("%-9s %10s %14s %10s %14s %12s %14s\n", "pieces", "make ms", "repaint ms",
                "pick-up ms", "move ms", "GDI objects", "GetGuiResources");
    const int sizes[][2] = {{10, 10}, {32, 32}, {100, 100}};
    for (const auto& size : sizes) {
        const Figures f = measure(size[0], size[1]);
        std::printf("%3dx%-5d %10.1f %14.1f %10.2f %14.3f %12ld %14lu\n", size[0], size[1], f.make,
                    f.repaint, f.pickUp, f.move, f.gdiObjects,
                    static_cast<unsigned long>(f.guiResources));
    }
    measureFiles();
    DestroyWindow(window);
    return 0;
}
