#pragma once

#include <string_view>

#include "objects/text/FontMetrics.h"
#include "view2d/Graduations.h"

namespace zyn {

/// The digit fonts that the labels of a graph are written with, and their measures in pixels of a
/// screen.
struct LabelFont {
  int size = 3;  ///< of the font that a screen shows
  int exponentSize = 1;
  double pixelScale = 1.0;  ///< pixels of the window for one of a screen
  /// What is drawn in place of the digit fonts where these are too small for that; null: they are
  /// not.
  const FontMetrics* outlines = nullptr;

  /// For a window whose shorter side has so many pixels of a screen: larger digits only in windows
  /// that have more than most screens. `metrics`: of the outlines that there are.
  static LabelFont forWindow(double pixels, double pixelScale = 1.0,
                             const FontMetrics* metrics = nullptr);

  /// The digit font that is drawn for the one of a screen.
  int drawnSize(int screenSize) const;
  /// Of the outlines that are drawn for it.
  double emHeight(int screenSize) const;

  double digitHeight() const;
  /// Of an exponent's baseline above the label's.
  double exponentRise() const;

  double textWidth(std::string_view text, int screenSize) const;

  /// Of a graduation's label with its exponent.
  double width(const Graduation& graduation) const;
  double height(const Graduation& graduation) const;

 private:
  double heightOf(int screenSize) const;
};

}  // namespace zyn
