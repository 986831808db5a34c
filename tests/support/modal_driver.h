#pragma once
// Answers this thread's modal dialogs from a timer, which fires inside their own modal loop.
#include <functional>
#include <string>
#include <windows.h>

class ModalDriver {
public:
    // answer is called with the enabled dialog on top each time the timer fires.
    explicit ModalDriver(std::function<void(HWND dialog)> answer);
    ~ModalDriver();
    ModalDriver(const ModalDriver&) = delete;
    ModalDriver& operator=(const ModalDriver&) = delete;

private:
    UINT_PTR timer;
};

// "caption: text" of a message box.
std::string messageOf(HWND box);
