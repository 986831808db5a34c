#pragma once
// The Make operation with its inputs gathered from the picture, the size-and-pieces
// parameters and the main window.
#include "model/make_inputs.h"

MakeInputs gatherMakeInputs();
void makeCommand();
