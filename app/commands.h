#pragma once
// The command vocabulary: routing of menu commands, the enabling pass, the interface types
// and the option toggles.
#include <windows.h>

#include "app/app_state.h"

// The main window's command message.
void RouteCommand(HWND window, int id, LPARAM lParam);

void UpdateCommandStates();
void ApplyInterfaceMenuRule();
void SetInterface(int commandId);
void ToggleSound(bool toggle);
void ToggleOutline(int commandId);

// Sets the text of a menu item (by position or command ID, in the menu bar or in top-level
// submenu `submenu`) to string stringId of the current language.
void SetMenuItemText(UINT item, int stringId, bool byPosition, int submenu = -1);
// All menu texts in the current language, once at start-up.
void SetMenuTexts();

// Held while a command runs (and the dialogs it shows run their own loops): nothing runs
// against a puzzle a command is changing.
struct CommandScope {
    CommandScope() { ++appState.commandDepth; }
    ~CommandScope() { --appState.commandDepth; }
    CommandScope(const CommandScope&) = delete;
    CommandScope& operator=(const CommandScope&) = delete;
};
