#include "app/make_progress.h"

#include <windows.h>
#include <commctrl.h>

#include "app/app_state.h"

namespace {

constexpr DWORD ShowAfterMs = 500;
constexpr int BarWidth = 320;
constexpr int BarHeight = 22;

DWORD startTick = 0;
HWND bar = nullptr;

void createBar(int total)
{
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_PROGRESS_CLASS};
    InitCommonControlsEx(&controls);
    RECT client{};
    GetClientRect(appState.mainWindow, &client);
    bar = CreateWindowExA(0, PROGRESS_CLASSA, "", WS_CHILD | WS_VISIBLE | WS_BORDER | PBS_SMOOTH,
                          (client.right - BarWidth) / 2, (client.bottom - BarHeight) / 2, BarWidth,
                          BarHeight, appState.mainWindow, nullptr, appState.instance, nullptr);
    if (bar)
        SendMessageA(bar, PBM_SETRANGE32, 0, total);
}

// Only painting is let through: no input reaches a puzzle that is being cut.
void paintWindows()
{
    MSG message;
    while (PeekMessageA(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE))
        DispatchMessageA(&message);
}

}  // namespace

void beginMakeProgress()
{
    startTick = GetTickCount();
}

void reportMakeProgress(int done, int total)
{
    if (!bar && GetTickCount() - startTick < ShowAfterMs)
        return;
    if (!bar)
        createBar(total);
    if (bar) {
        SendMessageA(bar, PBM_SETPOS, done, 0);
        UpdateWindow(bar);
    }
    paintWindows();
}

void endMakeProgress()
{
    if (bar)
        DestroyWindow(bar);
    bar = nullptr;
}
