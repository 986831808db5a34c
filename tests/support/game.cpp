#include "tests/support/game.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "app/app_state.h"
#include "app/autosave.h"
#include "app/commands.h"
#include "app/main_window.h"
#include "app/make_command.h"
#include "app/settings.h"
#include "files/file_prompt.h"
#include "files/make_parameters.h"
#include "files/picture.h"
#include "files/puzzle_file.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "play/tray.h"
#include "resources/resource.h"

namespace game {

namespace {

constexpr int FileNameBox = 0x47C;  // the file name field of the common dialogs
std::string startFolder, firstStart;

// Answers the dialogs of this thread from a timer, which fires inside their modal loops.
std::function<void(HWND)> responder;

BOOL CALLBACK findDialog(HWND window, LPARAM found)
{
    char type[32];
    GetClassNameA(window, type, sizeof type);
    if (std::string(type) == "#32770" && IsWindowVisible(window) && IsWindowEnabled(window)) {
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    return TRUE;
}

void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD)
{
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), findDialog, reinterpret_cast<LPARAM>(&dialog));
    if (dialog && responder)
        responder(dialog);
}

int buttonOf(const std::string& name)
{
    return name == "yes" ? IDYES : name == "no" ? IDNO : name == "cancel" ? IDCANCEL : IDOK;
}

// Every value of the tests' key leaf, as "leaf\name=value" lines.
std::string valuesOf(const char* leaf)
{
    std::string lines;
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, (std::string(SettingsKey) + "\\" + leaf).c_str(), 0,
                      KEY_READ, &key) != ERROR_SUCCESS)
        return lines;
    char name[256];
    BYTE value[MAX_PATH];
    for (DWORD i = 0;; ++i) {
        DWORD nameSize = sizeof name, valueSize = sizeof value - 1, type = 0;
        if (RegEnumValueA(key, i, name, &nameSize, nullptr, &type, value, &valueSize) !=
            ERROR_SUCCESS)
            break;
        value[valueSize] = 0;
        lines += std::string(leaf) + "\\" + name + "=" + reinterpret_cast<char*>(value) + "\n";
    }
    RegCloseKey(key);
    return lines;
}

}  // namespace

std::string answering(const std::function<void()>& action, std::vector<std::string> answers)
{
    std::string said;
    size_t next = 0;
    HWND last = nullptr;
    responder = [&](HWND dialog) {
        if (dialog == last)
            return;  // answered, not closed yet
        last = dialog;
        if (GetDlgItem(dialog, IDC_LANGUAGE_ENGLISH)) {  // shown at every start: its default
            PostMessageA(dialog, WM_COMMAND, IDC_LANGUAGE_OK, 0);
            return;
        }
        const std::string answer = next < answers.size() ? answers[next++] : "ok";
        if (GetDlgItem(dialog, FileNameBox)) {
            const bool typed = buttonOf(answer) == IDOK && answer != "ok";
            if (typed)
                SetDlgItemTextA(dialog, FileNameBox, answer.c_str());
            PostMessageA(dialog, WM_COMMAND, typed ? IDOK : IDCANCEL, 0);
            return;
        }
        char text[1024], caption[256];
        GetDlgItemTextA(dialog, 0xFFFF, text, sizeof text);
        GetWindowTextA(dialog, caption, sizeof caption);
        said += std::string(caption) + ": " + text + "\n";
        // "ok" presses a dialog's default button, whatever its id.
        const LRESULT defaultButton = SendMessageA(dialog, DM_GETDEFID, 0, 0);
        const int button = answer == "ok" && HIWORD(defaultButton) == DC_HASDEFID
                               ? LOWORD(defaultButton)
                               : buttonOf(answer);
        PostMessageA(dialog, WM_COMMAND, button, 0);
    };
    const UINT_PTR timer = SetTimer(nullptr, 0, 20, onTimer);
    action();
    KillTimer(nullptr, timer);
    responder = nullptr;
    return said;
}

