#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "core/PixelImage.h"
#include "objects/dimension/CoteLayout.h"

namespace zyn {

/// Red, green, blue and opacity.
using Colour4 = std::array<float, 4>;

/// Draws a dimension in one colour over everything, with its picture, if there is one. `drawText`
/// draws the text from the origin along x, an em a unit, and may change what can be pushed of the
/// state. For use within a BorrowedState.
void drawCote(const CoteLayout& layout, const Colour4& colour,
              const std::function<void()>& drawText, const PixelImage* picture);

/// Names of a dimension in selection passes; a negative one is not pushed.
struct CoteNames {
  std::int32_t text = 0;
  std::int32_t first = 0;  ///< end of the dimension line
  std::int32_t second = 0;
  std::int32_t type = 0;
  bool pushType = false;  ///< the type comes before each of the others
};

/// Draws what covers a dimension, in one colour: the box of the text and that of the picture under
/// the name of the text, the squares around each end under the name of that. Only polygons, which
/// any platform can draw in selection mode. For use within a BorrowedState.
void drawCoteCover(const CoteLayout& layout, const Colour4& colour, const CoteNames& names);

}  // namespace zyn
