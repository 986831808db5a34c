#pragma once
// Collections: an ordered list of pictures, each with the puzzle settings to use for it,
// stepped through with Previous and Next and kept in collection files (.fpc).
#include <vector>
#include <windows.h>

#include "files/collection_format.h"

class CollectionEntry {
public:
    CollectionEntry() = default;
    virtual ~CollectionEntry() { delete[] picturePath; }
    CollectionEntry(const CollectionEntry&) = delete;
    CollectionEntry& operator=(const CollectionEntry&) = delete;

    char* picturePath = nullptr;  // owned
    int width = 0;
    int height = 0;
    bool adjustToImage = true;
    int columns = 10;
    int rows = 10;
    int shapeMode = 2;
    CollectionEntry* previous = nullptr;
    CollectionEntry* next = nullptr;
};

enum CollectionLoadResult {
    CollectionLoaded = 0,
    CollectionOtherVersion = 1,  // empty, or another version tag
    CollectionUnreadable = 2,    // cannot be opened
    CollectionRejected = 3,      // damaged: the collection was left as it was
    CollectionLowResources = 4,  // not enough memory: the collection was left as it was
};

class Collection {
public:
    Collection() = default;
    virtual ~Collection() { clearCollection(); }
    Collection(const Collection&) = delete;
    Collection& operator=(const Collection&) = delete;

    void clearCollection();
    void addEntry(const char* picturePath, int width, int height, bool adjustToImage, int columns,
                  int rows);
    // Only while count is at least 1. The entry after it becomes current, or else the one
    // before it.
    void removeCurrent();
    bool moveNext();
    bool movePrevious();
    // Writes to path; the previous file survives any failure.
    bool saveCollection();
    // Reads a collection file without changing anything.
    int readCollection(const char* filePath, std::vector<fileformat::CollectionFileEntry>& entries);
    // The collection becomes the entries read, named filePath, at its first entry.
    void takeEntries(const char* filePath,
                     const std::vector<fileformat::CollectionFileEntry>& entries);
    void setPicturePath(CollectionEntry& entry, const char* picturePath);

    int count = 0;
    char path[MAX_PATH] = {};
    CollectionEntry* current = nullptr;
    CollectionEntry* first = nullptr;
    CollectionEntry* last = nullptr;
};

// The one collection of the program (constructed after the puzzle, destroyed first).
extern Collection theCollection;

// Shows the current entry's picture and loads its settings, ready for Make. A picture that
// is missing is looked for with the player; false, with nothing changed, when they give up.
bool showCurrentEntry();
// Opens a collection file and shows its first entry; failures are reported.
void openCollection(const char* path);
// Empties the collection and the board; open tells whether an empty collection stays open.
void resetCollection(bool open);
