#pragma once

namespace zyn {

/// How and where a letter is drawn, in the coordinates of the x-y plane.
struct LetterPlacement {
  double x = 0.0;  ///< of the letter's centre
  double y = 0.0;
  double height = 1.0;
  double stroke = 0.1;  ///< width of the strokes
};

/// Draws an X, Y or Z in the plane z = 0 from thin rectangles in the current colour.
void drawAxisLetter(char letter, const LetterPlacement& placement);

}  // namespace zyn
