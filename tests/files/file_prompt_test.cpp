// The common file dialogs as chooseFile runs them, answered from their own modal loop.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "app/app_state.h"
#include "files/file_prompt.h"
#include "tests/support/modal_driver.h"

namespace {

constexpr int FileNameBox = 0x47C;  // the file name field of the common dialogs

// Types name into the file dialog and presses OK (Cancel for an empty name); answers the
// question whether to replace a file with replaceAnswer. Returns chooseFile's result.
bool choose(int mode, const std::string& name, char* path, int replaceAnswer = IDYES,
            bool* asked = nullptr)
{
    bool typed = false;
    ModalDriver driver([&](HWND dialog) {
        if (!GetDlgItem(dialog, FileNameBox)) {  // the question
            if (asked)
                *asked = true;
            PostMessageA(dialog, WM_COMMAND, replaceAnswer, 0);
        } else if (!typed) {
            typed = true;
            SetDlgItemTextA(dialog, FileNameBox, name.c_str());
            PostMessageA(dialog, WM_COMMAND, name.empty() ? IDCANCEL : IDOK, 0);
        }
    });
    return chooseFile(nullptr, path, mode, mode == SavePrompt ? PuzzleFile : PictureFile);
}

class FilePrompt : public ::testing::Test {
protected:
    void SetUp() override
    {
        appState.instance = GetModuleHandleA(nullptr);
        GetTempPathA(MAX_PATH, folder);
        folder[strlen(folder) - 1] = '\0';  // no trailing backslash
        existing = std::string(folder) + "\\tovira-prompt.fpp";
        fclose(fopen(existing.c_str(), "w"));
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
    bool asked = false;
    EXPECT_TRUE(choose(SavePrompt, existing, path, IDYES, &asked));
    EXPECT_TRUE(asked);
    EXPECT_STREQ(existing.c_str(), path);
    EXPECT_STREQ(folder, appState.puzzleFolder);  // the next prompt starts there

    for (int refusal : {IDNO, IDCANCEL}) {
        strcpy(appState.puzzleFolder, "C:\\");
        EXPECT_FALSE(choose(SavePrompt, existing, path, refusal));
        EXPECT_STREQ("C:\\", appState.puzzleFolder);
    }
}
