// Collections: the entry list, and a collection saved, opened and stepped through.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "app/app_state.h"
#include "files/collection.h"
#include "files/make_parameters.h"
#include "files/picture.h"
#include "tests/support/game_session.h"
#include "tests/support/modal_driver.h"

namespace {

class Collections : public ::testing::Test {
protected:
    void SetUp() override
    {
        session::mainWindow();
        char temp[MAX_PATH];
        GetTempPathA(MAX_PATH, temp);
        path = std::string(temp) + "tovira-two.fpc";
    }
    void TearDown() override
    {
        resetCollection(false);
        loadedPicturePath[0] = '\0';  // closing whitened the picture: load it afresh
        DeleteFileA(path.c_str());
    }
    std::string path;
};

}  // namespace

TEST_F(Collections, RemovingAnEntryKeepsTheListLinked)
{
    Collection& c = theCollection;
    c.clearCollection();
    for (const char* name : {"a", "b", "c"})
        c.addEntry(name, 1, 1, false, 2, 2);
    EXPECT_STREQ("c", c.current->picturePath);
    c.removeCurrent();  // the last: the one before follows
    EXPECT_TRUE(c.current == c.last && !c.last->next && c.current->picturePath[0] == 'b');
    ASSERT_TRUE(c.movePrevious());
    EXPECT_FALSE(c.movePrevious());
    c.removeCurrent();  // the first: the one after follows
    EXPECT_TRUE(c.current == c.first && !c.first->previous && c.current->picturePath[0] == 'b');
    c.removeCurrent();
    EXPECT_TRUE(c.count == 0 && !c.current && !c.first && !c.last);
}

TEST_F(Collections, ASavedCollectionOpensAtItsFirstEntryAndStepsThroughItsSettings)
{
    resetCollection(true);
    Collection& c = theCollection;
    // The first takes its picture's own size, whatever size it stores.
    c.addEntry(session::picture("picture300x200.bmp").c_str(), 10, 10, true, 6, 4);
    c.addEntry(session::picture("picture200x300.jpg").c_str(), 500, 400, false, 7, 5);
    lstrcpyA(c.path, path.c_str());
    ASSERT_TRUE(c.saveCollection());
    resetCollection(false);

    openCollection(path.c_str());
    ASSERT_TRUE(appState.collectionOpen);
    ASSERT_EQ(2, c.count);
    EXPECT_EQ(c.first, c.current);
    EXPECT_EQ(session::picture("picture300x200.bmp"), loadedPicturePath);
    EXPECT_EQ(300, makeParameters.width);
    EXPECT_EQ(200, makeParameters.height);
    EXPECT_EQ(6, makeParameters.columns);

    ASSERT_TRUE(c.moveNext());
    makeParameters.shapeMode = 1;
    showCurrentEntry();
    EXPECT_EQ(500, makeParameters.width);
    EXPECT_EQ(5, makeParameters.rows);
    EXPECT_EQ(2, makeParameters.shapeMode);
    EXPECT_FALSE(c.moveNext());

    // A damaged file is named and changes nothing.
    std::ofstream(path, std::ios::binary | std::ios::app).write("x", 1);
    std::string seen;
    ModalDriver driver([&](HWND box) {
        seen = messageOf(box);
        PostMessageA(box, WM_COMMAND, IDOK, 0);
    });
    openCollection(path.c_str());
    EXPECT_EQ("File error: Error reading file " + path, seen);
    EXPECT_EQ(2, c.count);
    EXPECT_EQ(c.last, c.current);
}
