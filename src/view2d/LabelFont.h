#pragma once

#include "view2d/Graduations.h"

namespace zyn {

/// The digit fonts that the labels of a graph are written with, and their measures in pixels.
struct LabelFont {
  int size = 3;
  int exponentSize = 1;

  /// For a window whose shorter side has so many pixels: larger digits only in windows that have
  /// more pixels than most screens.
  static LabelFont forWindow(double pixels);

  double digitHeight() const;
  /// Of an exponent's baseline above the label's.
  double exponentRise() const;

  /// Of a graduation's label with its exponent.
  double width(const Graduation& graduation) const;
  double height(const Graduation& graduation) const;
};

}  // namespace zyn
