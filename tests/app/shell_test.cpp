// The shell: what a first start writes and shows, options stored at once and brought back by the
// next start, the commands offered in every state, recent lists, Spanish texts and buttons.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <set>
#include <sstream>

#include "app/history.h"
#include "app/settings.h"
#include "app/toolbar.h"
#include "tests/app/scenario.h"

namespace {

constexpr int OpenThree = 0;  // not a command: the scenario's collection opened
constexpr int Next = IDM_NEXT_PUZZLE, Simple = IDM_SIMPLE_INTERFACE;

bool menuHas(int id, UINT flag)
{
    return (GetMenuState(appState.menu, id, MF_BYCOMMAND) & flag) != 0;
}

// The menus as the player scans them, menus apart: mark for an item with flag, else x.
std::string menus(UINT flag = MF_GRAYED, char mark = '.')
{
    std::string marks;
    for (int m = 0; m < GetMenuItemCount(appState.menu); ++m) {
        HMENU menu = GetSubMenu(appState.menu, m);
        marks += m ? " " : "";
        for (int i = 0; i < GetMenuItemCount(menu); ++i) {
            const UINT id = GetMenuItemID(menu, i);  // 0 for a separator, -1 for a submenu
            if (id != 0 && id != UINT(-1))
                marks += menuHas(id, flag) ? mark : 'x';
        }
    }
    return marks;
}

std::string menuText(UINT item, UINT by = MF_BYCOMMAND)
{
    char text[MAX_PATH + 8] = {};
    GetMenuStringA(appState.menu, item, text, sizeof text, by);
    return text;
}

using Shell = scenario::Neutral;

}  // namespace

// Without a default collection, the advanced interface; the language dialog was answered
// without its check box.
TEST(FirstStart, WritesEveryDefaultMakesTheWorkingFoldersAndShowsTheAdvancedInterface)
{
    const std::string start = game::folder();
    const std::set<std::string> written = {"Options\\Default Collection=",
                                           "Options\\Interface Type=1",
                                           "Options\\Outline=1",
                                           "Options\\OutlineSet=0",
                                           "Options\\Pictures Folder=" + start,
                                           "Options\\Puzzle Collection Folder=" + start + "\\Col",
                                           "Options\\Puzzle Folder=" + start + "\\Puz",
                                           "Options\\SupLangDlg=0",
                                           "Options\\TextLanguage=0"};
    std::set<std::string> lines;
    std::istringstream in(game::firstStartSettings());
    for (std::string line; std::getline(in, line);)
        lines.insert(line);
    EXPECT_EQ(written, lines);

    for (const char* sub : {"\\Puz", "\\Col"})
        EXPECT_TRUE(game::exists(start + sub)) << sub;
    EXPECT_EQ("xxxxxxxxxxx xxxxxxxxxxxx xvxxvxx xx", menus(MF_CHECKED, 'v'));
    char title[100];
    GetWindowTextA(game::window(), title, sizeof title);
    EXPECT_STREQ("Turn your favorite images into jigsaw puzzles", title);
}

// Without an interface stored, a start with a default collection takes the simple one.
TEST_F(Shell, OptionsAreStoredAtOnceAndTheNextStartBringsBackWhatTheLastOneLeft)
{
    const std::string collection = scenario::openThree();
    WriteSetting(appState.optionsKey, "SupLangDlg", "1");
    const std::tuple<int, const char*, std::string> commands[] = {
        {IDM_SIMPLE_INTERFACE, "Interface Type", "0"},
        {IDM_ADVANCED_INTERFACE, "Interface Type", "1"},
        {IDM_REACTIVATE_LANGUAGE, "SupLangDlg", "0"},
        {IDM_SET_DEFAULT, "Default Collection", collection},
        {IDM_RESET_DEFAULT, "Default Collection", ""},
        {IDM_SET_DEFAULT, "Default Collection", collection}};
    for (const auto& [command, name, stored] : commands) {
        game::command(command);
        EXPECT_EQ(stored, game::setting("Options", name)) << command;
    }
    EXPECT_EQ("xxxxxxxxxxx xxxxxxxxxxxx xvxxvxx xx", menus(MF_CHECKED, 'v'));

    game::command(IDM_DRAW_OUTLINE);      // off
    game::command(IDM_DRAW_SET_OUTLINE);  // on
    AddRecent(appState.recent[RecentPuzzles], "C:\\kept.fpp", RecentPuzzles);
    strcpy(appState.puzzleFolder, "C:\\Puzzles");
    game::restart({}, [] {
        HKEY key = nullptr;
        RegOpenKeyExA(HKEY_CURRENT_USER, (std::string(game::SettingsKey) + "\\Options").c_str(), 0,
                      KEY_SET_VALUE, &key);
        RegDeleteValueA(key, "Interface Type");
        RegCloseKey(key);
    });
    EXPECT_TRUE(!appState.drawOutline && appState.drawSetOutline);
    EXPECT_EQ("xxxxxxxxxxx xxxxxxxxxxxx vxxxxvx xx", menus(MF_CHECKED, 'v'));
    EXPECT_STREQ("C:\\kept.fpp", appState.recent[RecentPuzzles].entries[0]);
    EXPECT_STREQ("C:\\Puzzles", appState.puzzleFolder);
    EXPECT_TRUE(appState.collectionOpen && collection == theCollection.path);
    EXPECT_EQ(SimpleInterface, appState.interfaceType);

    game::command(IDM_RESET_DEFAULT);
    game::command(IDM_DRAW_OUTLINE);
    game::command(IDM_DRAW_SET_OUTLINE);
    strcpy(appState.puzzleFolder, (game::folder() + "\\Puz").c_str());
}

