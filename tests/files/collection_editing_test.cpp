// Collections as the player edits them: the entry the board shows after every command, a
// collection saved (over a file only when the player says so) and opened again, files that
// cannot be read, and entries whose picture has gone.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <iterator>

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
    const struct {
        int command;
        const char* shows;
    } steps[] = {
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
    for (const auto& step : steps) {
        if (step.command == IDM_ADD_IMAGE)
            addImage("picture200x300.gif");
        else if (step.command)
            game::command(step.command);
        EXPECT_EQ(step.shows, shown()) << "after command " << step.command;
    }
}

TEST_F(Collections, UpdatedSettingsAreShownAgainAndKeptWhenSavedAndOpenedAgain)
{
    game::command(IDM_NEW_COLLECTION);
    makeParameters.adjustToImage = true;
    addImage("picture300x200.jpg");
    makeParameters.adjustToImage = false;
    makeParameters.width = makeParameters.height = 250;
    addImage("picture200x200.bmp");
    const char* const Last = "2/2 picture200x200.bmp 250x250 3x2 [100x100]";
    EXPECT_EQ(Last, shown());
    // Every setting of the first entry changed, as the dialogs and a rectangular puzzle leave them.
    game::command(IDM_PREVIOUS_PUZZLE);
    EXPECT_EQ("1/2 picture300x200.jpg 300x200 3x2 adjusted [100x67]", shown());
    makeParameters = MakeParameters{640, 480, 16, 12, Rectangular, false, false, false};
    game::command(IDM_UPDATE_IMAGE);
    game::command(IDM_NEXT_PUZZLE);
    game::command(IDM_PREVIOUS_PUZZLE);
    const char* const Updated = "1/2 picture300x200.jpg 640x480 16x12 [100x67]";
    EXPECT_EQ(Updated, shown());
    EXPECT_EQ(Rectangular, makeParameters.shapeMode);

    // Saved over a file elsewhere: the player is asked; refused, the file and the folder the
    // next prompt starts in stay.
    const std::string folder = appState.collectionFolder, elsewhere = game::folder() + "\\Puz";
    const std::string path = elsewhere + "\\edited.fpc";
    const std::string Asked = "File error: File already exists. Do you want to override it?\n";
    for (const char* answer : {"no", "cancel", "yes"}) {
        std::ofstream(path) << "old";
        EXPECT_EQ(Asked,
                  game::answering([] { game::command(IDM_SAVE_COLLECTION_AS); }, {path, answer}));
        const bool saved = answer[0] == 'y';
        EXPECT_EQ(saved, std::ifstream(path).get() == 'v') << answer;
        EXPECT_EQ(saved ? elsewhere : folder, appState.collectionFolder) << answer;
    }
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
    auto file = [](const char* name, const std::string& bytes) {
        const std::string path = game::folder() + "\\Col\\" + name;
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    };
    std::ifstream in(scenario::writeCollection("good.fpc", {{"picture300x200.bmp", 9, 9, 1, 6, 4}}),
                     std::ios::binary);
    const std::string good{std::istreambuf_iterator<char>(in), {}};
    const std::string longer = file("longer.fpc", good + "x"),
                      other = file("other.fpc", "v002.0" + good.substr(6)),
                      cut = file("cut.fpc", good.substr(0, good.size() - 3)),
                      empty = file("empty.fpc", ""), missing = game::folder() + "\\missing.fpc";
    const std::string goneFirst = scenario::writeCollection(
        "gone-first.fpc", {{"gone.jpg", 400, 300, 0, 4, 3}, {"picture200x200.gif", 9, 9, 1, 3, 3}});
    const std::string goneSecond =
        scenario::writeCollection("gone-second.fpc", {{"picture300x200.bmp", 9, 9, 1, 6, 4},
                                                      {"gone.jpg", 400, 300, 0, 4, 3}});
    const std::string found = game::picture("picture200x300.jpg"), text = file("text.jpg", "text");
    const std::string Unreadable = "File error: Error reading file ",
                      OtherVersion = "File error: File saved with a different version. Cannot be "
                                     "read.\n",
                      Gone = "File error: The picture of this puzzle cannot be opened: " +
                             game::picture("gone.jpg") +
                             "\n\nIt may have been moved or renamed. Do you want to look for it?\n";
    const char* const Empty = "0/0 [67x100]";
    const struct {
        std::string path;
        bool stepping;  // to its second entry, else opening it
        std::vector<std::string> answers;
        std::string said;
        const char* shows;
    } cases[] = {
        {longer, false, {}, Unreadable + longer + "\n", Second},  // damaged: nothing changes
        {cut, false, {}, Unreadable + cut + "\n", Second},
        {other, false, {}, OtherVersion, Empty},  // the collection bears the new name, empty
        {empty, false, {}, OtherVersion, Empty},
        {missing, false, {}, Unreadable + missing + "\n", Empty},
        {goneFirst, false, {"no"}, Gone, Second},  // given up: nothing changes
        {goneFirst, false, {"yes", found}, Gone, "1/2 picture200x300.jpg 400x300 4x3 [67x100]"},
        {goneFirst,
         false,
         {"yes", text, "ok", "cancel"},
         Gone + "File error: This file is not a picture that can be shown: " + text + "\n",
         Second},
        {goneSecond, true, {"no"}, Gone, "1/2 picture300x200.bmp 300x200 6x4 adjusted [100x67]"},
        {goneSecond, true, {"yes", found}, Gone, "2/2 picture200x300.jpg 400x300 4x3 [67x100]"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path + (c.stepping ? " stepped to" : " opened") + " answered " +
                     std::to_string(c.answers.size()));
        scenario::neutral();
        const std::string three = scenario::openThree();
        game::command(IDM_NEXT_PUZZLE);
        if (c.stepping)
            openCollection(c.path.c_str());
        EXPECT_EQ(c.said, game::answering(
                              [&] {
                                  c.stepping ? game::command(IDM_NEXT_PUZZLE)
                                             : openCollection(c.path.c_str());
                              },
                              c.answers));
        EXPECT_EQ(c.shows, shown());
        // The collection on hand stays exactly when its second entry is still shown.
        EXPECT_EQ(c.shows == Second ? three : c.path, theCollection.path);
    }
}

TEST_F(Collections, ANewCollectionIsSavedUnderTheNameThePlayerGives)
{
    const std::string three = scenario::openThree(), path = game::folder() + "\\Col\\new.fpc";
    const std::vector<uint8_t> before = game::bytesOf(three);
    game::command(IDM_NEW_COLLECTION);
    addImage("picture200x200.gif");
    game::answering([] { game::command(IDM_SAVE_COLLECTION); }, {path});
    EXPECT_EQ(before, game::bytesOf(three));  // the collection closed is not written over
    EXPECT_EQ(path, theCollection.path);
    EXPECT_TRUE(game::exists(path));
    DeleteFileA(path.c_str());
}
