// The common file dialogs as chooseFile runs them, answered from a timer in their modal loop.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "app/app_state.h"
#include "files/file_prompt.h"

namespace {

constexpr int FileNameBox = 0x47C;  // the file name field of the common dialogs

// What the timer does: types a name into the file dialog and presses OK (or Cancel when
// the name is empty), then answers the question whether to replace a file.
struct Answers {
    std::string name;
    int replaceAnswer = IDYES;
    bool asked = false;
    bool typed = false;
};
Answers* answers = nullptr;

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
    HWND window = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), findEnabledDialog, reinterpret_cast<LPARAM>(&window));
    if (!window)
        return;
    if (GetDlgItem(window, FileNameBox)) {
        if (answers->typed)
            return;
        answers->typed = true;
        if (answers->name.empty()) {
            PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
        } else {
            SetDlgItemTextA(window, FileNameBox, answers->name.c_str());
            PostMessageA(window, WM_COMMAND, IDOK, 0);
        }
    } else {  // the question
        answers->asked = true;
        PostMessageA(window, WM_COMMAND, answers->replaceAnswer, 0);
    }
}

bool choose(int mode, FileKind kind, Answers& a, char* path)
{
    answers = &a;
    const UINT_PTR timer = SetTimer(nullptr, 0, 50, onTimer);
    const bool ok = chooseFile(nullptr, path, mode, kind);
    KillTimer(nullptr, timer);
    answers = nullptr;
    return ok;
}

class FilePrompt : public ::testing::Test {
protected:
    void SetUp() override
    {
        appState.instance = GetModuleHandleA(nullptr);
        GetTempPathA(MAX_PATH, folder);
        folder[strlen(folder) - 1] = '\0';  // no trailing backslash
        existing = std::string(folder) + "\\tovira-prompt.fpp";
        FILE* file = fopen(existing.c_str(), "w");
        fclose(file);
        strcpy(appState.puzzleFolder, "C:\\");
    }
    void TearDown() override { DeleteFileA(existing.c_str()); }

    char folder[MAX_PATH];
    std::string existing;
};

}  // namespace

TEST_F(FilePrompt, ReplacingAnExistingFileNeedsAYes)
{
    char path[MAX_PATH];
    Answers yes{existing, IDYES};
    EXPECT_TRUE(choose(SavePrompt, PuzzleFile, yes, path));
    EXPECT_TRUE(yes.asked);
    EXPECT_STREQ(existing.c_str(), path);
    EXPECT_STREQ(folder, appState.puzzleFolder);  // the next prompt starts there

    for (int refusal : {IDNO, IDCANCEL}) {
        strcpy(appState.puzzleFolder, "C:\\");
        Answers no{existing, refusal};
        EXPECT_FALSE(choose(SavePrompt, PuzzleFile, no, path));
        EXPECT_TRUE(no.asked);
        EXPECT_STREQ("C:\\", appState.puzzleFolder);
    }
}

TEST_F(FilePrompt, ANewFileIsTakenWithoutAQuestion)
{
    char path[MAX_PATH];
    const std::string fresh = std::string(folder) + "\\tovira-new.fpp";
    DeleteFileA(fresh.c_str());
    Answers a{fresh};
    EXPECT_TRUE(choose(SavePrompt, PuzzleFile, a, path));
    EXPECT_FALSE(a.asked);
    EXPECT_STREQ(fresh.c_str(), path);
}

TEST_F(FilePrompt, CancellingLeavesAnEmptyPath)
{
    char path[MAX_PATH] = "stale";
    Answers cancel{""};
    EXPECT_FALSE(choose(OpenPrompt, PictureFile, cancel, path));
    EXPECT_STREQ("", path);
}
