// A first start: the options it writes, the working folders it makes, the interface and the
// check marks it shows; and the options the player's commands store at once.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <sstream>

#include "app/history.h"
#include "app/settings.h"
#include "files/file_prompt.h"
#include "tests/app/scenario.h"

namespace {

bool checked(int id)
{
    return (GetMenuState(appState.menu, id, MF_BYCOMMAND) & MF_CHECKED) != 0;
}

using Options = scenario::Neutral;

}  // namespace

TEST(FirstStart, WritesEveryDefaultMakesTheWorkingFoldersAndShowsTheAdvancedInterface)
{
    const std::string start = game::folder();
    const std::vector<std::string> written = {
        "Options\\Default Collection=",
        "Options\\Interface Type=1",  // without a default collection, the advanced one
        "Options\\Outline=1",
        "Options\\OutlineSet=0",
        "Options\\Pictures Folder=" + start,
        "Options\\Puzzle Collection Folder=" + start + "\\Col",
        "Options\\Puzzle Folder=" + start + "\\Puz",
        "Options\\SupLangDlg=0",  // the language dialog answered without its check box
        "Options\\TextLanguage=0",
    };
    std::vector<std::string> lines;
    std::istringstream in(game::firstStartSettings());
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    std::sort(lines.begin(), lines.end());
    EXPECT_EQ(written, lines);

    for (const char* sub : {"\\Puz", "\\Col"})
        EXPECT_TRUE(fileExists((game::folder() + sub).c_str())) << sub;
    for (int item : {IDM_ADVANCED_INTERFACE, IDM_DRAW_OUTLINE})
        EXPECT_TRUE(checked(item)) << item;
    for (int item : {IDM_SIMPLE_INTERFACE, IDM_DRAW_SET_OUTLINE})
        EXPECT_FALSE(checked(item)) << item;
    char title[100];
    GetWindowTextA(game::window(), title, sizeof title);
    EXPECT_STREQ("Turn your favorite images into jigsaw puzzles", title);
}

TEST_F(Options, CommandsStoreTheChoiceAtOnce)
{
    const std::string collection = scenario::openThree();
    WriteSetting(appState.optionsKey, "SupLangDlg", "1");
    const struct {
        int command;
        const char* name;
        std::string stored;
    } commands[] = {{IDM_SIMPLE_INTERFACE, "Interface Type", "0"},
                    {IDM_ADVANCED_INTERFACE, "Interface Type", "1"},
                    {IDM_REACTIVATE_LANGUAGE, "SupLangDlg", "0"},
                    {IDM_SET_DEFAULT, "Default Collection", collection},
                    {IDM_RESET_DEFAULT, "Default Collection", ""}};
    for (const auto& c : commands) {
        game::command(c.command);
        EXPECT_EQ(c.stored, game::setting("Options", c.name)) << c.command;
    }
    EXPECT_TRUE(checked(IDM_ADVANCED_INTERFACE) && !checked(IDM_SIMPLE_INTERFACE));
}

TEST_F(Options, TheNextStartBringsBackWhatTheLastOneLeft)
{
    const std::string collection = scenario::openThree();
    game::command(IDM_SET_DEFAULT);
    game::command(IDM_DRAW_OUTLINE);      // off
    game::command(IDM_DRAW_SET_OUTLINE);  // on
    AddRecent(appState.recent[RecentPuzzles], "C:\\kept.fpp", RecentPuzzles);
    strcpy(appState.puzzleFolder, "C:\\Puzzles");
    // Without an interface stored, one with a default collection starts in the simple one.
    game::restart({}, [] {
        HKEY key = nullptr;
        RegOpenKeyExA(HKEY_CURRENT_USER, (game::settingsKey() + "\\Options").c_str(), 0,
                      KEY_SET_VALUE, &key);
        RegDeleteValueA(key, "Interface Type");
        RegCloseKey(key);
    });
    EXPECT_FALSE(appState.drawOutline);
    EXPECT_TRUE(appState.drawSetOutline && checked(IDM_DRAW_SET_OUTLINE));
    EXPECT_STREQ("C:\\kept.fpp", appState.recent[RecentPuzzles].entries[0]);
    EXPECT_STREQ("C:\\Puzzles", appState.puzzleFolder);
    EXPECT_TRUE(appState.collectionOpen);
    EXPECT_STREQ(collection.c_str(), theCollection.path);
    EXPECT_EQ(SimpleInterface, appState.interfaceType);

    game::command(IDM_RESET_DEFAULT);
    game::command(IDM_DRAW_OUTLINE);
    game::command(IDM_DRAW_SET_OUTLINE);
    strcpy(appState.puzzleFolder, (game::folder() + "\\Puz").c_str());
}
