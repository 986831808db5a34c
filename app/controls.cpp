#include "app/controls.h"

bool SetStyleBit(HWND window, int index, LONG bit, bool on)
{
    const LONG value = GetWindowLongA(window, index);
    if (((value & bit) != 0) == on)
        return false;
    SetWindowLongA(window, index, on ? (value | bit) : (value & ~bit));
    return true;
}

void SetControlVisible(HWND dialog, int id, bool visible)
{
    HWND control = GetDlgItem(dialog, id);
    if (!control || !SetStyleBit(control, GWL_STYLE, WS_VISIBLE, visible))
        return;
    InvalidateRect(control, nullptr, TRUE);
    if (!visible) {
        RECT place;
        GetWindowRect(control, &place);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        InvalidateRect(dialog, &place, TRUE);
    }
}

void SetScrollBarRange(HWND window, int bar, int maximum, int page, int position)
{
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMin = 0;
    info.nMax = maximum;
    info.nPage = static_cast<UINT>(page);
    info.nPos = position;
    SetScrollInfo(window, bar, &info, TRUE);
}

void SetControlEnabled(HWND dialog, int id, bool enabled)
{
    HWND control = GetDlgItem(dialog, id);
    if (control)
        SetStyleBit(control, GWL_STYLE, WS_DISABLED, !enabled);
}
