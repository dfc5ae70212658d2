#pragma once

#include <array>

#include "core/PlanePoint.h"

namespace zyn {

/// How and where a letter is drawn, in the coordinates of the x-y plane.
struct LetterPlacement {
  double x = 0.0;  ///< of the letter's centre
  double y = 0.0;
  double height = 1.0;
  double stroke = 0.1;  ///< width of the strokes
};

/// Width of a letter as a part of its height.
constexpr double kLetterAspect = 0.75;

/// Of the heads of the axes' arrows, in parts of an axis.
constexpr double kAxisHeadRadius = 0.13;

/// Where the letters of three axes stand, which reach on the screen from 0 to these tips: beside
/// the tips, clear of all axes and of each other. Lengths in parts of an axis; `pixel`: the height
/// of one. The view begins at -1 both ways.
std::array<LetterPlacement, 3> placeLetters(const std::array<PlanePoint, 3>& tips, double pixel);

}  // namespace zyn
