// Options in the registry, under the tests' own key, and the recent-file lists.
#include <gtest/gtest.h>

#include <string>

#include "app/app_state.h"
#include "app/history.h"
#include "app/settings.h"
#include "resources/resource.h"
#include "tests/support/game_session.h"

namespace {

const std::string Options = std::string(session::TestSettingsKey) + "\\Options";

void setValue(const char* name, DWORD type, const void* data, DWORD size)
{
    CreateSettingsKey(Options.c_str());
    HKEY key;
    ASSERT_EQ(ERROR_SUCCESS,
              RegOpenKeyExA(HKEY_CURRENT_USER, Options.c_str(), 0, KEY_ALL_ACCESS, &key));
    RegSetValueExA(key, name, 0, type, static_cast<const BYTE*>(data), size);
    RegCloseKey(key);
}

std::string itemText(int id)
{
    char text[MAX_PATH + 8] = {};
    GetMenuStringA(appState.menu, id, text, sizeof text, MF_BYCOMMAND);
    return text;
}

}  // namespace

TEST(Settings, AMissingValueIsWrittenWithItsDefault)
{
    session::mainWindow();
    RegDeleteKeyA(HKEY_CURRENT_USER, Options.c_str());
    char text[SettingTextSize];
    ReadSetting(Options.c_str(), "Pictures Folder", "C:\\Pics", text);
    EXPECT_STREQ("C:\\Pics", text);
    int number = -1;
    ReadIntSetting(Options.c_str(), "Outline", "1", number);
    EXPECT_EQ(1, number);
    // Both are stored now, as text.
    char stored[SettingTextSize] = {};
    ASSERT_TRUE(QueryStringValue(Options.c_str(), "Pictures Folder", stored, sizeof stored));
    EXPECT_STREQ("C:\\Pics", stored);
    ASSERT_TRUE(QueryStringValue(Options.c_str(), "Outline", stored, sizeof stored));
    EXPECT_STREQ("1", stored);
}

TEST(Settings, NumbersReadAsEmptyTextAndLongTextsAreCut)
{
    const DWORD five = 5;
    setValue("Interface Type", REG_DWORD, &five, sizeof five);
    int number = -1;
    ReadIntSetting(Options.c_str(), "Interface Type", "1", number);
    EXPECT_EQ(0, number);

    const std::string longText(2000, 'x');
    setValue("Puzzle Folder", REG_SZ, longText.c_str(), longText.size() + 1);
    struct {
        char text[SettingTextSize];
        char guard[8];
    } buffer{};
    ReadSetting(Options.c_str(), "Puzzle Folder", "", buffer.text);
    EXPECT_EQ(std::string(SettingTextSize - 1, 'x'), buffer.text);
    EXPECT_EQ(std::string(8, '\0'), std::string(buffer.guard, 8));

    const std::string digits(60, '7');
    setValue("Outline", REG_SZ, digits.c_str(), digits.size() + 1);
    ReadIntSetting(Options.c_str(), "Outline", "1", number);
    EXPECT_GT(number, 0);
}

TEST(RecentFiles, NewestFirstNoDuplicatesAtMostThreeAndKeptAcrossRuns)
{
    session::mainWindow();
    RecentList& list = appState.recent[RecentPictures];
    list.count = 0;
    AddRecent(list, "C:\\a&b.jpg", RecentPictures);
    // The placeholder gives way to the first entry; an ampersand shows as written.
    EXPECT_EQ(static_cast<UINT>(-1),
              GetMenuState(appState.menu, IDM_RECENT_PICTURES, MF_BYCOMMAND));
    EXPECT_EQ("&1 C:\\a&&b.jpg", itemText(IDM_RECENT_PICTURE_FIRST));
    AddRecent(list, "C:\\b.jpg", RecentPictures);
    AddRecent(list, "C:\\a&b.jpg", RecentPictures);  // already there: nothing moves
    EXPECT_EQ("&1 C:\\b.jpg", itemText(IDM_RECENT_PICTURE_FIRST));
    AddRecent(list, "C:\\c.jpg", RecentPictures);
    AddRecent(list, "C:\\d.jpg", RecentPictures);  // the oldest falls off
    ASSERT_EQ(3, list.count);
    EXPECT_EQ("&1 C:\\d.jpg", itemText(IDM_RECENT_PICTURE_FIRST));
    EXPECT_EQ("&2 C:\\c.jpg", itemText(IDM_RECENT_PICTURE_FIRST + 1));
    EXPECT_EQ("&3 C:\\b.jpg", itemText(IDM_RECENT_PICTURE_FIRST + 2));
    EXPECT_EQ(IDM_RECENT_PICTURE_FIRST + 2, list.lastMenuId);

    SaveRecentLists();
    list.count = 0;
    LoadRecentLists();
    ASSERT_EQ(3, appState.recent[RecentPictures].count);
    EXPECT_STREQ("C:\\c.jpg", appState.recent[RecentPictures].entries[1]);
    WriteSetting(appState.historyKey, "PictHist2", "C:\\d.jpg");  // a duplicate made by hand
    LoadRecentLists();
    EXPECT_EQ(2, appState.recent[RecentPictures].count);
}
