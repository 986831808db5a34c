#include "app/language.h"

#include "app/app_state.h"
#include "app/help.h"
#include "app/settings.h"
#include "resources/resource.h"

namespace {

// The dialog's own texts, in the language being chosen.
struct LanguageTexts {
    const char* title;
    const char* suppress;
    DWORD helpTopic;  // of the check box
};

constexpr LanguageTexts Texts[] = {
    {"Select your language", "Do not show this message again", 8502},
    {"Seleccione su idioma", "Suprimir este mensaje en el futuro", 8503},
};

void showLanguage(HWND dialog)
{
    const LanguageTexts& texts = Texts[appState.language == 1 ? 1 : 0];
    SetWindowTextA(dialog, texts.title);
    SetDlgItemTextA(dialog, IDC_LANGUAGE_SUPPRESS, texts.suppress);
}

// The focus starts on the language in force, which it would otherwise change.
void onInit(HWND dialog)
{
    const int chosen = appState.language == 1 ? IDC_LANGUAGE_SPANISH : IDC_LANGUAGE_ENGLISH;
    CheckRadioButton(dialog, IDC_LANGUAGE_ENGLISH, IDC_LANGUAGE_SPANISH, chosen);
    showLanguage(dialog);
    SetFocus(GetDlgItem(dialog, chosen));
}

void onOk(HWND dialog)
{
    appState.suppressLanguageDialog =
        IsDlgButtonChecked(dialog, IDC_LANGUAGE_SUPPRESS) == BST_CHECKED ? 1 : 0;
    WriteIntSetting(appState.optionsKey, "TextLanguage", appState.language);
    WriteIntSetting(appState.optionsKey, "SupLangDlg", appState.suppressLanguageDialog);
    EndDialog(dialog, IDC_LANGUAGE_OK);
}

void onHelp(const HELPINFO& request)
{
    const int id = request.iCtrlId;
    const DWORD topic = id == IDC_LANGUAGE_SUPPRESS
                            ? Texts[appState.language == 1 ? 1 : 0].helpTopic
                            : static_cast<DWORD>(request.dwContextId);
    const DWORD pairs[] = {static_cast<DWORD>(id), topic, 0, 0};
    ShowContextHelp(static_cast<HWND>(request.hItemHandle), pairs);
}

INT_PTR CALLBACK languageDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG:
        onInit(dialog);
        return FALSE;  // the focus is set
    case WM_COMMAND:
        switch (LOWORD(wParam)) {
        case IDC_LANGUAGE_ENGLISH:
        case IDC_LANGUAGE_SPANISH:
            appState.language = LOWORD(wParam) == IDC_LANGUAGE_SPANISH ? 1 : 0;
            showLanguage(dialog);
            return TRUE;
        case IDC_LANGUAGE_OK:
            onOk(dialog);
            return TRUE;
        case IDCANCEL:  // the close box: this run only, nothing stored
            EndDialog(dialog, IDC_LANGUAGE_OK);
            return TRUE;
        }
        return FALSE;
    case WM_HELP:
        onHelp(*reinterpret_cast<const HELPINFO*>(lParam));
        return TRUE;
    default:
        return FALSE;
    }
}

}  // namespace

void RunLanguageDialog(HWND owner)
{
    DialogBoxParamA(appState.instance, "FRMLANGUAGE", owner, languageDialogProc, 0);
}
