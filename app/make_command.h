#pragma once
// The Make operation with its inputs gathered from the picture, the size-and-pieces
// parameters and the main window.
#include "model/make_inputs.h"
#include "model/puzzle.h"

MakeInputs gatherMakeInputs();
// Make with its progress shown, reporting nothing: the result says how it went.
MakeResult makeWithProgress();
// Make, with a failure reported to the player.
void makeCommand();
