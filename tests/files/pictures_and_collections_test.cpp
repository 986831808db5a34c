// Pictures as the player opens them, their headers and the size dialog; the entry the board
// shows after each collection command, collections saved and opened again, or not readable.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "app/history.h"
#include "files/picture_header.h"
#include "files/size_dialog.h"
#include "tests/app/scenario.h"

namespace {

using Pictures = scenario::Neutral;
using SizeDialog = Pictures;
using Collections = Pictures;

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

const char* const Second = "2/3 picture200x300.jpg 500x400 7x5 [67x100]";

}  // namespace

// Each format opens at its natural size with a preview of its shape; a file that is no
// picture is refused and nothing changes.
TEST_F(Pictures, EachFormatOpensAtItsNaturalSizeAndOthersAreRefused)
{
    const std::pair<std::string, std::string> sizes[] = {
        {"300x200", "[100x67]"}, {"200x300", "[67x100]"}, {"200x200", "[100x100]"}};
    for (const char* format : {".bmp", ".jpg", ".gif"}) {
        for (const auto& [size, preview] : sizes) {
            const std::string path = game::picture(("picture" + size + format).c_str());
            makeParameters.adjustToImage = true;  // the size dialog takes the picture's own size
            EXPECT_EQ("Enter Puzzle Size in pixels: \nEnter Number of Pieces: \n",
                      game::answering([&] { openPictureCommand(path.c_str()); }));
            EXPECT_EQ(path, loadedPicturePath);
            EXPECT_EQ(size, std::to_string(makeParameters.width) + "x" +
                                std::to_string(makeParameters.height));
            EXPECT_EQ(preview, scenario::previewOnBoard());
        }
    }
    const std::string text = game::folder() + "\\text.bmp";
    game::write(text, {'t', 'e', 'x', 't'});
    game::make(300, 200, 3, 2);
    const auto puzzle = game::kept();
    const Snapshot board = game::board();
    const std::string picture = loadedPicturePath;
    for (const std::string& path : {text, game::folder() + "\\no such picture.jpg"}) {
        EXPECT_EQ("File error: This file is not a picture that can be shown: " + path + "\n",
                  game::answering([&] { openPictureCommand(path.c_str()); }));
        EXPECT_EQ(picture, loadedPicturePath);
        EXPECT_TRUE(puzzle == game::kept() && board == game::board());
    }
}

TEST(PictureHeaders, StateTheSizeOfEachFormatAndNoneWhenDamaged)
{
    auto read = [](const char* name) {
        const std::vector<std::uint8_t> bytes = game::bytesOf(game::picture(name));
        return std::string(bytes.begin(), bytes.end());
    };
    const std::string bmp = read("picture300x200.bmp"), jpg = read("picture200x300.jpg");
    const std::string gif = read("picture200x200.gif");
    auto with = [](std::string bytes, size_t at, const std::string& part) {
        return bytes.replace(at, part.size(), part);
    };
    const std::tuple<const char*, std::string, int, int> files[] = {
        {"bitmap", bmp, 300, 200},
        {"bitmap stored top-down", with(bmp, 22, "\x38\xff\xff\xff"), 300, 200},
        {"JPEG", jpg, 200, 300},
        {"GIF", gif, 200, 200},
        {"bitmap cut short", bmp.substr(0, bmp.size() / 2), 0, 0},  // 0 x 0: none stated
        {"bitmap header alone", bmp.substr(0, 40), 0, 0},
        {"GIF of no width", with(gif, 6, std::string(2, '\0')), 0, 0},
        {"JPEG without a frame", "\xff\xd8\xff\xd9", 0, 0},
        {"JPEG cut before its frame", jpg.substr(0, 20), 0, 0},
        {"text", "GIF87 is no picture", 0, 0},
    };
    for (const auto& [what, bytes, width, height] : files) {
        int w = 0, h = 0;
        readPictureSize(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size(), w, h);
        EXPECT_TRUE(w == width && h == height) << what;
    }
}

// The size dialog and the previews shrink a side to the picture's ratio; here, the halves.
TEST(Ratio, FittingRoundsHalvesDown)
{
    const auto fit = [](int width, int height, float ratio) {
        fitToRatio(width, height, ratio);
        return std::to_string(width) + "x" + std::to_string(height);
    };
    EXPECT_EQ("202x50", fit(202, 100, 4.0f));  // 50.5
    EXPECT_EQ("203x51", fit(203, 100, 4.0f));  // 50.75
    EXPECT_EQ("50x101", fit(100, 101, 0.5f));  // 50.5
}

