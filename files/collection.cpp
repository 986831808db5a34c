#include "files/collection.h"

#include <cstring>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "app/app_state.h"
#include "app/commands.h"
#include "files/collection_format.h"
#include "files/file_io.h"
#include "files/make_parameters.h"
#include "files/message.h"
#include "files/picture.h"
#include "model/puzzle.h"
#include "resources/resource.h"

using namespace fileformat;

namespace {

char* copyOf(const char* text)
{
    char* copy = new char[strlen(text) + 1];
    strcpy(copy, text);
    return copy;
}

}  // namespace

void Collection::setPicturePath(CollectionEntry& entry, const char* picturePath)
{
    char* copy = copyOf(picturePath);
    delete[] entry.picturePath;
    entry.picturePath = copy;
}

void Collection::clearCollection()
{
    for (CollectionEntry* entry = first; entry;) {
        CollectionEntry* next = entry->next;
        delete entry;
        entry = next;
    }
    count = 0;
    first = last = current = nullptr;
    path[0] = '\0';
}

void Collection::addEntry(const char* picturePath, int width, int height, bool adjustToImage,
                          int columns, int rows)
{
    // Both allocations before the list changes.
    std::unique_ptr<CollectionEntry> made(new CollectionEntry);
    made->picturePath = copyOf(picturePath);
    CollectionEntry* entry = made.release();
    if (count == 0) {
        first = entry;
    } else {
        last->next = entry;
        entry->previous = last;
    }
    last = current = entry;
    entry->width = width;
    entry->height = height;
    entry->adjustToImage = adjustToImage;
    entry->columns = columns;
    entry->rows = rows;
    ++count;
}

void Collection::removeCurrent()
{
    CollectionEntry* entry = current;
    if (!entry)
        return;
    if (entry->previous)
        entry->previous->next = entry->next;
    else
        first = entry->next;
    CollectionEntry* newCurrent;
    if (entry->next) {
        entry->next->previous = entry->previous;
        newCurrent = entry->next;
    } else {
        last = entry->previous;
        newCurrent = entry->previous;
    }
    delete entry;
    --count;
    current = newCurrent;
}

bool Collection::moveNext()
{
    if (count == 0 || !current || !current->next)
        return false;
    current = current->next;
    return true;
}

bool Collection::movePrevious()
{
    if (count == 0 || !current || !current->previous)
        return false;
    current = current->previous;
    return true;
}

bool Collection::saveCollection()
{
    std::vector<CollectionFileEntry> entries;
    for (const CollectionEntry* e = first; e; e = e->next)
        entries.push_back(
            {e->picturePath, e->width, e->height, e->adjustToImage, e->columns, e->rows});
    return writeFileSafely(path, encodeCollectionFile(entries));
}

int Collection::readCollection(const char* filePath, std::vector<CollectionFileEntry>& entries)
{
    std::vector<uint8_t> bytes;
    const FileRead read = readWholeFile(filePath, bytes, MaxFileSize);
    if (read == FileRead::CannotOpen)
        return CollectionUnreadable;
    const Decoded decoded = read == FileRead::TooLarge
                                ? Decoded::Malformed
                                : decodeCollectionFile(bytes.data(), bytes.size(), entries);
    return decoded == Decoded::Malformed      ? CollectionRejected
           : decoded == Decoded::OtherVersion ? CollectionOtherVersion
                                              : CollectionLoaded;
}

void Collection::takeEntries(const char* filePath, const std::vector<CollectionFileEntry>& entries)
{
    // The entries are made apart and then swapped in: running out of memory part-way leaves
    // the collection as it was.
    Collection made;
    for (const CollectionFileEntry& e : entries)
        made.addEntry(e.picturePath.c_str(), e.width, e.height, e.adjustToImage, e.columns, e.rows);
    char newPath[MAX_PATH];
    lstrcpynA(newPath, filePath, MAX_PATH);
    clearCollection();
    lstrcpyA(path, newPath);
    std::swap(first, made.first);
    std::swap(last, made.last);
    std::swap(count, made.count);
    current = first;
}