namespace {

HWND programWindow = nullptr;

// Creates the main window, running the real start-up sequence; the dialogs it shows after
// the language (a recovery offer, a missing picture) are answered as given.
std::string start(std::vector<std::string> answers)
{
    const std::string said = answering(
        [&] {
            programWindow = CreateMainWindow(appState.instance);
            // What start-up posts for after the window is up, as the message loop runs it.
            MSG message;
            while (PeekMessageA(&message, programWindow, WM_APP, WM_APP + 100, PM_REMOVE))
                DispatchMessageA(&message);
        },
        std::move(answers));
    appState.soundOn = false;  // tests are quiet
    return said;
}

}  // namespace

HWND window()
{
    if (programWindow)
        return programWindow;
    // A first start: no settings, a working folder of its own, the language dialog shown.
    for (const char* leaf : {"\\Options", "\\History", ""})
        RegDeleteKeyA(HKEY_CURRENT_USER, (std::string(SettingsKey) + leaf).c_str());
    char temp[MAX_PATH];
    GetTempPathA(MAX_PATH, temp);
    startFolder = std::string(temp) + "tovira-unit-" + std::to_string(GetCurrentProcessId());
    CreateDirectoryA(startFolder.c_str(), nullptr);
    SetCurrentDirectoryA(startFolder.c_str());
    appState.instance = GetModuleHandleA(nullptr);
    RedirectSettings(SettingsKey);
    RegisterWindowClasses(appState.instance);
    start({});
    firstStart = valuesOf("Options") + valuesOf("History");
    // The test program ends as the game does, through the window's shutdown: a sound left
    // playing past the process's end crashes Wine at times.
    std::atexit([] { DestroyWindow(programWindow); });
    return programWindow;
}

std::string restart(std::vector<std::string> answers, const std::function<void()>& between)
{
    window();
    DestroyWindow(programWindow);  // the real shutdown, as a clean exit runs it
    MSG quit;
    PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    if (between)
        between();
    return start(std::move(answers));
}

const std::string& firstStartSettings()
{
    window();
    return firstStart;
}

std::string folder()
{
    window();
    return startFolder;
}

std::vector<std::uint8_t> bytesOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(file), {});
}

