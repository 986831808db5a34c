// The size-and-pieces dialog, run for real and answered from its own modal loop.
#include <gtest/gtest.h>

#include <vector>

#include "app/app_state.h"
#include "files/make_parameters.h"
#include "files/picture.h"
#include "files/size_dialog.h"
#include "resources/resource.h"
#include "tests/support/modal_driver.h"

namespace {

constexpr int AdjustToImage = 1, KeepRatio = 2, AdjustToScreen = 4;
const std::string TooLarge = "Input error: Input value greater than 9999";

// Typed values and check boxes; each entry is one press of OK.
struct Entry {
    const char* first;
    const char* second;
    int checks;
};

// What the dialog showed and said while it ran.
struct DialogRun {
    INT_PTR result;
    std::string title;
    bool checkBoxesShown = false;
    std::vector<std::string> messages;
};

// Plays the entries one after another, answering every message box; with none left the
// dialog is cancelled.
DialogRun run(SizeDialogMode mode, std::vector<Entry> entries)
{
    DialogRun r{};
    size_t next = 0;
    ModalDriver driver([&](HWND dialog) {
        if (!GetDlgItem(dialog, IDC_SIZE_FIRST_VALUE)) {  // a message box
            r.messages.push_back(messageOf(dialog));
            PostMessageA(dialog, WM_COMMAND, IDOK, 0);
            return;
        }
        char title[128];
        GetWindowTextA(dialog, title, sizeof title);
        r.title = title;
        r.checkBoxesShown = IsWindowVisible(GetDlgItem(dialog, IDC_SIZE_KEEP_RATIO));
        if (next == entries.size()) {
            PostMessageA(dialog, WM_COMMAND, IDC_SIZE_CANCEL, 0);
            return;
        }
        const Entry& e = entries[next++];
        SetDlgItemTextA(dialog, IDC_SIZE_FIRST_VALUE, e.first);
        SetDlgItemTextA(dialog, IDC_SIZE_SECOND_VALUE, e.second);
        CheckDlgButton(dialog, IDC_SIZE_ADJUST_TO_IMAGE, e.checks & AdjustToImage);
        CheckDlgButton(dialog, IDC_SIZE_KEEP_RATIO, (e.checks & KeepRatio) != 0);
        CheckDlgButton(dialog, IDC_SIZE_ADJUST_TO_SCREEN, (e.checks & AdjustToScreen) != 0);
        PostMessageA(dialog, WM_COMMAND, IDC_SIZE_OK, 0);
    });
    r.result = showSizeDialog(nullptr, mode);
    return r;
}

class SizeDialog : public ::testing::Test {
protected:
    void SetUp() override
    {
        appState.instance = GetModuleHandleA(nullptr);
        appState.areaWidth = 819;  // 80 % of a 1024 x 768 screen
        appState.areaHeight = 614;
        makeParameters = MakeParameters{};
        thePicture.aspectRatio = 1.0f;
        thePicture.naturalWidth = 300;
        thePicture.naturalHeight = 200;
    }
};

}  // namespace

TEST_F(SizeDialog, PixelsUpTo9999AreTakenAndLongerValuesRefusedKeepingAValidOther)
{
    DialogRun r = run(Pixels, {{"10000", "500", 0}});  // then Cancel
    EXPECT_EQ(IDC_SIZE_CANCEL, r.result);
    EXPECT_EQ("Enter Puzzle Size in pixels", r.title);
    EXPECT_TRUE(r.checkBoxesShown);
    EXPECT_EQ(std::vector<std::string>{TooLarge}, r.messages);
    EXPECT_EQ(0, makeParameters.width);
    EXPECT_EQ(500, makeParameters.height);
    EXPECT_EQ(IDC_SIZE_OK, run(Pixels, {{"9999", "1234", 0}}).result);
    EXPECT_EQ(9999, makeParameters.width);
    EXPECT_EQ(1234, makeParameters.height);
}

TEST_F(SizeDialog, PiecesUpTo999AreTakenAndAThousandRefused)
{
    makeParameters.width = 9999;
    makeParameters.height = 1000;
    DialogRun r = run(Pieces, {{"1000", "8", 0}, {"999", "8", 0}});
    EXPECT_EQ("Enter Number of Pieces", r.title);
    EXPECT_FALSE(r.checkBoxesShown);
    EXPECT_EQ(std::vector<std::string>{TooLarge}, r.messages);
    EXPECT_EQ(999, makeParameters.columns);
    EXPECT_EQ(8, makeParameters.rows);
}

TEST_F(SizeDialog, KeepRatioShrinksTheTypedSizeAlsoAfterThePiecesDialog)
{
    thePicture.aspectRatio = 1.5f;
    run(Pixels, {{"800", "800", KeepRatio}});
    EXPECT_EQ(800, makeParameters.width);
    EXPECT_EQ(533, makeParameters.height);

    thePicture.aspectRatio = 0.75f;
    run(Pixels, {{"800", "800", KeepRatio}});
    EXPECT_EQ(600, makeParameters.width);
    EXPECT_EQ(800, makeParameters.height);

    makeParameters.width = makeParameters.height = 400;
    run(Pieces, {{"4", "4", 0}});
    EXPECT_EQ(300, makeParameters.width);
}

TEST_F(SizeDialog, ScreenSizeWinsOverImageSizeAndKeepsTheRatio)
{
    run(Pixels, {{"50", "50", AdjustToScreen | AdjustToImage}});
    EXPECT_EQ(614, makeParameters.width);  // the 819 x 614 area fitted to a square picture
    EXPECT_EQ(614, makeParameters.height);

    run(Pixels, {{"50", "50", AdjustToImage}});
    EXPECT_EQ(300, makeParameters.width);
    EXPECT_EQ(200, makeParameters.height);
    EXPECT_TRUE(makeParameters.adjustToImage);
    EXPECT_FALSE(makeParameters.adjustToScreen);
}

TEST_F(SizeDialog, PuzzlesWhosePiecesCannotBePlayedAreRefused)
{
    const std::string TooSmall =
        "Input error: Pieces this small cannot be played: each needs at least 10 x 10 pixels. "
        "Choose a larger puzzle or fewer pieces.";
    DialogRun r = run(Pixels, {{"0", "300", 0}, {"400", "300", 0}});
    EXPECT_EQ(std::vector<std::string>{TooSmall}, r.messages);
    EXPECT_EQ(400, makeParameters.width);

    // 500 columns on 400 pixels, or none: refused, and the values stay as they were.
    makeParameters.columns = makeParameters.rows = 6;
    r = run(Pieces, {{"500", "3", 0}, {"0", "3", 0}});
    EXPECT_EQ(IDC_SIZE_CANCEL, r.result);
    EXPECT_EQ(2u, r.messages.size());
    EXPECT_EQ(6, makeParameters.columns);
    EXPECT_EQ(6, makeParameters.rows);
    EXPECT_EQ(IDC_SIZE_OK, run(Pieces, {{"40", "30", 0}}).result);  // cells of 10 x 10
}
