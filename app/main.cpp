// Process entry of ToviraPuzzle.
#include <windows.h>

#include "app/app_state.h"
#include "app/main_window.h"
#include "files/message.h"
#include "resources/resource.h"

namespace {

constexpr int ExitNoWindow = 1;

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int showCommand)
{
    appState.instance = instance;
    HWND window = RegisterWindowClasses(instance) ? CreateMainWindow(instance) : nullptr;
    if (!window) {
        // Without a window there is nothing to play on; say so where anyone can see it.
        showMessage(instance, nullptr, IDS_NO_MAIN_WINDOW, IDS_SYSTEM_ERROR, MB_OK | MB_ICONERROR);
        return ExitNoWindow;
    }
    ShowWindow(window, showCommand);
    UpdateWindow(window);

    // No accelerators and no dialog routing for the toolbar: the keyboard reaches the
    // program through menu mnemonics and the modal dialogs.
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return static_cast<int>(message.wParam);
}
