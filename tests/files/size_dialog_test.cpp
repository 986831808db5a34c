// The size-and-pieces dialog, run for real and answered from a timer in its own modal loop.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "app/app_state.h"
#include "files/file_prompt.h"
#include "files/make_parameters.h"
#include "files/picture.h"
#include "files/size_dialog.h"
#include "resources/resource.h"

namespace {

using Step = std::function<void(HWND dialog)>;

// What the timer does: answers every message box (remembering its text) and plays the
// steps, one per time the dialog waits for input, each ending with a press of OK.
struct Script {
    std::vector<Step> steps;
    size_t next = 0;
    std::vector<std::string> messages;
    std::string title;
    bool checkBoxesShown = false;
};

Script* script = nullptr;

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
    if (!GetDlgItem(window, IDC_SIZE_FIRST_VALUE)) {  // a message box
        char text[256], caption[256];
        GetDlgItemTextA(window, 0xFFFF, text, sizeof text);
        GetWindowTextA(window, caption, sizeof caption);
        script->messages.push_back(std::string(caption) + ": " + text);
        PostMessageA(window, WM_COMMAND, IDOK, 0);
        return;
    }
    char title[256];
    GetWindowTextA(window, title, sizeof title);
    script->title = title;
    script->checkBoxesShown = IsWindowVisible(GetDlgItem(window, IDC_SIZE_KEEP_RATIO));
    if (script->next < script->steps.size()) {
        script->steps[script->next++](window);
        PostMessageA(window, WM_COMMAND, IDC_SIZE_OK, 0);
    } else {
        PostMessageA(window, WM_COMMAND, IDC_SIZE_CANCEL, 0);
    }
}

INT_PTR run(SizeDialogMode mode, Script& s)
{
    script = &s;
    const UINT_PTR timer = SetTimer(nullptr, 0, 20, onTimer);
    const INT_PTR result = showSizeDialog(nullptr, mode);
    KillTimer(nullptr, timer);
    script = nullptr;
    return result;
}

Step values(const char* first, const char* second, int checks = 0)
{
    return [=](HWND dialog) {
        SetDlgItemTextA(dialog, IDC_SIZE_FIRST_VALUE, first);
        SetDlgItemTextA(dialog, IDC_SIZE_SECOND_VALUE, second);
        CheckDlgButton(dialog, IDC_SIZE_ADJUST_TO_IMAGE, (checks & 1) ? BST_CHECKED : BST_UNCHECKED);
        CheckDlgButton(dialog, IDC_SIZE_KEEP_RATIO, (checks & 2) ? BST_CHECKED : BST_UNCHECKED);
        CheckDlgButton(dialog, IDC_SIZE_ADJUST_TO_SCREEN, (checks & 4) ? BST_CHECKED : BST_UNCHECKED);
    };
}

constexpr int AdjustToImage = 1, KeepRatio = 2, AdjustToScreen = 4;
const std::string TooLarge = "Input error: Input value greater than 9999";

class SizeDialog : public ::testing::Test {
protected:
    void SetUp() override
    {
        appState.instance = GetModuleHandleA(nullptr);
        appState.languageOffset = 0;
        appState.areaWidth = 819;
        appState.areaHeight = 614;
        makeParameters = MakeParameters{};
        thePicture.aspectRatio = 1.0f;
        thePicture.naturalWidth = 300;
        thePicture.naturalHeight = 200;
    }
};

}  // namespace

TEST_F(SizeDialog, PixelsUpTo9999AreAccepted)
{
    Script s;
    s.steps = {values("9999", "1234")};
    EXPECT_EQ(IDC_SIZE_OK, run(Pixels, s));
    EXPECT_EQ("Enter Puzzle Size in pixels", s.title);
    EXPECT_TRUE(s.checkBoxesShown);
    EXPECT_TRUE(s.messages.empty());
    EXPECT_EQ(9999, makeParameters.width);
    EXPECT_EQ(1234, makeParameters.height);
}

