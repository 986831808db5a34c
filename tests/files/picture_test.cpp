// Decoding pictures in the three formats, their sizes and previews, and the ratio helpers.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "app/app_state.h"
#include "files/picture.h"
#include "model/memory_budget.h"
#include "model/memory_dc.h"
#include "model/puzzle.h"
#include "tests/support/test_board.h"

namespace {

std::string picturePath(const char* size, const char* format)
{
    return std::string(TEST_PICTURE_DIR) + "\\picture" + size + "." + format;
}

void prepare(Picture& picture, HWND owner)
{
    picture.ownerWindow = owner;
    picture.previewWidth = 100;
    picture.previewHeight = 100;
}

bool isWhite(HDC dc, int x, int y)
{
    return pixelAt(dc, x, y) == RGB(255, 255, 255);
}

struct Expected {
    const char* size;
    int width, height;
    float ratio;
    int previewWidth, previewHeight;
};

}  // namespace

TEST(Picture, NaturalSizeAndPreviewInEveryFormat)
{
    TestBoard board;
    const Expected cases[] = {
        {"300x200", 300, 200, 1.5f, 100, 67},
        {"200x300", 200, 300, 200.0f / 300.0f, 67, 100},
        {"200x200", 200, 200, 1.0f, 100, 100},
    };
    for (const char* format : {"bmp", "jpg", "gif"}) {
        for (const Expected& e : cases) {
            SCOPED_TRACE(std::string(e.size) + "." + format);
            Picture picture;
            prepare(picture, board.window);
            picture.loadPicture(picturePath(e.size, format).c_str());
            ASSERT_NE(nullptr, picture.picture);
            EXPECT_EQ(e.width, picture.naturalWidth);
            EXPECT_EQ(e.height, picture.naturalHeight);
            EXPECT_FLOAT_EQ(e.ratio, picture.aspectRatio);
            EXPECT_EQ(e.previewWidth, picture.previewWidth);
            EXPECT_EQ(e.previewHeight, picture.previewHeight);
            // Both images hold the picture (an orange to navy gradient), not white.
            EXPECT_FALSE(isWhite(picture.pictureDC, e.width / 2, e.height / 2));
            EXPECT_FALSE(isWhite(picture.previewDC, e.previewWidth / 2, e.previewHeight / 2));
        }
    }
}

TEST(Picture, AFileThatIsNoPictureKeepsTheImagesOfTheLastOne)
{
    TestBoard board;
    char notPicture[MAX_PATH];
    GetTempPathA(MAX_PATH, notPicture);
    strcat(notPicture, "not-a-picture.jpg");
    FILE* file = fopen(notPicture, "w");
    fputs("this is text, not a picture", file);
    fclose(file);

    Picture picture;
    prepare(picture, board.window);
    picture.loadPicture(picturePath("300x200", "jpg").c_str());
    const COLORREF centre = pixelAt(picture.previewDC, 50, 33);
    prepare(picture, board.window);
    picture.loadPicture(notPicture);
    EXPECT_EQ(nullptr, picture.picture);
    EXPECT_EQ(300, picture.naturalWidth);
    EXPECT_FLOAT_EQ(1.5f, picture.aspectRatio);
    EXPECT_EQ(centre, pixelAt(picture.previewDC, 50, 33));
    // Nothing to render: the picture image stays as it was.
    picture.renderAtSize(600, 400);
    EXPECT_FALSE(isWhite(picture.pictureDC, 150, 100));
    DeleteFileA(notPicture);

    // A file that cannot be opened renders the picture held before again.
    Picture again;
    prepare(again, board.window);
    again.loadPicture(picturePath("200x300", "gif").c_str());
    prepare(again, board.window);
    again.loadPicture("Z:\\no\\such\\file.bmp");
    EXPECT_NE(nullptr, again.picture);
    EXPECT_EQ(67, again.previewWidth);
}

TEST(Picture, APuzzleTooLargeToHoldIsRefusedAndTheOneOnHandStays)
{
    TestBoard board;
    Puzzle puzzle;
    MakeInputs in = board.inputs(300, 200, 3, 2, Knobbed, 1);
    prepare(board.picture, board.window);
    ASSERT_EQ(PictureLoaded, board.picture.loadPicture(picturePath("300x200", "jpg").c_str()));
    ASSERT_EQ(MakeResult::Made, puzzle.makePuzzle(in));
    const HDC image = board.picture.pictureDC;

    in.width = in.height = 40000;  // 6.4 GB in one bitmap
    EXPECT_EQ(MakeResult::TooLarge, puzzle.makePuzzle(in));
    EXPECT_TRUE(puzzle.made);
    EXPECT_EQ(6, puzzle.pieceCount);
    EXPECT_EQ(300, puzzle.width);
    EXPECT_EQ(image, board.picture.pictureDC);
    EXPECT_FALSE(isWhite(image, 150, 100));
    EXPECT_FALSE(processCanHold(std::uint64_t(1) << 62));

    in.width = 600;
    in.height = 400;
    EXPECT_EQ(MakeResult::Made, puzzle.makePuzzle(in));
    EXPECT_FALSE(isWhite(board.picture.pictureDC, 599, 399));
}

TEST(Picture, BlankWhitensAndRenderingShowsThePictureAgain)
{
    TestBoard board;
    Picture picture;
    prepare(picture, board.window);
    picture.loadPicture(picturePath("300x200", "bmp").c_str());
    picture.blank();
    EXPECT_TRUE(isWhite(picture.pictureDC, 150, 100));
    EXPECT_TRUE(isWhite(picture.previewDC, 50, 33));
    picture.renderAtSize(600, 400);
    EXPECT_FALSE(isWhite(picture.pictureDC, 300, 200));
    EXPECT_FALSE(isWhite(picture.pictureDC, 599, 399));
    EXPECT_EQ(300, picture.naturalWidth);  // the picture keeps its own size
}

TEST(Picture, ShowingAnotherPictureCutsThePuzzleLooseFromItsFile)
{
    TestBoard board;
    appState.mainWindow = board.window;
    appState.windowDC = board.windowDC;
    appState.paintOriginY = TestBoard::BoardTop;
    appState.previewBoxWidth = appState.previewBoxHeight = 100;
    const std::string first = picturePath("300x200", "bmp");
    strcpy(thePuzzle.picturePath, first.c_str());
    strcpy(thePuzzle.puzzlePath, "Z:\\saved.fpp");

    thePicture.loadPreview(first.c_str());
    EXPECT_STREQ("Z:\\saved.fpp", thePuzzle.puzzlePath);
    EXPECT_STREQ(first.c_str(), loadedPicturePath);
    // The board image shows the preview on white.
    EXPECT_FALSE(isWhite(appState.boardDC, 50, TestBoard::BoardTop + 30));
    EXPECT_TRUE(isWhite(appState.boardDC, 150, TestBoard::BoardTop + 30));

    thePicture.loadPreview(picturePath("200x200", "gif").c_str());
    EXPECT_STREQ("", thePuzzle.puzzlePath);
    EXPECT_STREQ("", thePuzzle.picturePath);

    deleteMemoryDC(appState.boardDC, appState.boardBitmap);
    appState.mainWindow = nullptr;
    appState.windowDC = nullptr;
}

TEST(Ratio, RoundsHalvesDown)
{
    EXPECT_EQ(66, roundToInt(66.5f));
    EXPECT_EQ(67, roundToInt(66.51f));
    EXPECT_EQ(67, roundToInt(66.67f));
    EXPECT_EQ(66, roundToInt(66.2f));
    EXPECT_EQ(75, roundToInt(75.0f));
}