// Puzzle: Open Image, Open Puzzle, Save, Save As, Make, Pieces, Size, Show Hidden, Shuffle,
// Tray, Exit. Collection: New, Open, Save, Save As, Close, Add, Remove, Update, Set Default,
// Reset Default, Next, Previous. Options: Simple, Advanced, Sound, Pattern, Outline, Set
// Outline, Language. Help: Topics, About. The toolbar: x a button shown, . one hidden, | a gap.
TEST_F(Shell, EveryMenuItemAndButtonIsOfferedExactlyWhenItsStateAllows)
{
    // From no picture, no puzzle and no collection: the commands, and the menus they leave.
    const std::tuple<const char*, std::vector<int>, std::string> states[] = {
        {"no picture yet", {}, "xx........x xx......xx.. xx..xxx xx"},
        {"a picture opened", {IDM_OPEN_IMAGE}, "xx..xxx...x xx......xx.. xx..xxx xx"},
        {"a puzzle made", {IDM_OPEN_IMAGE, IDM_MAKE}, "xxxxxxxxxxx xx......xx.. xxxxxxx xx"},
        {"a new collection", {IDM_NEW_COLLECTION}, "xx........x xxxxxx..xx.. xx..xxx xx"},
        {"a collection, no picture before", {OpenThree}, "xx..xxx...x xxxxxxxxxxx. xx..xxx xx"},
        {"its middle entry", {OpenThree, Next}, "xx..xxx...x xxxxxxxxxxxx xx..xxx xx"},
        {"its last entry", {OpenThree, Next, Next}, "xx..xxx...x xxxxxxxxxx.x xx..xxx xx"},
        // The simple interface keeps the player in the collection, and offers a puzzle to
        // open once one was saved, without a question, for the picture shown.
        {"simple", {OpenThree, Next, Simple}, "....xxx...x ..xxxxxx..xx xx..xxx xx"},
        {"simple, a puzzle saved",
         {OpenThree, Next, Simple, IDM_MAKE, IDM_SAVE_PUZZLE},
         ".xxxxxxxxxx ..xxxxxx..xx xxxxxxx xx"},
    };
    for (const auto& [state, commands, offered] : states) {
        SCOPED_TRACE(state);
        scenario::neutral();
        for (int command : commands) {
            if (command == OpenThree)
                scenario::openThree();
            else if (command == IDM_OPEN_IMAGE)
                scenario::choosePicture(IDM_OPEN_IMAGE, game::picture("picture300x200.bmp"));
            else
                game::answering([&] { game::command(command); }, {"cancel"});
        }
        EXPECT_EQ(offered, menus());
        std::string toolbar;
        for (int b = IDT_OPEN_IMAGE, right = -1; b <= IDT_HELP; ++b) {
            HWND button = GetDlgItem(appState.toolbar, b);
            RECT box;
            GetWindowRect(button, &box);
            const bool shown = GetWindowLongA(button, GWL_STYLE) & WS_VISIBLE;
            toolbar += !shown                           ? "."
                       : right < 0 || box.left == right ? "x"
                       : box.left - right == ToolbarGap ? "|x"
                                                        : "?";
            right = shown ? box.right : right;
            const int item = b == IDT_HELP ? IDM_HELP_TOPICS : b + ToolbarCommandShift;
            EXPECT_TRUE(!shown || menuHas(item, MF_GRAYED) != (IsWindowEnabled(button) != 0))
                << "button " << b;
        }
        EXPECT_EQ(appState.interfaceType == SimpleInterface ? ".xx|x..xx.......xx|xxx|x"
                                                            : "xxx|xxxxxx|xxxxxxxx|xxx|x",
                  toolbar);
    }
    DeleteFileA((game::folder() + "\\Puz\\picture200x300.fpp").c_str());
}

