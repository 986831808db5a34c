#include "tests/support/test_board.h"

#include <vector>

#include "model/memory_dc.h"
#include "model/pixel_runs.h"
#include "model/puzzle.h"

COLORREF patternColour(int x, int y)
{
    const int red = x & 0xFF, green = y & 0xFF;
    const int blue = 0x40 | ((x >> 8) & 0x0F) | (((y >> 8) & 0x03) << 4);
    return RGB(red, green, blue);
}

COLORREF pixelAt(HDC dc, int x, int y)
{
    return GetPixel(dc, x, y);
}

Snapshot::Snapshot(HDC source, int left, int top, int w, int h)
    : left(left), top(top), width(w), height(h)
{
    HDC dc = nullptr;
    HBITMAP bitmap = nullptr;
    createPixelSurface(dc, source, bitmap, w, h, false);
    BitBlt(dc, 0, 0, w, h, source, left, top, SRCCOPY);
    GdiFlush();
    PixelSurface copy;
    pixels.resize(static_cast<size_t>(w) * h);
    if (pixelsOf(dc, copy)) {
        for (int y = 0; y < h; ++y) {
            const std::uint32_t* row = copy.row(y);
            for (int x = 0; x < w; ++x)
                pixels[static_cast<size_t>(y) * w + x] =
                    RGB((row[x] >> 16) & 0xFF, (row[x] >> 8) & 0xFF, row[x] & 0xFF);
        }
    }
    deleteMemoryDC(dc, bitmap);
}

COLORREF Snapshot::at(int x, int y) const
{
    return pixels[static_cast<size_t>(y - top) * width + (x - left)];
}

void fill(HDC dc, int w, int h, COLORREF colour)
{
    HBRUSH brush = CreateSolidBrush(colour);
    RECT box{0, 0, w, h};
    FillRect(dc, &box, brush);
    DeleteObject(brush);
}

namespace {

const char* boardClass()
{
    static bool registered = false;
    if (!registered) {
        WNDCLASSA type{};
        type.style = CS_OWNDC;
        type.lpfnWndProc = DefWindowProcA;
        type.hInstance = GetModuleHandleA(nullptr);
        type.lpszClassName = "TestBoard";
        RegisterClassA(&type);
        registered = true;
    }
    return "TestBoard";
}

}  // namespace

TestBoard::TestBoard()
{
    // A popup window has no frame, so its client area is its whole size.
    window = CreateWindowExA(0, boardClass(), "", WS_POPUP | WS_CLIPCHILDREN, 0, 0, ClientWidth,
                             ClientHeight, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    windowDC = GetDC(window);
    createPixelSurface(boardDC, windowDC, boardBitmap, ClientWidth, ClientHeight, false);
    createMemoryDC(backgroundDC, windowDC, backgroundBitmap, GetSystemMetrics(SM_CXSCREEN),
                   GetSystemMetrics(SM_CYSCREEN), false);
    fill(boardDC, ClientWidth, ClientHeight, RGB(255, 255, 255));
    hScrollBar = CreateWindowExA(0, "SCROLLBAR", "", WS_CHILD | SBS_BOTTOMALIGN, 0, 0, 10, 10,
                                 window, nullptr, GetModuleHandleA(nullptr), nullptr);
    vScrollBar = CreateWindowExA(0, "SCROLLBAR", "", WS_CHILD | SBS_VERT, 0, 0, 10, 10, window,
                                 nullptr, GetModuleHandleA(nullptr), nullptr);
}

TestBoard::~TestBoard()
{
    deleteMemoryDC(boardDC, boardBitmap);
    deleteMemoryDC(backgroundDC, backgroundBitmap);
    deleteMemoryDC(picture.pictureDC, picture.pictureBitmap);
    deleteMemoryDC(picture.previewDC, picture.previewBitmap);
    ReleaseDC(window, windowDC);
    DestroyWindow(window);
}

MakeInputs TestBoard::inputs(int w, int h, int columns, int rows, int shapeMode, unsigned seed,
                             const char* picturePath)
{
    // The picture image at puzzle size, and a grey preview of 100 x 67.
    createPixelSurface(picture.pictureDC, windowDC, picture.pictureBitmap, w, h, true);
    std::vector<DWORD> bits(static_cast<size_t>(w) * h);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const COLORREF c = patternColour(x, y);
            bits[static_cast<size_t>(y) * w + x] =
                (GetRValue(c) << 16) | (GetGValue(c) << 8) | GetBValue(c);
        }
    }
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = w;
    info.bmiHeader.biHeight = -h;  // top-down
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    SetDIBitsToDevice(picture.pictureDC, 0, 0, w, h, 0, 0, 0, h, bits.data(), &info,
                      DIB_RGB_COLORS);
    picture.previewX = 0;
    picture.previewY = BoardTop;
    picture.previewWidth = 100;
    picture.previewHeight = 67;
    createMemoryDC(picture.previewDC, windowDC, picture.previewBitmap, 100, 67, true);
    fill(picture.previewDC, 100, 67, RGB(128, 128, 128));
    picture.naturalWidth = w;
    picture.naturalHeight = h;

    MakeInputs in{};
    in.picturePath = picturePath;
    in.width = w;
    in.height = h;
    in.columns = columns;
    in.rows = rows;
    in.shapeMode = shapeMode;
    in.drawOutline = false;
    in.drawSetOutline = false;
    in.mainWindow = window;
    in.instance = GetModuleHandleA(nullptr);
    in.boardLeft = 0;
    in.boardTop = BoardTop;
    in.originX = ClientWidth - AreaWidth;
    in.originY = ClientHeight - AreaHeight;
    in.areaWidth = AreaWidth;
    in.areaHeight = AreaHeight;
    in.hScrollBar = hScrollBar;
    in.vScrollBar = vScrollBar;
    in.boardDC = boardDC;
    in.backgroundDC = backgroundDC;
    in.windowDC = windowDC;
    in.picture = &picture;
    in.seed = seed;
    return in;
}
