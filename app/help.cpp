#include "app/help.h"

#include <cstring>

#include "app/app_state.h"

namespace {

constexpr UINT HhDisplayToc = 0x0001;  // HH_DISPLAY_TOC
constexpr UINT HhCloseAll = 0x0012;    // HH_CLOSE_ALL
constexpr DWORD VistaMajorVersion = 6;

using HtmlHelpFunction = HWND(WINAPI*)(HWND, LPCSTR, UINT, DWORD_PTR);

bool winHelpOpened = false;
HMODULE htmlHelpLibrary = nullptr;

HtmlHelpFunction htmlHelp()
{
    if (!htmlHelpLibrary)
        htmlHelpLibrary = LoadLibraryA("hhctrl.ocx");
    if (!htmlHelpLibrary)
        return nullptr;
    return reinterpret_cast<HtmlHelpFunction>(
        reinterpret_cast<void*>(GetProcAddress(htmlHelpLibrary, "HtmlHelpA")));
}

// The help file with the extension .chm instead of .hlp.
void compiledHelpFile(char* path)
{
    lstrcpynA(path, appState.helpFile, MAX_PATH);
    char* dot = strrchr(path, '.');
    if (dot && strlen(dot) == 4)
        strcpy(dot, ".chm");
}

}  // namespace

bool HasWinHelpViewer()
{
    // Wine ships a WinHelp viewer whatever Windows version it reports.
    if (GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version"))
        return true;
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    if (!GetVersionExA(&version))
        return false;
#pragma GCC diagnostic pop
    return version.dwMajorVersion < VistaMajorVersion;
}

void ShowHelpContents(HWND owner)
{
    if (HasWinHelpViewer()) {
        winHelpOpened = WinHelpA(owner, appState.helpFile, HELP_FINDER, 0) || winHelpOpened;
        return;
    }
    char path[MAX_PATH];
    compiledHelpFile(path);
    if (HtmlHelpFunction show = htmlHelp())
        show(owner, path, HhDisplayToc, 0);
}

void ShowContextHelp(HWND control, const DWORD* pairs)
{
    if (HasWinHelpViewer()) {
        winHelpOpened = WinHelpA(control, appState.helpFile, HELP_WM_HELP,
                                 reinterpret_cast<ULONG_PTR>(pairs)) ||
                        winHelpOpened;
        return;
    }
    ShowHelpContents(GetParent(control));  // the guide has no pop-up topics
}

void CloseHelp(HWND owner)
{
    if (winHelpOpened)
        WinHelpA(owner, appState.helpFile, HELP_QUIT, 0);
    winHelpOpened = false;
    if (htmlHelpLibrary) {
        if (HtmlHelpFunction close = htmlHelp())
            close(nullptr, nullptr, HhCloseAll, 0);
        FreeLibrary(htmlHelpLibrary);
        htmlHelpLibrary = nullptr;
    }
}