void write(const std::string& path, const std::vector<std::uint8_t>& bytes)
{
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

bool exists(const std::string& path)
{
    return fileExists(path.c_str());
}

std::string picture(const char* name)
{
    const std::string given = name;
    return given.find('\\') != std::string::npos ? given
                                                 : std::string(TEST_PICTURE_DIR) + "\\" + name;
}

std::string setting(const char* leaf, const char* name)
{
    char* key = NewSettingsKey((std::string("\\") + leaf).c_str());
    char value[MAX_PATH] = {};
    QueryStringValue(key, name, value, sizeof value);
    free(key);
    return value;
}

void make(int w, int h, int columns, int rows, unsigned seed, int shapeMode,
          const char* pictureName)
{
    window();
    end();
    const std::string path = picture(pictureName);
    if (path != loadedPicturePath)
        thePicture.loadPreview(path.c_str());
    makeParameters = MakeParameters{w, h, columns, rows, shapeMode, false, false, false};
    appState.pictureLoaded = true;
    MakeInputs inputs = gatherMakeInputs();
    inputs.seed = seed;
    thePuzzle.makePuzzle(inputs);
}

void table(unsigned seed)
{
    make(400, 300, 8, 6, seed);
    for (int p = 0; p < thePuzzle.pieceCount; ++p)
        place(p, 20, 560);
}

void end()
{
    endDragInPlace();
    thePuzzle.clear();
    thePuzzle.puzzlePath[0] = '\0';
    MarkPuzzleSaved();
}

void command(int id)
{
    SendMessageA(window(), WM_COMMAND, id, 0);
}

RECT cell(int p)
{
    return thePuzzle.pieces[p].getBounds(true, true, false);
}

POINT home(int p)
{
    const RECT at = cell(p);
    const Piece& piece = thePuzzle.pieces[p];
    return POINT{at.left + piece.homeX - piece.x - thePuzzle.scrollX,
                 at.top + piece.homeY - piece.y - thePuzzle.scrollY};
}

void place(int p, int x, int y)
{
    const RECT box = cell(p);
    Piece& piece = thePuzzle.pieces[p];
    piece.moveTo(piece.x + x - box.left, piece.y + y - box.top, false);
    thePuzzle.raiseToTop(p);
    // The board shows the model, as it always does in play.
    thePuzzle.repaintRect(RECT{0, 0, thePuzzle.boardWidth, thePuzzle.boardHeight}, 0, nullptr);
}

void pickUp(int p)
{
    // Brought up from any pile first, so that the press finds it.
    if (!thePuzzle.pieces[p].isSet)
        thePuzzle.raiseToTop(p);
    const RECT box = cell(p);
    SendMessageA(thePuzzle.pieces[p].window, WM_LBUTTONDOWN, 0,
                 MAKELPARAM((box.left + box.right) / 2, (box.top + box.bottom) / 2));
}

void moveBy(int dx, int dy)
{
    SendMessageA(thePuzzle.pieces[dragState.draggedPiece].window, WM_MOUSEMOVE, 0,
                 MAKELPARAM(thePuzzle.dragLastX + dx, thePuzzle.dragLastY + dy));
}

void drop()
{
    dropIn(thePuzzle.pieces[dragState.draggedPiece].window, thePuzzle.dragLastX,
           thePuzzle.dragLastY);
}

void dropIn(HWND target, int x, int y)
{
    SendMessageA(target, WM_LBUTTONDOWN, 0, MAKELPARAM(x, y));
}

void carry(int p, int x, int y)
{
    pickUp(p);
    const RECT box = cell(p);
    moveBy(x - box.left, y - box.top);
    drop();
}

void carryInto(int p, HWND tray, int x, int y)
{
    POINT target{x, y};
    MapWindowPoints(tray, thePuzzle.mainWindow, &target, 1);
    pickUp(p);
    const RECT box = cell(p);
    moveBy(target.x - box.left, target.y - box.top);
    dropIn(tray, 5, 5);
}

bool same(const RECT& a, const RECT& b)
{
    return EqualRect(&a, &b) != FALSE;
}

RECT box(HWND window)
{
    RECT at;
    GetWindowRect(window, &at);
    MapWindowPoints(nullptr, thePuzzle.mainWindow, reinterpret_cast<POINT*>(&at), 2);
    return at;
}

bool joined(int a, int b)
{
    const Piece& pa = thePuzzle.pieces[a];
    const Piece& pb = thePuzzle.pieces[b];
    return pa.isGrouped && pb.isGrouped && pa.groupId == pb.groupId;
}

std::vector<std::uint8_t> kept(bool trayWindows)
{
    if (!thePuzzle.made)
        return {};
    fileformat::PuzzleFileContents contents = contentsOfPuzzle();
    for (fileformat::TrayRecord& tray : contents.trays) {
        if (trayWindows || !thePuzzle.findTray(tray.id, false))
            continue;
        const RECT at = box(thePuzzle.foundTray->window);  // as the player sees it
        tray = fileformat::TrayRecord{tray.id, at.left, at.top, at.right - at.left,
                                      at.bottom - at.top};
    }
    return fileformat::encodePuzzleFile(contents);
}

Snapshot board()
{
    return Snapshot(appState.boardDC, 0, 0, thePuzzle.boardWidth, thePuzzle.boardHeight);
}

bool boardAsRepainted()
{
    const Snapshot before = board();
    thePuzzle.repaintRect(RECT{0, 0, thePuzzle.boardWidth, thePuzzle.boardHeight}, 0, nullptr);
    return before == board();
}

}  // namespace game
