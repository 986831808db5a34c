#include "app/main_window.h"

#include <algorithm>

#include "app/app_state.h"
#include "app/autosave.h"
#include "app/commands.h"
#include "app/guarded.h"
#include "app/scroll_view.h"
#include "app/tooltip.h"
#include "model/gdi_objects.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "play/tray.h"
#include "resources/resource.h"

namespace {

constexpr COLORREF TipColour = RGB(255, 255, 226);

// The paint handler only copies the board image; nothing is drawn here.
void OnPaint(HWND window)
{
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(window, &paint);
    if (appState.boardDC) {
        RECT client;
        GetClientRect(window, &client);
        const int x = appState.paintOriginX, y = appState.paintOriginY;
        const int right = std::min<int>(client.right, appState.boardImageWidth);
        const int bottom = std::min<int>(client.bottom, appState.boardImageHeight);
        BitBlt(dc, x, y, right - x, bottom - y, appState.boardDC, x, y, SRCCOPY);
    }
    EndPaint(window, &paint);
}

// The board image already covers any size; pieces a smaller window left outside come back in.
void OnSize(WPARAM kind)
{
    if (kind == SIZE_MINIMIZED || !thePuzzle.made)
        return;
    endDragInPlace();
    thePuzzle.bringIntoView(thePuzzle.boardView());
}

LRESULT OnCtlColorStatic(HWND window, WPARAM wParam, LPARAM lParam)
{
    if (reinterpret_cast<HWND>(lParam) != appState.tipWindow || !appState.tipWindow)
        return DefWindowProcA(window, WM_CTLCOLORSTATIC, wParam, lParam);
    if (!appState.tipBrush)
        appState.tipBrush = gdi::createSolidBrush(TipColour);
    SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
    return reinterpret_cast<LRESULT>(appState.tipBrush);
}

void OnNcMouseMove()
{
    if (appState.tip.visible)
        HideTip(true);
    appState.tip.armed = false;
    appState.tip.quick = false;
}

LRESULT dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
        StartUp(window);
        return 0;
    case WM_DESTROY:
        ShutDown(window);
        return 0;
    case WM_PAINT:
        OnPaint(window);
        return 0;
    case WM_SIZE:
        OnSize(wParam);
        return 0;
    case WM_COMMAND:
        RouteCommand(window, LOWORD(wParam), lParam);
        return 0;
    case WM_HSCROLL:
        ScrollView(appState.hScrollBar, thePuzzle.scrollX, LOWORD(wParam), SB_CTL, 0,
                   HIWORD(wParam));
        return 0;
    case WM_VSCROLL:
        ScrollView(appState.vScrollBar, thePuzzle.scrollY, LOWORD(wParam), SB_CTL, 0,
                   HIWORD(wParam));
        return 0;
    case WM_CTLCOLORSTATIC:
        return OnCtlColorStatic(window, wParam, lParam);
    case WM_NCMOUSEMOVE:
        OnNcMouseMove();
        return 0;
    case WM_MOUSEMOVE:
        handleMouseMove(window, lParam);
        return 0;
    case WM_LBUTTONDOWN:
        handleClick(window, lParam);
        return 0;
    case WM_TIMER:
        if (wParam != AutosaveTimer)
            return DefWindowProcA(window, message, wParam, lParam);
        OnAutosaveTimer();
        return 0;
    case WM_OFFER_RECOVERY:
        OfferRecovery();
        return 0;
    default:
        return DefWindowProcA(window, message, wParam, lParam);
    }
}

}  // namespace

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return guarded([&] { return dispatch(window, message, wParam, lParam); }, LRESULT(0));
}

bool RegisterWindowClasses(HINSTANCE instance)
{
    WNDCLASSA main{};
    main.style = CS_OWNDC | CS_BYTEALIGNCLIENT;
    main.lpfnWndProc = MainWindowProc;
    main.hInstance = instance;
    main.hIcon = LoadIconA(instance, MAKEINTRESOURCEA(IDI_MAIN_WINDOW));
    main.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    main.lpszMenuName = "PuzzleMenu";
    main.lpszClassName = MainClassName;
    if (!RegisterClassA(&main))
        return false;

    WNDCLASSA tray = main;
    tray.lpfnWndProc = trayWindowProc;
    tray.hIcon = LoadIconA(instance, MAKEINTRESOURCEA(IDI_TRAY_WINDOW));
    tray.lpszMenuName = nullptr;
    tray.lpszClassName = TrayClassName;
    return RegisterClassA(&tray) != 0;
}

HWND CreateMainWindow(HINSTANCE instance)
{
    appState.screenWidth = GetSystemMetrics(SM_CXSCREEN);
    appState.screenHeight = GetSystemMetrics(SM_CYSCREEN);
    appState.maximisedWidth = GetSystemMetrics(SM_CXMAXIMIZED);
    appState.maximisedHeight = GetSystemMetrics(SM_CYMAXIMIZED);
    appState.boardImageWidth =
        std::max({GetSystemMetrics(SM_CXMAXTRACK), GetSystemMetrics(SM_CXVIRTUALSCREEN),
                  appState.maximisedWidth, appState.screenWidth});
    appState.boardImageHeight =
        std::max({GetSystemMetrics(SM_CYMAXTRACK), GetSystemMetrics(SM_CYVIRTUALSCREEN),
                  appState.maximisedHeight, appState.screenHeight});
    return CreateWindowExA(
        0, MainClassName, "", WS_OVERLAPPEDWINDOW | WS_MAXIMIZE | WS_CLIPCHILDREN,
        (appState.screenWidth - appState.maximisedWidth) / 2,
        (appState.screenHeight - appState.maximisedHeight) / 2, appState.maximisedWidth,
        appState.maximisedHeight, nullptr, nullptr, instance, nullptr);
}
