#include "files/collection_commands.h"

#include "app/app_state.h"
#include "app/history.h"
#include "app/settings.h"
#include "files/collection.h"
#include "files/file_prompt.h"
#include "files/make_parameters.h"
#include "files/message.h"
#include "files/size_dialog.h"
#include "resources/resource.h"

void openCollectionCommand()
{
    char path[MAX_PATH];
    if (!chooseFile(appState.mainWindow, path, OpenPrompt, CollectionFile))
        return;
    AddRecent(appState.recent[RecentCollections], path, RecentCollections);
    openCollection(path);
}

void saveCollectionCommand(bool saveAs)
{
    Collection& collection = theCollection;
    if (saveAs || !collection.path[0]) {
        char path[MAX_PATH];
        if (!chooseFile(appState.mainWindow, path, SavePrompt, CollectionFile)) {
            if (saveAs)
                return;
        } else {
            lstrcpyA(collection.path, path);
            AddRecent(appState.recent[RecentCollections], path, RecentCollections);
        }
    }
    if (!collection.path[0])
        return;
    if (!collection.saveCollection())
        showMessage(appState.instance, appState.mainWindow, IDS_UNABLE_TO_SAVE, IDS_FILE_ERROR,
                    MB_OK);
}

void addImageCommand()
{
    char path[MAX_PATH];
    if (!chooseFile(appState.mainWindow, path, OpenPrompt, PictureFile))
        return;
    // The dialogs fit their sizes to the picture shown now; the new one is shown after.
    showSizeDialog(appState.mainWindow, Pixels);
    showSizeDialog(appState.mainWindow, Pieces);
    const MakeParameters& p = makeParameters;
    theCollection.addEntry(path, p.width, p.height, p.adjustToImage, p.columns, p.rows);
    showCurrentEntry();
}

void removeImageCommand()
{
    if (theCollection.count == 0)
        return;
    theCollection.removeCurrent();
    showCurrentEntry();
}

void updateImageCommand()
{
    CollectionEntry* entry = theCollection.current;
    if (!entry)
        return;
    const MakeParameters& p = makeParameters;
    entry->width = p.width;
    entry->height = p.height;
    entry->columns = p.columns;
    entry->rows = p.rows;
    entry->shapeMode = p.shapeMode;
    entry->adjustToImage = p.adjustToImage;
}

// A step to an entry whose picture the player gives up on is taken back.
void previousPuzzleCommand()
{
    if (theCollection.movePrevious() && !showCurrentEntry())
        theCollection.moveNext();
}

void nextPuzzleCommand()
{
    if (theCollection.moveNext() && !showCurrentEntry())
        theCollection.movePrevious();
}

void setDefaultCollection(bool reset)
{
    WriteSetting(appState.optionsKey, "Default Collection", reset ? "" : theCollection.path);
}
