// Pictures as the player opens them, the sizes their headers state, the ratio arithmetic and
// the size-and-pieces dialog.
#include <gtest/gtest.h>

#include <algorithm>

#include "files/picture_header.h"
#include "files/size_dialog.h"
#include "tests/app/scenario.h"

namespace {

using Pictures = scenario::Neutral;
using SizeDialog = Pictures;

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
    DeleteFileA(text.c_str());
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
    const struct {
        const char* what;
        std::string bytes;
        int width, height;  // 0 x 0: no size stated
    } files[] = {
        {"bitmap", bmp, 300, 200},
        {"bitmap stored top-down", with(bmp, 22, "\x38\xff\xff\xff"), 300, 200},
        {"JPEG", jpg, 200, 300},
        {"GIF", gif, 200, 200},
        {"bitmap cut short", bmp.substr(0, bmp.size() / 2), 0, 0},
        {"bitmap header alone", bmp.substr(0, 40), 0, 0},
        {"GIF of no width", with(gif, 6, std::string(2, '\0')), 0, 0},
        {"JPEG without a frame", "\xff\xd8\xff\xd9", 0, 0},
        {"JPEG cut before its frame", jpg.substr(0, 20), 0, 0},
        {"text", "GIF87 is no picture", 0, 0},
    };
    for (const auto& f : files) {
        int width = 0, height = 0;
        readPictureSize(reinterpret_cast<const std::uint8_t*>(f.bytes.data()), f.bytes.size(),
                        width, height);
        EXPECT_TRUE(width == f.width && height == f.height) << f.what;
    }
}

TEST(Ratio, FittingShrinksOneSideAndRoundsHalvesDown)
{
    const struct {
        int width, height;
        float ratio;
        int fittedWidth, fittedHeight;
    } fits[] = {{800, 800, 1.5f, 800, 533}, {800, 800, 0.75f, 600, 800}, {300, 200, 1.5f, 300, 200},
                {100, 100, 1.5f, 100, 67},  {202, 100, 4.0f, 202, 50},   {203, 100, 4.0f, 203, 51},
                {100, 101, 0.5f, 50, 101}};  // the halves, 50.5, round down
    for (const auto& f : fits) {
        int width = f.width, height = f.height;
        fitToRatio(width, height, f.ratio);
        EXPECT_TRUE(width == f.fittedWidth && height == f.fittedHeight)
            << f.width << "x" << f.height << " to " << f.ratio << ": " << width << "x" << height;
    }
    const std::pair<float, int> rounds[] = {{66.5f, 66}, {66.51f, 67}, {66.2f, 66}, {0.5f, 0}};
    for (const auto& r : rounds)
        EXPECT_EQ(r.second, roundToInt(r.first)) << r.first;
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
        INT_PTR result = 0;
        EXPECT_EQ(title + (refused ? c.refusal + title : ""),
                  game::answering([&] { result = showSizeDialog(game::window(), c.mode); },
                                  {"ok", "ok", refused ? "cancel" : "ok"}));
        EXPECT_EQ(refused ? IDC_SIZE_CANCEL : IDC_SIZE_OK, result);
        EXPECT_TRUE(p.width == c.madeWidth && p.height == c.madeHeight && p.columns == c.columns &&
                    p.rows == c.rows)
            << p.width << "x" << p.height << " " << p.columns << "x" << p.rows;
    }
}
