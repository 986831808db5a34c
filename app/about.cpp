#include "app/about.h"

#include "app/app_state.h"
#include "app/main_window.h"
#include "app/strings.h"
#include "resources/resource.h"

namespace {

constexpr int AboutTextSize = 500;

void onAboutInit(HWND dialog)
{
    char text[AboutTextSize];
    loadString(appState.instance, IDS_ABOUT_TITLE, text, sizeof text);
    lstrcatA(text, ProgramName);
    SetWindowTextA(dialog, text);
    loadString(appState.instance, IDS_VERSION, text, sizeof text);
    lstrcatA(text, appState.versionText);
    SetDlgItemTextA(dialog, IDC_ABOUT_VERSION, text);
    SetDlgItemTextA(dialog, IDC_ABOUT_NAME, ProgramName);
}

INT_PTR CALLBACK aboutDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    switch (message) {
    case WM_INITDIALOG:
        onAboutInit(dialog);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDC_ABOUT_OK || LOWORD(wParam) == IDCANCEL) {
            EndDialog(dialog, IDC_ABOUT_OK);
            return TRUE;
        }
        return FALSE;
    default:
        return FALSE;
    }
}

}  // namespace

void RunAboutDialog(HWND owner)
{
    DialogBoxParamA(appState.instance, "FRMABOUT", owner, aboutDialogProc, 0);
}
