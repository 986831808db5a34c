#pragma once
// The real program inside the test process, started once from a first start, and the
// player's moves made through the handlers its window procedures call.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>
#include <windows.h>

#include "model/piece.h"
#include "tests/support/pixels.h"

namespace game {

// A settings key of each test program's own, away from the player's and each other's.
constexpr const char* SettingsKey = "Software\\Tovira Software\\ToviraPuzzle Tests\\" TEST_PROGRAM;
// The picture whose every pixel has a colour of its own (pixels.h), 1024 x 768.
constexpr const char* Pattern = "pattern.bmp";

// Creates the main window on first use: the real start-up in a new, empty working folder.
HWND window();
// The real shutdown, then between(), then the real start in the same folder, its dialogs
// answered as answering() does; what the start's messages said.
std::string restart(std::vector<std::string> answers = {},
                    const std::function<void()>& between = nullptr);
// The working folder the program started in.
std::string folder();
// A file's bytes (none when missing), written, or whether it is there.
std::vector<std::uint8_t> bytesOf(const std::string& path);
void write(const std::string& path, const std::vector<std::uint8_t>& bytes);
bool exists(const std::string& path);
std::string picture(const char* name);
// A registry value under the tests' key ("Options" or "History"); empty when absent.
std::string setting(const char* leaf, const char* name);
// What the first start wrote under Options and History: "leaf\name=value" lines.
const std::string& firstStartSettings();

// Shows the picture and makes a w x h puzzle of columns x rows pieces with a fixed seed.
void make(int w, int h, int columns, int rows, unsigned seed = 5, int shapeMode = Knobbed,
          const char* pictureName = Pattern);
// The table most play tests start from: a 400 x 300 puzzle of 8 x 6 pieces of 50 x 50
// (knobs of 6), every free piece piled in the bottom-left corner, far from every home and
// from the table around (680, 440).
void table(unsigned seed = 5);
// Ends any carry and clears the puzzle, its file name and its unsaved changes.
void end();
void command(int id);

// The cell of piece p (its box without tabs) where it lies; p moved, not carried, so that
// its cell's top-left lies at (x, y), on top.
RECT cell(int p);
// The top-left of p's cell were it at its place as the board shows it, scrolled.
POINT home(int p);
void place(int p, int x, int y);
// A press on the middle of p's cell, pointer moves by (dx, dy), a press to drop where the
// pointer is, or in window at (x, y).
void pickUp(int p);
void moveBy(int dx, int dy);
void drop();
void dropIn(HWND window, int x, int y);
// Picks p up, carries it so that its cell's top-left comes to (x, y), and drops it.
void carry(int p, int x, int y);
// Carries p into tray so that its cell's top-left shows at (x, y) there.
void carryInto(int p, HWND tray, int x, int y);
bool joined(int a, int b);
// Where a window (a tray) lies, in the main window's client coordinates.
RECT box(HWND window);
bool same(const RECT& a, const RECT& b);

// What a puzzle file keeps of the puzzle on hand, as its bytes; without trayWindows, trays
// as their windows lie rather than as they record themselves (size and placement).
std::vector<std::uint8_t> kept(bool trayWindows = true);
// The board image, and whether a repaint from scratch makes the same (taken in that order).
Snapshot board();
bool boardAsRepainted();

// Runs action, answering its dialogs in turn: a message box with the button named ("ok",
// "yes", "no", "cancel"; "ok" past the answers), a file dialog with the path typed (a button
// name cancels it). Returns the message boxes' "caption: text" lines.
std::string answering(const std::function<void()>& action, std::vector<std::string> answers = {});

}  // namespace game
