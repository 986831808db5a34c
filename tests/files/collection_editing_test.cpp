// Collections as the player edits them: the entry the board shows after every command, a
// collection saved (over a file only when the player says so) and opened again, files that
// cannot be read, and entries whose picture has gone.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

#include "app/history.h"
#include "tests/app/scenario.h"

namespace {

// "2/3 name 500x400 7x5 [67x100]": the current entry's place and picture, the size and
// pieces Make will use, and the preview's extent on the board.
std::string shown()
{
    const CollectionEntry* entry = theCollection.first;
    int place = entry ? 1 : 0;
    for (; entry && entry != theCollection.current; entry = entry->next)
        ++place;
    const MakeParameters& p = makeParameters;
    char text[MAX_PATH] = {};
    if (entry) {
        EXPECT_STREQ(entry->picturePath, loadedPicturePath);
        snprintf(text, sizeof text, " %s %dx%d %dx%d%s", strrchr(entry->picturePath, '\\') + 1,
                 p.width, p.height, p.columns, p.rows, p.adjustToImage ? " adjusted" : "");
    }
    return std::to_string(place) + "/" + std::to_string(theCollection.count) + text + " " +
           scenario::previewOnBoard();
}

void addImage(const char* name)
{
    game::answering([] { game::command(IDM_ADD_IMAGE); }, {game::picture(name), "ok", "ok"});
}

using Collections = scenario::Neutral;

const char* const Second = "2/3 picture200x300.jpg 500x400 7x5 [67x100]";

}  // namespace

TEST_F(Collections, EveryCommandShowsTheEntryItLeavesCurrent)
{
    scenario::openThree();
    const std::pair<int, const char*> steps[] = {
        {0, "1/3 picture300x200.bmp 300x200 6x4 adjusted [100x67]"},
        {IDM_NEXT_PUZZLE, Second},
        {IDM_ADD_IMAGE, "4/4 picture200x300.gif 500x400 7x5 [67x100]"},  // as the dialogs showed
        {IDM_PREVIOUS_PUZZLE, "3/4 picture200x200.gif 250x250 3x3 [100x100]"},
        {IDM_PREVIOUS_PUZZLE, "2/4 picture200x300.jpg 500x400 7x5 [67x100]"},
        {IDM_REMOVE_IMAGE, "2/3 picture200x200.gif 250x250 3x3 [100x100]"},  // the one after
        {IDM_NEXT_PUZZLE, "3/3 picture200x300.gif 500x400 7x5 [67x100]"},
        {IDM_REMOVE_IMAGE, "2/2 picture200x200.gif 250x250 3x3 [100x100]"},  // the last: before
        {IDM_PREVIOUS_PUZZLE, "1/2 picture300x200.bmp 300x200 6x4 adjusted [100x67]"},
        {IDM_REMOVE_IMAGE, "1/1 picture200x200.gif 250x250 3x3 [100x100]"},
        {IDM_REMOVE_IMAGE, "0/0 [0x0]"},
    };
    for (const auto& [command, shows] : steps) {
        if (command == IDM_ADD_IMAGE)
            addImage("picture200x300.gif");
        else if (command)
            game::command(command);
        EXPECT_EQ(shows, shown()) << "after command " << command;
    }
}

// A new collection, every setting of its first entry updated, saved (over a file only when
// the player says so, never over the collection it replaced) and opened again.
TEST_F(Collections, UpdatedSettingsAreShownAgainAndKeptWhenSavedAndOpenedAgain)
{
    const std::string three = scenario::openThree();
    const std::vector<uint8_t> before = game::bytesOf(three);
    game::command(IDM_NEW_COLLECTION);
    makeParameters.adjustToImage = true;
    addImage("picture300x200.jpg");
    makeParameters.adjustToImage = false;
    makeParameters.width = makeParameters.height = 250;
    addImage("picture200x200.bmp");
    const char* const Last = "2/2 picture200x200.bmp 250x250 6x4 [100x100]";
    EXPECT_EQ(Last, shown());
    game::command(IDM_PREVIOUS_PUZZLE);
    EXPECT_EQ("1/2 picture300x200.jpg 300x200 6x4 adjusted [100x67]", shown());
    makeParameters = MakeParameters{640, 480, 16, 12, Rectangular, false, false, false};
    game::command(IDM_UPDATE_IMAGE);
    game::command(IDM_NEXT_PUZZLE);
    game::command(IDM_PREVIOUS_PUZZLE);
    const char* const Updated = "1/2 picture300x200.jpg 640x480 16x12 [100x67]";
    EXPECT_EQ(Updated, shown());
    EXPECT_EQ(Rectangular, makeParameters.shapeMode);

    // Refused, the file and the folder the next prompt starts in stay.
    const std::string folder = appState.collectionFolder, elsewhere = game::folder() + "\\Puz";
    const std::string path = elsewhere + "\\edited.fpc";
    for (const char* answer : {"no", "cancel", "yes"}) {
        game::write(path, {'o', 'l', 'd'});
        EXPECT_EQ("File error: File already exists. Do you want to override it?\n",
                  game::answering([] { game::command(IDM_SAVE_COLLECTION); }, {path, answer}));
        const bool saved = answer[0] == 'y';
        EXPECT_EQ(saved, game::bytesOf(path)[0] == 'v') << answer;
        EXPECT_EQ(saved ? elsewhere : folder, appState.collectionFolder) << answer;
    }
    EXPECT_EQ(before, game::bytesOf(three));
    lstrcpyA(appState.collectionFolder, folder.c_str());
    EXPECT_EQ(path, appState.recent[RecentCollections].entries[0]);
    game::command(IDM_CLOSE_COLLECTION);
    EXPECT_EQ("0/0 [0x0]", shown());
    game::answering([] { game::command(IDM_OPEN_COLLECTION); }, {path});
    EXPECT_EQ(Updated, shown());
    game::command(IDM_NEXT_PUZZLE);
    EXPECT_EQ(Last, shown());
    DeleteFileA(path.c_str());
}

