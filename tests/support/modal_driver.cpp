#include "tests/support/modal_driver.h"

namespace {

std::function<void(HWND)> current;

BOOL CALLBACK findEnabledDialog(HWND window, LPARAM found)
{
    char type[32];
    GetClassNameA(window, type, sizeof type);
    if (std::string(type) == "#32770" && IsWindowVisible(window) && IsWindowEnabled(window)) {
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    return TRUE;
}

void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD)
{
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), findEnabledDialog, reinterpret_cast<LPARAM>(&dialog));
    if (dialog && current)
        current(dialog);
}

}  // namespace

ModalDriver::ModalDriver(std::function<void(HWND)> answer)
{
    current = std::move(answer);
    timer = SetTimer(nullptr, 0, 20, onTimer);
}

ModalDriver::~ModalDriver()
{
    KillTimer(nullptr, timer);
    current = nullptr;
}

std::string messageOf(HWND box)
{
    char text[256], caption[256];
    GetDlgItemTextA(box, 0xFFFF, text, sizeof text);
    GetWindowTextA(box, caption, sizeof caption);
    return std::string(caption) + ": " + text;
}
