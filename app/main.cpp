// Process entry of ToviraPuzzle.
#include <windows.h>

#include "app/app_state.h"
#include "app/main_window.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int showCommand)
{
    appState.instance = instance;
    if (!RegisterWindowClasses(instance))
        return 0;
    HWND window = CreateMainWindow(instance);
    if (!window)
        return 0;
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
