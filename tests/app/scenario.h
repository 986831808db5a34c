#pragma once
// What the shell, collection and picture tests share: the program as a first start left it,
// collections of the test pictures, and the preview the board shows.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/commands.h"
#include "files/collection.h"
#include "files/make_parameters.h"
#include "files/picture.h"
#include "resources/resource.h"
#include "tests/support/game.h"

namespace scenario {

// No puzzle, no collection, no picture opened, the advanced interface, sizes the dialogs take.
inline void neutral()
{
    game::end();
    game::command(IDM_CLOSE_COLLECTION);
    game::command(IDM_ADVANCED_INTERFACE);
    loadedPicturePath[0] = '\0';  // closing whitened the picture: the next one is loaded afresh
    appState.pictureLoaded = false;
    makeParameters = MakeParameters{300, 200, 3, 2, Knobbed, false, false, false};
    UpdateCommandStates();
}

struct Neutral : ::testing::Test {
    void SetUp() override { neutral(); }
    void TearDown() override { neutral(); }
};

// The extent of the preview at the board's top-left, "[w x h]": no test picture shows white.
inline std::string previewOnBoard()
{
    int w = 0, h = 0;
    const int top = appState.paintOriginY;
    while (w < 200 && GetPixel(appState.boardDC, w, top + 1) != RGB(255, 255, 255))
        ++w;
    while (h < 200 && GetPixel(appState.boardDC, 1, top + h) != RGB(255, 255, 255))
        ++h;
    return "[" + std::to_string(w) + "x" + std::to_string(h) + "]";
}

// The picture at path chosen for an open-image or add-image command, its dialogs answered.
inline void choosePicture(int command, const std::string& path)
{
    game::answering([&] { game::command(command); }, {path, "ok", "ok"});
}

// What the player is asked when the picture a file names has gone.
inline std::string pictureGone(const std::string& path)
{
    return "File error: The picture of this puzzle cannot be opened: " + path +
           "\n\nIt may have been moved or renamed. Do you want to look for it?\n";
}

// A collection file of test pictures, named without their folder, in the working folder's Col.
inline std::string writeCollection(const char* name,
                                   std::vector<fileformat::CollectionFileEntry> entries)
{
    for (auto& e : entries)
        e.picturePath = game::picture(e.picturePath.c_str());
    const std::string path = game::folder() + "\\Col\\" + name;
    game::write(path, fileformat::encodeCollectionFile(entries));
    return path;
}

// Three entries, opened at the first, which takes its picture's own size whatever it stores.
inline std::string openThree()
{
    const std::string path =
        writeCollection("three.fpc", {{"picture300x200.bmp", 10, 10, true, 6, 4},
                                      {"picture200x300.jpg", 500, 400, false, 7, 5},
                                      {"picture200x200.gif", 250, 250, false, 3, 3}});
    openCollection(path.c_str());
    UpdateCommandStates();  // as every command ends
    return path;
}

}  // namespace scenario
