#pragma once
// The toolbar's tooltip: a pale-yellow text window shown below the pointer after a delay.
#include <windows.h>

constexpr UINT_PTR TipShowTimer = 1;
constexpr UINT_PTR TipHideTimer = 2;

// Hides the tip; with forget, it no longer belongs to any button.
void HideTip(bool forget);