bool showCurrentEntry()
{
    CollectionEntry* entry = theCollection.current;
    char picture[MAX_PATH] = {};
    if (theCollection.count != 0 && entry) {
        // A picture moved since the entry was made is looked for first: given up, nothing
        // on the board changes.
        lstrcpynA(picture, entry->picturePath, MAX_PATH);
        if (!findPicture(picture))
            return false;
        if (strcmp(picture, entry->picturePath) != 0)
            theCollection.setPicturePath(*entry, picture);
    }
    if (thePuzzle.made)
        thePuzzle.clear();
    if (theCollection.count == 0 || !entry) {
        if (appState.boardDC)
            BitBlt(appState.boardDC, 0, appState.paintOriginY, appState.previewBoxWidth,
                   appState.previewBoxHeight, nullptr, 0, 0, WHITENESS);
    } else {
        if (thePicture.loadPreview(picture) == PictureTooLarge)
            showMessage(appState.instance, appState.mainWindow, IDS_PICTURE_TOO_LARGE,
                        IDS_SYSTEM_ERROR, MB_OK, picture);
        makeParameters.adjustToImage = entry->adjustToImage;
        makeParameters.width = entry->adjustToImage ? thePicture.naturalWidth : entry->width;
        makeParameters.height = entry->adjustToImage ? thePicture.naturalHeight : entry->height;
        makeParameters.columns = entry->columns;
        makeParameters.rows = entry->rows;
        makeParameters.shapeMode = entry->shapeMode;
    }
    RedrawWindow(appState.mainWindow, &appState.boardRect, nullptr, RDW_INVALIDATE | RDW_ERASE);
    return true;
}

void openCollection(const char* path)
{
    char copy[MAX_PATH];
    lstrcpynA(copy, path, MAX_PATH);
    std::vector<CollectionFileEntry> entries;
    int result = CollectionLowResources;
    try {
        result = theCollection.readCollection(copy, entries);
        // The first entry's picture is found before anything changes: given up, the
        // collection and the board stay as they were.
        char first[MAX_PATH];
        if (result == CollectionLoaded && !entries.empty()) {
            lstrcpynA(first, entries.front().picturePath.c_str(), MAX_PATH);
            if (!findPicture(first))
                return;
            entries.front().picturePath = first;
        }
        if (result != CollectionRejected)
            theCollection.takeEntries(copy, entries);
    } catch (const std::bad_alloc&) {
        forgetCheckedPicture();  // checked for an opening that did not happen
        result = CollectionLowResources;
    }
    if (result == CollectionRejected) {
        showMessage(appState.instance, appState.mainWindow, IDS_ERROR_READING, IDS_FILE_ERROR,
                    MB_OK, copy);
        return;
    }
    if (result == CollectionLowResources) {
        reportLowResources();
        return;
    }
    if (thePuzzle.made)
        thePuzzle.clear();
    if (result == CollectionOtherVersion) {
        showMessage(appState.instance, appState.mainWindow, IDS_OTHER_VERSION, IDS_FILE_ERROR,
                    MB_OK);
    } else if (result == CollectionUnreadable) {
        showMessage(appState.instance, appState.mainWindow, IDS_ERROR_READING, IDS_FILE_ERROR,
                    MB_OK, copy);
    } else {
        showCurrentEntry();
        appState.collectionOpen = true;
    }
}

void resetCollection(bool open)
{
    theCollection.clearCollection();
    if (thePuzzle.made)
        thePuzzle.clear();
    else if (appState.boardDC)
        BitBlt(appState.boardDC, 0, 0, appState.boardImageWidth, appState.boardImageHeight, nullptr,
               0, 0, WHITENESS);
    thePicture.blank();
    RedrawWindow(appState.mainWindow, nullptr, nullptr, RDW_INVALIDATE);
    appState.collectionOpen = open;
    UpdateCommandStates();
}
