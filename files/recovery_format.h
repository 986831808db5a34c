#pragma once
// The recovery file: the puzzle in play as a puzzle file holds it, and the name of the
// player's own file for it, kept while it has changes that are not saved. Plain C++, like
// the puzzle file it holds.
#include <string>

#include "files/puzzle_format.h"

namespace fileformat {

// Eight bytes: seven characters and a zero.
constexpr char RecoveryTag[] = "tvrec01";
constexpr size_t RecoveryTagSize = 8;

struct RecoveryContents {
    std::string puzzlePath;  // empty: the puzzle has no file yet
    PuzzleFileContents puzzle;
};

// The tag, the path's length (int32) and its characters, then the puzzle file.
std::vector<uint8_t> encodeRecoveryFile(const RecoveryContents& contents);
// Anything but a whole recovery file of a made puzzle is Malformed.
Decoded decodeRecoveryFile(const uint8_t* data, size_t size, RecoveryContents& contents);

}  // namespace fileformat
