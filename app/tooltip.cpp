#include "app/tooltip.h"

#include "app/app_state.h"

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
