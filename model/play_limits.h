#pragma once
// How far play reaches: bounds shared by play and by the puzzle file's checks, so that every
// file play can make opens again and no file holds more than play can. Plain C++.

// Coordinates of anything a file places (pieces, trays, the puzzle area) lie within this
// distance of the board's origin, the range of a window's own coordinates.
constexpr int MaxPlaceDistance = 32767;

// The content of one tray is at most this many pixels a side, and the images of all trays
// together hold at most this many bytes.
constexpr int MaxTrayContentSide = 16384;
constexpr long long MaxTrayImagesBytes = 256ll << 20;
