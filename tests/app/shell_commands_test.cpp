// The shell: which commands the menu and the toolbar offer in every state, the recent-file
// lists, the Spanish texts and the toolbar's own buttons.
#include <gtest/gtest.h>

#include <fstream>

#include "app/history.h"
#include "app/toolbar.h"
#include "tests/app/scenario.h"

namespace {

constexpr int OpenThree = 0;  // not a command: the scenario's collection opened

bool grayed(int id)
{
    return (GetMenuState(appState.menu, id, MF_BYCOMMAND) & MF_GRAYED) != 0;
}

// The menus as the player scans them: x for an item offered, . for one grayed, menus apart.
std::string offered()
{
    std::string marks;
    for (int m = 0; m < GetMenuItemCount(appState.menu); ++m) {
        HMENU menu = GetSubMenu(appState.menu, m);
        marks += m ? " " : "";
        for (int i = 0; i < GetMenuItemCount(menu); ++i) {
            const UINT id = GetMenuItemID(menu, i);  // 0 for a separator, -1 for a submenu
            if (id != 0 && id != UINT(-1))
                marks += grayed(id) ? '.' : 'x';
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

void openImage(const char* name)
{
    game::answering([] { game::command(IDM_OPEN_IMAGE); }, {game::picture(name), "ok", "ok"});
}

using Shell = scenario::Neutral;

}  // namespace

TEST_F(Shell, EveryMenuItemAndButtonIsOfferedExactlyWhenItsStateAllows)
{
    // Puzzle: Open Image, Open Puzzle, Save, Save As, Make, Pieces, Size, Show Hidden, Shuffle,
    // Tray, Exit. Collection: New, Open, Save, Save As, Close, Add, Remove, Update, Set Default,
    // Reset Default, Next, Previous. Options: Simple, Advanced, Sound, Pattern, Outline, Set
    // Outline, Language. Help: Topics, About.
    const struct {
        const char* state;
        std::vector<int> commands;  // from no picture, no puzzle and no collection
        const char* offered;
    } states[] = {
        {"no picture yet", {}, "xx........x xx......xx.. xx..xxx xx"},
        {"a picture opened", {IDM_OPEN_IMAGE}, "xx..xxx...x xx......xx.. xx..xxx xx"},
        {"a puzzle made", {IDM_OPEN_IMAGE, IDM_MAKE}, "xxxxxxxxxxx xx......xx.. xxxxxxx xx"},
        {"a new collection", {IDM_NEW_COLLECTION}, "xx........x xxxxxx..xx.. xx..xxx xx"},
        {"a collection opened before any picture",
         {OpenThree},
         "xx..xxx...x xxxxxxxxxxx. xx..xxx xx"},
        {"its middle entry", {OpenThree, IDM_NEXT_PUZZLE}, "xx..xxx...x xxxxxxxxxxxx xx..xxx xx"},
        {"its last entry",
         {OpenThree, IDM_NEXT_PUZZLE, IDM_NEXT_PUZZLE},
         "xx..xxx...x xxxxxxxxxx.x xx..xxx xx"},
        // The simple interface keeps the player in the collection, and offers a puzzle to
        // open once one was saved, without a question, for the picture shown.
        {"simple",
         {OpenThree, IDM_NEXT_PUZZLE, IDM_SIMPLE_INTERFACE},
         "....xxx...x ..xxxxxx..xx xx..xxx xx"},
        {"simple, a puzzle saved",
         {OpenThree, IDM_NEXT_PUZZLE, IDM_SIMPLE_INTERFACE, IDM_MAKE, IDM_SAVE_PUZZLE},
         ".xxxxxxxxxx ..xxxxxx..xx xxxxxxx xx"},
    };
    for (const auto& s : states) {
        SCOPED_TRACE(s.state);
        scenario::neutral();
        for (int command : s.commands) {
            if (command == OpenThree)
                scenario::openThree();
            else if (command == IDM_OPEN_IMAGE)
                openImage("picture300x200.bmp");
            else
                game::answering([&] { game::command(command); }, {"cancel"});
        }
        EXPECT_EQ(s.offered, offered());
        // Every button shows what its menu item shows; the simple interface shows eleven. The
        // toolbar as the player sees it: x a button shown, . one hidden, | a gap.
        std::string toolbar;
        for (int b = IDT_OPEN_IMAGE, right = -1; b <= IDT_HELP; ++b) {
            HWND button = GetDlgItem(appState.toolbar, b);
            RECT box;
            GetWindowRect(button, &box);
            const int item = b == IDT_HELP ? IDM_HELP_TOPICS : b + ToolbarCommandShift;
            if (!(GetWindowLongA(button, GWL_STYLE) & WS_VISIBLE)) {
                toolbar += ".";
                continue;
            }
            toolbar += right < 0 || box.left == right   ? "x"
                       : box.left - right == ToolbarGap ? "|x"
                                                        : "?";
            right = box.right;
            EXPECT_EQ(!grayed(item), IsWindowEnabled(button) != 0) << "button " << b;
        }
        EXPECT_EQ(appState.interfaceType == SimpleInterface ? ".xx|x..xx.......xx|xxx|x"
                                                            : "xxx|xxxxxx|xxxxxxxx|xxx|x",
                  toolbar);
    }
    DeleteFileA((game::folder() + "\\Puz\\picture200x300.fpp").c_str());
}

TEST_F(Shell, RecentListsPutTheNewestFirstKeepThreeWithoutDuplicatesAndOpenTheirEntries)
{
    const struct {
        int kind, firstItem;
        const char* stem;
    } kinds[] = {{RecentPictures, IDM_RECENT_PICTURE_FIRST, "PictHist"},
                 {RecentPuzzles, IDM_RECENT_PUZZLE_FIRST, "PuzHist"},
                 {RecentCollections, IDM_RECENT_COLLECTION_FIRST, "ColHist"}};
    for (const auto& k : kinds) {
        const std::string path = std::string("C:\\") + k.stem + "\\";
        for (const char* name : {"b", "a&b", "b", "c", "d"})
            AddRecent(appState.recent[k.kind], (path + name).c_str(), k.kind);
        SaveRecentLists();
        // A path listed already stays where it is; an ampersand shows as written.
        const std::string listed[] = {path + "d", path + "c", path + "a&b", ""};
        const std::string shown[] = {"&1 " + path + "d", "&2 " + path + "c", "&3 " + path + "a&&b",
                                     ""};
        for (int slot = 0; slot < 4; ++slot) {
            EXPECT_EQ(shown[slot], menuText(k.firstItem + slot));
            EXPECT_EQ(listed[slot],
                      game::setting("History", (k.stem + std::to_string(slot)).c_str()));
        }
    }
    // Open Image lists its picture first; the recent item opens it again.
    openImage("picture200x300.gif");
    EXPECT_EQ("&1 " + game::picture("picture200x300.gif"), menuText(IDM_RECENT_PICTURE_FIRST));
    openImage("picture300x200.gif");
    game::answering([] { game::command(IDM_RECENT_PICTURE_FIRST + 1); });
    EXPECT_EQ(game::picture("picture200x300.gif"), loadedPicturePath);
}

TEST_F(Shell, SpanishTextsReachTheMenusAndTheMessages)
{
    const std::string text = game::folder() + "\\text.jpg";
    std::ofstream(text) << "text";
    const struct {
        UINT item, by;
        const char *english, *spanish;
    } menus[] = {
        {IDM_OPEN_IMAGE, MF_BYCOMMAND, "&Open Image", "&Abrir Imagen"},
        {IDM_ADVANCED_INTERFACE, MF_BYCOMMAND, "&Advanced Interface", "Interfaz &Avanzada"},
        {3, MF_BYPOSITION, "&Help", "&Ayuda"}};
    for (const bool spanish : {true, false}) {
        appState.languageOffset = spanish ? SpanishOffset : 0;
        SetMenuTexts();
        for (const auto& m : menus)
            EXPECT_EQ(spanish ? m.spanish : m.english, menuText(m.item, m.by));
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
}

TEST_F(Shell, TheSizeAndPiecesButtonsOpenTheirOwnDialogs)
{
    openImage("picture300x200.bmp");
    const std::pair<int, const char*> buttons[] = {{IDT_SET_SIZE, "Enter Puzzle Size in pixels"},
                                                   {IDT_SET_PIECES, "Enter Number of Pieces"}};
    for (const auto& [button, dialog] : buttons) {
        EXPECT_EQ(std::string(dialog) + ": \n",
                  game::answering([&] { SendMessageA(appState.toolbar, WM_COMMAND, button, 0); },
                                  {"cancel"}));
    }
}
