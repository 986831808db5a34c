#pragma once
// A tray: a child window of the main window that holds pieces aside, with its own
// off-screen image and scroll bars.
#include <windows.h>

#include "model/play_limits.h"
#include "play/index_list.h"

// Window class of trays.
constexpr const char* TrayClassName = "CAJA";
constexpr DWORD TrayWindowStyle = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CAPTION |
                                  WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX |
                                  WS_HSCROLL | WS_VSCROLL;

class Tray {
public:
    Tray();
    virtual ~Tray();
    Tray(const Tray&) = delete;
    Tray& operator=(const Tray&) = delete;

    HWND createWindow(int x, int y, int w, int h, HWND parent, HINSTANCE moduleInstance);
    // Grows the image (and the content it holds) to at least w x h; false, with the image
    // as it was, when it cannot.
    bool growImage(int w, int h);
    // Grows the image to w x h when the content outgrows it; with isView the client size
    // becomes w x h. Shows the scroll bars the sizes call for. True when the view grew.
    bool resize(int w, int h, bool isView);

    HBITMAP imageBitmap;
    HWND window;
    HDC imageDC;   // content image; client (0, 0) shows the image's (0, 0)
    HDC windowDC;  // the window's own device context (class style CS_OWNDC)
    HINSTANCE instance;
    int id;
    int left, top;  // requested place at creation; the window's screen top-left once moved
    int viewWidth, viewHeight;
    int contentWidth, contentHeight;
    int contentLeft, contentTop;         // always -appliedScrollX, -appliedScrollY
    int scrollX, scrollY;                // what the scroll bars show
    int appliedScrollX, appliedScrollY;  // what the stored piece coordinates reflect
    bool hasHScroll, hasVScroll;
    WINDOWPLACEMENT placement;
    IndexList pieces;
    Tray* next;
    Tray* prev;
};

LRESULT CALLBACK trayWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