TEST_F(SizeDialog, TakesPlayableValuesUpTo9999AndRefusesOthersWithTheirMessage)
{
    const std::string TooLarge = "Input error: Input value greater than 9999\n";
    const std::string TooSmall = "Input error: Pieces this small cannot be played: each needs at "
                                 "least 10 x 10 pixels. Choose a larger puzzle or fewer pieces.\n";
    const char *Wide = "picture300x200.bmp", *Tall = "picture200x300.bmp",
               *Square = "picture200x200.bmp";
    const int area = std::min(appState.areaWidth, appState.areaHeight);
    enum { Image = 1, Ratio = 2, Screen = 4 };
    const struct {
        SizeDialogMode mode;
        const char* picture;
        int width, height, columns, rows, checks;  // as the dialog shows them
        std::string refusal;
        int madeWidth, madeHeight;  // the size Make will use: a refusal keeps what was shown
    } cases[] = {
        {Pixels, Wide, 9999, 1234, 3, 2, 0, "", 9999, 1234},
        {Pixels, Wide, 10000, 500, 3, 2, 0, TooLarge, 10000, 500},
        {Pixels, Wide, 0, 300, 3, 2, 0, TooSmall, 0, 300},
        {Pixels, Wide, 300, 0, 3, 2, 0, TooSmall, 300, 0},
        {Pixels, Wide, 800, 800, 3, 2, Ratio, "", 800, 533},
        {Pixels, Tall, 800, 800, 3, 2, Ratio, "", 533, 800},
        {Pixels, Tall, 50, 50, 3, 2, Image, "", 200, 300},
        {Pixels, Square, 50, 50, 3, 2, Image | Screen, "", area, area},
        {Pieces, Wide, 9999, 1000, 1000, 8, 0, TooLarge, 9999, 1000},
        {Pieces, Wide, 9999, 1000, 999, 8, 0, "", 9999, 1000},
        {Pieces, Wide, 400, 300, 40, 30, 0, "", 400, 300},
        {Pieces, Wide, 400, 300, 41, 30, 0, TooSmall, 400, 300},
        {Pieces, Wide, 400, 300, 0, 3, 0, TooSmall, 400, 300},
        {Pieces, Tall, 400, 400, 4, 4, Ratio, "", 267, 400},  // the ratio is kept here too
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "row " << &c - cases << " on " << c.picture);
        thePicture.loadPreview(game::picture(c.picture).c_str());
        MakeParameters& p = makeParameters;
        p = MakeParameters{c.width, c.height, c.columns, c.rows, Knobbed, false, false, false};
        p.adjustToImage = c.checks & Image, p.keepRatio = c.checks & Ratio;
        p.adjustToScreen = c.checks & Screen;
        // OK; a refusal is answered, and the dialog, still open, cancelled.
        const std::string title =
            c.mode == Pixels ? "Enter Puzzle Size in pixels: \n" : "Enter Number of Pieces: \n";
        const bool refused = !c.refusal.empty();
        EXPECT_EQ(title + (refused ? c.refusal + title : ""),
                  game::answering([&] { showSizeDialog(game::window(), c.mode); },
                                  {"ok", "ok", refused ? "cancel" : "ok"}));
        EXPECT_TRUE(p.width == c.madeWidth && p.height == c.madeHeight && p.columns == c.columns &&
                    p.rows == c.rows)
            << p.width << "x" << p.height << " " << p.columns << "x" << p.rows;
    }
    // Counts typed over those shown (4 x 4 on 267 x 400) and refused: those shown come back.
    HWND dialog = CreateDialogParamA(appState.instance, "PUZZLEINPUT", game::window(),
                                     sizeDialogProc, Pieces);
    SetDlgItemInt(dialog, IDC_SIZE_FIRST_VALUE, 41, FALSE);
    EXPECT_EQ(TooSmall, game::answering([&] { SendMessageA(dialog, WM_COMMAND, IDC_SIZE_OK, 0); }));
    DestroyWindow(dialog);
    EXPECT_TRUE(makeParameters.columns == 4 && makeParameters.rows == 4);
}

TEST_F(Collections, EveryCommandShowsTheEntryItLeavesCurrent)
{
    scenario::openThree();
    const std::pair<int, const char*> steps[] = {
        {0, "1/3 picture300x200.bmp 300x200 6x4 adjusted [100x67]"},
        {IDM_NEXT_PUZZLE, Second},
        {IDM_ADD_IMAGE, "4/4 picture200x300.gif 500x400 7x5 [67x100]"},  // as the dialogs showed
        {IDM_REMOVE_IMAGE, "3/3 picture200x200.gif 250x250 3x3 [100x100]"},  // the last: before
        {IDM_ADD_IMAGE, "4/4 picture200x300.gif 250x250 3x3 [67x100]"},      // after it
        {IDM_PREVIOUS_PUZZLE, "3/4 picture200x200.gif 250x250 3x3 [100x100]"},
        {IDM_PREVIOUS_PUZZLE, "2/4 picture200x300.jpg 500x400 7x5 [67x100]"},
        {IDM_REMOVE_IMAGE, "2/3 picture200x200.gif 250x250 3x3 [100x100]"},  // the one after
        {IDM_REMOVE_IMAGE, "2/2 picture200x300.gif 250x250 3x3 [67x100]"},
        {IDM_PREVIOUS_PUZZLE, "1/2 picture300x200.bmp 300x200 6x4 adjusted [100x67]"},
        {IDM_REMOVE_IMAGE, "1/1 picture200x300.gif 250x250 3x3 [67x100]"},
        {IDM_REMOVE_IMAGE, "0/0 [0x0]"},
    };
    for (const auto& [command, shows] : steps) {
        if (command == IDM_ADD_IMAGE)
            scenario::choosePicture(IDM_ADD_IMAGE, game::picture("picture200x300.gif"));
        else if (command)
            game::command(command);
        ASSERT_EQ(shows, shown()) << "after command " << command;  // the next step needs it
    }
}