TEST_F(SizeDialog, TenThousandPixelsAreRefusedAndTheDialogStays)
{
    Script s;
    s.steps = {values("10000", "500"), values("800", "500")};
    EXPECT_EQ(IDC_SIZE_OK, run(Pixels, s));
    ASSERT_EQ(1u, s.messages.size());
    EXPECT_EQ(TooLarge, s.messages[0]);
    EXPECT_EQ(800, makeParameters.width);
    EXPECT_EQ(500, makeParameters.height);
}

TEST_F(SizeDialog, AValidSecondValueIsStoredEvenWhenTheFirstIsRefused)
{
    Script s;
    s.steps = {values("12345", "321")};  // then Cancel
    EXPECT_EQ(IDC_SIZE_CANCEL, run(Pixels, s));
    EXPECT_EQ(1u, s.messages.size());
    EXPECT_EQ(0, makeParameters.width);
    EXPECT_EQ(321, makeParameters.height);
}

TEST_F(SizeDialog, PiecesUpTo999AreAcceptedAndAThousandRefused)
{
    Script s;
    s.steps = {values("1000", "8"), values("999", "8")};
    EXPECT_EQ(IDC_SIZE_OK, run(Pieces, s));
    EXPECT_EQ("Enter Number of Pieces", s.title);
    EXPECT_FALSE(s.checkBoxesShown);
    ASSERT_EQ(1u, s.messages.size());
    EXPECT_EQ(TooLarge, s.messages[0]);
    EXPECT_EQ(999, makeParameters.columns);
    EXPECT_EQ(8, makeParameters.rows);
}

TEST_F(SizeDialog, KeepRatioShrinksTheTypedSizeToThePictures)
{
    thePicture.aspectRatio = 1.5f;
    Script s;
    s.steps = {values("800", "800", KeepRatio)};
    run(Pixels, s);
    EXPECT_EQ(800, makeParameters.width);
    EXPECT_EQ(533, makeParameters.height);
    EXPECT_TRUE(makeParameters.keepRatio);

    thePicture.aspectRatio = 0.75f;
    s = Script{};
    s.steps = {values("800", "800", KeepRatio)};
    run(Pixels, s);
    EXPECT_EQ(600, makeParameters.width);
    EXPECT_EQ(800, makeParameters.height);

    // The flag stays and also applies after the pieces dialog.
    makeParameters.width = makeParameters.height = 400;
    s = Script{};
    s.steps = {values("4", "4")};
    run(Pieces, s);
    EXPECT_EQ(300, makeParameters.width);
}

TEST_F(SizeDialog, ScreenSizeWinsOverImageSizeAndKeepsTheRatio)
{
    Script s;
    s.steps = {values("50", "50", AdjustToScreen | AdjustToImage)};
    run(Pixels, s);
    EXPECT_EQ(614, makeParameters.width);  // the 819 x 614 area fitted to a square picture
    EXPECT_EQ(614, makeParameters.height);

    s = Script{};
    s.steps = {values("50", "50", AdjustToImage)};
    run(Pixels, s);
    EXPECT_EQ(300, makeParameters.width);
    EXPECT_EQ(200, makeParameters.height);
    EXPECT_TRUE(makeParameters.adjustToImage);
    EXPECT_FALSE(makeParameters.adjustToScreen);
}

TEST_F(SizeDialog, CancelKeepsTheValues)
{
    makeParameters.columns = 12;
    makeParameters.rows = 8;
    Script s;  // no steps: the timer cancels
    EXPECT_EQ(IDC_SIZE_CANCEL, run(Pieces, s));
    EXPECT_EQ(12, makeParameters.columns);
    EXPECT_EQ(8, makeParameters.rows);
}

TEST(FolderOf, SplitsAtTheLastBackslash)
{
    char folder[MAX_PATH], name[MAX_PATH];
    folderOf("C:\\Pics\\cats\\cat.jpg", folder, name);
    EXPECT_STREQ("C:\\Pics\\cats", folder);
    EXPECT_STREQ("cat.jpg", name);
    folderOf("cat.jpg", folder, nullptr);
    EXPECT_STREQ("", folder);
}
