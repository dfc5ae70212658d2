#pragma once

#include "view3d/TrihedronLetters.h"

namespace zyn {

/// Draws an X, Y or Z in the plane z = 0 from thin rectangles in the current colour.
void drawAxisLetter(char letter, const LetterPlacement& placement);

}  // namespace zyn