// A new collection, every setting of its first entry updated, saved (over a file only when
// the player says so, never over the collection it replaced) and opened again.
TEST_F(Collections, UpdatedSettingsAreShownAgainAndKeptWhenSavedAndOpenedAgain)
{
    const std::string three = scenario::openThree();
    const std::vector<uint8_t> before = game::bytesOf(three);
    const std::string moving = game::folder() + "\\moving.jpg";  // a picture the player moves
    CopyFileA(game::picture("picture300x200.jpg").c_str(), moving.c_str(), FALSE);
    game::command(IDM_NEW_COLLECTION);
    makeParameters.adjustToImage = true;
    scenario::choosePicture(IDM_ADD_IMAGE, moving);
    makeParameters.adjustToImage = false;
    makeParameters.width = makeParameters.height = 250;
    scenario::choosePicture(IDM_ADD_IMAGE, game::picture("picture200x200.bmp"));
    const char* const Last = "2/2 picture200x200.bmp 250x250 6x4 [100x100]";
    game::command(IDM_PREVIOUS_PUZZLE);
    EXPECT_EQ("1/2 moving.jpg 300x200 6x4 adjusted [100x67]", shown());
    makeParameters = MakeParameters{640, 480, 16, 12, Rectangular, false, false, false};
    game::command(IDM_UPDATE_IMAGE);
    game::command(IDM_NEXT_PUZZLE);
    game::command(IDM_PREVIOUS_PUZZLE);
    const char* const Updated = "1/2 moving.jpg 640x480 16x12 [100x67]";
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
    DeleteFileA(moving.c_str());  // moved away: a step back given up stays on the entry
    game::answering([] { game::command(IDM_PREVIOUS_PUZZLE); }, {"no"});
    EXPECT_EQ(Last, shown());
}

TEST_F(Collections, AFileThatCannotBeShownAsItIsIsNamedAndChangesNothingUnlessFound)
{
    const std::string col = game::folder() + "\\Col\\", longer = col + "longer.fpc",
                      other = col + "other.fpc", missing = game::folder() + "\\missing.fpc";
    std::vector<uint8_t> bytes = game::bytesOf(scenario::openThree());
    bytes.push_back('x');
    game::write(longer, bytes);
    bytes[3] = '2';  // v002.0: the tag decides before the damage
    game::write(other, bytes);
    const std::string goneFirst = scenario::writeCollection(
        "gone-first.fpc", {{"gone.jpg", 400, 300, 0, 4, 3}, {"picture200x200.gif", 9, 9, 1, 3, 3}});
    const std::string goneSecond =
        scenario::writeCollection("gone-second.fpc", {{"picture300x200.bmp", 9, 9, 1, 6, 4},
                                                      {"gone.jpg", 400, 300, 0, 4, 3}});
    const std::string found = game::picture("picture200x300.jpg"),
                      Unreadable = "File error: Error reading file ",
                      Gone = scenario::pictureGone(game::picture("gone.jpg"));
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
        const auto act = [&] {
            stepping ? game::command(IDM_NEXT_PUZZLE) : openCollection(path.c_str());
        };
        EXPECT_EQ(said, game::answering(act, answers));
        EXPECT_EQ(shows, shown());
        // The collection on hand stays exactly when its second entry is still shown.
        EXPECT_EQ(shows == Second ? three : path, theCollection.path);
    };
    expectOpening(longer, {}, Unreadable + longer + "\n", Second);  // nothing changes
    // Not read, the collection bears the new name, empty.
    expectOpening(other, {}, "File error: File saved with a different version. Cannot be read.\n",
                  "0/0 [67x100]");
    expectOpening(missing, {}, Unreadable + missing + "\n", "0/0 [67x100]");
    // A first entry's picture given up changes nothing; found, it is the entry's from now on.
    expectOpening(goneFirst, {"yes", longer, "ok", "cancel"},
                  Gone + "File error: This file is not a picture that can be shown: " + longer +
                      "\n",
                  Second);
    expectOpening(goneFirst, {"yes", found}, Gone, "1/2 picture200x300.jpg 400x300 4x3 [67x100]");
    // Given up on stepping, the entry before stays shown.
    expectOpening(goneSecond, {"no"}, Gone, "1/2 picture300x200.bmp 300x200 6x4 adjusted [100x67]");
    expectOpening(goneSecond, {"yes", found}, Gone, "2/2 picture200x300.jpg 400x300 4x3 [67x100]");
}
