#pragma once
// The values the next Make uses: puzzle size, pieces across and down, shape, size options.

struct MakeParameters {
    int width;
    int height;
    int columns;
    int rows;
    int shapeMode;
    bool adjustToImage;   // "Adjust to image size"
    bool keepRatio;       // "Keep image width/height ratio"
    bool adjustToScreen;  // "Adjust size to screen"
};

extern MakeParameters makeParameters;
