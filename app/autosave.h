#pragma once
// Keeping the puzzle in play safe from a sudden end. While a made puzzle has changes that are
// not saved, it is written to a recovery file of its own at most AutosaveDelay after the
// last change (never over the player's own file, never during a carry); a save, an open or a
// clean exit removes it. At the next start after a sudden end the player is offered the
// puzzle back.
#include <windows.h>

constexpr UINT AutosaveDelay = 30000;  // milliseconds
constexpr UINT_PTR AutosaveTimer = 7;  // the main window's timer
// Posted at start-up, so that the offer comes with the main window on the screen.
constexpr UINT WM_OFFER_RECOVERY = WM_APP + 1;

// At start-up, once the working folders are known: takes this program's recovery file (a
// second copy running at the same time keeps none), and posts the offer when the last run
// left one.
void StartAutosave(HWND mainWindow);
// The posted offer: restores the puzzle on Yes, removes the file on No.
void OfferRecovery();
// The timer: writes or removes the recovery file as the puzzle on hand calls for.
void OnAutosaveTimer();
// Writes the recovery file now if the puzzle has unsaved changes; false when it could not.
bool AutosaveNow();
// After a save or an open: the puzzle on hand is what its file holds.
void MarkPuzzleSaved();
// Whether the made puzzle has changes its file (or it, having none) does not hold.
bool HasUnsavedChanges();
// A clean exit: the recovery file goes, and the slot is given up.
void EndAutosave();
// The recovery file's path; empty while this program keeps none.
const char* RecoveryPath();
