// Trays: the list of tray windows, their images, scrolling and growth.
#include <algorithm>

#include "app/app_state.h"
#include "app/controls.h"
#include "app/strings.h"
#include "model/memory_budget.h"
#include "model/memory_dc.h"
#include "model/puzzle.h"
#include "play/piece_group.h"
#include "play/tray.h"
#include "resources/resource.h"

Tray::Tray()
    : imageBitmap(nullptr), window(nullptr), imageDC(nullptr), windowDC(nullptr), instance(nullptr),
      id(0), left(0), top(0), viewWidth(0), viewHeight(0), contentWidth(0), contentHeight(0),
      contentLeft(0), contentTop(0), scrollX(0), scrollY(0), appliedScrollX(0), appliedScrollY(0),
      hasHScroll(false), hasVScroll(false), placement{}, next(nullptr), prev(nullptr)
{
    placement.length = sizeof placement;
}

Tray::~Tray()
{
    deleteMemoryDC(imageDC, imageBitmap);
    if (window)
        DestroyWindow(window);
}

HWND Tray::createWindow(int x, int y, int w, int h, HWND parent, HINSTANCE moduleInstance)
{
    char title[64];
    loadString(moduleInstance, IDS_TRAY_TITLE, title, 50);
    RemoveChar(title, '&');
    wsprintfA(title + lstrlenA(title), " %d", id);

    // The window procedure stores the handle at WM_NCCREATE, so that the messages of the
    // creation already find this tray.
    CreateWindowExA(0, TrayClassName, title, TrayWindowStyle, x, y, w, h, parent, nullptr,
                    moduleInstance, this);
    if (!window)
        return nullptr;
    ShowScrollBar(window, SB_HORZ, FALSE);
    ShowScrollBar(window, SB_VERT, FALSE);
    RECT client;
    GetClientRect(window, &client);
    left = x;
    top = y;
    viewWidth = contentWidth = client.right;
    viewHeight = contentHeight = client.bottom;
    windowDC = GetDC(window);
    createPixelSurface(imageDC, windowDC, imageBitmap, viewWidth, viewHeight, true);
    BitBlt(imageDC, 0, 0, viewWidth, viewHeight, nullptr, 0, 0, WHITENESS);
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    return window;
}

namespace {

// Whether a tray's content may grow to w x h: no wider or taller than a tray may be, and all
// trays' images together within what they may hold.
bool mayGrow(const Puzzle& puzzle, const Tray& tray, long long w, long long h)
{
    if (w > MaxTrayContentSide || h > MaxTrayContentSide)
        return false;
    const long long now =
        static_cast<long long>(bitmapBytes(tray.contentWidth, tray.contentHeight));
    const long long grown =
        static_cast<long long>(bitmapBytes(static_cast<int>(w), static_cast<int>(h)));
    return puzzle.trayImagesBytes() - now + grown <= MaxTrayImagesBytes;
}

void retarget(Puzzle& puzzle, const Tray& tray)
{
    for (const IndexNode* node = tray.pieces.head; node; node = node->next)
        puzzle.pieces[node->value].targetDC = tray.imageDC;
}

}  // namespace

bool Tray::growImage(int w, int h)
{
    if (!imageDC || (w <= contentWidth && h <= contentHeight))
        return imageDC != nullptr;
    // The image only grows; what it showed stays at its top-left.
    const int newWidth = std::max(contentWidth, w), newHeight = std::max(contentHeight, h);
    HDC grown = nullptr;
    HBITMAP grownBitmap = nullptr;
    if (newWidth <= MaxTrayContentSide && newHeight <= MaxTrayContentSide &&
        processCanHold(bitmapBytes(newWidth, newHeight)))
        createPixelSurface(grown, windowDC, grownBitmap, newWidth, newHeight, false);
    if (!grown || !grownBitmap) {
        deleteMemoryDC(grown, grownBitmap);
        return false;
    }
    BitBlt(grown, 0, 0, newWidth, newHeight, nullptr, 0, 0, WHITENESS);
    BitBlt(grown, 0, 0, contentWidth, contentHeight, imageDC, 0, 0, SRCCOPY);
    replaceMemoryDC(imageDC, imageBitmap, grown, grownBitmap);
    contentWidth = newWidth;
    contentHeight = newHeight;
    return true;
}

