#pragma once
// Collections of pictures with their puzzle settings. Only the record and the one static
// object exist so far; opening, saving and stepping through collections come later.
#include <windows.h>

class CollectionEntry {
public:
    CollectionEntry() = default;
    virtual ~CollectionEntry() = default;

    char* picturePath = nullptr;
    int width = 0;
    int height = 0;
    bool adjustToImage = true;
    int columns = 10;
    int rows = 10;
    int shapeMode = 2;
    CollectionEntry* previous = nullptr;
    CollectionEntry* next = nullptr;
};

class Collection {
public:
    Collection() = default;
    virtual ~Collection() = default;
    Collection(const Collection&) = delete;
    Collection& operator=(const Collection&) = delete;

    int count = 0;
    char path[MAX_PATH] = {};
    CollectionEntry* current = nullptr;
    CollectionEntry* first = nullptr;
    CollectionEntry* last = nullptr;
};

// The one collection of the program (constructed after the puzzle, destroyed first).
extern Collection theCollection;

// Opening a collection file is not built yet: the collection stays closed.
void openCollection(const char* path);
