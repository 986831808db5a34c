// The window procedure of trays (class CAJA).
#include "app/app_state.h"
#include "app/guarded.h"
#include "app/scroll_view.h"
#include "app/tooltip.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "play/tray.h"

namespace {

void bringToTop(HWND window)
{
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
}

void onPaint(HWND window, const Tray& tray)
{
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(window, &paint);
    const RECT& r = paint.rcPaint;
    BitBlt(dc, r.left, r.top, r.right - r.left, r.bottom - r.top, tray.imageDC, r.left, r.top,
           SRCCOPY);
    EndPaint(window, &paint);
}

void onMove(HWND window, Tray& tray, const RECT& windowRect)
{
    GetWindowPlacement(window, &tray.placement);
    if (tray.placement.showCmd == SW_SHOWMINIMIZED)
        return;
    bringToTop(window);
    tray.left = windowRect.left;
    tray.top = windowRect.top;
    thePuzzle.noteChange();
}

void onSize(HWND window, Tray& tray, WPARAM kind, LPARAM size)
{
    GetWindowPlacement(window, &tray.placement);
    if (kind != SIZE_RESTORED && kind != SIZE_MAXIMIZED)
        return;
    if (kind == SIZE_MAXIMIZED) {
        // A maximised tray sits below the toolbar.
        RECT toolbar{0, 0, 0, 0};
        GetWindowRect(appState.toolbar, &toolbar);
        const int toolbarHeight = toolbar.bottom - toolbar.top;
        // Applying the placement comes back here; by then it is already in force.
        if (tray.placement.ptMaxPosition.y != toolbarHeight) {
            tray.placement.ptMaxPosition.y = toolbarHeight;
            SetWindowPlacement(window, &tray.placement);
        }
    }
    thePuzzle.trayResized(LOWORD(size), HIWORD(size));
    thePuzzle.noteChange();
}

void resetTip()
{
    appState.tip.armed = false;
    if (appState.tip.visible)
        HideTip(true);
}

void keepBelowToolbar(RECT& proposed)
{
    RECT toolbar{0, 0, 0, 0};
    GetWindowRect(appState.toolbar, &toolbar);
    if (proposed.top < toolbar.bottom)
        OffsetRect(&proposed, 0, toolbar.bottom - proposed.top);
}

}  // namespace

namespace {

LRESULT dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        auto* create = reinterpret_cast<CREATESTRUCTA*>(lParam);
        static_cast<Tray*>(create->lpCreateParams)->window = window;
        return DefWindowProcA(window, message, wParam, lParam);
    }
    Puzzle& puzzle = thePuzzle;
    const int id = puzzle.trayIdOfWindow(window, true);
    if (id == 0)  // a tray on its way out
        return DefWindowProcA(window, message, wParam, lParam);
    Tray& tray = *puzzle.currentTray;
    RECT windowRect;
    GetWindowRect(window, &windowRect);
    const bool dragging = dragState.dragging;

    switch (message) {
    case WM_PAINT:
        onPaint(window, tray);
        return 0;
    case WM_MOVE:
        if (!dragging)
            onMove(window, tray, windowRect);
        return 0;
    case WM_SIZE:
        if (!dragging)
            onSize(window, tray, wParam, lParam);
        return 0;
    case WM_NCMOUSEMOVE:
        resetTip();
        if (!dragging) {
            DefWindowProcA(window, message, wParam, lParam);
        } else if (GetCursor() != appState.crossCursor) {
            SetCursor(appState.crossCursor);
        }
        return 0;
    case WM_SETCURSOR:
        // The frame shows the cross while an item is carried; elsewhere the handlers set it.
        if (dragging || LOWORD(lParam) == HTCLIENT)
            return TRUE;
        return DefWindowProcA(window, message, wParam, lParam);
    case WM_SYSCOMMAND:
        if (dragging)
            return 0;
        if (wParam == SC_CLOSE) {
            puzzle.closeTray(id);
            return 0;
        }
        DefWindowProcA(window, message, wParam, lParam);
        return 0;
    case WM_HSCROLL:
        ScrollView(window, tray.scrollX, LOWORD(wParam), SB_HORZ, id, HIWORD(wParam));
        return 0;
    case WM_VSCROLL:
        ScrollView(window, tray.scrollY, LOWORD(wParam), SB_VERT, id, HIWORD(wParam));
        return 0;
    case WM_MOUSEMOVE:
        handleMouseMove(window, lParam);
        return 0;
    case WM_LBUTTONDOWN:
        bringToTop(window);
        handleClick(window, lParam);
        return 0;
    case WM_SIZING:
        if (dragging) {
            *reinterpret_cast<RECT*>(lParam) = windowRect;
            return 0;
        }
        return DefWindowProcA(window, message, wParam, lParam);
    case WM_MOVING:
        if (dragging) {
            *reinterpret_cast<RECT*>(lParam) = windowRect;
            return 0;
        }
        keepBelowToolbar(*reinterpret_cast<RECT*>(lParam));
        return DefWindowProcA(window, message, wParam, lParam);
    default:
        return DefWindowProcA(window, message, wParam, lParam);
    }
}

}  // namespace

LRESULT CALLBACK trayWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return guarded([&] { return dispatch(window, message, wParam, lParam); }, LRESULT(0));
}
