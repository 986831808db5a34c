#pragma once
// The language of the run, chosen at start-up in the language dialog, or taken from the
// settings when the player asked not to see the dialog again.
#include <windows.h>

// The language dialog, modal: sets appState.language at once and, on OK, stores it and
// whether the dialog is to be shown again.
void RunLanguageDialog(HWND owner);