TEST_F(Collections, AFileThatCannotBeShownAsItIsIsNamedAndChangesNothingUnlessFound)
{
    auto file = [](const char* name, const std::vector<uint8_t>& bytes) {
        const std::string path = game::folder() + "\\Col\\" + name;
        game::write(path, bytes);
        return path;
    };
    std::vector<uint8_t> bytes = game::bytesOf(
        scenario::writeCollection("good.fpc", {{"picture300x200.bmp", 9, 9, 1, 6, 4}}));
    bytes.push_back('x');
    const std::string longer = file("longer.fpc", bytes);
    bytes[3] = '2';  // v002.0: the tag decides before the damage
    const std::string other = file("other.fpc", bytes), missing = game::folder() + "\\missing.fpc";
    const std::string goneFirst = scenario::writeCollection(
        "gone-first.fpc", {{"gone.jpg", 400, 300, 0, 4, 3}, {"picture200x200.gif", 9, 9, 1, 3, 3}});
    const std::string goneSecond =
        scenario::writeCollection("gone-second.fpc", {{"picture300x200.bmp", 9, 9, 1, 6, 4},
                                                      {"gone.jpg", 400, 300, 0, 4, 3}});
    const std::string found = game::picture("picture200x300.jpg");
    const std::string text = file("text.jpg", {'t', 'e', 'x', 't'});
    const std::string Unreadable = "File error: Error reading file ",
                      Gone = "File error: The picture of this puzzle cannot be opened: " +
                             game::picture("gone.jpg") +
                             "\n\nIt may have been moved or renamed. Do you want to look for it?\n";
    const char* const Empty = "0/0 [67x100]";
    // From the second of three entries, path opened, or for goneSecond stepped to its second.
    auto expectOpening = [&](const std::string& path, std::vector<std::string> answers,
                             const std::string& said, const char* shows) {
        SCOPED_TRACE(path + " answered " + std::to_string(answers.size()));
        const bool stepping = path == goneSecond;
        scenario::neutral();
        const std::string three = scenario::openThree();
        game::command(IDM_NEXT_PUZZLE);
        if (stepping)
            openCollection(path.c_str());
        EXPECT_EQ(
            said,
            game::answering(
                [&] { stepping ? game::command(IDM_NEXT_PUZZLE) : openCollection(path.c_str()); },
                answers));
        EXPECT_EQ(shows, shown());
        // The collection on hand stays exactly when its second entry is still shown.
        EXPECT_EQ(shows == Second ? three : path, theCollection.path);
    };
    expectOpening(longer, {}, Unreadable + longer + "\n", Second);  // nothing changes
    // Not read, the collection bears the new name, empty.
    expectOpening(other, {}, "File error: File saved with a different version. Cannot be read.\n",
                  Empty);
    expectOpening(missing, {}, Unreadable + missing + "\n", Empty);
    // A first entry's picture given up changes nothing; found, it is the entry's from now on.
    expectOpening(goneFirst, {"yes", text, "ok", "cancel"},
                  Gone + "File error: This file is not a picture that can be shown: " + text + "\n",
                  Second);
    expectOpening(goneFirst, {"yes", found}, Gone, "1/2 picture200x300.jpg 400x300 4x3 [67x100]");
    // Given up on stepping, the entry before stays shown.
    expectOpening(goneSecond, {"no"}, Gone, "1/2 picture300x200.bmp 300x200 6x4 adjusted [100x67]");
    expectOpening(goneSecond, {"yes", found}, Gone, "2/2 picture200x300.jpg 400x300 4x3 [67x100]");
}
