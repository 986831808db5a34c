#pragma once
// The one record of shell state. The application shell writes it; every part may read it.
#include <windows.h>

#include "recent_list.h"

constexpr int PreviewBoxSize = 100;      // the preview is fitted into a square of this side
constexpr double PuzzleAreaShare = 0.8;  // the puzzle area's largest size, per screen side

// State of the toolbar tooltip.
struct TipState {
    HWND currentButton;
    bool visible;
    bool armed;  // a show timer is pending and may fire
    bool shown;  // already shown for the current button
    bool quick;  // a tip was shown recently: the next one comes sooner
    int x, y;    // main-window client coordinates
    int width, height;
    WNDPROC buttonClassProc;
};

enum InterfaceType { SimpleInterface = 0, AdvancedInterface = 1 };

struct AppState {
    HINSTANCE instance;
    HWND mainWindow;
    HMENU menu;
    HMENU recentMenus[3];  // indexed by RecentKind
    HWND toolbar;
    HWND tipWindow;
    HFONT tipFont;
    HBRUSH tipBrush;

    int screenWidth, screenHeight;
    int maximisedWidth, maximisedHeight;
    // The board and background images: the largest client area the window can be sized to.
    int boardImageWidth, boardImageHeight;

    HDC windowDC;  // the main window's own device context (class style CS_OWNDC)
    HDC backgroundDC;
    HBITMAP backgroundBitmap;
    HDC boardDC;  // absent until a picture is first opened
    HBITMAP boardBitmap;

    RECT toolbarRect;  // main-window client coordinates
    RECT boardRect;
    int paintOriginX, paintOriginY;
    int areaWidth, areaHeight;                   // the puzzle area's largest size
    int areaOriginX, areaOriginY;                // top-left of the puzzle area
    int defaultAreaOriginX, defaultAreaOriginY;  // where it lies on this screen
    int vScrollWidth, hScrollHeight;
    HWND hScrollBar, vScrollBar;

    HCURSOR arrowCursor, waitCursor, crossCursor, noCursor, handCursor;

    char startFolder[MAX_PATH + 1];
    char autoPuzzleFolder[MAX_PATH];
    char picturesFolder[MAX_PATH];
    char puzzleFolder[MAX_PATH];
    char collectionFolder[MAX_PATH];
    char helpFile[MAX_PATH];

    int language;        // 0 English, 1 Spanish
    int languageOffset;  // 0 or 100, added to every string-table ID
    int suppressLanguageDialog;
    const char* versionText;
    int previewBoxWidth, previewBoxHeight;

    int interfaceType;
    bool soundOn;
    bool drawOutline;
    bool drawSetOutline;
    bool collectionOpen;
    bool pictureLoaded;
    int commandDepth;  // commands under way, counting those a command runs

    RecentList recent[3];  // indexed by RecentKind
    TipState tip;

    char* optionsKey;
    char* historyKey;
};

extern AppState appState;