// A path listed already stays where it is; an ampersand shows as written.
TEST_F(Shell, RecentListsPutTheNewestFirstKeepThreeWithoutDuplicatesAndOpenTheirEntries)
{
    const std::tuple<int, int, std::string> kinds[] = {
        {RecentPictures, IDM_RECENT_PICTURE_FIRST, "PictHist"},
        {RecentPuzzles, IDM_RECENT_PUZZLE_FIRST, "PuzHist"},
        {RecentCollections, IDM_RECENT_COLLECTION_FIRST, "ColHist"}};
    for (const auto& [kind, firstItem, stem] : kinds) {
        const std::string path = "C:\\" + stem + "\\";
        for (const char* name : {"b", "a&b", "b", "c", "d"})
            AddRecent(appState.recent[kind], (path + name).c_str(), kind);
        SaveRecentLists();
        const std::string listed[] = {path + "d", path + "c", path + "a&b", ""};
        const std::string shown[] = {"&1 " + path + "d", "&2 " + path + "c", "&3 " + path + "a&&b",
                                     ""};
        for (int slot = 0; slot < 4; ++slot) {
            EXPECT_EQ(shown[slot], menuText(firstItem + slot));
            EXPECT_EQ(listed[slot],
                      game::setting("History", (stem + std::to_string(slot)).c_str()));
        }
    }
    scenario::choosePicture(IDM_OPEN_IMAGE, game::picture("picture200x300.gif"));
    scenario::choosePicture(IDM_OPEN_IMAGE, game::picture("picture300x200.gif"));
    game::answering([] { game::command(IDM_RECENT_PICTURE_FIRST + 1); });
    EXPECT_EQ(game::picture("picture200x300.gif"), loadedPicturePath);
}

TEST_F(Shell, SpanishTextsReachTheMenusAndTheMessagesAndTheSizeAndPiecesButtonsTheirDialogs)
{
    const std::string text = game::folder() + "\\text.jpg";
    std::ofstream(text) << "text";
    const std::tuple<UINT, UINT, const char*, const char*> items[] = {
        {IDM_OPEN_IMAGE, MF_BYCOMMAND, "&Open Image", "&Abrir Imagen"},
        {IDM_ADVANCED_INTERFACE, MF_BYCOMMAND, "&Advanced Interface", "Interfaz &Avanzada"},
        {3, MF_BYPOSITION, "&Help", "&Ayuda"}};
    for (const bool spanish : {true, false}) {
        appState.languageOffset = spanish ? SpanishOffset : 0;
        SetMenuTexts();
        for (const auto& [item, by, inEnglish, inSpanish] : items)
            EXPECT_EQ(spanish ? inSpanish : inEnglish, menuText(item, by));
        EXPECT_EQ((spanish
                       ? "Error de tratamiento de archivo: Este archivo no es una imagen que se "
                         "pueda mostrar: "
                       : "File error: This file is not a picture that can be shown: ") +
                      text + "\n",
                  game::answering([&] { openPictureCommand(text.c_str()); }));
        EXPECT_EQ(spanish ? "Acerca de Tovira ToviraPuzzle: \n" : "About Tovira ToviraPuzzle: \n",
                  game::answering([] { game::command(IDM_ABOUT); }));
    }
    DeleteFileA(text.c_str());

    scenario::choosePicture(IDM_OPEN_IMAGE, game::picture("picture300x200.bmp"));
    for (const auto& [button, dialog] : {std::pair{IDT_SET_SIZE, "Enter Puzzle Size in pixels"},
                                         std::pair{IDT_SET_PIECES, "Enter Number of Pieces"}})
        EXPECT_EQ(std::string(dialog) + ": \n",
                  game::answering([&] { SendMessageA(appState.toolbar, WM_COMMAND, button, 0); },
                                  {"cancel"}));
}