bool Tray::resize(int w, int h, bool isView)
{
    const bool grew = w > viewWidth || h > viewHeight;
    // A view larger than an image that cannot grow shows white beyond it, and is repainted
    // no further than the image reaches.
    growImage(w, h);
    if (isView) {
        viewWidth = w;
        viewHeight = h;
    }
    hasHScroll = viewWidth < contentWidth;
    if (hasHScroll)
        SetScrollBarRange(window, SB_HORZ, contentWidth, viewWidth, scrollX);
    hasVScroll = viewHeight < contentHeight;
    if (hasVScroll)
        SetScrollBarRange(window, SB_VERT, contentHeight, viewHeight, scrollY);
    // Showing or hiding a bar resizes the client area, which comes back here through
    // WM_SIZE; by then nothing grows any more.
    ShowScrollBar(window, SB_HORZ, hasHScroll);
    ShowScrollBar(window, SB_VERT, hasVScroll);
    return grew;
}

int Puzzle::addTray(int id, HWND* window)
{
    Tray* tray = new Tray;
    const int previousLastId = lastTrayId;  // a tray that cannot be made uses up no id
    if (id == 0) {
        tray->id = ++lastTrayId;
    } else {
        tray->id = id;
        lastTrayId = std::max(lastTrayId, id);
    }
    tray->instance = instance;
    tray->prev = lastTray;
    if (lastTray)
        lastTray->next = tray;
    else
        firstTray = tray;
    lastTray = tray;
    currentTray = tray;
    ++trayCount;
    // Every new tray fills the column under the preview, down to the bottom of the board.
    followWindowSize();
    const auto abandon = [&] {
        closeTray(tray->id);
        lastTrayId = previousLastId;
    };
    bool made = false;
    try {
        made = tray->createWindow(previewX, previewY + previewHeight, previewWidth,
                                  boardHeight - previewY - previewHeight, mainWindow,
                                  instance) != nullptr &&
               tray->imageDC && tray->imageBitmap;
    } catch (...) {
        abandon();
        throw;
    }
    if (!made) {
        // A tray without its window or image could never be shown or emptied.
        abandon();
        return 0;
    }
    if (window)
        *window = tray->window;
    noteChange();
    return tray->id;
}

bool Puzzle::findTray(int id, bool moveCursor)
{
    Tray* found = nullptr;
    if (trayCount != 0) {
        if (currentTray && currentTray->id == id)
            found = currentTray;
        for (Tray* tray = firstTray; tray && !found; tray = tray->next) {
            if (tray->id == id)
                found = tray;
        }
    }
    if (found && moveCursor)
        currentTray = found;
    else
        foundTray = found;
    return found != nullptr;
}

int Puzzle::trayIdOfWindow(HWND window, bool moveCursor)
{
    Tray* found = nullptr;
    if (trayCount != 0 && window) {
        if (currentTray && currentTray->window == window)
            found = currentTray;
        for (Tray* tray = firstTray; tray && !found; tray = tray->next) {
            if (tray->window == window)
                found = tray;
        }
    }
    if (found && moveCursor)
        currentTray = found;
    else
        foundTray = found;
    return found ? found->id : 0;
}

void Puzzle::putInTray(int trayId, int piece, bool grow)
{
    if (!findTray(trayId, false))
        return;
    foundTray->pieces.append(piece);
    if (grow)
        growTrayToFit(piece);
}

bool Puzzle::fitTrayToContents(int trayId)
{
    if (!findTray(trayId, false) || foundTray->pieces.count == 0)
        return true;
    // The items reaching furthest left, up, right and down; those left and up go first, so
    // that the right and bottom edges are measured from the content's final origin.
    int extremes[4] = {-1, -1, -1, -1};
    RECT reach{0, 0, 0, 0};
    for (const IndexNode* node = foundTray->pieces.head; node; node = node->next) {
        const Piece& piece = pieces[node->value];
        RECT box = piece.getBounds(true, false, false);
        if (piece.isGrouped && findGroup(piece.groupId, false))
            box = foundGroup->bounds;
        const LONG sides[4] = {-box.left, -box.top, box.right, box.bottom};
        LONG* best[4] = {&reach.left, &reach.top, &reach.right, &reach.bottom};
        for (int side = 0; side < 4; ++side) {
            if (extremes[side] < 0 || sides[side] > *best[side]) {
                extremes[side] = node->value;
                *best[side] = sides[side];
            }
        }
    }
    bool fits = true;
    for (int p : extremes)
        fits = growTrayToFit(p) && fits;
    return fits;
}

bool Puzzle::growTrayToFit(int p)
{
    const Piece& piece = pieces[p];
    RECT box = piece.getBounds(true, false, false);
    if (piece.isGrouped && findGroup(piece.groupId, false))
        box = foundGroup->bounds;
    return piece.trayId == 0 || makeRoomInTray(piece.trayId, box);
}

