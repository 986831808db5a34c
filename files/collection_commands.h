#pragma once
// The commands of the Collection menu and its toolbar buttons.

void openCollectionCommand();
// "Save Collection"; with saveAs, a name is asked for first.
void saveCollectionCommand(bool saveAs);
void addImageCommand();
void removeImageCommand();
void updateImageCommand();
void previousPuzzleCommand();
void nextPuzzleCommand();
// "Set As Default" (the collection's path, empty when it has none) and "Reset Default".
void setDefaultCollection(bool reset);
