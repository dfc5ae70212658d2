#pragma once

#include <cstdint>

namespace zyn {

/// Height of a line of text, in one of several units.
struct FontSize {
  enum Unit : std::int32_t { Pixel, Millimetre, Inch, Point, ModelMillimetre, ModelInch, Model };

  double value = 20.0;
  std::int32_t unit = Pixel;  ///< any other value counts as pixels

  /// Whether it is a length in the model, whose size on the screen depends on the view.
  bool isInModel() const { return unit >= ModelMillimetre && unit <= Model; }

  /// In pixels, on paper of `resolution` dots per inch, where a pixel is `pixel` model units long.
  /// The model unit is the metre for lengths in millimetres and inches.
  double inPixels(double pixel, double resolution) const;
};

}  // namespace zyn
