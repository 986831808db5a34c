#pragma once
// The one model of the puzzle on the screen: the cut, every piece, the stacking order, the
// group and tray lists, the board and puzzle-area geometry, the drawing surfaces and options.
#include <vector>
#include <windows.h>

#include "make_inputs.h"
#include "piece.h"
#include "pixel_runs.h"
#include "place_index.h"
#include "shape_cache.h"

class IndexNode;
class PieceGroup;
class Tray;

enum class MakeResult {
    Made,
    TooLarge,      // refused: the puzzle on hand stays
    LowResources,  // the platform failed while cutting: no puzzle is left
};

class Puzzle {
public:
    Puzzle();
    virtual ~Puzzle();
    Puzzle(const Puzzle&) = delete;
    Puzzle& operator=(const Puzzle&) = delete;

    // ---- Make and lifetime
    MakeResult makePuzzle(const MakeInputs& inputs);
    // Cuts the allocated pieces; false when an outline could not be made.
    bool generate();               // seeds the random generator from the clock
    bool generate(unsigned seed);  // the same with a given seed
    void clear();
    void deleteGroups();
    void deleteTrays();
    // Unscrolled: the puzzle area in main-window coordinates. Scrolled: the visible part of
    // the puzzle in puzzle coordinates.
    RECT getPuzzleArea(bool scrolled) const;
    void raiseToTop(int p);
    void sendToBottom(int p);
    // The main window's board image is being replaced: stop drawing into the old one.
    void releaseBoard();
    // Pieces were placed, set or reordered other than through their own methods (a file
    // restored): they are all filed again before the next lookup.
    void placesChanged();

    // ---- Generation
    KnobKind randomKnobKind();
    POINT randomPosition(int w, int h);

    // ---- Hit testing: the topmost free piece of window under (px, py).
    bool pieceAt(HWND window, int px, int py, int& piece) const;

    // ---- Drawing
    // The image of the main window (0) or a tray, and the size a repaint covers; false for
    // a tray that is gone.
    bool windowImage(int trayId, HDC& image, int& w, int& h);
    void repaintRect(const RECT& rect, int trayId, HWND window);
    // The first step of a repaint: lists, top first, the pieces of the window that meet rect
    // down to where the solid cores of higher pieces hide everything, and returns the part
    // of rect still to be painted with the background (empty when none is).
    // With parts, also the box of what still shows of each listed piece: the rest of it is
    // drawn over by pieces above.
    RECT occlusionPass(const RECT& rect, int trayId, std::vector<int>& list,
                       std::vector<RECT>* parts = nullptr) const;
    void drawGroup(const RECT& clip, int p);
    // False, with nothing picked up, when the images of the item cannot be made.
    bool prepareDragImage(int p, int mouseX, int mouseY);
    // Draws the framed puzzle area, with the pattern when shown, into the background and
    // repaints the area from it.
    void refreshPattern(bool toggle);
    void drawPattern();  // into the background only
    void applyOutlineOptions(bool outline, bool setOutline);

    // ---- Dragging
    void moveItem(int piece, int x, int y, bool raise, bool rebuild, bool toHome,
                  bool acrossWindows);
    // False, with nothing changed, when the tray cannot make room for the item.
    bool moveToWindow(int piece, HWND window, int trayId);
    // Puts the carried item down in window where it lies (moving it there from another
    // window); false, with the item still carried, when a tray cannot make room for it.
    bool dropInto(int piece, HWND window);
    void endDrag(int piece);

    // ---- Groups
    int createGroup(int id, int trayId);
    // Links a group made beforehand into the list: cannot fail.
    int linkGroup(PieceGroup* group, int id, int trayId);
    void addToGroup(int groupId, const int* members, int count);
    // Adds the piece of a node made beforehand, which the group then owns: cannot fail.
    void addMember(PieceGroup& group, IndexNode* node);
    bool findGroup(int id, bool moveCursor);
    bool deleteGroup(int id);
    bool findJoin(int p, int& neighbour, int& targetX, int& targetY) const;
    bool setIfNearHome(int piece);
    bool joinNeighbours(int piece);

    // ---- Trays
    int addTray(int id, HWND* window = nullptr);
    bool findTray(int id, bool moveCursor);
    int trayIdOfWindow(HWND window, bool moveCursor);
    // Without grow the tray is left as it is: fitTrayToContents follows.
    void putInTray(int trayId, int piece, bool grow = true);
    // False when the tray could not grow to hold the piece's item.
    bool growTrayToFit(int piece);
    // Grows the tray's content so that box (its client coordinates) lies within it; false,
    // with the tray as it was, when its image cannot grow that far.
    bool makeRoomInTray(int trayId, const RECT& box);
    // The bytes of every tray's image together.
    long long trayImagesBytes() const;
    // Grows the tray once for all it holds, from its outermost items; false when it could not.
    bool fitTrayToContents(int trayId);
    void shiftTrayContents(Tray* tray, int dx, int dy);
    void applyTrayScroll(int trayId);
    void trayResized(int w, int h);
    bool closeTray(int trayId);

