#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "core/PixelImage.h"
#include "objects/dimension/CoteLayout.h"
#include "objects/text/CGLFontContext_gl.h"

namespace zyn {

/// Red, green, blue and opacity.
using Colour4 = std::array<float, 4>;

/// Draws a dimension in one colour over everything, with its picture, if there is one. For use
/// within a BorrowedState.
void drawCote(const CoteLayout& layout, const Colour4& colour, const CGLFontContext& fonts,
              std::string_view text, const PixelImage* picture);

/// Names of a dimension in selection passes; a negative one is not pushed.
struct CoteNames {
  std::int32_t whole = 0;             ///< where it is negative, none is pushed
  std::optional<std::int32_t> first;  ///< of this end of the dimension line, if it has its own
  std::optional<std::int32_t> second;
  std::int32_t type = 0;
  bool pushType = false;  ///< the type comes before each of the others
};

/// Draws what covers a dimension, in one colour: the boxes of the text and the picture under the
/// name of the whole, the squares around each end and its arrow head under the name of that, then
/// the lines, which run through the ends, under the name of the whole. Only polygons, which any
/// platform can draw in selection mode. For use within a BorrowedState.
void drawCoteCover(const CoteLayout& layout, const Colour4& colour, const CoteNames& names);

}  // namespace zyn
