#include "app/autosave.h"

#include <new>
#include <string>
#include <vector>

#include "app/app_state.h"
#include "app/commands.h"
#include "files/file_io.h"
#include "files/file_prompt.h"
#include "files/message.h"
#include "files/puzzle_file.h"
#include "files/recovery_format.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "resources/resource.h"

using namespace fileformat;

namespace {

constexpr const char* RecoveryName = "\\Recovery.fpr";
constexpr const char* LockName = "\\Recovery.lock";
constexpr UINT RetryDelay = 1000;  // while a carry or a command is under way

HWND owner = nullptr;
char recoveryPath[MAX_PATH];
HANDLE slot = INVALID_HANDLE_VALUE;  // held open while this program keeps the recovery file
unsigned long savedChanges = 0;      // the change count the puzzle's file holds
unsigned long writtenChanges = 0;    // the change count the recovery file holds
bool hasWritten = false;
bool timerSet = false;

void schedule(UINT delay)
{
    if (!owner || slot == INVALID_HANDLE_VALUE)
        return;
    SetTimer(owner, AutosaveTimer, delay, nullptr);
    timerSet = true;
}

void onPuzzleChanged()
{
    if (!timerSet)
        schedule(AutosaveDelay);
}

void removeRecoveryFile()
{
    if (recoveryPath[0])
        DeleteFileA(recoveryPath);
    hasWritten = false;
}

}  // namespace

const char* RecoveryPath()
{
    return slot != INVALID_HANDLE_VALUE ? recoveryPath : "";
}

void StartAutosave(HWND mainWindow)
{
    owner = mainWindow;
    thePuzzle.changed = onPuzzleChanged;
    const std::string folder = appState.autoPuzzleFolder;
    const std::string lock = folder + LockName;
    const std::string recovery = folder + RecoveryName;
    if (folder.empty() || lock.size() >= MAX_PATH || recovery.size() >= MAX_PATH)
        return;
    // The slot is a file held open without sharing, which goes when the program ends, even
    // when it is killed: a second copy of the program finds it taken.
    slot = CreateFileA(lock.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                       FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (slot == INVALID_HANDLE_VALUE)
        return;
    lstrcpynA(recoveryPath, recovery.c_str(), MAX_PATH);
    if (fileExists(recoveryPath))
        PostMessageA(mainWindow, WM_OFFER_RECOVERY, 0, 0);
}

void OfferRecovery()
{
    if (slot == INVALID_HANDLE_VALUE)
        return;
    RecoveryContents kept;
    bool readable = false;
    try {
        std::vector<uint8_t> bytes;
        readable = readWholeFile(recoveryPath, bytes, MaxFileSize + MAX_PATH) == FileRead::Read &&
                   decodeRecoveryFile(bytes.data(), bytes.size(), kept) == Decoded::Ok;
    } catch (const std::bad_alloc&) {
        return;  // kept for a start with more memory
    }
    if (!readable) {
        removeRecoveryFile();  // nothing a player could get back
        return;
    }
    if (showMessage(appState.instance, appState.mainWindow, IDS_RESTORE_PUZZLE, IDS_RESTORE_TITLE,
                    MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON1) != IDYES) {
        removeRecoveryFile();
        return;
    }
    const int result = [&] {
        const CommandScope scope;
        return openPuzzleContents(kept.puzzle);
    }();
    if (result == PuzzleFileLoaded) {
        // The puzzle goes on as it was: with its own file, and its changes still unsaved.
        lstrcpynA(thePuzzle.puzzlePath, kept.puzzlePath.c_str(), MAX_PATH);
        savedChanges = thePuzzle.changes - 1;
        hasWritten = true;
        writtenChanges = thePuzzle.changes;
    }
    reportPuzzleFileResult(result, recoveryPath);
    UpdateCommandStates();
}

bool HasUnsavedChanges()
{
    return thePuzzle.made && thePuzzle.changes != savedChanges;
}

bool AutosaveNow()
{
    if (slot == INVALID_HANDLE_VALUE)
        return false;
    if (!HasUnsavedChanges()) {
        removeRecoveryFile();
        return true;
    }
    if (hasWritten && writtenChanges == thePuzzle.changes)
        return true;
    try {
        RecoveryContents kept;
        kept.puzzlePath = thePuzzle.puzzlePath;
        kept.puzzle = contentsOfPuzzle();
        if (!writeFileSafely(recoveryPath, encodeRecoveryFile(kept)))
            return false;
    } catch (const std::bad_alloc&) {
        return false;  // tried again at the next change
    }
    hasWritten = true;
    writtenChanges = thePuzzle.changes;
    return true;
}

void OnAutosaveTimer()
{
    KillTimer(owner, AutosaveTimer);
    timerSet = false;
    // Never in the middle of a carry or of a command (whose dialogs run this timer too).
    if (dragState.dragging || appState.commandDepth > 0) {
        schedule(RetryDelay);
        return;
    }
    AutosaveNow();
}

void MarkPuzzleSaved()
{
    savedChanges = thePuzzle.changes;
    if (slot != INVALID_HANDLE_VALUE)
        removeRecoveryFile();
}

void EndAutosave()
{
    if (owner && timerSet)
        KillTimer(owner, AutosaveTimer);
    timerSet = false;
    thePuzzle.changed = nullptr;
    if (slot == INVALID_HANDLE_VALUE)
        return;
    removeRecoveryFile();
    CloseHandle(slot);
    slot = INVALID_HANDLE_VALUE;
}