    // ---- Piece commands
    void shufflePieces();
    void showHiddenPieces();
    // Moves every free piece and group of the main window that lies wholly outside view
    // (window coordinates) to the nearest place inside it, and every tray whose caption
    // cannot be taken hold of inside view.
    void bringIntoView(const RECT& view);
    // The part of the board the main window shows now, in its coordinates.
    RECT boardView() const;
    // boardWidth and boardHeight become the client area's size now, unless it is empty.
    void followWindowSize();

    // ---- Changes: every change to what a puzzle file holds is counted, and told.
    void noteChange()
    {
        ++changes;
        if (changed)
            changed();
    }
    unsigned long changes = 0;
    void (*changed)() = nullptr;

    // ---- Fields
    // Told after each row of pieces is cut, so that a long Make can show how far it is.
    void (*makeProgress)(int done, int total) = nullptr;
    HBITMAP compositionBitmap;
    int compositionWidth, compositionHeight;
    static constexpr int NoWindow = -1;
    // The window (0 or a tray id) the composition surface is a copy of, or NoWindow.
    int compositionOf = NoWindow;
    HBITMAP dragMaskBitmap;
    HBITMAP dragImageBitmap;
    int pieceCount;
    int columns;
    int rows;
    int width;  // puzzle size in pixels: the size the picture is rendered at
    int height;
    int boardWidth;   // right edge of the main window's client area at Make time, and at
    int boardHeight;  // the last shuffle or new tray: where pieces are scattered
    // The board image: as large as the window's client area can ever be, so that any size
    // of the window shows a board that is drawn and kept.
    int boardImageWidth;
    int boardImageHeight;
    int boardLeft;
    int boardTop;  // one pixel below the toolbar
    int originX;   // top-left of the puzzle area, main-window client coordinates
    int originY;
    int naturalWidth;
    int naturalHeight;
    int visibleWidth;  // the part of the puzzle area shown on screen
    int visibleHeight;
    int scrollX;
    int scrollY;
    int previewX;
    int previewY;
    int previewWidth;
    int previewHeight;
    int* zOrder;  // piece indices, bottom first
    int shapeMode;
    int dragLastX, dragLastY;      // last pointer position handled while dragging
    int grabOffsetX, grabOffsetY;  // pointer minus the dragged item's top-left at pick-up
    int groupCount;
    int lastGroupId;
    int trayCount;
    int lastTrayId;
    mutable int placesScrollX, placesScrollY;  // the scroll the set pieces are filed for
    char puzzlePath[MAX_PATH];                 // empty: not saved yet
    char picturePath[MAX_PATH];
    bool made;
    bool drawOutline;
    bool patternShown;
    bool drawSetOutline;
    HWND mainWindow;
    HINSTANCE instance;
    HDC pictureDC;      // borrowed from the picture
    HDC boardDC;        // borrowed from the main window
    HDC compositionDC;  // a copy of the window repainted last, which dragging restores from
    HDC backgroundDC;   // borrowed from the main window
    HDC previewDC;      // borrowed from the picture
    HDC dragMaskDC;
    HDC dragImageDC;
    HDC windowDC;  // the main window's own device context
    Piece* pieces;
    PieceGroup* currentGroup;
    PieceGroup* firstGroup;
    PieceGroup* lastGroup;
    PieceGroup* foundGroup;
    Tray* currentTray;
    Tray* firstTray;
    Tray* lastTray;
    Tray* foundTray;

    // The outlines the pieces share.
    ShapeCache shapes;
    // Where the pieces lie; a cache that lookups bring up to date.
    mutable PlaceIndex places;

private:
    // The plane (tray id; set pieces lie in the main window's), the box and the solid core,
    // in that window's coordinates, of what a piece shows; false for a set piece outside the
    // visible area.
    bool placeOf(int p, int& plane, PlaceBox& box, PlaceBox& core) const;
    void syncPlaces() const;
    // Makes sure the composition surface holds at least w x h; false when it cannot.
    bool keepComposition(int w, int h);
    bool buildPieces();
    bool neighbourIsSet(int neighbour) const;
    // Where one repaint draws, and how.
    struct PieceCanvas {
        HDC target;
        RECT visible;  // the visible part of the puzzle, puzzle coordinates
        PixelSurface targetPixels, picturePixels;
        bool direct;   // pieces may be copied into the pixels directly
        bool flushed;  // the GDI holds nothing back since the last direct copy
    };
    // Draws the part of piece p inside shows (window coordinates) that the repaint needs.
    void drawShownPart(int p, const RECT& shows, PieceCanvas& canvas);
};

// Paints a dragged item over another window's screen, leaving that window's image alone.
void drawDragImage(const RECT& rect, int posX, int posY, int w, int h, HDC maskDC, HDC imageDC,
                   HDC destDC, HDC backDC);

// The one puzzle of the program (constructed after the picture, before the collection).
extern Puzzle thePuzzle;