bool Puzzle::makeRoomInTray(int trayId, const RECT& box)
{
    if (!findTray(trayId, false))
        return true;
    Tray& tray = *foundTray;
    // Content coordinates are client coordinates plus the applied scroll. Worked out in 64
    // bits: an item far away asks for more room than can be had, never for a wrapped amount.
    const long long right = static_cast<long long>(tray.scrollX) + box.right;
    const long long bottom = static_cast<long long>(tray.scrollY) + box.bottom;
    long long newWidth = std::max<long long>(tray.contentWidth, right);
    long long newHeight = std::max<long long>(tray.contentHeight, bottom);
    // An item left of or above the content makes its edge the new content origin; the
    // content grows by the distance between the old edge and the new, no more.
    if (box.left < tray.contentLeft)
        newWidth += static_cast<long long>(tray.contentLeft) - box.left;
    if (box.top < tray.contentTop)
        newHeight += static_cast<long long>(tray.contentTop) - box.top;
    if (newWidth == tray.contentWidth && newHeight == tray.contentHeight &&
        box.left >= tray.contentLeft && box.top >= tray.contentTop)
        return true;
    if (!mayGrow(*this, tray, newWidth, newHeight))
        return false;
    HDC oldImage = tray.imageDC;
    if (!tray.growImage(static_cast<int>(newWidth), static_cast<int>(newHeight)))
        return false;
    if (box.left < tray.contentLeft) {
        tray.contentLeft = box.left;
        tray.scrollX = tray.appliedScrollX = -box.left;
    }
    if (box.top < tray.contentTop) {
        tray.contentTop = box.top;
        tray.scrollY = tray.appliedScrollY = -box.top;
    }
    tray.resize(tray.contentWidth, tray.contentHeight, false);
    if (tray.imageDC != oldImage)
        retarget(*this, tray);
    return true;
}

long long Puzzle::trayImagesBytes() const
{
    long long bytes = 0;
    for (const Tray* tray = trayCount ? firstTray : nullptr; tray; tray = tray->next)
        bytes += static_cast<long long>(bitmapBytes(tray->contentWidth, tray->contentHeight));
    return bytes;
}

void Puzzle::shiftTrayContents(Tray* tray, int dx, int dy)
{
    for (const IndexNode* node = tray->pieces.head; node; node = node->next) {
        Piece& piece = pieces[node->value];
        piece.moveTo(piece.x + dx, piece.y + dy, false);
    }
    if (groupCount == 0)
        return;
    for (PieceGroup* group = firstGroup; group; group = group->next) {
        if (group->trayId == tray->id)
            group->setPosition(group->x + dx, group->y + dy);
    }
}

void Puzzle::applyTrayScroll(int trayId)
{
    if (!(currentTray && currentTray->id == trayId) && !findTray(trayId, true))
        return;
    Tray& tray = *currentTray;
    const int dx = tray.appliedScrollX - tray.scrollX;
    const int dy = tray.appliedScrollY - tray.scrollY;
    shiftTrayContents(&tray, dx, dy);
    tray.contentLeft += dx;
    tray.contentTop += dy;
    tray.appliedScrollX = tray.scrollX;
    tray.appliedScrollY = tray.scrollY;
    noteChange();
}

void Puzzle::trayResized(int w, int h)
{
    Tray* tray = currentTray;
    if (!tray)
        return;
    HDC oldImage = tray->imageDC;
    if (!tray->resize(w, h, true))
        return;  // a smaller window just shows less

    // A bar that went away takes the scroll position back to 0.
    int dx = 0, dy = 0;
    if (!tray->hasHScroll && tray->scrollX != 0) {
        dx = tray->scrollX;
        tray->contentLeft = tray->appliedScrollX = tray->scrollX = 0;
    }
    if (!tray->hasVScroll && tray->scrollY != 0) {
        dy = tray->scrollY;
        tray->contentTop = tray->appliedScrollY = tray->scrollY = 0;
    }
    const bool shifted = dx != 0 || dy != 0;
    if (shifted)
        shiftTrayContents(tray, dx, dy);
    if (tray->imageDC != oldImage)
        retarget(*this, *tray);
    RECT client;
    GetClientRect(tray->window, &client);
    repaintRect(client, tray->id, shifted ? tray->window : nullptr);
}

bool Puzzle::closeTray(int trayId)
{
    if (!findTray(trayId, false) || foundTray->pieces.count > 0)
        return false;
    Tray* tray = foundTray;
    if (tray->prev)
        tray->prev->next = tray->next;
    else
        firstTray = tray->next;
    if (tray->next)
        tray->next->prev = tray->prev;
    else
        lastTray = tray->prev;
    if (currentTray == tray)
        currentTray = nullptr;
    Tray* neighbour = tray->next ? tray->next : tray->prev;
    delete tray;
    --trayCount;
    foundTray = neighbour;
    noteChange();
    return true;
}
