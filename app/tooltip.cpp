#include "app/tooltip.h"

#include "app/app_state.h"
#include "app/strings.h"
#include "model/gdi_objects.h"
#include "model/puzzle.h"
#include "resources/resource.h"

namespace {

constexpr int TipTextSize = 50;
constexpr int TipMargin = 3;
constexpr int TipFontHeight = 11;
constexpr int TipFontWeight = FW_NORMAL;

}  // namespace

HFONT CreateUiFont(const char* face, int height, int weight)
{
    LOGFONTA font{};
    font.lfHeight = height;
    font.lfWeight = weight;
    font.lfCharSet = ANSI_CHARSET;
    font.lfOutPrecision = OUT_DEFAULT_PRECIS;
    font.lfClipPrecision = CLIP_DEFAULT_PRECIS;
    font.lfQuality = PROOF_QUALITY;
    font.lfPitchAndFamily = FF_ROMAN | DEFAULT_PITCH;
    lstrcpynA(font.lfFaceName, face, LF_FACESIZE);
    return gdi::createFontIndirect(font);
}

void CreateTipWindow(HWND mainWindow)
{
    appState.tipWindow = CreateWindowExA(0, "STATIC", "", WS_CHILD | WS_BORDER, 0, 0, 80, 12,
                                         mainWindow, nullptr, appState.instance, nullptr);
    appState.tipFont = CreateUiFont("MS Sans Serif", TipFontHeight, TipFontWeight);
    SendMessageA(appState.tipWindow, WM_SETFONT, reinterpret_cast<WPARAM>(appState.tipFont), TRUE);
}

int TipStringId(int buttonId)
{
    switch (buttonId) {
    case IDT_SOUND:
        return appState.soundOn ? IDS_SOUND_OFF : IDS_SOUND_ON;
    case IDT_PATTERN:
        return thePuzzle.patternShown ? IDS_HIDE_PATTERN : IDS_SHOW_PATTERN;
    case IDT_HELP:
        return IDS_MENU_HELP;
    default:  // the menu item's text
        return buttonId + ToolbarCommandShift - MenuTextBase;
    }
}

void RequestTip(HWND button, int x, int y)
{
    TipState& tip = appState.tip;
    POINT at{x, y + TipBelowPointer};
    MapWindowPoints(button, appState.mainWindow, &at, 1);
    tip.x = at.x;
    tip.y = at.y;
    if (button == tip.currentButton && tip.visible)
        return;
    const UINT delay = tip.quick ? TipQuickDelay : TipDelay;
    if (button != tip.currentButton) {
        if (tip.visible)
            HideTip(false);
        tip.shown = false;
        tip.currentButton = button;
        char text[TipTextSize];
        loadString(appState.instance, TipStringId(GetDlgCtrlID(button)), text, sizeof text);
        RemoveChar(text, '&');
        HDC dc = GetDC(appState.tipWindow);
        HGDIOBJ previous = SelectObject(dc, appState.tipFont);
        SIZE extent{};
        GetTextExtentPoint32A(dc, text, lstrlenA(text), &extent);
        SelectObject(dc, previous);
        ReleaseDC(appState.tipWindow, dc);
        tip.width = extent.cx + TipMargin;
        tip.height = extent.cy + TipMargin;
        SetWindowTextA(appState.tipWindow, text);
    }
    if (!tip.shown) {
        SetTimer(appState.toolbar, TipShowTimer, delay, nullptr);
        tip.armed = true;
    }
}

void OnTipTimer(UINT_PTR id)
{
    KillTimer(appState.toolbar, id);
    TipState& tip = appState.tip;
    if (id == 0 || !tip.armed)
        return;
    if (id == TipShowTimer) {
        if (tip.shown)
            return;
        tip.visible = tip.quick = tip.shown = true;
        MoveWindow(appState.tipWindow, tip.x, tip.y, tip.width, tip.height, FALSE);
        ShowWindow(appState.tipWindow, SW_SHOW);
        SetWindowPos(appState.tipWindow, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        SetTimer(appState.toolbar, TipHideTimer, TipShowTime, nullptr);
    } else if (id == TipHideTimer) {
        HideTip(false);
    }
}

void HideTip(bool forget)
{
    TipState& tip = appState.tip;
    tip.visible = false;
    tip.armed = false;
    if (appState.tipWindow)
        ShowWindow(appState.tipWindow, SW_HIDE);
    if (appState.toolbar)
        KillTimer(appState.toolbar, TipHideTimer);
    if (forget)
        tip.currentButton = nullptr;
}
