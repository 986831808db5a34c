// The shell: menu texts in both languages, the enabling pass, the toolbar's commands and
// prompts, and the tooltip's timing.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <windows.h>
#include <commctrl.h>

#include "app/app_state.h"
#include "app/commands.h"
#include "app/history.h"
#include "app/make_progress.h"
#include "app/toolbar.h"
#include "app/tooltip.h"
#include "files/collection.h"
#include "files/picture.h"
#include "model/puzzle.h"
#include "play/drag.h"
#include "resources/resource.h"
#include "tests/support/game_session.h"
#include "tests/support/modal_driver.h"

namespace {

std::string menuText(int item, UINT by = MF_BYCOMMAND, HMENU menu = nullptr)
{
    char text[64] = {};
    GetMenuStringA(menu ? menu : appState.menu, item, text, sizeof text, by);
    return text;
}

std::string stringOf(int id)
{
    char text[64] = {};
    LoadStringA(appState.instance, id, text, sizeof text);
    return text;
}

bool grayed(int menuId)
{
    return (GetMenuState(appState.menu, menuId, MF_BYCOMMAND) & MF_GRAYED) != 0;
}

// The titles of the dialogs shown while action runs, each cancelled.
std::string dialogsDuring(const std::function<void()>& action)
{
    std::string seen;
    ModalDriver driver([&](HWND dialog) {
        char title[64];
        GetWindowTextA(dialog, title, sizeof title);
        seen += std::string(title) + ";";
        PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    action();
    return seen;
}

// Pumps messages until the tip shows; the milliseconds it took, or -1.
int millisecondsUntilTip(int limit)
{
    const DWORD start = GetTickCount();
    while (!appState.tip.visible && GetTickCount() - start < static_cast<DWORD>(limit)) {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
        Sleep(5);
    }
    return appState.tip.visible ? static_cast<int>(GetTickCount() - start) : -1;
}

class Shell : public ::testing::Test {
protected:
    void SetUp() override { session::mainWindow(); }
    void TearDown() override
    {
        resetCollection(false);
        loadedPicturePath[0] = '\0';  // closing whitened the picture: load it afresh
        SetInterface(IDM_ADVANCED_INTERFACE);
        session::end();
    }
};

}  // namespace

TEST_F(Shell, EveryMenuTextIsItsStringInBothLanguages)
{
    for (int offset : {SpanishOffset, 0}) {
        appState.languageOffset = offset;
        SetMenuTexts();
        for (int id = IDM_FIRST; id <= IDM_LAST; ++id) {
            if (GetMenuState(appState.menu, id, MF_BYCOMMAND) == static_cast<UINT>(-1))
                continue;
            const int sound = appState.soundOn ? IDS_SOUND_OFF : IDS_SOUND_ON;
            const int string = id == IDM_SOUND ? sound : id - MenuTextBase;
            EXPECT_EQ(stringOf(string + offset), menuText(id)) << id;
        }
        EXPECT_EQ(stringOf(IDS_MENU_COLLECTION + offset), menuText(1, MF_BYPOSITION));
        EXPECT_EQ(stringOf(IDS_MENU_HELP + offset), menuText(3, MF_BYPOSITION));
        EXPECT_EQ(stringOf(IDS_RECENT_PUZZLES + offset),
                  menuText(15, MF_BYPOSITION, GetSubMenu(appState.menu, 0)));
    }
    EXPECT_EQ("&Abrir Imagen", stringOf(IDM_OPEN_IMAGE - MenuTextBase + SpanishOffset));
}

TEST_F(Shell, EnablingFollowsThePuzzleTheCollectionAndTheInterface)
{
    // Every button shows what its menu item shows.
    auto buttonsMatchMenu = [] {
        for (int b = IDT_OPEN_PUZZLE; b <= IDT_PATTERN; ++b) {
            if (b == IDT_SET_PIECES || b == IDT_SET_SIZE)  // grayed by the interface too
                continue;
            EXPECT_EQ(grayed(b + ToolbarCommandShift),
                      !IsWindowEnabled(GetDlgItem(appState.toolbar, b)))
                << b;
        }
    };
    appState.pictureLoaded = false;
    UpdateCommandStates();
    for (int id : {IDM_SAVE_PUZZLE, IDM_MAKE, IDM_SAVE_COLLECTION, IDM_NEXT_PUZZLE, IDM_ADD_TRAY})
        EXPECT_TRUE(grayed(id)) << id;
    EXPECT_FALSE(grayed(IDM_OPEN_PUZZLE));
    buttonsMatchMenu();

    session::makePuzzle(300, 200, 3, 2);
    RunCommand(IDT_SOUND, 0);  // any command ends in the enabling pass
    for (int id : {IDM_SAVE_PUZZLE, IDM_SAVE_PUZZLE_AS, IDM_SHUFFLE, IDM_ADD_TRAY, IDM_MAKE})
        EXPECT_FALSE(grayed(id)) << id;
    EXPECT_TRUE(grayed(IDM_SAVE_COLLECTION));
    buttonsMatchMenu();
    RunCommand(IDT_SOUND, 0);

    RunCommand(IDT_NEW_COLLECTION, 0);
    EXPECT_FALSE(grayed(IDM_ADD_IMAGE));
    EXPECT_TRUE(grayed(IDM_REMOVE_IMAGE));
    const std::string picture = session::picture("picture300x200.bmp");
    for (int i = 0; i < 2; ++i)
        theCollection.addEntry(picture.c_str(), 300, 200, false, 3, 2);
    RunCommand(IDT_PREVIOUS_PUZZLE, 0);  // to the first of two
    EXPECT_TRUE(grayed(IDM_PREVIOUS_PUZZLE));
    EXPECT_FALSE(grayed(IDM_NEXT_PUZZLE));
    EXPECT_FALSE(grayed(IDM_REMOVE_IMAGE));
    buttonsMatchMenu();
    RunCommand(IDT_NEXT_PUZZLE, 0);
    EXPECT_FALSE(grayed(IDM_PREVIOUS_PUZZLE));
    EXPECT_TRUE(grayed(IDM_NEXT_PUZZLE));

    // The simple interface withholds the editing commands the state rules do not decide,
    // and shows eleven buttons.
    RouteCommand(session::mainWindow(), IDM_SIMPLE_INTERFACE, 0);
    EXPECT_TRUE(grayed(IDM_OPEN_IMAGE));
    EXPECT_TRUE(grayed(IDM_SET_DEFAULT));
    EXPECT_FALSE(grayed(IDM_ADD_IMAGE));
    int shown = 0;
    for (int b = IDT_OPEN_IMAGE; b <= IDT_HELP; ++b)
        shown += (GetWindowLongA(GetDlgItem(appState.toolbar, b), GWL_STYLE) & WS_VISIBLE) ? 1 : 0;
    EXPECT_EQ(11, shown);
}

TEST_F(Shell, SavingAndOpeningAskOnlyInTheAdvancedInterface)
{
    EXPECT_EQ("", dialogsDuring([] { RunCommand(IDT_SAVE_PUZZLE, 0); }));  // nothing made
    session::makePuzzle(300, 200, 3, 2);
    EXPECT_EQ("Save As;", dialogsDuring([] { RunCommand(IDT_SAVE_PUZZLE, 0); }));
    EXPECT_STREQ("", thePuzzle.puzzlePath);
    EXPECT_EQ("Open;", dialogsDuring([] { RunCommand(IDT_OPEN_PUZZLE, 0); }));

    // The simple interface saves the picture's own file without a word, and only then
    // offers to open it; it is no recent puzzle.
    RouteCommand(session::mainWindow(), IDM_SIMPLE_INTERFACE, 0);
    char path[MAX_PATH];
    AutoPuzzlePath(appState.autoPuzzleFolder, loadedPicturePath, ".fpp", path);
    DeleteFileA(path);
    UpdateCommandStates();
    EXPECT_TRUE(grayed(IDM_OPEN_PUZZLE));
    const int recent = appState.recent[RecentPuzzles].count;
    EXPECT_EQ("", dialogsDuring([] { RunCommand(IDT_SAVE_PUZZLE, 0); }));
    EXPECT_STREQ(path, thePuzzle.puzzlePath);
    EXPECT_FALSE(grayed(IDM_OPEN_PUZZLE));
    EXPECT_EQ(recent, appState.recent[RecentPuzzles].count);
    DeleteFileA(path);
}

TEST_F(Shell, TipsComeAfterASecondThenSoonerAndNotTwiceForOneVisit)
{
    HWND open = GetDlgItem(appState.toolbar, IDT_OPEN_IMAGE);
    HWND sound = GetDlgItem(appState.toolbar, IDT_SOUND);
    HideTip(true);
    appState.tip.quick = appState.tip.shown = false;
    RequestTip(open, 5, 5);
    const int first = millisecondsUntilTip(3000);
    EXPECT_GE(first, 900);
    char text[64];
    GetWindowTextA(appState.tipWindow, text, sizeof text);
    EXPECT_STREQ("Open Image", text);
    POINT below{5, 5 + TipBelowPointer};
    MapWindowPoints(open, appState.mainWindow, &below, 1);
    RECT place;
    GetWindowRect(appState.tipWindow, &place);
    MapWindowPoints(nullptr, appState.mainWindow, reinterpret_cast<POINT*>(&place), 2);
    EXPECT_EQ(below.x, place.left);
    EXPECT_EQ(below.y, place.top);

    RequestTip(sound, 5, 5);  // the next button: sooner, and named by what a click does
    EXPECT_FALSE(appState.tip.visible);
    const int next = millisecondsUntilTip(3000);
    EXPECT_GE(next, 150);
    EXPECT_LT(next, 600);
    GetWindowTextA(appState.tipWindow, text, sizeof text);
    EXPECT_EQ(appState.soundOn ? "Sound Off" : "Sound On", std::string(text));

    RunCommand(IDT_SOUND, 0);  // a click hides the tip
    EXPECT_FALSE(appState.tip.visible || appState.tip.quick);
    RunCommand(IDT_SOUND, 0);
    RequestTip(sound, 5, 5);
    appState.tip.armed = true;
    OnTipTimer(TipShowTimer);
    OnTipTimer(TipHideTimer);  // hidden after a while: not again for the same button
    RequestTip(sound, 6, 6);
    EXPECT_EQ(-1, millisecondsUntilTip(400));

    // A pointer move over the board forgets the button and the quick mode.
    handleMouseMove(appState.mainWindow, session::at(500, 500));
    EXPECT_EQ(nullptr, appState.tip.currentButton);
    EXPECT_FALSE(appState.tip.quick);
}

TEST_F(Shell, AMakeLongerThanHalfASecondShowsAProgressBarThatGoesAfterwards)
{
    HWND window = session::mainWindow();
    auto bar = [&] { return FindWindowExA(window, nullptr, "msctls_progress32", nullptr); };
    beginMakeProgress();
    reportMakeProgress(1, 10);
    EXPECT_EQ(nullptr, bar());  // quick Makes show nothing
    Sleep(600);
    reportMakeProgress(6, 10);
    ASSERT_NE(nullptr, bar());
    EXPECT_EQ(6, SendMessageA(bar(), PBM_GETPOS, 0, 0));
    endMakeProgress();
    EXPECT_EQ(nullptr, bar());
}
