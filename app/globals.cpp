// The program's static objects. They live in one translation unit so that they are
// constructed in this order (picture, puzzle, collection) and destroyed in reverse.
#include "app/app_state.h"
#include "files/collection.h"
#include "files/make_parameters.h"
#include "files/picture.h"
#include "model/puzzle.h"

AppState appState;
MakeParameters makeParameters;

Picture thePicture;
Puzzle thePuzzle;
Collection theCollection;
