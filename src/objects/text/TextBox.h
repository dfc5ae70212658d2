#pragma once

#include <cstdint>
#include <string_view>

#include "core/PlanePoint.h"
#include "objects/text/FontMetrics.h"

namespace zyn {

/// Box around a run of text, relative to the start of its baseline; in em heights unless it says
/// otherwise.
struct TextBox {
  double left = 0.0;
  double right = 0.0;
  double bottom = 0.0;
  double top = 0.0;

  double height() const { return top - bottom; }
};

/// The box of a text, one byte a character, as high as `line`; without width for an empty text.
TextBox measureText(const FontMetrics& metrics, std::string_view text, const TextLine& line);

/// The point of the box that a text is held by: 1 bottom left, 2 bottom right, 3 top right, 4 top
/// left, 5 bottom centre, 6 right middle, 7 top centre, 8 left middle, 9 centre, any other the
/// start of the baseline.
PlanePoint anchorOf(const TextBox& box, std::int32_t reference);

}  // namespace zyn
